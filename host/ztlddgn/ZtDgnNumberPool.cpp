#include "ztlddgn/ZtDgnNumberPool.h"

std::size_t ZtDgnNumberPool::Find(std::uint64_t value, std::size_t* at) const {
    // Fibonacci hashing: the top bits of the product spread neighbouring keys far apart.
    const std::size_t mask = slots_.size() - 1;
    for (*at = static_cast<std::size_t>((value * 0x9E3779B97F4A7C15ull) >> shift_);;
         *at = (*at + 1) & mask) {
        const Slot& slot = slots_[*at];
        if (slot.id == 0)
            return kNone;
        if (slot.value == value)
            return slot.id - 1;
    }
}

void ZtDgnNumberPool::Grow() {
    const std::size_t count = slots_.empty() ? 64 : 2 * slots_.size();
    slots_.assign(count, Slot{0, 0});
    shift_ = 64;
    for (std::size_t n = count; n > 1; n >>= 1)
        --shift_;
    for (std::size_t i = 0; i < values_.size(); ++i) {
        std::size_t at;
        Find(values_[i], &at);
        slots_[at] = {values_[i], static_cast<std::uint32_t>(i + 1)};
    }
}

std::uint32_t ZtDgnNumberPool::Intern(std::uint64_t value) {
    if (2 * (values_.size() + 1) > slots_.size())
        Grow();
    std::size_t at;
    if (const std::size_t found = Find(value, &at); found != kNone)
        return static_cast<std::uint32_t>(found);
    if (values_.size() >= kNone - 1)
        return kNone;
    values_.push_back(value);
    slots_[at] = {value, static_cast<std::uint32_t>(values_.size())};
    return static_cast<std::uint32_t>(values_.size() - 1);
}

std::size_t ZtDgnNumberPool::MemoryBytes() const {
    return values_.capacity() * sizeof(std::uint64_t) + slots_.capacity() * sizeof(Slot);
}

void ZtDgnNumberPool::Seal() {
    std::vector<Slot>().swap(slots_);
    values_.shrink_to_fit();
}
