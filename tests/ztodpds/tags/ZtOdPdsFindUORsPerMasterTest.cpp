#include "tags/ZtOdPdsFindUORsPerMaster.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaShape.h"
#include "ztutil/ZtUName.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

class FindUORsPerMaster : public ::testing::Test {
protected:
    // The scene properties of a DGN model, with these properties in this order. A null
    // name gives a property without one.
    ZtOaPropertyAttribute* SceneProps(std::vector<std::pair<const char*, double>> properties,
                                      const char* category = "ZtDgnSceneProps") {
        auto* attribute = new ZtOaPropertyAttribute(names_.Find(nullptr, category));
        for (const auto& [name, value] : properties) {
            ZtUData data;
            data.SetDouble(value);
            attribute->EditPropertyVector().PushBack(
                ZtOaProperty(name ? names_.Find(nullptr, name) : nullptr, data));
        }
        return attribute;
    }
    ZtOaGroup* Model(double factor) {
        auto* group = new ZtOaGroup;
        group->AddAttribute(SceneProps({{"ZtDgnUORsPerMaster", factor}}));
        return group;
    }

    ZtUNameDict names_;
};

TEST_F(FindUORsPerMaster, TheNodesOwnFactorCountsWhateverItsSign) {
    for (double factor : {1000.0, 0.0, -5.0, 304.8}) {
        std::unique_ptr<ZtOaGroup> model(Model(factor));
        model->AddChild(Model(7.0));
        EXPECT_EQ(ZtOdPdsFindUORsPerMaster(model.get()), factor);
    }
}

TEST_F(FindUORsPerMaster, TheFirstPropertyOfTheNameWins) {
    ZtOaGroup node;
    node.AddAttribute(SceneProps({{"Other", 3.0},
                                  {nullptr, 4.0},
                                  {"ZtDgnUORsPerMaster", 80.0},
                                  {"ZtDgnUORsPerMaster", 90.0}}));
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&node), 80.0);
}

TEST_F(FindUORsPerMaster, NothingFoundGivesZero) {
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(nullptr), 0.0);
    ZtOaShape leaf{ZtLBox3f()};
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&leaf), 0.0);
    ZtOaGroup empty;
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&empty), 0.0);
    // The property under another attribute, or another property under the attribute.
    ZtOaGroup wrongAttribute;
    wrongAttribute.AddAttribute(SceneProps({{"ZtDgnUORsPerMaster", 5.0}}, "OtherProps"));
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&wrongAttribute), 0.0);
    ZtOaGroup wrongProperty;
    wrongProperty.AddAttribute(SceneProps({{"ZtDgnUorsPerMaster", 5.0}}));
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&wrongProperty), 0.0);
    // Children with no positive factor.
    ZtOaGroup root;
    root.AddChild(Model(-1.0));
    root.AddChild(Model(0.0));
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&root), 0.0);
}

TEST_F(FindUORsPerMaster, ChildrenAreSearchedDepthFirstForAPositiveFactor) {
    // root
    //   a: factor -5, over a child with 11 that is never reached
    //   b: factor 0
    //   c: no factor, over d: 254
    //   e: 12
    ZtOaGroup root;
    ZtOaGroup* a = Model(-5.0);
    a->AddChild(Model(11.0));
    root.AddChild(a);
    root.AddChild(Model(0.0));
    auto* c = new ZtOaGroup;
    c->AddChild(new ZtOaShape(ZtLBox3f()));
    c->AddChild(Model(254.0));
    root.AddChild(c);
    root.AddChild(Model(12.0));
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(&root), 254.0);
}

// Groups that borrow their children, so that a deep chain is freed without recursion.
class ChainLink : public ZtOaGroup {
public:
    ChainLink() : ZtOaGroup(0, Ownership::kBorrowsChildren) {}
};

TEST_F(FindUORsPerMaster, ADeepTreeIsSearchedWithoutExhaustingTheStack) {
    constexpr int kDepth = 200000;
    std::vector<std::unique_ptr<ChainLink>> chain;
    for (int i = 0; i < kDepth; ++i) {
        chain.push_back(std::make_unique<ChainLink>());
        if (i > 0)
            chain[i - 1]->AddChild(chain[i].get());
    }
    chain.back()->AddAttribute(SceneProps({{"ZtDgnUORsPerMaster", 42.0}}));
    EXPECT_EQ(ZtOdPdsFindUORsPerMaster(chain.front().get()), 42.0);
}

} // namespace
