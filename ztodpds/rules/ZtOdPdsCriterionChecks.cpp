#include "rules/ZtOdPdsCriterionChecks.h"

#include "rules/ZtOdPdsRuleReporter.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cwchar>
#include <string>

namespace {

bool IsBlank(wchar_t c) {
    return ZtUIsWhiteSpace(c);
}

void Report(const ZtOdPdsCriterionSpot& spot, ZtOdPdsCheck check, std::size_t offset,
            std::wstring_view text, std::int64_t figure0 = 0, std::int64_t figure1 = 0) {
    spot.reporter->Report(check, spot.reporter->At(spot.offset + offset), text, figure0, figure1);
}

} // namespace

void ZtOdPdsCheckNumberEntry(const ZtOdPdsCriterionSpot& spot, std::wstring_view entry,
                             std::size_t offset) {
    const std::wstring_view trimmed = ZtUTrimmedView(entry);
    const std::wstring number(trimmed);
    const auto first = static_cast<std::size_t>(trimmed.data() - entry.data());
    wchar_t* end = nullptr;
    errno = 0;
    const long long value = std::wcstoll(number.c_str(), &end, 10);
    const std::int32_t read = ZtOdPdsParseInt32(number.c_str());
    int kind;
    if (end == number.c_str())
        kind = 0;
    else if (*end != L'\0')
        kind = 1;
    else if (errno == ERANGE || value != read)
        kind = 2;
    else
        return;
    Report(spot, ZtOdPdsCheck::kListNumber, offset + first, number, read, kind);
}

void ZtOdPdsCheckEmptyList(const ZtOdPdsCriterionSpot& spot, std::wstring_view text) {
    Report(spot, ZtOdPdsCheck::kCriterion, 0, text, 2);
}

void ZtOdPdsCheckDataText(const ZtOdPdsCriterionSpot& spot, std::wstring_view text,
                          std::size_t index, std::wstring_view op, int comparison) {
    if (index == std::wstring_view::npos) {
        Report(spot, ZtOdPdsCheck::kDataOperator, 0, text, 0);
        return;
    }
    // An operator character that stands before the one taken was meant as the operator.
    const std::size_t first = text.find_first_of(L"<>=");
    if (first < index)
        Report(spot, ZtOdPdsCheck::kDataOperator, index, op, 1);
    else if (comparison == ZtOdPdsDataCriterion::kWildcard && op != L"=")
        Report(spot, ZtOdPdsCheck::kDataOperator, index, op, 2);

    // Two characters before the operator are separators: what is not a blank among them
    // is lost from the attribute, and a blank in front of it stays in it.
    const std::size_t separators = index >= 2 ? index - 2 : 0;
    const std::wstring_view attribute = text.substr(0, separators);
    std::size_t lost = 0;
    std::size_t lostAt = index;
    for (std::size_t i = separators; i < index; ++i)
        if (!IsBlank(text[i])) {
            lostAt = lost == 0 ? i : lostAt;
            ++lost;
        }
    if (lost > 0)
        Report(spot, ZtOdPdsCheck::kDataAttribute, lostAt, attribute,
               static_cast<std::int64_t>(lost));
    else if (attribute.empty() || IsBlank(attribute.front()) || IsBlank(attribute.back()))
        Report(spot, ZtOdPdsCheck::kDataAttribute, 0, attribute, 0);

    // One character behind the operator is a separator.
    const std::size_t separator = index + op.size();
    if (separator < text.size() && !IsBlank(text[separator]))
        Report(spot, ZtOdPdsCheck::kDataValue, separator,
               text.substr(std::min(separator + 1, text.size())), 0);
    else if (separator + 1 >= text.size())
        Report(spot, ZtOdPdsCheck::kDataValue, separator, {}, 1);
}

void ZtOdPdsCheckSeparator(const ZtOdPdsCriterionSpot& spot, std::wstring_view text,
                           std::size_t offset) {
    if (offset < text.size() && text[offset] != L' ')
        Report(spot, ZtOdPdsCheck::kSeparator, offset, text.substr(offset, 1));
}
