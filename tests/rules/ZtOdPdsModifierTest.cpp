#include "rules/ZtOdPdsModifier.h"
#include "RulesTestSupport.h"
#include "readers/ZtOdPdsDstContext.h"

#include <gtest/gtest.h>

namespace {

ZtOdPdsModifier* Step(int kind, const wchar_t* criterion) {
    auto* step = new ZtOdPdsModifier(kind);
    step->SetCriterion(ZtOdPdsMakeCriterion(criterion));
    return step;
}

ZtOdPdsFindClause* Find(int negate, const wchar_t* criterion) {
    auto* find = new ZtOdPdsFindClause(negate);
    find->SetCriterion(ZtOdPdsMakeCriterion(criterion));
    return find;
}

class Scopes : public ::testing::Test {
protected:
    Scopes() { context.names = &names; }
    ZtUNameDict names;
    ZtOdPdsDstContext context;
};

TEST_F(Scopes, ResultCarriesNoCountForTheCaller) {
    ZtOdPdsCompModifier scope(ZtOdPdsModifier::kRoot);
    scope.SetFind(Find(0, L"Level 1"));
    ZtOdPdsNode* alone = scope.Evaluate(&context);
    ASSERT_NE(alone, nullptr);
    EXPECT_EQ(alone->GetRefCount(), 0u);
    alone->AddRef();
    alone->Release();

    scope.AddModifier(Step(ZtOdPdsModifier::kThrowAway, L"Level 2, 3"));
    scope.AddModifier(Step(ZtOdPdsModifier::kAdd, L"Color 4"));
    ZtOdPdsNode* tree = scope.Evaluate(&context);
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->GetRefCount(), 0u);
    tree->AddRef();
    // FIND ALL BUT and the negating steps toggle the top node of their tree only.
    EXPECT_EQ(Infix(tree), "((L1 AND !(L2 OR L3)) OR C4)");
    tree->Release();
}

TEST_F(Scopes, NullAnywhereMakesTheScopeNull) {
    ZtOdPdsCompModifier noFind(ZtOdPdsModifier::kRoot);
    noFind.AddModifier(Step(ZtOdPdsModifier::kAdd, L"Level 1"));
    EXPECT_EQ(noFind.Evaluate(&context), nullptr);

    ZtOdPdsCompModifier badStep(ZtOdPdsModifier::kRoot);
    badStep.SetFind(Find(1, L"Level 1"));
    badStep.AddModifier(Step(ZtOdPdsModifier::kAdd, L"Display Set unknown"));
    badStep.AddModifier(Step(ZtOdPdsModifier::kAdd, L"Level 2"));
    EXPECT_EQ(badStep.Evaluate(&context), nullptr);

    ZtOdPdsCompModifier badNested(ZtOdPdsModifier::kRoot);
    badNested.SetFind(Find(0, L"Level 1"));
    auto* outer = new ZtOdPdsCompModifier(ZtOdPdsModifier::kKeepOnly);
    outer->SetFind(Find(0, L"Level 2"));
    outer->AddModifier(new ZtOdPdsCompModifier(ZtOdPdsModifier::kAdd));
    badNested.AddModifier(outer);
    EXPECT_EQ(badNested.Evaluate(&context), nullptr);
}

TEST_F(Scopes, NestedScopesJoinByTheirOwnKind) {
    ZtOdPdsCompModifier scope(ZtOdPdsModifier::kRoot);
    scope.SetFind(Find(0, L"Level 1"));
    auto* nested = new ZtOdPdsCompModifier(ZtOdPdsModifier::kAddAllBut);
    nested->SetFind(Find(1, L"Level 2"));
    auto* inner = new ZtOdPdsCompModifier(ZtOdPdsModifier::kKeepOnly);
    inner->SetFind(Find(0, L"Color 3"));
    nested->AddModifier(inner);
    scope.AddModifier(nested);
    scope.AddModifier(Step(ZtOdPdsModifier::kKeepOnly, L"File a.dgn"));
    ZtOdPdsNode* tree = scope.Evaluate(&context);
    ASSERT_NE(tree, nullptr);
    tree->AddRef();
    EXPECT_EQ(Infix(tree), "((L1 OR !(!L2 AND C3)) AND a.dgn)");
    tree->Release();
}

} // namespace
