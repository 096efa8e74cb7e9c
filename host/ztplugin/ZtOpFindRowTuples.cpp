#include "ztplugin/ZtOpFindRowTuples.h"

namespace {

std::size_t SlotOfKey(const ZtOpFindRowTuples::Key& key, std::size_t mask) {
    std::uint64_t hash = 0;
    for (const std::uint32_t row : key)
        hash = (hash + row) * 0x9E3779B97F4A7C15ull;
    return static_cast<std::size_t>(hash >> 32) & mask;
}

} // namespace

std::uint32_t ZtOpFindRowTuples::TupleOf(const Key& key) {
    if (table_.empty())
        table_.resize(64);
    std::size_t at = SlotOfKey(key, table_.size() - 1);
    for (; table_[at] != 0; at = (at + 1) & (table_.size() - 1))
        if (keys_[table_[at] - 1] == key)
            return table_[at] - 1;
    if (keys_.size() == kMaxTuples)
        return kNoTuple;
    keys_.push_back(key);
    table_[at] = static_cast<std::uint32_t>(keys_.size());
    if (keys_.size() * 2 > table_.size()) {
        table_.assign(table_.size() * 2, 0);
        for (std::uint32_t k = 0; k < keys_.size(); ++k) {
            std::size_t to = SlotOfKey(keys_[k], table_.size() - 1);
            while (table_[to] != 0)
                to = (to + 1) & (table_.size() - 1);
            table_[to] = k + 1;
        }
    }
    return static_cast<std::uint32_t>(keys_.size() - 1);
}

void ZtOpFindRowTuples::Clear() {
    keys_.clear();
    table_.clear();
}
