#include "ztutil/ZtUSysReplacement.h"

#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysString.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

// Paths are UTF-16 natively here; the names kept are whole UTF-8 paths.

namespace {

// The longest name a folder takes, in UTF-16 units.
constexpr std::size_t kMaxNameUnits = 255;

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

// What the system says of an existing target; false if there is none to be opened.
bool DescribeTarget(const std::wstring& target, BY_HANDLE_FILE_INFORMATION* information) {
    const HANDLE handle =
        ::CreateFileW(target.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const bool described = ::GetFileInformationByHandle(handle, information) != 0;
    ::CloseHandle(handle);
    return described;
}

// A new temporary file beside `target`, created exclusively under a name no other writer
// takes: the process id and a counter, behind the target's name cut so that the whole
// fits in a folder.
int CreateTemporary(const std::wstring& target, int mode, std::wstring* temporary) {
    const std::size_t separator = target.find_last_of(L"/\\");
    const std::wstring folder =
        separator == std::wstring::npos ? L"" : target.substr(0, separator + 1);
    const std::wstring name =
        separator == std::wstring::npos ? target : target.substr(separator + 1);
    static unsigned counter = 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::wstring tail =
            L"." + std::to_wstring(::GetCurrentProcessId()) + L"." + std::to_wstring(counter++);
        std::size_t keep = std::min(name.size(), kMaxNameUnits - 1 - tail.size());
        // A surrogate pair is not cut in two.
        if (keep > 0 && keep < name.size() && name[keep] >= 0xDC00 && name[keep] <= 0xDFFF)
            --keep;
        *temporary = folder + L"." + name.substr(0, keep) + tail;
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
std::unique_ptr<ZtUSysReplacement> ZtUSysReplacement::Begin(const std::string& target,
                                                            unsigned permissions, int* descriptor,
                                                            std::string* why) {
    const std::wstring wide = ZtUSysString::PathToWide(target);
    // The attributes, unlike the C library's stat, see a folder named with a separator
    // at the end.
    const DWORD attributes = ::GetFileAttributesW(wide.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        *why = std::strerror(EISDIR);
        return nullptr;
    }
    std::unique_ptr<ZtUSysReplacement> replacement(new ZtUSysReplacement);
    BY_HANDLE_FILE_INFORMATION old;
    if (DescribeTarget(wide, &old)) {
        const ZtUFileIdentity identity{old.dwVolumeSerialNumber,
                                       (static_cast<std::uint64_t>(old.nFileIndexHigh) << 32) |
                                           old.nFileIndexLow};
        if (const std::string* reason = ZtUFileScope::ProtectionOf(identity)) {
            *why = *reason;
            return nullptr;
        }
        replacement->oldSize_ = static_cast<long long>(
            (static_cast<std::uint64_t>(old.nFileSizeHigh) << 32) | old.nFileSizeLow);
        if (old.nNumberOfLinks > 1)
            ZtUFileScope::RecordWarning(target + " had " + std::to_string(old.nNumberOfLinks) +
                                        " hard links: it is replaced under this name, and the "
                                        "other names keep the old text");
    }
    std::wstring temporary;
    const int mode = _S_IREAD | static_cast<int>(permissions & _S_IWRITE);
    const int made = CreateTemporary(wide, mode, &temporary);
    if (made < 0) {
        *why = std::strerror(errno);
        return nullptr;
    }
    replacement->temporary_ = ZtUSysString::WideToPath(temporary);
    replacement->target_ = target;
    *descriptor = made;
    return replacement;
}

ZtUSysReplacement::~ZtUSysReplacement() {
    if (!committed_ && !temporary_.empty())
        ::_wunlink(ZtUSysString::PathToWide(temporary_).c_str());
}

// The C library's rename fails on an existing target; the system's move replaces it,
// and waits until the move is on the device.
int ZtUSysReplacement::Commit() {
    const std::wstring source = ZtUSysString::PathToWide(temporary_);
    const std::wstring target = ZtUSysString::PathToWide(target_);
    if (!::MoveFileExW(source.c_str(), target.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return ErrorNumber(::GetLastError());
    committed_ = true;
    return 0;
}
