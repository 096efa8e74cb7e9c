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

// root (moved 100 along x) > [1, a (scaled by 2) > [group > [b (moved 10) > [2]]]]: the walk
// composes the partitions' transforms from the top, the first node's own included, and a
// kept path places each of its nodes as the walk did. Setting a transform is an edit.
TEST(ZtOaTraversal, ComposesThePartitionsTransformsFromTheTop) {
    ZtLMatrix3f twice;
    twice.SetValue(2, 0, 0, 0, 2, 0, 0, 0, 2);
    ZtOaPartition root(L"scene");
    root.SetTransform(ZtLAffine3f(ZtLMatrix3f(), {100, 0, 0}));
    root.AddChild(Shape(1));
    auto* a = new ZtOaPartition(L"a");
    const std::uint64_t before = ZtOaGroup::GetEditCount();
    a->SetTransform(ZtLAffine3f(twice, {}));
    EXPECT_NE(ZtOaGroup::GetEditCount(), before);
    auto* group = new ZtOaGroup;
    auto* b = new ZtOaPartition(L"b");
    b->SetTransform(ZtLAffine3f(ZtLMatrix3f(), {10, 0, 0}));
    b->AddChild(Shape(2));
    group->AddChild(b);
    a->AddChild(group);
    root.AddChild(a);
    struct Leaves : ZtOaTraversal {
        std::vector<ZtOaFragment> kept;
        Result VisitNode(const ZtOaPathLink& link) override {
            if (!link.GetNode()->IsGroup())
                kept.emplace_back(link);
            return kContinue;
        }
    } leaves;
    root.ApplyTraversal(&leaves);
    const ZtLBox3f unit(ZtLPos3f(0, 0, 0), ZtLPos3f(1, 1, 1));
    ZtOaFragment path = leaves.kept.at(0);
    EXPECT_EQ(path.GetFragPath()->MapBox(unit).GetMax().x, 101);
    path = leaves.kept.at(1);
    std::vector<double> highs; // of the unit box, from leaf 2 up to the root
    for (const ZtOaPathLink* link = path.GetFragPath(); link; link = link->GetParent())
        highs.push_back(link->MapBox(unit).GetMax().x);
    EXPECT_EQ(highs, (std::vector<double>{122, 122, 102, 102, 101}));
}

} // namespace
