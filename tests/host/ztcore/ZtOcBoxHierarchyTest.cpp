#include "ztcore/ZtOcBoxHierarchy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

bool Holds(const ZtLBox3f& outer, const ZtLBox3f& inner) {
    for (int axis = 0; axis < 3; ++axis)
        if (outer.GetMin()[axis] > inner.GetMin()[axis] ||
            outer.GetMax()[axis] < inner.GetMax()[axis])
            return false;
    return true;
}

// Walks the whole hierarchy and checks what a search relies on: every box added comes
// back once, in a leaf whose box holds it; every node's box holds what is below it and knows its
// least ordinal; leaves hold one to four boxes; the depth stays within a search's stack.
void CheckHierarchy(const std::vector<ZtLBox3f>& boxes, const std::vector<std::uint32_t>& ordinals,
                    const ZtOcBoxHierarchy& hierarchy) {
    ASSERT_EQ(hierarchy.GetNumItems(), boxes.size());
    std::vector<int> seen(boxes.size());
    struct Frame {
        std::uint32_t node;
        int depth;
    };
    std::vector<Frame> stack = {{ZtOcBoxHierarchy::kRoot, 1}};
    int deepest = 0;
    // The least ordinal below each node, gathered on the way down from its items.
    auto leastBelow = [&](std::uint32_t node, auto&& self) -> std::uint32_t {
        if (!hierarchy.IsLeaf(node))
            return std::min(self(hierarchy.GetFirstChild(node), self),
                            self(hierarchy.GetSecondChild(node), self));
        std::uint32_t least = ZtOcBoxHierarchy::kNoOrdinal;
        const std::uint32_t first = hierarchy.GetFirstItem(node);
        for (std::uint32_t i = first; i < first + hierarchy.GetNumLeafItems(node); ++i)
            least = std::min(least, hierarchy.GetOrdinal(i));
        return least;
    };
    while (!stack.empty()) {
        const Frame at = stack.back();
        stack.pop_back();
        deepest = std::max(deepest, at.depth);
        const ZtLBox3f box = hierarchy.GetNodeBox(at.node);
        EXPECT_EQ(hierarchy.GetMinOrdinal(at.node), leastBelow(at.node, leastBelow));
        if (!hierarchy.IsLeaf(at.node)) {
            for (std::uint32_t child :
                 {hierarchy.GetFirstChild(at.node), hierarchy.GetSecondChild(at.node)}) {
                EXPECT_TRUE(Holds(box, hierarchy.GetNodeBox(child)));
                stack.push_back({child, at.depth + 1});
            }
            continue;
        }
        const std::uint32_t count = hierarchy.GetNumLeafItems(at.node);
        EXPECT_TRUE(count >= 1 && count <= ZtOcBoxHierarchy::kLeafSize);
        const std::uint32_t first = hierarchy.GetFirstItem(at.node);
        for (std::uint32_t i = first; i < first + count; ++i) {
            const auto at = std::find(ordinals.begin(), ordinals.end(), hierarchy.GetOrdinal(i));
            ASSERT_NE(at, ordinals.end());
            const auto k = static_cast<std::size_t>(at - ordinals.begin());
            ++seen[k];
            EXPECT_TRUE(Holds(box, boxes[k])) << "box " << k << " is not held by its leaf";
        }
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), static_cast<long>(boxes.size()));
    EXPECT_LT(deepest, 99) << "a search's stack holds 100";
}

ZtOcBoxHierarchy Build(const std::vector<ZtLBox3f>& boxes,
                       const std::vector<std::uint32_t>& ordinals) {
    ZtOcBoxHierarchy::Builder builder(boxes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i)
        builder.Add(boxes[i], ordinals[i]);
    return builder.Finish();
}

