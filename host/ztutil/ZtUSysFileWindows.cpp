#include "ztutil/ZtUSysFile.h"

#include "ztutil/ZtUSysFilePlatform.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
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

// A new temporary file beside `target`, created exclusively under a name no other writer
// takes: the process id and a counter.
int CreateTemporary(const std::wstring& target, int mode, std::wstring* temporary) {
    const std::size_t separator = target.find_last_of(L"/\\");
    const std::wstring folder =
        separator == std::wstring::npos ? L"" : target.substr(0, separator + 1);
    const std::wstring name =
        separator == std::wstring::npos ? target : target.substr(separator + 1);
    static unsigned counter = 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        *temporary = folder + L"." + name + L"." + std::to_wstring(::GetCurrentProcessId()) + L"." +
                     std::to_wstring(counter++);
        const int descriptor = ::_wopen(
            temporary->c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, mode);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

} // namespace

// The permission pair has its native meaning: without _S_IWRITE the new file is
// read-only (the open descriptor still writes).
ZtUFile* ZtUSysOpenReplacement(const wchar_t* target, unsigned permissions) {
    const std::string shown = ZtUSysString::WideToPath(target);
    // The attributes, unlike the C library's stat, see a folder named with a separator
    // at the end.
    const DWORD attributes = ::GetFileAttributesW(target);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        ZtUSysFile::RecordWriteFailure(shown, std::strerror(EISDIR));
        return nullptr;
    }
    std::wstring temporary;
    const int mode = _S_IREAD | static_cast<int>(permissions & _S_IWRITE);
    const int descriptor = CreateTemporary(target, mode, &temporary);
    if (descriptor < 0) {
        ZtUSysFile::RecordWriteFailure(shown, std::strerror(errno));
        return nullptr;
    }
    return new ZtUFile(descriptor, ZtUSysString::WideToPath(temporary), shown, shown);
}

ZtUFile* ZtUSysOpenExistingFile(const wchar_t* path) {
    const int descriptor = OpenRegularFile(path);
    return descriptor < 0 ? nullptr : new ZtUFile(descriptor, ZtUFile::Mode::kRead);
}

bool ZtUSysFile::ExistsW(const wchar_t* path) {
    struct _stat64 status;
    return path && *path && ::_wstat64(path, &status) == 0;
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
