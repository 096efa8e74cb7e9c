#include "ztcore/ZtOcBoxHierarchy.h"

#include "ztutil/ZtUHugePages.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>

namespace {

constexpr int kMortonBitsPerAxis = 10;
constexpr std::uint32_t kMortonCells = 1u << kMortonBitsPerAxis;
constexpr int kRadixBits = 10;

// A float below or above a double (that lies within the float range), within two steps
// of the float nearest to it. The conversion rounds to nearest, up to half a step either
// way; a margin of the float's magnitude times 2^-23 is at least one step (and the least
// float past zero where the float is all but zero), so that the margin taken off or
// added always reaches past the double. No compare, no branch: a node's box may grow by a
// step or two, which changes no search's answer.
float Margin(float f) {
    return std::fabs(f) * 0x1p-23f + std::numeric_limits<float>::denorm_min();
}

float Down(double value) {
    const auto f = static_cast<float>(value);
    return f - Margin(f);
}

float Up(double value) {
    const auto f = static_cast<float>(value);
    return f + Margin(f);
}

// The bits of each value below 2^10 spread to every third place.
constexpr std::array<std::uint32_t, 1u << kMortonBitsPerAxis> kSpread = [] {
    std::array<std::uint32_t, 1u << kMortonBitsPerAxis> spread{};
    for (std::uint32_t v = 0; v < spread.size(); ++v)
        for (int bit = 0; bit < kMortonBitsPerAxis; ++bit)
            spread[v] |= ((v >> bit) & 1u) << (3 * bit);
    return spread;
}();

constexpr std::uint64_t kDigit = (1u << kRadixBits) - 1;
constexpr std::size_t kDigits = std::size_t{1} << kRadixBits;

// How many keys have each value of each ten-bit digit of the curve position, each count
// one place behind its digit's, so that summing them gives where each digit's keys start.
using DigitCounts = std::size_t[3][kDigits + 1];

void CountDigits(DigitCounts& counts, std::uint32_t code) {
    ++counts[0][(code & kDigit) + 1];
    ++counts[1][((code >> kRadixBits) & kDigit) + 1];
    ++counts[2][((code >> (2 * kRadixBits)) & kDigit) + 1];
}

// Sorts `count` keys by their top 32 bits, stably, from `keys` to the keys behind them and
// back, a ten-bit digit a pass: after the third pass they stand behind. `counts` are their
// digits' counts, taken as the keys were made.
void SortByCurve(std::uint64_t* keys, std::size_t count, DigitCounts& counts) {
    static_assert(3 * kRadixBits >= 3 * kMortonBitsPerAxis, "three digits cover the curve");
    std::size_t from = 0;
    std::size_t to = count;
    for (int digit = 0; digit < 3; ++digit) {
        std::size_t* at = counts[digit];
        for (std::size_t d = 1; d <= kDigits; ++d)
            at[d] += at[d - 1];
        const int shift = 32 + digit * kRadixBits;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t k = keys[from + i];
            keys[to + at[(k >> shift) & kDigit]++] = k;
        }
        std::swap(from, to);
    }
}

// Where to split a range of more than a leaf's items: where the first bit in which its
// sorted keys differ turns from 0 to 1, so that each side is a block of the curve; but
// where that leaves a side of one item, in the middle, so that no leaf is left with fewer
// than two and the nodes stay fewer than the items. Gives the size of the first side.
std::uint32_t SplitAt(const std::uint64_t* keys, std::uint32_t first, std::uint32_t count) {
    const std::uint64_t low = keys[first];
    const std::uint64_t high = keys[first + count - 1];
    const std::uint64_t bit = std::uint64_t{1} << (63 - std::countl_zero(low ^ high));
    // The keys differ (each holds its entry's number), and the bit is clear in the first
    // and set in the last: search for the first key with it set.
    std::uint32_t lo = 1, hi = count - 1;
    while (lo < hi) {
        const std::uint32_t mid = lo + (hi - lo) / 2;
        if (keys[first + mid] & bit)
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo < 2 || count - lo < 2 ? count / 2 : lo;
}

} // namespace