// Boxes of every kind a model holds: spread wide and bunched, points, flat ones, far from
// the origin, and many exactly alike (one centre for all, which the curve can't split).
TEST(ZtOcBoxHierarchy, KeepsEveryBoxWithinWhatItGivesBack) {
    std::mt19937 random(7);
    auto uniform = [&](double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(random);
    };
    struct Shape {
        const char* what;
        double centre; // spread of the centres
        double size;   // largest side
        double offset; // where they lie
        std::size_t count;
    };
    const Shape shapes[] = {
        {"spread", 1000, 5, 0, 5000},    {"points", 10, 0, 0, 3000},
        {"far out", 50, 1, 3.5e7, 4000}, {"huge", 1e29, 1e29, 0, 500},
        {"all alike", 0, 1, 0.1, 2000},  {"one", 0, 1, 0, 1},
        {"a leaf", 1, 1, 0, 4},          {"tiny ones", 1e-6, 1e-7, 1, 3000},
    };
    for (const Shape& shape : shapes) {
        SCOPED_TRACE(shape.what);
        std::vector<ZtLBox3f> boxes;
        std::vector<std::uint32_t> ordinals;
        for (std::size_t i = 0; i < shape.count; ++i) {
            ZtLPos3f low(shape.offset + uniform(-shape.centre, shape.centre),
                         shape.offset + uniform(-shape.centre, shape.centre),
                         uniform(-shape.centre, shape.centre) / 4);
            if (std::string(shape.what) == "all alike")
                low = ZtLPos3f(shape.offset, shape.offset, shape.offset);
            const ZtLPos3f high(low.x + uniform(0, shape.size), low.y + uniform(0, shape.size),
                                low.z + (i % 3 ? uniform(0, shape.size) : 0));
            boxes.emplace_back(low, high);
            ordinals.push_back(static_cast<std::uint32_t>(3 * i + (i % 2)));
        }
        ASSERT_TRUE(std::all_of(boxes.begin(), boxes.end(), ZtOcBoxHierarchy::Holds));
        CheckHierarchy(boxes, ordinals, Build(boxes, ordinals));
    }
    EXPECT_TRUE(Build({}, {}).IsEmpty());
}

// Coordinates that floats round either way, or hold exactly, or that lie about zero and
// below the least float: every node's box still holds them.
TEST(ZtOcBoxHierarchy, RoundsEveryCoordinateOutwards) {
    const double step = std::ldexp(1.0, -24);
    const double values[] = {0.0,          1.0,       1.0 + step, 1.0 - step / 2, 0.1,
                             -0.1,         1e-40,     -1e-40,     1e-50,          -1e-50,
                             3.0e38 / 1e9, 1e30,      -1e30,      16777217.0,     -16777217.0,
                             0x1p-126,     -0x1p-126, 0x1p-149,   1.0 / 3.0,      -2.0 / 3.0};
    std::vector<ZtLBox3f> boxes;
    std::vector<std::uint32_t> ordinals;
    for (double low : values)
        for (double high : values)
            if (low <= high) {
                boxes.emplace_back(ZtLPos3f(low, -high, low), ZtLPos3f(high, -low, high));
                ordinals.push_back(static_cast<std::uint32_t>(ordinals.size()));
            }
    CheckHierarchy(boxes, ordinals, Build(boxes, ordinals));
}

TEST(ZtOcBoxHierarchy, HoldsOnlyFiniteBoxesWithinItsRange) {
    const double inf = std::numeric_limits<double>::infinity();
    const double big = ZtOcBoxHierarchy::kLargestCoordinate;
    const struct {
        ZtLBox3f box;
        bool held;
    } cases[] = {
        {ZtLBox3f({0, 0, 0}, {1, 1, 1}), true},
        {ZtLBox3f({-big, -big, -big}, {big, big, big}), true},
        {ZtLBox3f({0, 0, 0}, {2 * big, 1, 1}), false},
        {ZtLBox3f({-inf, 0, 0}, {1, 1, 1}), false},
        {ZtLBox3f({0, 0, std::nan("")}, {1, 1, 1}), false},
        {ZtLBox3f(), false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ZtOcBoxHierarchy::Holds(c.box), c.held);
}

} // namespace
