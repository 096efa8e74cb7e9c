#include "ztutil/ZtUSysFile.h"

#include "ztutil/ZtUFormat.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

bool IsSeparator(wchar_t c) {
    return c == L'/' || c == L'\\';
}

// Index of the last separator in `path`, or npos.
std::size_t LastSeparator(const std::wstring& path) {
    return path.find_last_of(L"/\\");
}

std::string ToSystemPath(const wchar_t* path) {
    return ZtUSysString::WideToPath(path);
}

// Opens without blocking (a FIFO would wait for a partner) and keeps regular files only.
int OpenRegularFile(const std::string& path, int flags, mode_t permissions) {
    const int descriptor =
        ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions);
    if (descriptor < 0)
        return -1;
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK) != 0) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

std::vector<ZtUSysFile::WriteFailure>& WriteFailures() {
    static std::vector<ZtUSysFile::WriteFailure> failures;
    return failures;
}

// The mode of a new file for the Windows permission pair, less the umask. The umask can
// only be read by setting it; the host creates files from one thread.
mode_t NewFileMode(unsigned permissions) {
    constexpr unsigned kWindowsWrite = 0x80;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return static_cast<mode_t>((permissions & kWindowsWrite) ? 0666 : 0444) & ~mask;
}

// A write stream on a temporary file in the target's folder; see fopenW.
ZtUFile* OpenReplacement(const std::string& target, unsigned permissions) {
    std::string resolved = target;
    mode_t mode = 0;
    struct stat status;
    if (::stat(target.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            ZtUSysFile::RecordWriteFailure(target, S_ISDIR(status.st_mode) ? std::strerror(EISDIR)
                                                                           : "not a regular file");
            return nullptr;
        }
        mode = status.st_mode & 07777;
        // Through a link, the file it names is replaced, not the link.
        if (char* real = ::realpath(target.c_str(), nullptr)) {
            resolved = real;
            std::free(real);
        }
    } else if (errno == ENOENT) {
        mode = NewFileMode(permissions);
    } else {
        ZtUSysFile::RecordWriteFailure(target, std::strerror(errno));
        return nullptr;
    }
    const std::size_t slash = resolved.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : resolved.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? resolved : resolved.substr(slash + 1);
    std::string temporary = folder + "." + name + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        ZtUSysFile::RecordWriteFailure(target, std::strerror(errno));
        return nullptr;
    }
    if (::fchmod(descriptor, mode) != 0) {
        const int error = errno;
        ::close(descriptor);
        ::unlink(temporary.c_str());
        ZtUSysFile::RecordWriteFailure(target, std::strerror(error));
        return nullptr;
    }
    return new ZtUFile(descriptor, std::move(temporary), std::move(resolved), target);
}

// Appends the elements of `path` to `out`, a normalised path, resolving "." and ".."
// as it goes: no element is copied apart, so a long name is held once.
void AppendNormalised(std::wstring_view path, bool absolute, std::wstring& out) {
    const std::size_t root = absolute ? 1 : 0;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = start;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        const std::wstring_view element = path.substr(start, end - start);
        start = end + 1;
        if (element.empty() || element == L".")
            continue;
        if (element == L"..") {
            const std::size_t separator = out.find_last_of(L'/');
            const std::size_t last =
                separator == std::wstring::npos || separator < root ? root : separator + 1;
            if (out.size() > root && std::wstring_view(out).substr(last) != L"..") {
                out.resize(last > root ? last - 1 : root);
                continue;
            }
            if (absolute)
                continue;
        }
        if (out.size() > root)
            out += L'/';
        out += element;
    }
}

} // namespace

ZtUSysFileInfoHandle* ZtUSysDirHandle::OpenFileInfo() const {
    return IsValid() ? new ZtUSysFileInfoHandle(entries_[at_]) : nullptr;
}

ZtUFile* ZtUSysFile::fopenW(const wchar_t* path, AccessMode access, CreationMode creation,
                            TranslationMode translation, ShareMode, unsigned,
                            unsigned permissions) {
    if (!path || !*path || translation != kTranslateText)
        return nullptr;
    const std::string systemPath = ToSystemPath(path);
    if (access == kAccessRead && creation == kOpenExisting) {
        const int descriptor = OpenRegularFile(systemPath, O_RDONLY, 0);
        return descriptor < 0 ? nullptr : new ZtUFile(descriptor, ZtUFile::Mode::kRead);
    }
    if (access == kAccessWrite && creation == kCreateAlways)
        return OpenReplacement(systemPath, permissions);
    return nullptr;
}

std::vector<ZtUSysFile::WriteFailure> ZtUSysFile::TakeWriteFailures() {
    return std::exchange(WriteFailures(), {});
}

void ZtUSysFile::RecordWriteFailure(const std::string& path, const std::string& reason) {
    WriteFailures().push_back({path, reason});
}

