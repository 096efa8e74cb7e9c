#include "ztcore/ZtOcBoxHierarchy.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr int kMortonBitsPerAxis = 10;
constexpr std::uint32_t kMortonCells = 1u << kMortonBitsPerAxis;
constexpr int kRadixBits = 10;
constexpr std::uint16_t kSteps = 0xFFFF;

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

// The value of step `q` of the 65535 from `low` to `high`. Building and searching both
// go through this one function, so that what the build checked holds in a search.
double Fraction(float low, float high, std::uint16_t q) {
    if (q == kSteps)
        return high;
    return static_cast<double>(low) + q * ((static_cast<double>(high) - low) * (1.0 / kSteps));
}

// The steps of one axis of a leaf's box.
struct Steps {
    float low;
    float high;
    double perUnit; // steps a unit, for a first guess

    Steps(float l, float h) : low(l), high(h) {
        const double span = static_cast<double>(h) - l;
        perUnit = span > 0 ? kSteps / span : 0.0;
    }
    // The greatest step at or below `value`, and the least at or above it, for a value
    // between low and high: a first guess, then put right in whichever way rounding needs.
    // Step 0 gives low and the last step high, so both searches end.
    std::uint16_t Below(double value) const {
        auto q = Floor((value - low) * perUnit);
        while (q > 0 && Fraction(low, high, q) > value)
            --q;
        return q;
    }
    std::uint16_t Above(double value) const {
        auto q = Floor((value - low) * perUnit);
        if (q < kSteps && q < (value - low) * perUnit)
            ++q;
        while (q < kSteps && Fraction(low, high, q) < value)
            ++q;
        return q;
    }
    // The step at or below `q`, within the steps; a cast, as the library's floor is a call.
    static std::uint16_t Floor(double q) {
        if (!(q > 0.0))
            return 0;
        return q >= kSteps ? kSteps : static_cast<std::uint16_t>(q);
    }
};

// Keys are read and written through bytes: the block they live in holds items later.
std::uint64_t LoadKey(const unsigned char* keys, std::size_t k) {
    std::uint64_t value;
    std::memcpy(&value, keys + sizeof value * k, sizeof value);
    return value;
}

void StoreKey(unsigned char* keys, std::size_t k, std::uint64_t value) {
    std::memcpy(keys + sizeof value * k, &value, sizeof value);
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
void SortByCurve(unsigned char* keys, std::size_t count) {
    static_assert(3 * kRadixBits >= 3 * kMortonBitsPerAxis, "three digits cover the curve");
    constexpr std::uint64_t kDigit = (1u << kRadixBits) - 1;
    std::size_t from = 0;
    std::size_t to = count;
    for (int digit = 0; digit < 3; ++digit) {
        const int shift = 32 + digit * kRadixBits;
        std::size_t starts[(1u << kRadixBits) + 1] = {};
        for (std::size_t i = 0; i < count; ++i)
            ++starts[((LoadKey(keys, from + i) >> shift) & kDigit) + 1];
        for (std::size_t d = 1; d <= (1u << kRadixBits); ++d)
            starts[d] += starts[d - 1];
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t k = LoadKey(keys, from + i);
            StoreKey(keys, to + starts[(k >> shift) & kDigit]++, k);
        }
        std::swap(from, to);
    }
}

