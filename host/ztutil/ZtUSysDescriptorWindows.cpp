#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysNativePath.h"

#include "ztutil/ZtUSysString.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace {

// The C library's reads and writes take an unsigned count.
unsigned Count(std::size_t size) {
    return size > INT_MAX ? INT_MAX : static_cast<unsigned>(size);
}

} // namespace

std::filesystem::path ZtUSysNativePath(const std::string& path) {
    return std::filesystem::path(ZtUSysString::PathToWide(path));
}

std::string ZtUSysHostPath(const std::filesystem::path& path) {
    return ZtUSysString::WideToPath(path.native());
}

// The path goes to the system as UTF-16, so that any name opens.
int ZtUSysDescriptor::OpenForReading(const std::string& path) {
    const std::wstring wide = ZtUSysString::PathToWide(path);
    // The C library refuses a folder as access denied; the host says what it is.
    const DWORD attributes = ::GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        errno = EISDIR;
        return -1;
    }
    const int descriptor = ::_wopen(wide.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    ZtUFileIdentity identity;
    if (descriptor >= 0 && Identify(descriptor, &identity))
        ZtUFileScope::RecordRead(identity);
    return descriptor;
}

long long ZtUSysDescriptor::Read(int descriptor, void* buffer, std::size_t size) {
    return ::_read(descriptor, buffer, Count(size));
}

int ZtUSysDescriptor::Seek(int descriptor, unsigned long long offset) {
    if (offset > static_cast<unsigned long long>(LLONG_MAX)) {
        errno = EINVAL;
        return -1;
    }
    return ::_lseeki64(descriptor, static_cast<long long>(offset), SEEK_SET) < 0 ? -1 : 0;
}

long long ZtUSysDescriptor::Write(int descriptor, const void* bytes, std::size_t size) {
    return ::_write(descriptor, bytes, Count(size));
}

long long ZtUSysDescriptor::RegularFileSize(int descriptor) {
    struct _stat64 status;
    if (::_fstat64(descriptor, &status) != 0 || (status.st_mode & _S_IFMT) != _S_IFREG)
        return -1;
    return status.st_size;
}

int ZtUSysDescriptor::Commit(int descriptor) {
    return ::_commit(descriptor) == 0 ? 0 : errno;
}

int ZtUSysDescriptor::Close(int descriptor) {
    return ::_close(descriptor) == 0 ? 0 : errno;
}

bool ZtUSysDescriptor::Identify(int descriptor, ZtUFileIdentity* identity) {
    const auto handle = reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
    BY_HANDLE_FILE_INFORMATION information;
    if (handle == INVALID_HANDLE_VALUE || !::GetFileInformationByHandle(handle, &information))
        return false;
    *identity = {information.dwVolumeSerialNumber,
                 (static_cast<std::uint64_t>(information.nFileIndexHigh) << 32) |
                     information.nFileIndexLow};
    return true;
}
