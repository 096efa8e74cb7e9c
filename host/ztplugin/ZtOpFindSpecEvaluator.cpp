#include "ztplugin/ZtOpFindSpecEvaluator.h"

#include <charconv>
#include <cstring>
#include <string>
#include <string_view>

namespace {

using Op = ZtOpFindConditionOp;

bool SameName(const ZtUName* a, const ZtUName* b) {
    if (a == b)
        return true;
    return a && b && a->GetInternal() == b->GetInternal() && a->GetDisplay() == b->GetDisplay();
}

bool InCategory(const ZtOpFindProperty& property, const ZtUName* category) {
    return !category || SameName(property.category, category);
}

wchar_t Fold(wchar_t c, bool ignoreCase) {
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

// <0, 0 or >0 as `a` sorts before, with or after `b`.
int Compare(std::wstring_view a, std::wstring_view b, bool ignoreCase) {
    double x = 0.0;
    double y = 0.0;
    if (ParseDecimal(a, &x) && ParseDecimal(b, &y))
        return x < y ? -1 : x > y ? 1 : 0;
    const std::size_t common = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < common; ++i) {
        const wchar_t p = Fold(a[i], ignoreCase);
        const wchar_t q = Fold(b[i], ignoreCase);
        if (p != q)
            return p < q ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

bool ValueHolds(const ZtOpFindCondition& condition, const ZtUData& value) {
    const bool ignoreCase = condition.HasFlags(ZtOpFindConditionFlags::kIgnoreCase);
    std::wstring valueScratch;
    std::wstring wantedScratch;
    const std::wstring_view have = TextOf(value, valueScratch);
    const std::wstring_view wanted = TextOf(condition.GetValue(), wantedScratch);
    switch (condition.GetCondition()) {
    case Op::kWildcard:
        return ZtOpWildcardMatches(wanted.data(), wanted.size(), have.data(), have.size(),
                                   ignoreCase);
    case Op::kEqual:
        return Compare(have, wanted, ignoreCase) == 0;
    case Op::kNotEqual:
        return Compare(have, wanted, ignoreCase) != 0;
    case Op::kLess:
        return Compare(have, wanted, ignoreCase) < 0;
    case Op::kLessEqual:
        return Compare(have, wanted, ignoreCase) <= 0;
    case Op::kGreaterEqual:
        return Compare(have, wanted, ignoreCase) >= 0;
    case Op::kGreater:
        return Compare(have, wanted, ignoreCase) > 0;
    default:
        return false;
    }
}

bool HasCategory(const ZtOpFindTarget& target, const ZtUName* category) {
    if (!category)
        return false;
    for (std::size_t i = 0; i < target.GetNumFindProperties(); ++i)
        if (SameName(target.GetFindProperty(i).category, category))
            return true;
    return false;
}

bool HasProperty(const ZtOpFindTarget& target, const ZtOpFindCondition& condition) {
    for (std::size_t i = 0; i < target.GetNumFindProperties(); ++i) {
        const ZtOpFindProperty property = target.GetFindProperty(i);
        if (InCategory(property, condition.GetCategory()) &&
            SameName(property.name, condition.GetProperty()))
            return true;
    }
    return false;
}

bool ComparisonMatches(const ZtOpFindCondition& condition, const ZtOpFindTarget& target) {
    bool found = false;
    bool holds = false;
    for (std::size_t i = 0; i < target.GetNumFindProperties() && !holds; ++i) {
        const ZtOpFindProperty property = target.GetFindProperty(i);
        if (!InCategory(property, condition.GetCategory()) ||
            !SameName(property.name, condition.GetProperty()) || !property.value)
            continue;
        found = true;
        holds = ValueHolds(condition, *property.value);
    }
    if (condition.HasFlags(ZtOpFindConditionFlags::kNegate))
        return found && !holds;
    return holds;
}

} // namespace

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
        } else if (p < patternLength && (pattern[p] == L'?' || Fold(pattern[p], ignoreCase) ==
                                                                   Fold(text[t], ignoreCase))) {
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

bool ZtOpFindConditionMatches(const ZtOpFindCondition& condition, const ZtOpFindTarget& target) {
    switch (condition.GetCondition()) {
    case Op::kHasCategory:
        return HasCategory(target, condition.GetCategory());
    case Op::kHasNotCategory:
        return !HasCategory(target, condition.GetCategory());
    case Op::kHasProperty:
        return HasProperty(target, condition);
    case Op::kHasNotProperty:
        return !HasProperty(target, condition);
    case Op::kEqual:
    case Op::kNotEqual:
    case Op::kLess:
    case Op::kLessEqual:
    case Op::kGreaterEqual:
    case Op::kGreater:
    case Op::kWildcard:
        return ComparisonMatches(condition, target);
    default:
        return false;
    }
}

bool ZtOpFindSpecMatches(const ZtOpFindSpec& spec, const ZtOpFindTarget& target) {
    const std::size_t count = spec.GetNumConditions();
    std::size_t i = 0;
    while (i < count) {
        // One alternative: the conditions from i up to the next that opens one.
        bool meetsAll = true;
        std::size_t end = i + 1;
        while (end < count &&
               !spec.GetCondition(end).HasFlags(ZtOpFindConditionFlags::kNewAlternative))
            ++end;
        for (std::size_t k = i; k < end && meetsAll; ++k)
            meetsAll = ZtOpFindConditionMatches(spec.GetCondition(k), target);
        if (meetsAll)
            return true;
        i = end;
    }
    return false;
}
