#include "rules/ZtOdPdsModifier.h"
#include "RulesTestSupport.h"
#include "readers/ZtOdPdsDstContext.h"

#include <gtest/gtest.h>

namespace {

// A step (ZtOdPdsModifier of a kind) or a FIND (ZtOdPdsFindClause, negated or not) on the
// criterion `text`.
template <class Clause> Clause* Make(int kindOrNegate, const wchar_t* text) {
    auto* clause = new Clause(kindOrNegate);
    clause->SetCriterion(ZtOdPdsMakeCriterion(text));
    return clause;
}

class Scopes : public ::testing::Test {
protected:
    Scopes() { context.names = &names; }

    // The tree of a scope in infix, "null" for none. It comes with no count for the caller.
    std::string Evaluate(ZtOdPdsCompModifier& scope) {
        ZtOdPdsNode* tree = scope.Evaluate(&context);
        if (!tree)
            return "null";
        EXPECT_EQ(tree->GetRefCount(), 0u);
        tree->AddRef();
        const std::string infix = Infix(tree);
        tree->Release();
        return infix;
    }

    ZtUNameDict names;
    ZtOdPdsDstContext context;
};

TEST_F(Scopes, StepsAndNestedScopesJoinByTheirKind) {
    ZtOdPdsCompModifier scope(ZtOdPdsModifier::kRoot);
    EXPECT_EQ(Evaluate(scope), "null");
    scope.SetFind(Make<ZtOdPdsFindClause>(0, L"Level 1"));
    EXPECT_EQ(Evaluate(scope), "L1");
    scope.AddModifier(Make<ZtOdPdsModifier>(ZtOdPdsModifier::kThrowAway, L"Level 2, 3"));
    scope.AddModifier(Make<ZtOdPdsModifier>(ZtOdPdsModifier::kAdd, L"Color 4"));
    // FIND ALL BUT and the negating steps toggle the top node of their tree only.
    EXPECT_EQ(Evaluate(scope), "((L1 AND !(L2 OR L3)) OR C4)");

    auto* nested = new ZtOdPdsCompModifier(ZtOdPdsModifier::kAddAllBut);
    nested->SetFind(Make<ZtOdPdsFindClause>(1, L"Level 2"));
    auto* inner = new ZtOdPdsCompModifier(ZtOdPdsModifier::kKeepOnly);
    inner->SetFind(Make<ZtOdPdsFindClause>(0, L"Color 3"));
    nested->AddModifier(inner);
    scope.AddModifier(nested);
    scope.AddModifier(Make<ZtOdPdsModifier>(ZtOdPdsModifier::kKeepOnly, L"File a.dgn"));
    EXPECT_EQ(Evaluate(scope), "((((L1 AND !(L2 OR L3)) OR C4) OR !(!L2 AND C3)) AND a.dgn)");
}

} // namespace