int ZtUSysFile::fclose(ZtUFile* file) {
    if (!file)
        return -1;
    const int result = file->Close();
    delete file;
    return result;
}

int ZtUSysFile::fwprintf(ZtUFile* file, const wchar_t* format, ...) {
    if (!file)
        return -1;
    std::wstring text;
    std::va_list args;
    va_start(args, format);
    ZtUFormatV(text, format, args);
    va_end(args);
    if (!file->Write(text.data(), text.size()) || file->HasError())
        return -1;
    return static_cast<int>(text.size());
}

int ZtUSysFile::PopPathW(const wchar_t* path, ZtUWideStringBuffer* directory,
                         ZtUWideStringBuffer* name) {
    const std::wstring text = path ? path : L"";
    const std::size_t separator = LastSeparator(text);
    if (separator == std::wstring::npos) {
        if (directory)
            directory->SetString(L"");
        if (name)
            name->SetString(text.c_str());
        return 0;
    }
    std::size_t directoryEnd = separator;
    while (directoryEnd > 0 && IsSeparator(text[directoryEnd - 1]))
        --directoryEnd;
    if (directory)
        directory->SetString(text.c_str(), directoryEnd == 0 ? 1 : directoryEnd);
    if (name)
        name->SetString(text.c_str() + separator + 1);
    return 1;
}

void ZtUSysFile::RemoveFileExtensionW(const wchar_t* name, ZtUWideStringBuffer* out) {
    if (!out)
        return;
    const std::wstring text = name ? name : L"";
    const std::size_t point = text.find_last_of(L'.');
    const std::size_t separator = LastSeparator(text);
    if (point == std::wstring::npos || (separator != std::wstring::npos && point < separator))
        out->SetString(text.c_str());
    else
        out->SetString(text.c_str(), point);
}

void ZtUSysFile::RemovePathnameW(const wchar_t* path, ZtUWideStringBuffer* out) {
    if (!out)
        return;
    const std::wstring text = path ? path : L"";
    const std::size_t separator = LastSeparator(text);
    out->SetString(separator == std::wstring::npos ? text.c_str() : text.c_str() + separator + 1);
}

bool ZtUSysFile::HasFileExtensionW(const wchar_t* name, const wchar_t* extension) {
    if (!name || !extension)
        return false;
    const std::size_t nameLength = ZtUSysString::WideStrlen(name);
    const std::size_t extensionLength = ZtUSysString::WideStrlen(extension);
    if (nameLength <= extensionLength)
        return false;
    const wchar_t* tail = name + nameLength - extensionLength;
    return tail[-1] == L'.' && ZtUSysString::WideStrncmp(tail, extension, extensionLength) == 0;
}

void ZtUSysFile::MakeAbsoluteW(const wchar_t* folder, const wchar_t* path,
                               ZtUWideStringBuffer* out) {
    if (!out)
        return;
    const std::wstring_view relative = path ? path : L"";
    const std::wstring_view base =
        folder && !(!relative.empty() && IsSeparator(relative[0])) ? folder : L"";
    const std::wstring_view first = base.empty() ? relative : base;
    const bool absolute = !first.empty() && IsSeparator(first[0]);
    std::wstring normalised = absolute ? L"/" : L"";
    normalised.reserve(base.size() + 1 + relative.size());
    AppendNormalised(base, absolute, normalised);
    AppendNormalised(relative, absolute, normalised);
    if (normalised.empty())
        normalised = L".";
    out->SetString(std::move(normalised));
}

bool ZtUSysFile::ExistsW(const wchar_t* path) {
    struct stat status;
    return path && *path && ::stat(ToSystemPath(path).c_str(), &status) == 0;
}

ZtUSysDirHandle ZtUSysFile::OpenDirW(const wchar_t* path) {
    if (!path)
        return {};
    // The folder of a bare file name is the empty string: the working directory.
    DIR* directory = ::opendir(*path ? ToSystemPath(path).c_str() : ".");
    if (!directory)
        return {};
    std::vector<std::string> names;
    while (const dirent* entry = ::readdir(directory)) {
        // Links count as what they point to, as with fopenW.
        struct stat status;
        if (::fstatat(::dirfd(directory), entry->d_name, &status, 0) == 0 &&
            S_ISREG(status.st_mode))
            names.emplace_back(entry->d_name);
    }
    ::closedir(directory);
    std::sort(names.begin(), names.end());

    std::wstring prefix = path;
    if (!prefix.empty() && !IsSeparator(prefix.back()))
        prefix += L'/';
    std::vector<std::wstring> fullNames;
    fullNames.reserve(names.size());
    for (const std::string& name : names)
        fullNames.push_back(prefix + ZtUSysString::PathToWide(name));
    return ZtUSysDirHandle(std::move(fullNames));
}

void ZtUSysFile::CloseFileInfo(ZtUSysFileInfoHandle* info) {
    delete info;
}
