#pragma once
#include <cstdint>

// The attribute by which the host's DGN loader attaches an element's DMRS value.
constexpr const char* kZtOdPdsDmrsAttribute = "ZtDgnDMRSAttribute";

// The DMRS value of an element, a 64-bit database key, in the four 16-bit words that the
// tag files write: word0 holds the top bits.
struct ZtOdPdsLinkage {
    std::uint16_t word0 = 0;
    std::uint16_t word1 = 0;
    std::uint16_t word2 = 0;
    std::uint16_t word3 = 0;

    bool IsNull() const { return (word0 | word1 | word2 | word3) == 0; }
    void Set(std::uint64_t value) {
        word0 = static_cast<std::uint16_t>(value >> 48);
        word1 = static_cast<std::uint16_t>(value >> 32);
        word2 = static_cast<std::uint16_t>(value >> 16);
        word3 = static_cast<std::uint16_t>(value);
    }
};
