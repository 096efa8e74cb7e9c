#pragma once

// UTF-16 surrogate pairs, the one place their arithmetic is written. Units are taken as
// unsigned values of 16 bits; a code point above the basic plane takes two units.
namespace ZtUUtf16 {

constexpr char32_t kFirstSupplementary = 0x10000;

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
constexpr bool IsSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}
// The code point of a high and a low surrogate.
constexpr char32_t Combine(char32_t high, char32_t low) {
    return kFirstSupplementary + ((high - 0xD800) << 10) + (low - 0xDC00);
}
// The two units of a code point at or above kFirstSupplementary.
constexpr char32_t HighOf(char32_t codePoint) {
    return 0xD800 + ((codePoint - kFirstSupplementary) >> 10);
}
constexpr char32_t LowOf(char32_t codePoint) {
    return 0xDC00 + ((codePoint - kFirstSupplementary) & 0x3FF);
}

static_assert(Combine(HighOf(0x10FFFF), LowOf(0x10FFFF)) == 0x10FFFF);
static_assert(HighOf(0x1F600) == 0xD83D && LowOf(0x1F600) == 0xDE00);

} // namespace ZtUUtf16
