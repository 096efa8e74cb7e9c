#include "ztlddgn/ZtDgnNumberPool.h"

std::size_t ZtDgnNumberPool::Slot(std::uint64_t value) const {
    // Fibonacci hashing: the top bits of the product spread neighbouring keys far apart.
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = static_cast<std::size_t>((value * 0x9E3779B97F4A7C15ull) >> shift_);;
         at = (at + 1) & mask) {
        const std::uint32_t entry = slots_[at];
        if (entry == 0 || values_[entry - 1] == value)
            return at;
    }
}

void ZtDgnNumberPool::Grow() {
    const std::size_t count = slots_.empty() ? 64 : 2 * slots_.size();
    slots_.assign(count, 0);
    shift_ = 64;
    for (std::size_t n = count; n > 1; n >>= 1)
        --shift_;
    for (std::size_t i = 0; i < values_.size(); ++i)
        slots_[Slot(values_[i])] = static_cast<std::uint32_t>(i + 1);
}

std::uint32_t ZtDgnNumberPool::Intern(std::uint64_t value) {
    if (2 * (values_.size() + 1) > slots_.size())
        Grow();
    const std::size_t at = Slot(value);
    if (slots_[at] != 0)
        return slots_[at] - 1;
    if (values_.size() >= kNone - 1)
        return kNone;
    values_.push_back(value);
    slots_[at] = static_cast<std::uint32_t>(values_.size());
    return static_cast<std::uint32_t>(values_.size() - 1);
}

std::uint32_t ZtDgnNumberPool::Find(std::uint64_t value) const {
    if (slots_.empty())
        return kNone;
    const std::uint32_t entry = slots_[Slot(value)];
    return entry == 0 ? kNone : entry - 1;
}

std::size_t ZtDgnNumberPool::MemoryBytes() const {
    return values_.capacity() * sizeof(std::uint64_t) + slots_.capacity() * sizeof(std::uint32_t);
}

void ZtDgnNumberPool::Seal() {
    std::vector<std::uint32_t>().swap(slots_);
    values_.shrink_to_fit();
}
