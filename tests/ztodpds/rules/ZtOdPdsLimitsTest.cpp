#include "rules/ZtOdPdsLimits.h"
#include "DisplaySetTestSupport.h"

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;

// A set of the statement `find` and then `times` times the lines of `step`.
Lines Repeat(const std::wstring& find, const Lines& step, std::size_t times) {
    Lines lines{L"1 hostile", L"<Definition>", find};
    for (std::size_t i = 0; i < times; ++i)
        lines.insert(lines.end(), step.begin(), step.end());
    return lines;
}

TEST_F(DisplaySets, InputBeyondALimitIsAbandonedAndInputWithinIsEvaluated) {
    constexpr std::size_t kScopes = kZtOdPdsMaxScopeDepth;
    constexpr std::size_t kDepth = kZtOdPdsMaxTreeDepth;
    std::wstring list = L"FIND Level 0";
    for (std::size_t i = 1; i < kDepth - 1; ++i)
        list += L"," + std::to_wstring(i);
    struct Case {
        const char* name;
        Lines lines;
        std::size_t conditions; // 0: abandoned
    };
    const Case cases[] = {
        // Each nested scope holds a FIND: scopes and expression equally deep.
        {"scopes at the depth limit",
         Repeat(L"FIND Level 0", {L"KEEP ONLY", L"FIND Level 1"}, kScopes - 1), kScopes},
        {"scopes beyond it", Repeat(L"FIND Level 0", {L"ADD", L"FIND Level 1"}, kScopes), 0},
        // Closed scopes do not count towards the depth, but the expression is as deep as
        // the steps are many, and so beyond its own limit.
        {"closed scopes",
         Repeat(L"FIND Level 0", {L"ADD", L"FIND Level 1", L"END FIND"}, kScopes + 5), 0},
        // A FIND with n steps is an expression n + 1 deep.
        {"expression at its depth limit", Repeat(L"FIND Level 0", {L"ADD Level 1"}, kDepth - 1),
         kDepth},
        {"expression beyond it", Repeat(L"FIND Level 0", {L"ADD Level 1"}, kDepth), 0},
        // (L1 OR L2) AND (L1 OR L2) ... 20 times: 2^20 groups of 20 conditions.
        {"product of ORs", Repeat(L"FIND Level 1, 2", {L"KEEP ONLY Level 1, 2"}, 19), 0},
        // Nested negations of ANDs: the flat form grows with the square of the depth.
        {"nested negations", Repeat(L"FIND Level 0", {L"THROW AWAY", L"FIND Level 1"}, 4999), 0},
        // A reference used again and again: three nodes, 2^20 groups when unfolded.
        {"reference again and again",
         Repeat(L"FIND Display Set base", {L"KEEP ONLY Display Set base"}, 19), 0},
        // A list as long as the depth limit allows, under a negated step.
        {"deep and wide", Repeat(list, {L"THROW AWAY Color 1, 2, 3"}, 1), 4 * (kDepth - 1)},
    };
    Read({L"1 base", L"<Definition>", L"FIND Level 1, 2"});
    for (const Case& c : cases) {
        const std::size_t before = Count();
        EXPECT_EQ(Read(c.lines), c.conditions ? 1 : 0) << c.name;
        ASSERT_EQ(Count(), before + (c.conditions ? 1 : 0)) << c.name;
        if (c.conditions)
            EXPECT_EQ(Spec(before).GetNumConditions(), c.conditions) << c.name;
        else
            EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(L"hostile")->GetTree(), nullptr)
                << c.name;
    }
}

// The file's budget is shared by its sets in order; once one does not fit, no later set
// is made, however small.
TEST_F(DisplaySets, SetsBeyondTheFilesBudgetAreAbandoned) {
    context.conditionsLeft = 5;
    EXPECT_EQ(Read({L"1 two", L"<Definition>", L"FIND Level 1, 2"}), 1);
    EXPECT_EQ(Read({L"2 three", L"<Definition>", L"FIND Level 1, 2, 3"}), 1);
    EXPECT_EQ(context.conditionsLeft, 0u);
    EXPECT_EQ(Read({L"3 one", L"<Definition>", L"FIND Level 1"}), 0);
    context.conditionsLeft = 2;
    EXPECT_EQ(Read({L"4 three", L"<Definition>", L"FIND Level 1, 2, 3"}), 0);
    EXPECT_EQ(Read({L"5 one", L"<Definition>", L"FIND Level 1"}), 0);
    EXPECT_EQ(Made(), (std::vector<std::string>{"two: L1 *L2", "three: L1 *L2 *L3"}));
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
    EXPECT_EQ(Each(builder.GetFindSpec(), Short), (std::vector<std::string>{"A", "*W~13+37"}));
    ZtOpFindCondition extra = w->GetExtraCondition();
    builder.OpenAlternative();
    EXPECT_EQ(builder.AddCondition(extra), 0);
    EXPECT_EQ(extra.GetFlags(), 37u);
    root->Release();
}

} // namespace
