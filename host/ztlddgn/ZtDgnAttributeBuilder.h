#pragma once
#include "ztlddgn/ZtDgnAttributeStore.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class ZtDgnModel;

// Gathers the rows of an attribute source for one model, in one pass over them, and makes
// the model's attribute store when all have come. The model is not touched meanwhile, so
// that a read that fails half-way leaves nothing of its rows behind.
class ZtDgnAttributeBuilder {
public:
    // Learns the key of every element of `model` that has a DMRS value.
    explicit ZtDgnAttributeBuilder(const ZtDgnModel& model);

    // Takes one row. A row whose key no element carries is counted and passed over; so is
    // one whose entity or occurrence lies outside what a linkage can hold. A text ends at
    // its first NUL byte, as the host's texts do. False, with the reason in `why`, when
    // the model can keep no more: 2^32 - 1 attributes or 4 GiB of distinct texts.
    bool AddRow(std::int64_t entity, std::int64_t occurrence, std::string_view name,
                std::string_view value, std::string* why);

    // The store of every row taken, named after `source`.
    std::unique_ptr<ZtDgnAttributeStore> Finish(std::string source);

private:
    // The number of `key` among the model's keys, or kNone.
    std::uint32_t KeyNumber(std::uint64_t key);
    // The pair of two text numbers.
    std::uint32_t Pair(std::uint32_t name, std::uint32_t value);

    std::unique_ptr<ZtDgnAttributeStore> store_;
    // The model's distinct keys in ascending order; a key's number is its place here.
    // Rows mostly come in key order, and then each is found next to the one before.
    std::vector<std::uint64_t> keys_;
    std::uint32_t lastKeyNumber_ = 0;
    // For each value, the last pair made with it: a value mostly goes with one name, and
    // then its pair is found without a search.
    std::vector<std::uint32_t> pairOfValue_;
    // Each attribute as it came: its key's number in the top 32 bits, its pair's below.
    std::vector<std::uint64_t> rows_;
};
