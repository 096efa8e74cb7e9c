#include "ztcore/ZtOcBoxHierarchy.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <limits>
#include <memory>

namespace {

constexpr int kMortonBitsPerAxis = 10;
constexpr std::uint32_t kMortonCells = 1u << kMortonBitsPerAxis;
constexpr int kRadixBits = 10;

// The next float towards minus or plus infinity from a finite one, by its bits: the
// library's nextafter is a call, and the build takes six a box.
float StepDown(float f) {
    if (f == 0.0f)
        return -std::numeric_limits<float>::denorm_min();
    auto bits = std::bit_cast<std::uint32_t>(f);
    bits = f > 0.0f ? bits - 1 : bits + 1;
    return std::bit_cast<float>(bits);
}

float StepUp(float f) {
    return -StepDown(-f);
}

// The float nearest below or above a double (that lies within the float range).
float Down(double value) {
    const auto f = static_cast<float>(value);
    return static_cast<double>(f) > value ? StepDown(f) : f;
}

float Up(double value) {
    const auto f = static_cast<float>(value);
    return static_cast<double>(f) < value ? StepUp(f) : f;
}

// The bits of `v` (below 2^10) spread to every third place.
std::uint32_t Spread(std::uint32_t v) {
    v = (v | (v << 16)) & 0x030000FFu;
    v = (v | (v << 8)) & 0x0300F00Fu;
    v = (v | (v << 4)) & 0x030C30C3u;
    v = (v | (v << 2)) & 0x09249249u;
    return v;
}

// Sorts `count` keys by their top 32 bits, stably, from `keys` to the keys behind them and
// back, a ten-bit digit a pass: after the third pass they stand behind.
void SortByCurve(std::uint64_t* keys, std::size_t count) {
    static_assert(3 * kRadixBits >= 3 * kMortonBitsPerAxis, "three digits cover the curve");
    constexpr std::uint64_t kDigit = (1u << kRadixBits) - 1;
    std::size_t from = 0;
    std::size_t to = count;
    for (int digit = 0; digit < 3; ++digit) {
        const int shift = 32 + digit * kRadixBits;
        std::size_t starts[(1u << kRadixBits) + 1] = {};
        for (std::size_t i = 0; i < count; ++i)
            ++starts[((keys[from + i] >> shift) & kDigit) + 1];
        for (std::size_t d = 1; d <= (1u << kRadixBits); ++d)
            starts[d] += starts[d - 1];
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t k = keys[from + i];
            keys[to + starts[(k >> shift) & kDigit]++] = k;
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

bool ZtOcBoxHierarchy::Holds(const ZtLBox3f& box) {
    const ZtLPos3f& low = box.GetMin();
    const ZtLPos3f& high = box.GetMax();
    for (int axis = 0; axis < 3; ++axis)
        if (!(low[axis] <= high[axis] && low[axis] >= -kLargestCoordinate &&
              high[axis] <= kLargestCoordinate))
            return false;
    return true;
}

ZtOcBoxHierarchy::Builder::Builder(std::size_t capacity) {
    entries_.reserve(capacity);
    std::fill(std::begin(low_), std::end(low_), std::numeric_limits<float>::infinity());
    std::fill(std::begin(high_), std::end(high_), -std::numeric_limits<float>::infinity());
}

void ZtOcBoxHierarchy::Builder::Add(const ZtLBox3f& box, std::uint32_t ordinal) {
    Entry& entry = entries_.emplace_back();
    for (int axis = 0; axis < 3; ++axis) {
        entry.low[axis] = Down(box.GetMin()[axis]);
        entry.high[axis] = Up(box.GetMax()[axis]);
        low_[axis] = std::min(low_[axis], entry.low[axis]);
        high_[axis] = std::max(high_[axis], entry.high[axis]);
    }
    entry.ordinal = ordinal;
}

ZtOcBoxHierarchy ZtOcBoxHierarchy::Builder::Finish() {
    ZtOcBoxHierarchy hierarchy;
    const std::size_t count = entries_.size();
    if (count == 0)
        return hierarchy;

    // The keys, curve position above and entry below, and room to sort them; left as
    // they come, since every one is written before it is read.
    const auto block = std::make_unique_for_overwrite<std::uint64_t[]>(2 * count);
    double scale[3];
    for (int axis = 0; axis < 3; ++axis) {
        const double span = static_cast<double>(high_[axis]) - low_[axis];
        scale[axis] = span > 0 ? (kMortonCells - 1) / span : 0.0;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const Entry& e = entries_[i];
        std::uint32_t code = 0;
        for (int axis = 0; axis < 3; ++axis) {
            const double centre = (static_cast<double>(e.low[axis]) + e.high[axis]) * 0.5;
            const double cell =
                std::clamp((centre - low_[axis]) * scale[axis], 0.0, double{kMortonCells - 1});
            code |= Spread(static_cast<std::uint32_t>(cell)) << axis;
        }
        block[i] = (std::uint64_t{code} << 32) | i;
    }
    SortByCurve(block.get(), count);
    const std::uint64_t* keys = block.get() + count;

    // Ranges are split top down, so that nodes come in depth-first order, each node's
    // first child right behind it. No split leaves a side of one item, so there are
    // fewer nodes than items (one for one item): room for that many, which is only
    // claimed as it is used, cut to size at the end.
    struct Range {
        std::uint32_t first;
        std::uint32_t count;
        std::uint32_t parent; // the node whose second child this is, or kNoOrdinal
    };
    hierarchy.nodes_.reserve(count);
    hierarchy.items_.reserve(count);
    std::vector<Range> ranges = {{0, static_cast<std::uint32_t>(count), kNoOrdinal}};
    while (!ranges.empty()) {
        const Range range = ranges.back();
        ranges.pop_back();
        const auto at = static_cast<std::uint32_t>(hierarchy.nodes_.size());
        if (range.parent != kNoOrdinal)
            hierarchy.nodes_[range.parent].link = at;
        // Within the room made: no node moves while a reference to it is held.
        assert(hierarchy.nodes_.size() < hierarchy.nodes_.capacity());
        Node& node = hierarchy.nodes_.emplace_back();
        if (range.count <= kLeafSize) {
            hierarchy.MakeLeaf(node, entries_, keys, range.first, range.count);
            continue;
        }
        const std::uint32_t left = SplitAt(keys, range.first, range.count);
        ranges.push_back({range.first + left, range.count - left, at});
        ranges.push_back({range.first, left, kNoOrdinal});
    }
    hierarchy.nodes_.shrink_to_fit();
    // Children come after their parents: an inner node's box and least ordinal are
    // gathered from its children's on the way back.
    for (auto at = static_cast<std::uint32_t>(hierarchy.nodes_.size()); at-- > 0;) {
        Node& node = hierarchy.nodes_[at];
        if (node.link & kLeafBit)
            continue;
        const Node& a = hierarchy.nodes_[at + 1];
        const Node& b = hierarchy.nodes_[node.link];
        for (int axis = 0; axis < 3; ++axis) {
            node.low[axis] = std::min(a.low[axis], b.low[axis]);
            node.high[axis] = std::max(a.high[axis], b.high[axis]);
        }
        node.minOrdinal = std::min(a.minOrdinal, b.minOrdinal);
    }
    entries_ = {};
    return hierarchy;
}

void ZtOcBoxHierarchy::MakeLeaf(Node& leaf, const std::vector<Builder::Entry>& entries,
                                const std::uint64_t* keys, std::uint32_t first,
                                std::uint32_t count) {
    std::fill(std::begin(leaf.low), std::end(leaf.low), std::numeric_limits<float>::infinity());
    std::fill(std::begin(leaf.high), std::end(leaf.high), -std::numeric_limits<float>::infinity());
    leaf.minOrdinal = kNoOrdinal;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Builder::Entry& e = entries[keys[first + i] & 0xFFFFFFFFu];
        for (int axis = 0; axis < 3; ++axis) {
            leaf.low[axis] = std::min(leaf.low[axis], e.low[axis]);
            leaf.high[axis] = std::max(leaf.high[axis], e.high[axis]);
        }
        leaf.minOrdinal = std::min(leaf.minOrdinal, e.ordinal);
        items_.push_back(e.ordinal);
    }
    leaf.link = kLeafBit | ((count - 1) << kCountShift) | first;
}

ZtLBox3f ZtOcBoxHierarchy::GetNodeBox(std::uint32_t node) const {
    const Node& n = nodes_[node];
    return ZtLBox3f(ZtLPos3f(n.low[0], n.low[1], n.low[2]),
                    ZtLPos3f(n.high[0], n.high[1], n.high[2]));
}
