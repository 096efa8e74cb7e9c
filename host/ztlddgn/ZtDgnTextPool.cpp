#include "ztlddgn/ZtDgnTextPool.h"

#include <functional>
#include <limits>

namespace {

std::size_t Hash(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

} // namespace

std::size_t ZtDgnTextPool::Find(std::string_view text, std::size_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot& slot = slots_[at];
        if (slot.id == 0)
            return at;
        if (slot.hash != static_cast<std::uint32_t>(hash))
            continue;
        const std::string_view held = Get(slot.id - 1);
        // Not memcmp: an empty text may have no data pointer at all.
        if (held == text)
            return at;
    }
}

void ZtDgnTextPool::Grow() {
    std::vector<Slot> old;
    old.swap(slots_);
    slots_.assign(old.empty() ? 64 : 2 * old.size(), Slot{0, 0});
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.id == 0)
            continue;
        // The low bits kept are those that place the slot, as long as the table is under
        // 2^32 slots; past that the text is hashed again.
        std::size_t at = (mask >> 32 ? Hash(Get(slot.id - 1)) : slot.hash) & mask;
        while (slots_[at].id != 0)
            at = (at + 1) & mask;
        slots_[at] = slot;
    }
}

std::uint32_t ZtDgnTextPool::Intern(std::string_view text) {
    if (2 * (ends_.size() + 1) > slots_.size())
        Grow();
    const std::size_t hash = Hash(text);
    const std::size_t at = Find(text, hash);
    if (slots_[at].id != 0)
        return slots_[at].id - 1;
    constexpr std::size_t kLimit = std::numeric_limits<std::uint32_t>::max();
    if (text.size() > kLimit - bytes_.size() || ends_.size() >= kLimit - 1)
        return kFull;
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    ends_.push_back(static_cast<std::uint32_t>(bytes_.size()));
    slots_[at] = {static_cast<std::uint32_t>(ends_.size()), static_cast<std::uint32_t>(hash)};
    return static_cast<std::uint32_t>(ends_.size() - 1);
}

std::size_t ZtDgnTextPool::OverheadBytes() const {
    return (bytes_.capacity() - bytes_.size()) + ends_.capacity() * sizeof(std::uint32_t) +
           slots_.capacity() * sizeof(Slot);
}

void ZtDgnTextPool::Seal() {
    std::vector<Slot>().swap(slots_);
    bytes_.shrink_to_fit();
    ends_.shrink_to_fit();
}
