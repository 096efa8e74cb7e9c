#include "review/ExportedTagFile.h"

#include "ztutil/ZtUSysFile.h"

#include <cwchar>

namespace {

// The longest line start that tells a record: "text{" and a length.
constexpr int kHeadLength = 32;

bool StartsWith(const wchar_t* line, const wchar_t* prefix) {
    return std::wcsncmp(line, prefix, std::wcslen(prefix)) == 0;
}

} // namespace

std::optional<ExportedTagCounts> CountExportedTags(const std::wstring& path) {
    ZtUFile* file = ZtUSysFile::fopenW(
        path.c_str(), ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
        ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, ZtUSysFile::kPermitReadWrite);
    if (!file)
        return std::nullopt;
    ExportedTagCounts counts;
    bool unfiledGroup = false;
    wchar_t head[kHeadLength + 1];
    for (;;) {
        // The start of a line; the rest of a longer line is read past below.
        int length = 0;
        unsigned c = ZtUSysFile::fgetwc(file);
        for (; c != ZtUFile::kEnd && c != L'\n' && length < kHeadLength;
             c = ZtUSysFile::fgetwc(file))
            head[length++] = static_cast<wchar_t>(c);
        head[length] = 0;
        while (c != ZtUFile::kEnd && c != L'\n')
            c = ZtUSysFile::fgetwc(file);
        if (StartsWith(head, L"file{")) {
            unfiledGroup = StartsWith(head + 5, L"0n{}}");
            counts.fileGroups += !unfiledGroup;
        } else if (StartsWith(head, L"tag{")) {
            ++counts.records;
            counts.unfiled += unfiledGroup;
        } else if (StartsWith(head, L"text{")) {
            for (long skip = std::wcstol(head + 5, nullptr, 10); skip > 0 && c != ZtUFile::kEnd;
                 --skip)
                c = ZtUSysFile::fgetwc(file);
        }
        if (c == ZtUFile::kEnd)
            break;
    }
    ZtUSysFile::fclose(file);
    return counts;
}
