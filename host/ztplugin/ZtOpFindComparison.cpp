#include "ztplugin/ZtOpFindComparison.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace {

wchar_t FoldCase(wchar_t c, bool ignoreCase) {
    return ignoreCase && c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

// The value as text; `scratch` holds the text of values that are not text already.
std::wstring_view TextOf(const ZtUData& value, std::wstring& scratch) {
    switch (value.GetType()) {
    case ZtUData::kWideString:
        return value.GetWideString();
    case ZtUData::kName:
        return value.GetName() ? value.GetName()->GetDisplay().Str() : std::wstring_view();
    case ZtUData::kBool:
    case ZtUData::kInt32:
    case ZtUData::kInt64:
        scratch = std::to_wstring(value.GetInt64());
        return scratch;
    case ZtUData::kUInt64:
        scratch = std::to_wstring(value.GetUInt64());
        return scratch;
    case ZtUData::kDouble: {
        char digits[64];
        const auto result = std::to_chars(digits, digits + sizeof digits, value.GetDouble());
        scratch.assign(digits, result.ptr);
        return scratch;
    }
    case ZtUData::kEmpty:
        break;
    }
    return {};
}

// Parses the whole text as a decimal number: blanks, an optional sign, digits with at
// most one point, an optional exponent, blanks.
bool ParseDecimal(std::wstring_view text, double* number) {
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && ZtUIsWhiteSpace(text[first]))
        ++first;
    while (last > first && ZtUIsWhiteSpace(text[last - 1]))
        --last;
    char ascii[128];
    std::size_t length = 0;
    std::size_t at = first;
    bool negative = false;
    if (at < last && (text[at] == L'+' || text[at] == L'-'))
        negative = text[at++] == L'-';
    bool digits = false;
    bool point = false;
    for (; at < last; ++at) {
        const wchar_t c = text[at];
        if (c >= L'0' && c <= L'9')
            digits = true;
        else if (c == L'.' && !point)
            point = true;
        else
            break;
        if (length == sizeof ascii - 1)
            return false;
        ascii[length++] = static_cast<char>(c);
    }
    if (!digits)
        return false;
    if (at < last && (text[at] == L'e' || text[at] == L'E')) {
        if (length + 2 >= sizeof ascii)
            return false;
        ascii[length++] = 'e';
        ++at;
        if (at < last && (text[at] == L'+' || text[at] == L'-'))
            ascii[length++] = static_cast<char>(text[at++]);
        bool exponentDigits = false;
        for (; at < last && text[at] >= L'0' && text[at] <= L'9'; ++at) {
            if (length == sizeof ascii - 1)
                return false;
            ascii[length++] = static_cast<char>(text[at]);
            exponentDigits = true;
        }
        if (!exponentDigits)
            return false;
    }
    if (at != last)
        return false;
    double value = 0.0;
    const auto result = std::from_chars(ascii, ascii + length, value);
    if (result.ptr != ascii + length)
        return false;
    *number = negative ? -value : value;
    return true;
}

int Order(double x, double y) {
    return x < y ? -1 : x > y ? 1 : 0;
}

// The value as the number its text would parse to, where that is sure without the text:
// integers and finite doubles print as decimals that read back as the same double (both
// directions round to nearest; a double prints in its shortest exact form).
bool NumberOf(const ZtUData& value, double* number) {
    switch (value.GetType()) {
    case ZtUData::kBool:
    case ZtUData::kInt32:
    case ZtUData::kInt64:
        *number = static_cast<double>(value.GetInt64());
        return true;
    case ZtUData::kUInt64:
        *number = static_cast<double>(value.GetUInt64());
        return true;
    case ZtUData::kDouble:
        *number = value.GetDouble();
        return std::isfinite(*number);
    default:
        return false;
    }
}

} // namespace

bool ZtOpSameName(const ZtUName* a, const ZtUName* b) {
    if (a == b)
        return true;
    return a && b && a->GetInternal() == b->GetInternal() && a->GetDisplay() == b->GetDisplay();
}

bool ZtOpWildcardMatches(const wchar_t* pattern, std::size_t patternLength, const wchar_t* text,
                         std::size_t textLength, bool ignoreCase) {
    // Greedy with one point of return: the last "*" seen and where its run would end.
    // Linear in practice, and at worst the product of the lengths.
    std::size_t p = 0;
    std::size_t t = 0;
    std::size_t star = patternLength;
    std::size_t resume = 0;
    while (t < textLength) {
        if (p < patternLength && pattern[p] == L'*') {
            star = p++;
            resume = t;
        } else if (p < patternLength && (pattern[p] == L'?' || FoldCase(pattern[p], ignoreCase) ==
                                                                   FoldCase(text[t], ignoreCase))) {
            ++p;
            ++t;
        } else if (star != patternLength) {
            p = star + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    while (p < patternLength && pattern[p] == L'*')
        ++p;
    return p == patternLength;
}

ZtOpFindComparison::ZtOpFindComparison(const ZtOpFindCondition& condition)
    : op_(condition.GetCondition()),
      ignoreCase_(condition.HasFlags(ZtOpFindConditionFlags::kIgnoreCase)) {
    std::wstring scratch;
    wanted_ = TextOf(condition.GetValue(), scratch);
    wantedIsNumber_ = ParseDecimal(wanted_, &wantedNumber_);
}

bool ZtOpFindComparison::Holds(const ZtUData& value) const {
    int order = 0;
    double have = 0.0;
    std::wstring scratch;
    if (op_ == ZtOpFindConditionOp::kWildcard) {
        const std::wstring_view text = TextOf(value, scratch);
        return ZtOpWildcardMatches(wanted_.data(), wanted_.size(), text.data(), text.size(),
                                   ignoreCase_);
    }
    if (wantedIsNumber_ && NumberOf(value, &have)) {
        order = Order(have, wantedNumber_);
    } else {
        const std::wstring_view text = TextOf(value, scratch);
        if (wantedIsNumber_ && ParseDecimal(text, &have)) {
            order = Order(have, wantedNumber_);
        } else {
            const std::size_t common = text.size() < wanted_.size() ? text.size() : wanted_.size();
            std::size_t i = 0;
            while (i < common &&
                   FoldCase(text[i], ignoreCase_) == FoldCase(wanted_[i], ignoreCase_))
                ++i;
            if (i < common)
                order = FoldCase(text[i], ignoreCase_) < FoldCase(wanted_[i], ignoreCase_) ? -1 : 1;
            else
                order = text.size() < wanted_.size() ? -1 : text.size() > wanted_.size() ? 1 : 0;
        }
    }
    switch (op_) {
    case ZtOpFindConditionOp::kEqual:
        return order == 0;
    case ZtOpFindConditionOp::kNotEqual:
        return order != 0;
    case ZtOpFindConditionOp::kLess:
        return order < 0;
    case ZtOpFindConditionOp::kLessEqual:
        return order <= 0;
    case ZtOpFindConditionOp::kGreaterEqual:
        return order >= 0;
    case ZtOpFindConditionOp::kGreater:
        return order > 0;
    default:
        return false;
    }
}
