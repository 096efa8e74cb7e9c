#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaShape.h"
#include "ztobject/ZtOaTraversal.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

ZtOaShape* Shape(std::int64_t index) {
    return new ZtOaShape(ZtLBox3f(ZtLPos3f(0, 0, 0), ZtLPos3f(1, 1, 1)), index);
}

// The element indices met by a walk, with the depth of each node (the root is 0).
struct Recorder : ZtOaTraversal {
    std::vector<std::pair<std::int64_t, int>> met;
    std::int64_t skipAt = -2, stopAt = -2;
    Result VisitNode(const ZtOaPathLink& link) override {
        int depth = 0;
        for (const ZtOaPathLink* up = link.GetParent(); up; up = up->GetParent())
            ++depth;
        const std::int64_t index = link.GetNode()->GetElementIndex();
        met.emplace_back(index, depth);
        return index == stopAt ? kStop : index == skipAt ? kSkipChildren : kContinue;
    }
};

// A group that reports an element index, to follow groups in a walk.
class IndexedGroup : public ZtOaGroup {
public:
    explicit IndexedGroup(std::int64_t index) : index_(index) {}
    std::int64_t GetElementIndex() const override { return index_; }

private:
    std::int64_t index_;
};

// root (partition) > [1, group 2 > [3, group 4 > [5]], 6]
ZtOaPartition* Tree() {
    auto* root = new ZtOaPartition(L"plant", L"/models/plant.dri");
    root->AddChild(Shape(1));
    auto* two = new IndexedGroup(2);
    two->AddChild(Shape(3));
    auto* four = new IndexedGroup(4);
    four->AddChild(Shape(5));
    two->AddChild(four);
    root->AddChild(two);
    root->AddChild(Shape(6));
    return root;
}

TEST(ZtOaGroup, AVeryDeepTreeIsWalkedAndFreedWithoutRecursion) {
    auto root = std::make_unique<ZtOaGroup>();
    ZtOaGroup* at = root.get();
    const int depth = 200000;
    for (int i = 0; i < depth; ++i) {
        auto* next = new IndexedGroup(i);
        at->AddChild(next);
        at = next;
    }
    at->AddChild(Shape(depth));
    // Counts the nodes, and measures the path of the one leaf only: walking up from every
    // node would make the test itself quadratic.
    struct Count : ZtOaTraversal {
        std::size_t nodes = 0;
        int leafDepth = -1;
        Result VisitNode(const ZtOaPathLink& link) override {
            ++nodes;
            if (!link.GetNode()->IsGroup())
                for (const ZtOaPathLink* up = &link; up; up = up->GetParent())
                    ++leafDepth;
            return kContinue;
        }
    } count;
    root->ApplyTraversal(&count);
    EXPECT_EQ(count.nodes, static_cast<std::size_t>(depth) + 2);
    EXPECT_EQ(count.leafDepth, depth + 1);
}

TEST(ZtOaTraversal, WalksDepthFirstAndObeysTheVisitor) {
    std::unique_ptr<ZtOaPartition> root(Tree());
    using Met = std::vector<std::pair<std::int64_t, int>>;
    struct Case {
        std::int64_t skipAt, stopAt;
        Met met;
    };
    const Case cases[] = {
        {-2, -2, {{-1, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}, {5, 3}, {6, 1}}},
        {2, -2, {{-1, 0}, {1, 1}, {2, 1}, {6, 1}}},
        {4, -2, {{-1, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}, {6, 1}}},
        {-2, 3, {{-1, 0}, {1, 1}, {2, 1}, {3, 2}}},
        {-1, -2, {{-1, 0}}},
    };
    for (const Case& c : cases) {
        Recorder recorder;
        recorder.skipAt = c.skipAt;
        recorder.stopAt = c.stopAt;
        root->ApplyTraversal(&recorder);
        EXPECT_EQ(recorder.met, c.met) << c.skipAt << " " << c.stopAt;
    }
    root->ApplyTraversal(nullptr);
}

} // namespace

