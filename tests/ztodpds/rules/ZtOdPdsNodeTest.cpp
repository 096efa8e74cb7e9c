#include "RulesTestSupport.h"
#include "rules/ZtOdPdsLimits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Runs the pipeline on a root it pins, as a display set does, and keeps what each step
// left.
struct Pinned {
    explicit Pinned(ZtOdPdsNode* root) : root(root) { root->AddRef(); }
    ~Pinned() { root->Release(); }

    std::vector<std::string> Pipeline() {
        EXPECT_EQ(root->IsComplete(), 1);
        root->PushNegation();
        ZtOdPdsRewriteBudget budget;
        EXPECT_EQ(root->Flatten(budget), 1);
        flat = Infix(root);
        return EmitAll();
    }

    std::vector<std::string> EmitAll() {
        ZtOdPdsFindSpecBuilder builder(L"set");
        root->Emit(builder);
        return Each(builder.GetFindSpec(), Short);
    }

    ZtOdPdsNode* root;
    std::string flat;
};

class Expression : public ::testing::Test {
protected:
    ZtOdPdsStatement* L(const wchar_t* label) { return Leaf(names, label); }
    ZtOdPdsNode* P(const std::string& infix) { return Parse(names, infix); }
    ZtUNameDict names;
};

TEST_F(Expression, FlatFormsAndEmitOrders) {
    struct Case {
        std::string tree;
        std::string flat;
        std::vector<std::string> conditions;
    };
    const Case cases[] = {
        // The negation goes down to the leaves, complementing them: one group.
        {"(A AND !(B OR C))", "((A AND !B) AND !C)", {"A", "B~7", "C~7"}},
        {"(A AND (B OR C))", "((A AND B) OR (A AND C))", {"A", "B", "*A", "C"}},
        {"((B OR C) AND A)", "((C AND A) OR (B AND A))", {"C", "A", "*B", "A"}},
        {"((A OR B) AND (C OR D))",
         "(((B AND C) OR (A AND C)) OR ((B AND D) OR (A AND D)))",
         {"B", "C", "*A", "C", "*B", "D", "*A", "D"}},
        {"(A AND (B AND (C AND D)))", "(((A AND B) AND C) AND D)", {"A", "B", "C", "D"}},
        {"(A OR (B OR C))", "(A OR (B OR C))", {"A", "*B", "*C"}},
        // A chain of ADD terms stays as it is, in the order of adding.
        {"(((A OR B) OR C) OR D)", "(((A OR B) OR C) OR D)", {"A", "*B", "*C", "*D"}},
        // The negations of a negated OR of negated statements cancel on the leaves.
        {"!(!A OR !B)", "(A AND B)", {"A", "B"}},
        // A lone statement, plain and negated, and negated without complement.
        {"A", "A", {"A"}},
        {"!A", "!A", {"A~7"}},
        {"!W~13", "!W", {"W~13+37", "W~3+37"}},
        // The two conditions of a negated wildcard stay in one group: only the first
        // opens the alternative.
        {"(A OR !W~13)", "(A OR !W)", {"A", "*W~13+37", "W~3+37"}},
        // Every operator the rules make has its complement, but the wildcard's and the bare
        // data criterion's.
        {"!(A~8 AND B~11)", "(!A OR !B)", {"A~10", "*B~9"}},
        {"!(A~9 AND B~10)", "(!A OR !B)", {"A~11", "*B~8"}},
        {"!Z~0", "!Z", {"Z~0+37", "Z~3+37"}},
    };
    for (const Case& c : cases) {
        Pinned run(P(c.tree));
        EXPECT_EQ(run.Pipeline(), c.conditions) << c.tree;
        EXPECT_EQ(run.flat, c.flat) << c.tree;
    }
}

TEST_F(Expression, SharedNegatedStatementIsComplementedOnceAndEmittedInEveryGroup) {
    ZtOdPdsStatement* s = L(L"S");
    Pinned run(And(Not(s), Or(L(L"B"), L(L"C"))));
    EXPECT_EQ(run.Pipeline(), (std::vector<std::string>{"S~7", "B", "*S~7", "C"}));
    EXPECT_EQ(s->GetRefCount(), 2u);
    EXPECT_EQ(s->IsNegated(), 0);
    // Emitting again finds the negation resolved and gives the same conditions, with the
    // flag that the second group left on the shared condition.
    EXPECT_EQ(run.EmitAll(), (std::vector<std::string>{"*S~7", "B", "*S~7", "C"}));
}

TEST_F(Expression, FlattenAndEmitCanBeRepeated) {
    Pinned run(P("((A OR B) AND (C OR D))"));
    const auto first = run.Pipeline();
    ZtOdPdsRewriteBudget budget;
    EXPECT_EQ(run.root->Flatten(budget), 1);
    EXPECT_EQ(Infix(run.root), run.flat);
    EXPECT_EQ(budget.newNodes, 0u);
    EXPECT_EQ(budget.rotations, 0u);
    EXPECT_EQ(run.EmitAll().size(), first.size());
}

TEST_F(Expression, ProductOfOrsGrowsExponentially) {
    const int n = 10;
    ZtOdPdsNode* tree = Or(L(L"A"), L(L"B"));
    for (int i = 1; i < n; ++i)
        tree = And(tree, Or(L(L"A"), L(L"B")));
    Pinned run(tree);
    const auto conditions = run.Pipeline();
    ASSERT_EQ(conditions.size(), std::size_t{n} << n);
    std::size_t openers = 0;
    for (const std::string& condition : conditions)
        openers += condition[0] == '*';
    EXPECT_EQ(openers, (std::size_t{1} << n) - 1);
}

