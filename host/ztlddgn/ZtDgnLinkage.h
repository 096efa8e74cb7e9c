#pragma once
#include "ztlddgn/ZtDgnBytes.h"

#include <cstddef>
#include <cstdint>

// Attribute linkages: records at the end of an element, each starting with a header
// word. With the user-data bit (0x1000) clear a linkage is a four-word DMRS database
// link; with it set, the low byte counts the linkage's words after the header and the
// second word names the kind.
enum class ZtDgnLinkageKind {
    kDmrs,
    kFill,
    kAssociation,
    kXBase,
    kInformix,
    kSybase,
    kOdbc,
    kOracle,
    kRis,
    kUser, // a user linkage of another or no kind
};

// The kind's name in reports: "dmrs", "odbc", ...
const char* ZtDgnLinkageKindName(ZtDgnLinkageKind kind);

// The number of words of the linkage whose header word is `header`.
inline std::size_t ZtDgnLinkageLength(std::uint16_t header) {
    return (header & 0x1000) ? std::size_t{header & 0xFFu} + 1 : 4;
}

// The kind of the linkage whose words are `words[0..length)`.
ZtDgnLinkageKind ZtDgnClassifyLinkage(const std::uint16_t* words, std::size_t length);

// The number of leading words of a linkage area of `count` words (as read from the file,
// two bytes each) that whole linkages cover. Words behind them that are not all zero set
// `overrun`: a linkage there runs past the end of its element.
// Inline: the loader asks it once an element.
inline std::size_t ZtDgnMeasureLinkages(const unsigned char* area, std::size_t count,
                                        bool* overrun) {
    std::size_t at = 0;
    while (at < count) {
        const std::size_t length = ZtDgnLinkageLength(ZtDgnWord(area + 2 * at));
        if (length > count - at)
            break;
        at += length;
    }
    for (std::size_t rest = at; rest < count; ++rest)
        if (ZtDgnWord(area + 2 * rest) != 0) {
            *overrun = true;
            break;
        }
    return at;
}

// The DMRS value of the first DMRS linkage among well-formed linkage words that is not all
// zero, its first word in the top bits; 0 if there is none. Four zero words are padding,
// not a database link.
std::uint64_t ZtDgnFindDmrs(const std::uint16_t* words, std::size_t count);
