#pragma once
#include "ztlinear/ZtLAffine3f.h"
#include "ztobject/ZtOaUnit.h"

#include <cstdint>
#include <string>
#include <string_view>

// A number in `digits` significant digits, the one format of the readable summary and the
// page: ten are enough to read, without the noise of a unit conversion's last bits (the JSON
// has the exact values).
std::string ReadableNumber(double value, int digits = 10);
// A linear unit's short name ("m"), or "unit N" for a value outside the enumeration.
std::string UnitName(ZtOaUnit::Linear unit);
// A reference's placement in words, as the summary, the JSON and the page give it:
// "scaled from ft to m, turned 90° about Z, moved by (2.54, 1.27, 0) m". `transform` is
// the reference's; its model counts in `from`, the scene in `to`.
std::string PlacementWords(const ZtLAffine3f& transform, ZtOaUnit::Linear from,
                           ZtOaUnit::Linear to);
// A DMRS value as its four 16-bit words, most significant first: "0 12 101 0".
std::string DmrsWords(std::uint64_t dmrs);

// Text from the files of a run, fit for a terminal and a reader: its UTF-8 as it is, but
// each control character (C0, DEL and C1), each character that reorders text for display
// (bidirectional overrides, embeddings and isolates) and each line or paragraph separator
// shown as an escape, "\x1b" or "\u202e", and each byte that begins no valid UTF-8
// sequence as "\xNN", so that no file can move the cursor, clear the screen, set a
// window's title or turn round what a person reads. With `keepLineFeeds` LF and TAB
// stay, for text whose lines the caller made.
std::string ReadableText(std::string_view utf8, bool keepLineFeeds = false);
