#pragma once
#include <bit>
#include <cstdint>
#include <cstring>

// The value encodings of V7 design files. A word is 16 bits, low byte first; a 32-bit
// value is two words, the high word first.

inline std::uint16_t ZtDgnWord(const unsigned char* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

inline std::uint32_t ZtDgnUInt32(const unsigned char* p) {
    if constexpr (std::endian::native == std::endian::little) {
        // One load: the two words swap places.
        std::uint32_t value;
        std::memcpy(&value, p, sizeof value);
        return std::rotl(value, 16);
    } else {
        return (static_cast<std::uint32_t>(ZtDgnWord(p)) << 16) | ZtDgnWord(p + 2);
    }
}

inline std::int32_t ZtDgnInt32(const unsigned char* p) {
    return static_cast<std::int32_t>(ZtDgnUInt32(p));
}

// Element ranges are stored with the sign bit inverted (value + 2^31).
inline std::int32_t ZtDgnRangeValue(const unsigned char* p) {
    return static_cast<std::int32_t>(ZtDgnUInt32(p) ^ 0x80000000u);
}

// A VAX D-float: four words, the most significant first. Sign, an excess-128 exponent and
// a 55-bit fraction with a hidden leading bit; every such value fits an IEEE double.
inline double ZtDgnVaxDouble(const unsigned char* p) {
    const std::uint64_t vax = (static_cast<std::uint64_t>(ZtDgnWord(p)) << 48) |
                              (static_cast<std::uint64_t>(ZtDgnWord(p + 2)) << 32) |
                              (static_cast<std::uint64_t>(ZtDgnWord(p + 4)) << 16) |
                              ZtDgnWord(p + 6);
    const std::uint64_t exponent = (vax >> 55) & 0xFF;
    if (exponent == 0)
        return 0.0; // zero, or the reserved operand, which reads as zero
    const std::uint64_t sign = vax >> 63;
    const std::uint64_t fraction = vax & ((std::uint64_t{1} << 55) - 1);
    // 55 fraction bits become 52: any dropped bit sets the lowest kept one.
    std::uint64_t kept = fraction >> 3;
    if (fraction & 7)
        kept |= 1;
    const std::uint64_t bits = (sign << 63) | ((exponent + 894) << 52) | kept;
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