// Where to split a range of more than a leaf's items: where the first bit in which its
// sorted keys differ turns from 0 to 1, so that each side is a block of the curve; but
// where that leaves a side of one item, in the middle, so that no leaf is left with fewer
// than two and the nodes stay fewer than the items. Gives the size of the first side.
std::uint32_t SplitAt(const unsigned char* keys, std::uint32_t first, std::uint32_t count) {
    const std::uint64_t low = LoadKey(keys, first);
    const std::uint64_t high = LoadKey(keys, first + count - 1);
    const std::uint64_t bit = std::uint64_t{1} << (63 - std::countl_zero(low ^ high));
    // The keys differ (each holds its entry's number), and the bit is clear in the first
    // and set in the last: search for the first key with it set.
    std::uint32_t lo = 1, hi = count - 1;
    while (lo < hi) {
        const std::uint32_t mid = lo + (hi - lo) / 2;
        if (LoadKey(keys, first + mid) & bit)
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

    // The keys, curve position above and entry below, and room to sort them, in one
    // block that then takes the items: an item is as large as two keys, and the items
    // are written from the first on, each only after the keys up to the end of its leaf
    // have been read from the upper half, where the sort leaves them.
    hierarchy.items_.resize(count);
    auto* block = reinterpret_cast<unsigned char*>(hierarchy.items_.data());
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
        StoreKey(block, i, (std::uint64_t{code} << 32) | i);
    }
    SortByCurve(block, count);
    const unsigned char* keys = block + count * sizeof(std::uint64_t);

    // Ranges are split top down, so that nodes come in depth-first order, each node's
    // first child right behind it. Splitting is done twice, first only to count.
    struct Range {
        std::uint32_t first;
        std::uint32_t count;
        std::uint32_t parent; // the node whose second child this is, or kNoOrdinal
    };
    std::vector<Range> ranges;
    auto walk = [&](auto&& visit) {
        ranges.push_back({0, static_cast<std::uint32_t>(count), kNoOrdinal});
        while (!ranges.empty()) {
            const Range range = ranges.back();
            ranges.pop_back();
            if (visit(range))
                continue;
            const std::uint32_t left = SplitAt(keys, range.first, range.count);
            const auto node = static_cast<std::uint32_t>(hierarchy.nodes_.size() - 1);
            ranges.push_back({range.first + left, range.count - left, node});
            ranges.push_back({range.first, left, kNoOrdinal});
        }
    };
    std::size_t nodes = 0;
    // Counting makes no nodes; the one stand-in lets the walk name a parent.
    hierarchy.nodes_.emplace_back();
    walk([&nodes](const Range& range) {
        ++nodes;
        return range.count <= kLeafSize;
    });
    hierarchy.nodes_.clear();
    hierarchy.nodes_.reserve(nodes);
    walk([&](const Range& range) {
        const auto at = static_cast<std::uint32_t>(hierarchy.nodes_.size());
        if (range.parent != kNoOrdinal)
            hierarchy.nodes_[range.parent].link = at;
        Node& node = hierarchy.nodes_.emplace_back();
        if (range.count > kLeafSize)
            return false;
        hierarchy.MakeLeaf(node, entries_, keys, range.first, range.count);
        return true;
    });
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
                                const unsigned char* keys, std::uint32_t first,
                                std::uint32_t count) {
    const Builder::Entry* members[kLeafSize];
    std::fill(std::begin(leaf.low), std::end(leaf.low), std::numeric_limits<float>::infinity());
    std::fill(std::begin(leaf.high), std::end(leaf.high), -std::numeric_limits<float>::infinity());
    leaf.minOrdinal = kNoOrdinal;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Builder::Entry& e = entries[LoadKey(keys, first + i) & 0xFFFFFFFFu];
        members[i] = &e;
        for (int axis = 0; axis < 3; ++axis) {
            leaf.low[axis] = std::min(leaf.low[axis], e.low[axis]);
            leaf.high[axis] = std::max(leaf.high[axis], e.high[axis]);
        }
        leaf.minOrdinal = std::min(leaf.minOrdinal, e.ordinal);
    }
    leaf.link = kLeafBit | ((count - 1) << kCountShift) | first;
    const Steps steps[3] = {
        {leaf.low[0], leaf.high[0]}, {leaf.low[1], leaf.high[1]}, {leaf.low[2], leaf.high[2]}};
    for (std::uint32_t i = 0; i < count; ++i) {
        Item item;
        item.ordinal = members[i]->ordinal;
        for (int axis = 0; axis < 3; ++axis) {
            item.low[axis] = steps[axis].Below(members[i]->low[axis]);
            item.high[axis] = steps[axis].Above(members[i]->high[axis]);
        }
        std::memcpy(static_cast<void*>(&items_[first + i]), &item, sizeof item);
    }
}

ZtLBox3f ZtOcBoxHierarchy::GetNodeBox(std::uint32_t node) const {
    const Node& n = nodes_[node];
    return ZtLBox3f(ZtLPos3f(n.low[0], n.low[1], n.low[2]),
                    ZtLPos3f(n.high[0], n.high[1], n.high[2]));
}

ZtLBox3f ZtOcBoxHierarchy::GetItemBox(std::uint32_t item, const ZtLBox3f& leafBox) const {
    const Item& it = items_[item];
    double low[3], high[3];
    for (int axis = 0; axis < 3; ++axis) {
        const auto l = static_cast<float>(leafBox.GetMin()[axis]);
        const auto h = static_cast<float>(leafBox.GetMax()[axis]);
        low[axis] = Fraction(l, h, it.low[axis]);
        high[axis] = Fraction(l, h, it.high[axis]);
    }
    return ZtLBox3f(ZtLPos3f(low[0], low[1], low[2]), ZtLPos3f(high[0], high[1], high[2]));
}