ZtOcBoxHierarchy::Builder::Builder(std::size_t capacity) {
    // The build's large arrays are written once through: on huge pages where the system
    // has them, a fault for each 2 MiB rather than each 4 KiB.
    entries_.reserve(capacity);
    ZtUAdviseHugePages(entries_.data(), capacity * sizeof(Entry));
    std::fill(std::begin(low_), std::end(low_), std::numeric_limits<float>::infinity());
    std::fill(std::begin(high_), std::end(high_), -std::numeric_limits<float>::infinity());
}

void ZtOcBoxHierarchy::Builder::Add(const ZtLBox3f& box, std::uint32_t ordinal) {
    ZtLBox3f bounds;
    AddRun(&box, 1, ordinal, bounds);
}

bool ZtOcBoxHierarchy::Builder::AddRun(const ZtLBox3f* boxes, std::size_t count,
                                       std::uint32_t firstOrdinal, ZtLBox3f& bounds) {
    if (count == 0)
        return true;
    // One pass, without a branch a box: the run's bounds, and whether each box is in
    // order (which no NaN is); then whether the bounds are held. A run that turns out not
    // to be is taken back.
    const std::size_t before = entries_.size();
    bool ordered = true;
    ZtLPos3f low = boxes[0].GetMin();
    ZtLPos3f high = boxes[0].GetMax();
    for (std::size_t i = 0; i < count; ++i) {
        const ZtLPos3f& min = boxes[i].GetMin();
        const ZtLPos3f& max = boxes[i].GetMax();
        ordered &= (min.x <= max.x) & (min.y <= max.y) & (min.z <= max.z);
        low.SetValue(std::min(low.x, min.x), std::min(low.y, min.y), std::min(low.z, min.z));
        high.SetValue(std::max(high.x, max.x), std::max(high.y, max.y), std::max(high.z, max.z));
        entries_.push_back({{Down(min.x), Down(min.y), Down(min.z)},
                            {Up(max.x), Up(max.y), Up(max.z)},
                            static_cast<std::uint32_t>(firstOrdinal + i)});
    }
    const ZtLBox3f run(low, high);
    if (!ordered || !Holds(run)) {
        entries_.resize(before);
        return false;
    }
    bounds.Extend(run);
    // Rounding keeps the order of values: the floats' bounds are the bounds' floats.
    for (int axis = 0; axis < 3; ++axis) {
        low_[axis] = std::min(low_[axis], Down(low[axis]));
        high_[axis] = std::max(high_[axis], Up(high[axis]));
    }
    return true;
}

