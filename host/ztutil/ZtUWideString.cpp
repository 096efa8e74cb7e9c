#include "ztutil/ZtUWideString.h"

#include "ztutil/ZtUFormat.h"

#include <cstdarg>
#include <cwchar>
#include <utility>

void ZtUWideStringBuffer::ExtractSubString(std::size_t first, std::size_t count,
                                           ZtUWideStringBuffer* out) const {
    if (!out)
        return;
    if (first >= text_.size()) {
        out->Clear();
        return;
    }
    if (out == this) {
        // In place: the tail moves down, with no copy of the text kept.
        out->text_.erase(0, first);
        if (count < out->text_.size())
            out->text_.resize(count);
        return;
    }
    out->text_.assign(text_, first, count);
}

const wchar_t* ZtUWideStringBuffer::Find(const wchar_t* text, std::size_t start) const {
    if (!text)
        return nullptr;
    const std::size_t at = text_.find(text, start);
    return at == std::wstring::npos ? nullptr : text_.c_str() + at;
}

int ZtUWideStringBuffer::Replace(const wchar_t* from, const wchar_t* to, int all) {
    if (!from || !*from)
        return 0;
    const std::size_t fromLength = std::wcslen(from);
    const wchar_t* replacement = to ? to : L"";
    // Built anew in one pass, so that replacing many occurrences stays linear.
    std::wstring result;
    int replaced = 0;
    std::size_t copied = 0;
    std::size_t at = 0;
    while ((at = text_.find(from, copied, fromLength)) != std::wstring::npos) {
        if (replaced == 0)
            result.reserve(text_.size());
        result.append(text_, copied, at - copied);
        result += replacement;
        copied = at + fromLength;
        ++replaced;
        if (!all)
            break;
    }
    if (replaced == 0)
        return 0;
    result.append(text_, copied, std::wstring::npos);
    text_ = std::move(result);
    return replaced;
}

void ZtUWideStringBuffer::Trim() {
    TrimRight();
    TrimLeft();
}

void ZtUWideStringBuffer::TrimLeft() {
    std::size_t first = 0;
    while (first < text_.size() && ZtUIsWhiteSpace(text_[first]))
        ++first;
    text_.erase(0, first);
}

void ZtUWideStringBuffer::TrimRight() {
    std::size_t end = text_.size();
    while (end > 0 && ZtUIsWhiteSpace(text_[end - 1]))
        --end;
    text_.resize(end);
}

void ZtUWideStringBuffer::LowerCase() {
    for (wchar_t& c : text_)
        if (c >= L'A' && c <= L'Z')
            c = static_cast<wchar_t>(c - L'A' + L'a');
}

void ZtUWideStringBuffer::Format(const wchar_t* format, ...) {
    std::va_list args;
    va_start(args, format);
    ZtUFormatV(text_, format, args);
    va_end(args);
}

ZtUWideStringTokeniser::ZtUWideStringTokeniser(const wchar_t* text, const wchar_t* delimiters)
    : text_(text ? text : L""), delimiters_(delimiters ? delimiters : L"") {
    SkipDelimiters();
}

void ZtUWideStringTokeniser::SkipDelimiters() {
    while (next_ < text_.size() && delimiters_.find(text_[next_]) != std::wstring::npos)
        ++next_;
}

bool ZtUWideStringTokeniser::NextToken(ZtUWideStringBuffer* out) {
    if (!MoreTokens())
        return false;
    std::size_t end = text_.find_first_of(delimiters_, next_);
    if (end == std::wstring::npos)
        end = text_.size();
    if (out)
        out->SetString(text_.c_str() + next_, end - next_);
    next_ = end;
    SkipDelimiters();
    return true;
}
