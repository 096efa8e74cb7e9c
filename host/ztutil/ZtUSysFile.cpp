#include "ztutil/ZtUSysFile.h"

#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUFileWriter.h"
#include "ztutil/ZtUFormat.h"
#include "ztutil/ZtUSysFilePlatform.h"
#include "ztutil/ZtUSysReplacement.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cwctype>
#include <memory>
#include <utility>

namespace {

bool IsSeparator(wchar_t c) {
    return c == L'/' || c == L'\\';
}

// Index of the last separator in `path`, or npos.
std::size_t LastSeparator(const std::wstring& path) {
    return path.find_last_of(L"/\\");
}

std::vector<ZtUSysFile::LegacyRead>& LegacyReads() {
    static std::vector<ZtUSysFile::LegacyRead> reads;
    return reads;
}

// Appends the elements of `path` to `out`, a normalised path, resolving "." and ".."
// as it goes: no element is copied apart, so a long name is held once.
void AppendNormalised(std::wstring_view path, std::size_t root, std::wstring& out) {
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
            if (root > 0)
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

std::vector<ZtUSysFile::LegacyRead> ZtUSysFile::TakeLegacyReads() {
    return std::exchange(LegacyReads(), {});
}

// Kept to a few, so that a process that reads many such files and never asks holds no
// more.
void ZtUSysFile::RecordLegacyRead(LegacyRead read) {
    if (LegacyReads().size() < kLegacyReadsKept)
        LegacyReads().push_back(std::move(read));
}

ZtUFile* ZtUSysFile::fopenW(const wchar_t* path, AccessMode access, CreationMode creation,
                            TranslationMode translation, ShareMode, unsigned,
                            unsigned permissions) {
    if (!path || !*path || translation != kTranslateText)
        return nullptr;
    if (access == kAccessRead && creation == kOpenExisting) {
        // Held until its path is set, so that memory running out there frees the stream.
        std::unique_ptr<ZtUFileReader> file(ZtUSysOpenExistingFile(path));
        if (file)
            file->SetReadPath(path);
        return file.release();
    }
    if (access != kAccessWrite || creation != kCreateAlways)
        return nullptr;
    const std::string target = ZtUSysString::WideToPath(path);
    int descriptor = -1;
    std::string why;
    std::unique_ptr<ZtUSysReplacement> replacement =
        ZtUSysReplacement::Begin(target, permissions, &descriptor, &why);
    if (!replacement) {
        ZtUFileScope::RecordFailure(target, why);
        return nullptr;
    }
    return new ZtUFileWriter(descriptor, std::move(replacement), target);
}

ZtUSysDirHandle ZtUSysFile::OpenDirW(const wchar_t* path) {
    std::vector<std::string> names;
    if (!path || !ZtUSysRegularFileNames(path, names))
        return {};
    // Sorted by the UTF-8 bytes of the names and joined with a slash on every platform,
    // so that walks give the same paths.
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

int ZtUSysFile::fclose(ZtUFile* file) {
    if (!file)
        return -1;
    const int result = file->Close();
    delete file;
    return result;
}

void ZtUSysFile::fdiscard(ZtUFile* file) {
    delete file;
}

int ZtUSysFile::fwprintf(ZtUFile* file, const wchar_t* format, ...) {
    if (!file)
        return -1;
    // The text of each call replaces the last one's in room kept from call to call: a
    // record is written in many short calls.
    thread_local std::wstring text;
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
    // Without regard to case, as the host's platform names its files.
    return tail[-1] == L'.' &&
           std::equal(tail, tail + extensionLength, extension, [](wchar_t a, wchar_t b) {
               return std::towlower(static_cast<std::wint_t>(a)) ==
                      std::towlower(static_cast<std::wint_t>(b));
           });
}

void ZtUSysFile::MakeAbsoluteW(const wchar_t* folder, const wchar_t* path,
                               ZtUWideStringBuffer* out) {
    if (!out)
        return;
    const std::wstring_view relative = path ? path : L"";
    const std::wstring_view base = folder && ZtUSysPathRootLength(relative) == 0 ? folder : L"";
    const std::wstring_view first = base.empty() ? relative : base;
    const std::size_t root = ZtUSysPathRootLength(first);
    std::wstring normalised(first.substr(0, root));
    std::replace(normalised.begin(), normalised.end(), L'\\', L'/');
    normalised.reserve(base.size() + 1 + relative.size());
    AppendNormalised(base.empty() ? base : base.substr(root), root, normalised);
    AppendNormalised(base.empty() ? relative.substr(root) : relative, root, normalised);
    if (normalised.empty())
        normalised = L".";
    out->SetString(std::move(normalised));
}

void ZtUSysFile::CloseFileInfo(ZtUSysFileInfoHandle* info) {
    delete info;
}
