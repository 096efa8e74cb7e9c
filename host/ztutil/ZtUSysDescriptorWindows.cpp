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

// The nearest C library error number for a system error of the file functions.
int ErrorNumber(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return EACCES;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ENOSPC;
    default:
        return EIO;
    }
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
    return ::_wopen(wide.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
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

// The C library's rename fails on an existing target; the system's move replaces it,
// and waits until the move is on the device.
int ZtUSysDescriptor::Replace(const std::string& from, const std::string& to) {
    const std::wstring source = ZtUSysString::PathToWide(from);
    const std::wstring target = ZtUSysString::PathToWide(to);
    if (::MoveFileExW(source.c_str(), target.c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return 0;
    return ErrorNumber(::GetLastError());
}

void ZtUSysDescriptor::Remove(const std::string& path) {
    ::_wunlink(ZtUSysString::PathToWide(path).c_str());
}
