#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

// Distinct 64-bit numbers, each kept once and numbered from 0 in the order they first
// came: the keys of a model's database rows, and the pairs of texts that make attributes.
class ZtDgnNumberPool {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    // The number of `value`, added if it is new; kNone if the pool holds 2^32 - 1 already.
    std::uint32_t Intern(std::uint64_t value);
    // The number of `value`, or kNone if the pool does not hold it.
    std::uint32_t Find(std::uint64_t value) const;
    std::uint64_t Get(std::uint32_t id) const { return values_[id]; }
    std::size_t Size() const { return values_.size(); }
    // Memory the pool holds.
    std::size_t MemoryBytes() const;

    // Drops the lookup table and spare capacity: Intern and Find must not be called again.
    void Seal();

private:
    std::size_t Slot(std::uint64_t value) const;
    void Grow();

    std::vector<std::uint64_t> values_;
    // Open addressing, at most half full: a value's number plus 1, or 0 for a free slot.
    std::vector<std::uint32_t> slots_;
    int shift_ = 64; // 64 - log2 of the slot count
};
