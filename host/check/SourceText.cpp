#include "check/SourceText.h"

#include "ztutil/ZtUSysFile.h"

#include <algorithm>

SourceText::SourceText(const std::wstring& path) {
    lineStarts_.push_back(0);
    ZtUFile* file = ZtUSysFile::fopenW(
        path.c_str(), ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
        ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, ZtUSysFile::kPermitReadWrite);
    if (!file)
        return;
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;) {
        text_ += static_cast<wchar_t>(c);
        if (c == L'\n')
            lineStarts_.push_back(text_.size());
    }
    ZtUSysFile::fclose(file);
}

std::wstring_view SourceText::Line(std::uint32_t line) const {
    if (line == 0 || line > lineStarts_.size())
        return {};
    const std::size_t start = lineStarts_[line - 1];
    const std::size_t end = line < lineStarts_.size() ? lineStarts_[line] - 1 : text_.size();
    return std::wstring_view(text_).substr(start, end - start);
}

std::pair<std::uint32_t, std::uint32_t> SourceText::PositionOf(std::uint64_t offset) const {
    const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
    const auto line = static_cast<std::uint32_t>(after - lineStarts_.begin());
    return {line, static_cast<std::uint32_t>(offset - lineStarts_[line - 1] + 1)};
}