namespace {

ZtLAffine3f Shift(double x, double y, double z) {
    return ZtLAffine3f(ZtLMatrix3f(), ZtLVec3f(x, y, z));
}

ZtLAffine3f Scale(double s) {
    ZtLMatrix3f m;
    m.SetValue(s, 0, 0, 0, s, 0, 0, 0, s);
    return ZtLAffine3f(m, ZtLVec3f());
}

// Where each leaf's unit box (index 1..) lands in the walk's coordinates.
struct Placer : ZtOaTraversal {
    std::vector<std::pair<std::int64_t, ZtLBox3f>> boxes;
    std::vector<ZtOaFragment> kept;
    Result VisitNode(const ZtOaPathLink& link) override {
        ZtLBox3f box;
        if (link.GetNode()->GetBoundingBox(&box)) {
            boxes.emplace_back(link.GetNode()->GetElementIndex(), link.MapBox(box));
            kept.emplace_back(link);
        }
        return kContinue;
    }
};

ZtLBox3f Unit(double x, double y, double z, double size = 1) {
    return ZtLBox3f(ZtLPos3f(x, y, z), ZtLPos3f(x + size, y + size, z + size));
}

// root (shifted by 100) > [1, a (scaled by 2) > [2, group > [b (shifted by 10) > [3]]], 4]:
// the walk composes every partition's transform from the top, the first node's own
// included, and a kept path still maps each of its nodes as the walk did.
TEST(ZtOaTraversal, ComposesThePartitionsTransformsFromTheTop) {
    ZtOaPartition root(L"scene");
    root.SetTransform(Shift(100, 0, 0));
    root.AddChild(Shape(1));
    auto* a = new ZtOaPartition(L"a");
    a->SetTransform(Scale(2));
    a->AddChild(Shape(2));
    auto* group = new ZtOaGroup;
    auto* b = new ZtOaPartition(L"b");
    b->SetTransform(Shift(10, 0, 0));
    b->AddChild(Shape(3));
    group->AddChild(b);
    a->AddChild(group);
    root.AddChild(a);
    root.AddChild(Shape(4));

    Placer placer;
    root.ApplyTraversal(&placer);
    const std::vector<std::pair<std::int64_t, ZtLBox3f>> expected = {{1, Unit(100, 0, 0)},
                                                                     {2, Unit(100, 0, 0, 2)},
                                                                     {3, Unit(120, 0, 0, 2)},
                                                                     {4, Unit(100, 0, 0)}};
    EXPECT_EQ(placer.boxes, expected);

    ZtLBox3f unit = Unit(0, 0, 0);
    std::vector<ZtLBox3f> up; // node 3's path, from the leaf to the root
    ZtOaFragment copy = placer.kept[0];
    copy = placer.kept[2];
    for (const ZtOaPathLink* link = copy.GetFragPath(); link; link = link->GetParent())
        up.push_back(link->MapBox(unit));
    EXPECT_EQ(up, (std::vector<ZtLBox3f>{Unit(120, 0, 0, 2), Unit(120, 0, 0, 2), Unit(100, 0, 0, 2),
                                         Unit(100, 0, 0, 2), Unit(100, 0, 0)}));
    // Walked from `a`, the coordinates are those of a's parent, without the root's shift.
    Placer fromA;
    a->ApplyTraversal(&fromA);
    EXPECT_EQ(fromA.boxes.back().second, Unit(20, 0, 0, 2));
    EXPECT_EQ(root.GetTransform(), Shift(100, 0, 0));
    EXPECT_EQ(ZtOaPartition(L"new").GetTransform(), ZtLAffine3f());
}

TEST(ZtOaPartition, SettingATransformIsAnEditAndAPartitionHasNoBoxOfItsOwn) {
    ZtOaPartition model(L"m");
    const std::uint64_t before = ZtOaGroup::GetEditCount();
    model.SetTransform(Scale(0.3048));
    EXPECT_NE(ZtOaGroup::GetEditCount(), before);
    ZtLBox3f box;
    EXPECT_EQ(static_cast<const ZtOaNode&>(model).GetBoundingBox(&box), 0);
}

} // namespace
