#pragma once
#include "rules/ZtOdPdsCriterion.h"

#include <cstddef>
#include <string_view>

// What a reporting parse of a criterion says about its text, beside the parse itself:
// each function looks at what the parse took and reports where it differs from what the
// text's writer most likely meant. Offsets count from the criterion text's first
// character, which stands at `spot.offset` in its line.

// A list entry of Level or Color, which begins at `offset`.
void ZtOdPdsCheckNumberEntry(const ZtOdPdsCriterionSpot& spot, std::wstring_view entry,
                             std::size_t offset);
// A list with no entry at all.
void ZtOdPdsCheckEmptyList(const ZtOdPdsCriterionSpot& spot, std::wstring_view text);
// The text of a Data criterion, with the operator the parse took at `index` (npos for
// none) and the comparison it came to.
void ZtOdPdsCheckDataText(const ZtOdPdsCriterionSpot& spot, std::wstring_view text,
                          std::size_t index, std::wstring_view op, int comparison);
// The one character behind a criterion's word, at `offset`, skipped unread.
void ZtOdPdsCheckSeparator(const ZtOdPdsCriterionSpot& spot, std::wstring_view text,
                           std::size_t offset);
