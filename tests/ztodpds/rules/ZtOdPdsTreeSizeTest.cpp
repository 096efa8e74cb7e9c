#include "rules/ZtOdPdsTreeSize.h"
#include "RulesTestSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ZtOdPdsMeasureTree, DepthAndFlatConditions) {
    struct Case {
        std::string tree;
        std::size_t depth;
        std::uint64_t conditions;
        bool emitted; // measured after an emit, which resolves negated wildcards
    };
    const Case cases[] = {
        {"A", 1, 1, false},
        {"!W~13", 1, 2, false},
        {"!W~13", 1, 2, true}, // the negation has become an extra condition
        {"W~13", 1, 1, false},
        {"(A AND (B OR C))", 3, 4, false},
        {"((A OR B) AND (C OR D))", 3, 8, false},
        // De Morgan turns the AND of ORs into an OR of ANDs: 2 + 2 conditions.
        {"!((A OR B) AND (C OR D))", 3, 4, false},
        // Negations meet wildcards on some paths only.
        {"!(W~13 OR !V~13)", 2, 3, false},
    };
    for (const Case& c : cases) {
        ZtUNameDict names;
        ZtOdPdsNode* root = Parse(names, c.tree);
        root->AddRef();
        ZtOdPdsFindSpecBuilder builder(L"x");
        if (c.emitted)
            root->Emit(builder);
        const ZtOdPdsTreeSize size = ZtOdPdsMeasureTree(root, 1000);
        EXPECT_EQ(size.depth, c.depth) << c.tree;
        EXPECT_EQ(size.conditions, c.conditions) << c.tree;
        root->Release();
    }
}

TEST(ZtOdPdsMeasureTree, SharedSubtreesCountAsCopiesAndCountsStopAtTheCap) {
    ZtUNameDict names;
    // Each level doubles the unfolded tree: 2^40 leaves from 80 distinct nodes.
    ZtOdPdsNode* tree = Leaf(names, L"A");
    for (int i = 0; i < 40; ++i)
        tree = Or(tree, tree);
    tree->AddRef();
    const ZtOdPdsTreeSize size = ZtOdPdsMeasureTree(tree, 1000001);
    EXPECT_EQ(size.depth, 41u);
    EXPECT_EQ(size.conditions, 1000001u);
    tree->Release();
}

} // namespace
