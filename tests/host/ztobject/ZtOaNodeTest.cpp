#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaShape.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztutil/ZtUName.h"

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

TEST(ZtOaGroup, ChildrenInOrderAndNullOutside) {
    std::unique_ptr<ZtOaPartition> root(Tree());
    ASSERT_EQ(root->GetNumChildren(), 3);
    EXPECT_EQ(root->GetChild(0)->GetElementIndex(), 1);
    EXPECT_EQ(root->GetChild(2)->GetElementIndex(), 6);
    EXPECT_EQ(root->GetChild(-1), nullptr);
    EXPECT_EQ(root->GetChild(3), nullptr);
    root->AddChild(nullptr);
    EXPECT_EQ(root->GetNumChildren(), 3);
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

TEST(ZtOaFragment, KeepsThePathBeyondTheWalk) {
    std::unique_ptr<ZtOaPartition> root(Tree());
    struct Keep : ZtOaTraversal {
        std::vector<ZtOaFragment> kept;
        Result VisitNode(const ZtOaPathLink& link) override {
            if (link.GetNode()->GetElementIndex() == 5)
                kept.emplace_back(link);
            return kContinue;
        }
    } keep;
    root->ApplyTraversal(&keep);
    ASSERT_EQ(keep.kept.size(), 1u);
    const ZtOaFragment copy = keep.kept.front();
    keep.kept.clear();
    std::vector<std::int64_t> path;
    for (const ZtOaPathLink* link = copy.GetFragPath(); link; link = link->GetParent())
        path.push_back(link->GetNode()->GetElementIndex());
    EXPECT_EQ(path, (std::vector<std::int64_t>{5, 4, 2, -1}));
    EXPECT_EQ(copy.GetDepth(), 4);
    EXPECT_TRUE(
        copy.GetFragPath()->GetParent()->GetParent()->GetParent()->GetNode()->IsPartition());
}

TEST(ZtOaAttribute, FoundByNameWithTheirProperties) {
    ZtUNameDict names;
    ZtUName* category = names.Find(L"PDS", "ZtDgnPDSAttributes");
    ZtUName* property = names.Find(L"line_id", "ZtDgnPDSAttribute");
    ZtOaShape shape{ZtLBox3f()};
    shape.AddAttribute(new ZtOaNat64Attribute("ZtDgnDMRSAttribute", 0x0001000200030004u));
    auto* properties = new ZtOaPropertyAttribute(category);
    ZtUData value;
    value.SetWideString(L"P-101");
    properties->EditPropertyVector().PushBack(ZtOaProperty(property, value));
    properties->EditPropertyVector().PushBack(ZtOaProperty(nullptr, ZtUData()));
    shape.AddAttribute(properties);

    const ZtOaAttribute* dmrs = shape.FindAttribute("ZtDgnDMRSAttribute");
    ASSERT_TRUE(dmrs);
    ASSERT_EQ(dmrs->GetKind(), ZtOaAttribute::kNat64Attribute);
    EXPECT_EQ(static_cast<const ZtOaNat64Attribute*>(dmrs)->GetValue(), 0x0001000200030004u);
    EXPECT_EQ(shape.FindAttribute("ZtDgnPDSAttributes"), properties);
    EXPECT_EQ(shape.FindAttribute("nothing"), nullptr);
    EXPECT_EQ(shape.FindAttribute(nullptr), nullptr);

    const ZtOaPropertyVector& vector = properties->GetPropertyVector();
    ASSERT_EQ(vector.Size(), 2);
    EXPECT_STREQ(vector.Get(0)->GetInternalName(), "ZtDgnPDSAttribute");
    EXPECT_EQ(vector.Get(1)->GetInternalName(), nullptr);
    EXPECT_EQ(vector.Get(2), nullptr);
    EXPECT_EQ(vector.Find("ZtDgnPDSAttribute"), vector.Get(0));
    EXPECT_EQ(vector.Find("line_id"), nullptr);

    struct Collect : ZtOaPropertyVisitor {
        std::vector<std::pair<ZtUName*, const ZtOaProperty*>> seen;
        void Visit(ZtUName* c, const ZtOaProperty& p) override { seen.emplace_back(c, &p); }
    } collect;
    shape.VisitProperties(collect);
    ASSERT_EQ(collect.seen.size(), 2u);
    EXPECT_EQ(collect.seen[0].first, category);
    EXPECT_EQ(collect.seen[0].second, vector.Get(0));
}

} // namespace
