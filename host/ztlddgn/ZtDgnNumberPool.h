#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

// Distinct 64-bit numbers, each kept once and numbered from 0 in the order they first
// came: the pairs of texts that make attributes.
class ZtDgnNumberPool {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    // The number of `value`, added if it is new; kNone if the pool holds 2^32 - 1 already.
    std::uint32_t Intern(std::uint64_t value);
    std::uint64_t Get(std::uint32_t id) const { return values_[id]; }
    std::size_t Size() const { return values_.size(); }
    // Memory the pool holds.
    std::size_t MemoryBytes() const;

    // Drops the lookup table and spare capacity: Intern must not be called again.
    void Seal();

private:
    // The number of `value`, or kNone with `at` at the free slot where it would go.
    std::size_t Find(std::uint64_t value, std::size_t* at) const;
    void Grow();

    // Open addressing, at most half full. A slot holds the value itself beside its number,
    // so that a probe reads one place in memory.
    struct Slot {
        std::uint64_t value;
        std::uint32_t id; // the value's number plus 1; 0 for a free slot
    };

    std::vector<std::uint64_t> values_;
    std::vector<Slot> slots_;
    int shift_ = 64; // 64 - log2 of the slot count
};
