#include "rules/ZtOdPdsLimits.h"
#include "DisplaySetTestSupport.h"

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;

Lines Definition() {
    return {L"1 hostile", L"<Definition>"};
}

// A FIND and then `depth` - 1 nested scopes, each opened by `keyword` and holding a FIND:
// scopes `depth` deep, and an expression just as deep.
Lines NestedScopes(std::size_t depth, const wchar_t* keyword) {
    Lines lines = Definition();
    lines.push_back(L"FIND Level 0");
    for (std::size_t i = 1; i < depth; ++i) {
        lines.push_back(keyword);
        lines.push_back(L"FIND Level " + std::to_wstring(i));
    }
    return lines;
}

TEST_F(DisplaySets, ScopesAtTheDepthLimitAreEvaluated) {
    EXPECT_EQ(Read(NestedScopes(kZtOdPdsMaxScopeDepth, L"KEEP ONLY")), 1);
    ASSERT_EQ(Count(), 1u);
    const ZtOpFindSpec& spec = Spec(0);
    ASSERT_EQ(spec.GetNumConditions(), kZtOdPdsMaxScopeDepth);
    for (std::size_t i = 0; i < spec.GetNumConditions(); ++i)
        ASSERT_EQ(spec.GetCondition(i).GetFlags(), 5u);
}

TEST_F(DisplaySets, ScopesBeyondTheDepthLimitAreNotEvaluated) {
    EXPECT_EQ(Read(NestedScopes(kZtOdPdsMaxScopeDepth + 1, L"ADD")), 0);
    EXPECT_EQ(Count(), 0u);
}

TEST_F(DisplaySets, ClosedScopesDoNotCountTowardsTheDepth) {
    Lines lines = Definition();
    lines.push_back(L"FIND Level 0");
    for (std::size_t i = 0; i < kZtOdPdsMaxScopeDepth + 5; ++i) {
        lines.push_back(L"ADD");
        lines.push_back(L"FIND Level 1");
        lines.push_back(L"END FIND");
    }
    // The expression is as deep as the steps are many, and so beyond its own limit.
    EXPECT_EQ(Read(lines), 0);
    EXPECT_EQ(Count(), 0u);
}

TEST_F(DisplaySets, ExpressionsDeeperThanTheLimitAreAbandoned) {
    struct Case {
        std::size_t steps;
        bool yields;
    };
    // A FIND with n steps is an expression n + 1 deep.
    for (const Case c : {Case{kZtOdPdsMaxTreeDepth - 1, true}, Case{kZtOdPdsMaxTreeDepth, false}}) {
        Lines lines = Definition();
        lines.push_back(L"FIND Level 0");
        for (std::size_t i = 1; i <= c.steps; ++i)
            lines.push_back(L"ADD Level " + std::to_wstring(i));
        const std::size_t before = Count();
        EXPECT_EQ(Read(lines), c.yields ? 1 : 0);
        EXPECT_EQ(Count(), before + (c.yields ? 1 : 0));
    }
}

TEST_F(DisplaySets, FlatFormsBeyondTheConditionLimitAreAbandoned) {
    // (L1 OR L2) AND (L1 OR L2) ... 20 times: 2^20 groups of 20 conditions.
    Lines product = Definition();
    product.push_back(L"FIND Level 1, 2");
    for (int i = 1; i < 20; ++i)
        product.push_back(L"KEEP ONLY Level 1, 2");
    EXPECT_EQ(Read(product), 0);

    // Nested negations of ANDs: the flat form grows with the square of the depth.
    EXPECT_EQ(Read(NestedScopes(5000, L"THROW AWAY")), 0);

    // A reference used again and again: three nodes, 2^20 groups when unfolded.
    Read({L"1 base", L"<Definition>", L"FIND Level 1, 2"});
    Lines references = Definition();
    references.push_back(L"FIND Display Set base");
    for (int i = 1; i < 20; ++i)
        references.push_back(L"KEEP ONLY Display Set base");
    EXPECT_EQ(Read(references), 0);
    ASSERT_EQ(Count(), 1u);
    EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(L"hostile")->GetTree(), nullptr);
}

TEST_F(DisplaySets, DeepAndWideInputStaysWithinItsLimits) {
    // A list as long as the depth limit allows, under a negated step.
    std::wstring list = L"FIND Level 0";
    for (std::size_t i = 1; i < kZtOdPdsMaxTreeDepth - 1; ++i)
        list += L"," + std::to_wstring(i);
    Lines lines = Definition();
    lines.push_back(list);
    lines.push_back(L"THROW AWAY Color 1, 2, 3");
    EXPECT_EQ(Read(lines), 1);
    ASSERT_EQ(Count(), 1u);
    EXPECT_EQ(Spec(0).GetNumConditions(), 4 * (kZtOdPdsMaxTreeDepth - 1));
}

TEST(ZtOdPdsFindSpecBuilder, RefusesConditionsBeyondItsMaximumAndChangesNothing) {
    ZtUNameDict names;
    ZtOdPdsFindSpecBuilder builder(L"small", 2);
    ZtOdPdsStatement* a = Leaf(names, L"A");
    ZtOdPdsStatement* w = Leaf(names, L"W", ZtOpFindConditionOp::kWildcard);
    ZtOdPdsNode* root = Or(a, Not(w));
    root->AddRef();
    root->Emit(builder);
    EXPECT_EQ(builder.HasOverflowed(), 1);
    EXPECT_EQ(Shorts(builder.GetFindSpec()), (std::vector<std::string>{"A", "*W~13+37"}));
    ZtOpFindCondition extra = w->GetExtraCondition();
    builder.OpenAlternative();
    EXPECT_EQ(builder.AddCondition(extra), 0);
    EXPECT_EQ(extra.GetFlags(), 37u);
    root->Release();
}

} // namespace
