#include "rules/ZtOdPdsTreeSize.h"
#include "RulesTestSupport.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using Op = ZtOpFindConditionOp;

TEST(ZtOdPdsMeasureTree, DepthAndFlatConditions) {
    ZtUNameDict names;
    auto L = [&](const wchar_t* label, Op::Enum op = Op::kEqual) { return Leaf(names, label, op); };
    struct Case {
        std::function<ZtOdPdsNode*()> make;
        std::size_t depth;
        std::uint64_t conditions;
    };
    const Case cases[] = {
        {[&] { return L(L"A"); }, 1, 1},
        {[&] { return Not(L(L"W", Op::kWildcard)); }, 1, 2},
        {[&] { return L(L"W", Op::kWildcard); }, 1, 1},
        {[&] { return And(L(L"A"), Or(L(L"B"), L(L"C"))); }, 3, 4},
        {[&] { return And(Or(L(L"A"), L(L"B")), Or(L(L"C"), L(L"D"))); }, 3, 8},
        // De Morgan turns the AND of ORs into an OR of ANDs: 2 + 2 conditions.
        {[&] { return Not(And(Or(L(L"A"), L(L"B")), Or(L(L"C"), L(L"D")))); }, 3, 4},
        // Negations meet wildcards on some paths only.
        {[&] { return Not(Or(L(L"W", Op::kWildcard), Not(L(L"V", Op::kWildcard)))); }, 2, 3},
    };
    for (const Case& c : cases) {
        ZtOdPdsNode* root = c.make();
        root->AddRef();
        const ZtOdPdsTreeSize size = ZtOdPdsMeasureTree(root, 1000);
        EXPECT_EQ(size.depth, c.depth) << Infix(root);
        EXPECT_EQ(size.conditions, c.conditions) << Infix(root);
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

TEST(ZtOdPdsMeasureTree, StatementWithAnExtraConditionCountsTwice) {
    ZtUNameDict names;
    ZtOdPdsStatement* w = Leaf(names, L"W", Op::kWildcard);
    w->AddRef();
    w->ToggleNegated();
    ZtOdPdsFindSpecBuilder builder(L"x");
    w->Emit(builder);
    EXPECT_EQ(ZtOdPdsMeasureTree(w, 100).conditions, 2u);
    w->Release();
}

} // namespace