TEST_F(Expression, IncompleteTreesAreFound) {
    ZtOdPdsStatement* shared = L(L"A");
    EXPECT_EQ(Pinned(Or(And(shared, L(L"B")), And(shared, L(L"C")))).root->IsComplete(), 1);
    EXPECT_EQ(Pinned(P("((A AND B) OR (C AND null))")).root->IsComplete(), 0);
    EXPECT_EQ(Pinned(P("(null OR A)")).root->IsComplete(), 0);
}

TEST_F(Expression, SetOperandReplacesAndReleases) {
    ZtOdPdsStatement* a = L(L"A");
    ZtOdPdsStatement* b = L(L"B");
    a->AddRef();
    b->AddRef();
    auto* operation = And(a, b);
    operation->AddRef();
    EXPECT_EQ(a->GetRefCount(), 2u);
    EXPECT_EQ(a->GetParent(), operation);
    operation->SetLeft(b);
    EXPECT_EQ(a->GetRefCount(), 1u);
    EXPECT_EQ(a->GetParent(), nullptr);
    EXPECT_EQ(b->GetRefCount(), 3u);
    // Storing the node the slot holds keeps it alive.
    operation->SetRight(b);
    EXPECT_EQ(b->GetRefCount(), 3u);
    operation->Release();
    EXPECT_EQ(b->GetRefCount(), 1u);
    a->Release();
    b->Release();
}

TEST_F(Expression, DistributeSharesTheOuterTermAndFreesTheInnerOr) {
    ZtOdPdsStatement* t = L(L"T");
    t->AddRef();
    auto* root = And(t, Or(L(L"B"), L(L"C")));
    Pinned run(root);
    root->Distribute(ZtOdPdsOperation::kRightSide);
    EXPECT_EQ(Infix(root), "((T AND B) OR (T AND C))");
    EXPECT_EQ(t->GetRefCount(), 3u);
    t->Release();
}

TEST_F(Expression, RotateReusesTheInnerAnd) {
    auto* inner = And(L(L"B"), L(L"C"));
    auto* root = And(L(L"A"), inner);
    Pinned run(root);
    root->Rotate();
    EXPECT_EQ(Infix(root), "((A AND B) AND C)");
    EXPECT_EQ(root->GetLeft(), inner);
    EXPECT_EQ(inner->GetRefCount(), 1u);
}

TEST_F(Expression, FlattenStopsAtItsLimitsAndChangesNothingThere) {
    ZtOdPdsOperation* inner = And(L(L"B"), L(L"C"));
    const std::pair<ZtOdPdsNode*, ZtOdPdsRewriteBudget> cases[] = {
        {P("(A AND (B OR C))"), {kZtOdPdsMaxNewNodes - 1, 0}},
        {P("((B OR C) AND A)"), {kZtOdPdsMaxNewNodes - 1, 0}},
        {P("(A AND (B AND C))"), {0, kZtOdPdsMaxRotations}},
        // A rotation that would close a cycle: the inner AND of the root's right is also
        // below its left operand.
        {And(And(inner, L(L"D")), inner), {}},
    };
    for (auto [root, budget] : cases) {
        Pinned run(root);
        const std::string before = Infix(root);
        EXPECT_EQ(root->Flatten(budget), 0) << before;
        EXPECT_EQ(Infix(root), before);
    }
}

TEST_F(Expression, SharedInnerAndThatIsNotBelowTheLeftIsRotated) {
    auto* inner = And(L(L"B"), L(L"C"));
    inner->AddRef();
    Pinned run(And(L(L"A"), inner));
    ZtOdPdsRewriteBudget budget;
    EXPECT_EQ(run.root->Flatten(budget), 1);
    EXPECT_EQ(Infix(run.root), "((A AND B) AND C)");
    // The other holder sees the rotated node, as sharing in place means.
    EXPECT_EQ(Infix(inner), "(A AND B)");
    inner->Release();
}

TEST_F(Expression, DeepTreesNeedNoDeepStack) {
    // A negated right-deep chain of ORs far deeper than any recursion could go: it becomes
    // a right-deep chain of ANDs, and then a left-deep one.
    const int depth = 100000;
    ZtOdPdsNode* chain = L(L"x");
    for (int i = 0; i < depth; ++i)
        chain = Or(L(L"a"), chain);
    Pinned run(Not(chain));
    EXPECT_EQ(run.root->IsComplete(), 1);
    run.root->PushNegation();
    ZtOdPdsRewriteBudget budget;
    EXPECT_EQ(run.root->Flatten(budget), 1);
    EXPECT_EQ(budget.rotations, std::uint64_t{depth} - 1);
    ZtOdPdsFindSpecBuilder builder(L"deep");
    run.root->Emit(builder);
    const ZtOpFindSpec& spec = builder.GetFindSpec();
    ASSERT_EQ(spec.GetNumConditions(), std::size_t{depth} + 1);
    EXPECT_EQ(Short(spec.GetCondition(0)), "a~7");
    EXPECT_EQ(Short(spec.GetCondition(depth)), "x~7");
    EXPECT_EQ(run.root->Walk(), 0);
}

} // namespace