ZtOcBoxHierarchy ZtOcBoxHierarchy::Builder::Finish() {
    ZtOcBoxHierarchy hierarchy;
    const std::size_t count = entries_.size();
    if (count == 0)
        return hierarchy;

    // The keys, curve position above and entry below, and room to sort them; left as
    // they come, since every one is written before it is read.
    const auto block = std::make_unique_for_overwrite<std::uint64_t[]>(2 * count);
    ZtUAdviseHugePages(block.get(), 2 * count * sizeof(std::uint64_t));
    // A box's cell on each axis from the sum of its ends, which is twice its centre.
    double halfScale[3];
    double twiceLow[3];
    for (int axis = 0; axis < 3; ++axis) {
        const double span = static_cast<double>(high_[axis]) - low_[axis];
        halfScale[axis] = span > 0 ? (kMortonCells - 1) / span * 0.5 : 0.0;
        twiceLow[axis] = 2.0 * low_[axis];
    }
    auto cell = [&](const Entry& e, int axis) {
        const double at =
            ((static_cast<double>(e.low[axis]) + e.high[axis]) - twiceLow[axis]) * halfScale[axis];
        return kSpread[static_cast<std::uint32_t>(at <= 0.0 ? 0.0
                                                  : at >= kMortonCells - 1
                                                      ? double{kMortonCells - 1}
                                                      : at)];
    };
    DigitCounts counts = {};
    for (std::size_t i = 0; i < count; ++i) {
        const Entry& e = entries_[i];
        const std::uint32_t code = cell(e, 0) | cell(e, 1) << 1 | cell(e, 2) << 2;
        CountDigits(counts, code);
        block[i] = (std::uint64_t{code} << 32) | i;
    }
    SortByCurve(block.get(), count, counts);

    // No split leaves a side of one item, so there are fewer nodes than items (one for
    // one item): room for that many, cut to those made at the end.
    hierarchy.nodes_.reset(static_cast<Node*>(std::malloc(count * sizeof(Node))));
    if (!hierarchy.nodes_)
        throw std::bad_alloc();
    ZtUAdviseHugePages(hierarchy.nodes_.get(), count * sizeof(Node));
    hierarchy.items_ = std::make_unique_for_overwrite<std::uint32_t[]>(count);
    ZtUAdviseHugePages(hierarchy.items_.get(), count * sizeof(std::uint32_t));
    hierarchy.itemCount_ = count;
    hierarchy.Build(entries_.data(), block.get() + count, 0, static_cast<std::uint32_t>(count));
    // The C library cuts a block in place; where it can't, the room stays.
    if (void* cut = std::realloc(hierarchy.nodes_.get(), hierarchy.nodeCount_ * sizeof(Node))) {
        static_cast<void>(hierarchy.nodes_.release());
        hierarchy.nodes_.reset(static_cast<Node*>(cut));
    }
    entries_ = {};
    return hierarchy;
}

void ZtOcBoxHierarchy::Build(const Builder::Entry* entries, const std::uint64_t* keys,
                             std::uint32_t first, std::uint32_t count) {
    // Nodes come in depth-first order, each node's first child right behind it. Each
    // split either lengthens the common start of its range's keys or halves the range,
    // so that the recursion stays below 100 deep.
    const auto at = static_cast<std::uint32_t>(nodeCount_++);
    if (count <= kLeafSize) {
        MakeLeaf(nodes_[at], entries, keys, first, count);
        return;
    }
    const std::uint32_t left = SplitAt(keys, first, count);
    Build(entries, keys, first, left);
    const auto second = static_cast<std::uint32_t>(nodeCount_);
    Build(entries, keys, first + left, count - left);
    // Gathered from the children once they are made, while they are still near.
    Node& node = nodes_[at];
    const Node& a = nodes_[at + 1];
    const Node& b = nodes_[second];
    for (int axis = 0; axis < 3; ++axis) {
        node.low[axis] = std::min(a.low[axis], b.low[axis]);
        node.high[axis] = std::max(a.high[axis], b.high[axis]);
    }
    node.link = second;
    node.minOrdinal = std::min(a.minOrdinal, b.minOrdinal);
}

void ZtOcBoxHierarchy::MakeLeaf(Node& leaf, const Builder::Entry* entries,
                                const std::uint64_t* keys, std::uint32_t first,
                                std::uint32_t count) {
    const Builder::Entry& e0 = entries[keys[first] & 0xFFFFFFFFu];
    for (int axis = 0; axis < 3; ++axis) {
        leaf.low[axis] = e0.low[axis];
        leaf.high[axis] = e0.high[axis];
    }
    leaf.minOrdinal = e0.ordinal;
    items_[first] = e0.ordinal;
    for (std::uint32_t i = 1; i < count; ++i) {
        const Builder::Entry& e = entries[keys[first + i] & 0xFFFFFFFFu];
        for (int axis = 0; axis < 3; ++axis) {
            leaf.low[axis] = std::min(leaf.low[axis], e.low[axis]);
            leaf.high[axis] = std::max(leaf.high[axis], e.high[axis]);
        }
        leaf.minOrdinal = std::min(leaf.minOrdinal, e.ordinal);
        items_[first + i] = e.ordinal;
    }
    leaf.link = kLeafBit | ((count - 1) << kCountShift) | first;
}
