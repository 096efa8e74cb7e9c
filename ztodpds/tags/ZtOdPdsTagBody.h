#pragma once
#include "ztutil/ZtUWideString.h"

#include <cstddef>
#include <string>

class ZtOdPdsBlock;

// The text work of a tag's body on import: cutting it out of its `text` block and
// widening its line ends for a comment, with buffers that keep their memory from one tag
// to the next.

// The most characters that the buffers kept from one tag for the next may hold room for:
// enough for any ordinary tag, and small beside the memory that a long text takes anyway.
constexpr std::size_t kZtOdPdsMostKeptCapacity = std::size_t{1} << 16;

// The body of a `text` value: all behind its first line end, which ends the count. The
// value is exchanged with `body` and the count is cut off there in place, so that a text
// is not copied and no memory is taken for it. False for a value without a line end,
// which leaves `body` as it was.
bool ZtOdPdsTakeTagBody(ZtOdPdsBlock& text, ZtUWideStringBuffer* body);

// The LFs of `text`.
std::size_t ZtOdPdsCountLineFeeds(const std::wstring& text);

// `text` with `rewrites` CRs before each of its `lineFeeds` LFs, in one pass into
// `rewritten` (whose memory is reused) at its final size.
void ZtOdPdsRewriteLineEnds(const std::wstring& text, std::size_t lineFeeds, std::size_t rewrites,
                            std::wstring* rewritten);

// Gives the memory of a text back when it holds room for more than kZtOdPdsMostKeptCapacity.
void ZtOdPdsReleaseIfLong(ZtUWideStringBuffer* text);
void ZtOdPdsReleaseIfLong(std::wstring* text);
