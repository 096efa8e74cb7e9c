#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// Keys of a few numbers (the rows of the texts that an object holds where conditions read
// it), numbered in the order they are first met, so that what was worked out for one key
// can be kept under its number. Bounded: past kMaxTuples keys it gives kNoTuple.
class ZtOpFindRowTuples {
public:
    static constexpr std::size_t kWidth = 4;
    static constexpr std::uint32_t kNoTuple = ~std::uint32_t{0};
    static constexpr std::uint32_t kMaxTuples = std::uint32_t{1} << 18;
    using Key = std::array<std::uint32_t, kWidth>;

    // The number of `key`, given on first meeting; kNoTuple past the bound.
    std::uint32_t TupleOf(const Key& key);
    std::uint32_t GetNumTuples() const { return static_cast<std::uint32_t>(keys_.size()); }
    void Clear();

private:
    std::vector<Key> keys_;
    // Open addressing over a power-of-two table kept at most half full: a key's number
    // plus one, 0 where the slot is free.
    std::vector<std::uint32_t> table_;
};
