#include "bcf/BcfGuid.h"

#include "ztplugin/ZtOpGuid.h"

#include <cstdint>

namespace {

// FNV-1a over the name with two different starting values gives the GUID's two halves.
std::uint64_t Hash(std::string_view name, std::uint64_t basis) {
    std::uint64_t hash = basis;
    for (const char c : name) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001b3ULL;
    }
    // Mixes the last characters into every bit.
    hash ^= hash >> 33;
    hash *= 0xff51afd7ed558ccdULL;
    hash ^= hash >> 33;
    return hash;
}

} // namespace

std::string BcfNamedGuid(std::string_view name) {
    std::uint64_t high = Hash(name, 0xcbf29ce484222325ULL);
    std::uint64_t low = Hash(name, 0x84222325cbf29ce4ULL);
    high = (high & ~0xF000ULL) | 0x8000ULL;
    low = (low & ~(0xC0ULL << 56)) | (0x80ULL << 56);
    return ZtOpGuid(high, low).ToString();
}
