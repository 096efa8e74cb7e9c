#include "ztutil/ZtUSysFile.h"

#include "ztutil/ZtUFileReader.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysFilePlatform.h"
#include "ztutil/ZtUSysString.h"

#include <fcntl.h>
#include <io.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <windows.h>

// Paths are UTF-16 natively here: the host's wide strings go to the system as they are.

namespace {

bool IsRegular(const struct _stat64& status) {
    return (status.st_mode & _S_IFMT) == _S_IFREG;
}

// Opens for reading and keeps regular files only (not a console or another device).
int OpenRegularFile(const wchar_t* path) {
    const int descriptor = ::_wopen(path, _O_RDONLY | _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0)
        return -1;
    struct _stat64 status;
    if (::_fstat64(descriptor, &status) != 0 || !IsRegular(status)) {
        ::_close(descriptor);
        return -1;
    }
    return descriptor;
}

} // namespace

ZtUFileReader* ZtUSysOpenExistingFile(const wchar_t* path) {
    const int descriptor = OpenRegularFile(path);
    if (descriptor < 0)
        return nullptr;
    ZtUFileIdentity identity;
    if (ZtUSysDescriptor::Identify(descriptor, &identity))
        ZtUFileScope::RecordRead(identity);
    return new ZtUFileReader(descriptor);
}

bool ZtUSysFile::ExistsW(const wchar_t* path) {
    struct _stat64 status;
    return path && *path && ::_wstat64(path, &status) == 0;
}

bool ZtUSysFile::IdentifyW(const wchar_t* path, ZtUFileIdentity* identity) {
    if (!path || !*path)
        return false;
    const HANDLE handle =
        ::CreateFileW(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    BY_HANDLE_FILE_INFORMATION information;
    const bool identified = ::GetFileInformationByHandle(handle, &information) != 0;
    ::CloseHandle(handle);
    if (identified)
        *identity = {information.dwVolumeSerialNumber,
                     (static_cast<std::uint64_t>(information.nFileIndexHigh) << 32) |
                         information.nFileIndexLow};
    return identified;
}

bool ZtUSysRegularFileNames(const wchar_t* folder, std::vector<std::string>& names) {
    std::wstring pattern = folder;
    if (!pattern.empty() && pattern.back() != L'/' && pattern.back() != L'\\')
        pattern += L'/';
    pattern += L'*';
    WIN32_FIND_DATAW entry;
    const HANDLE find = ::FindFirstFileW(pattern.c_str(), &entry);
    if (find == INVALID_HANDLE_VALUE)
        return false;
    // Closed however the walk ends, memory running out for a name included.
    const std::unique_ptr<void, BOOL(WINAPI*)(HANDLE)> closer(find, ::FindClose);
    do {
        if (!(entry.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)))
            names.push_back(ZtUSysString::WideToPath(entry.cFileName));
    } while (::FindNextFileW(find, &entry));
    return true;
}

// A drive's root, or a leading separator (the current drive's root).
std::size_t ZtUSysPathRootLength(std::wstring_view path) {
    const auto separator = [](wchar_t c) { return c == L'/' || c == L'\\'; };
    if (path.size() >= 3 && path[1] == L':' && separator(path[2]))
        return 3;
    return !path.empty() && separator(path[0]) ? 1 : 0;
}
