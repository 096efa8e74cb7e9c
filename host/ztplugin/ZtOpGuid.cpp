#include "ztplugin/ZtOpGuid.h"

namespace {

std::uint64_t sequence = 0;

// A bijective mix, so that consecutive counts give unrelated-looking, distinct values.
std::uint64_t Mix(std::uint64_t x) {
    x += 0x9e3779b97f4a7c15ull;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ull;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebull;
    return x ^ (x >> 31);
}

void AppendHex(std::string& out, std::uint64_t value, int digits) {
    static const char kDigits[] = "0123456789abcdef";
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        out += kDigits[(value >> shift) & 0xf];
}

} // namespace

ZtOpGuid ZtOpGuid::Create() {
    ++sequence;
    const std::uint64_t high = (Mix(sequence) & ~0xf000ull) | 0x4000u;
    const std::uint64_t low =
        (Mix(sequence ^ 0x5bd1e9955bd1e995ull) & 0x3fffffffffffffffull) | 0x8000000000000000ull;
    return {high, low};
}

ZtOpGuidSequenceMark::ZtOpGuidSequenceMark() : mark_(sequence) {}

ZtOpGuidSequenceMark::~ZtOpGuidSequenceMark() {
    sequence = mark_;
}

std::string ZtOpGuid::ToString() const {
    std::string out;
    out.reserve(36);
    AppendHex(out, high_ >> 32, 8);
    out += '-';
    AppendHex(out, (high_ >> 16) & 0xffff, 4);
    out += '-';
    AppendHex(out, high_ & 0xffff, 4);
    out += '-';
    AppendHex(out, low_ >> 48, 4);
    out += '-';
    AppendHex(out, low_ & 0xffffffffffffull, 12);
    return out;
}
