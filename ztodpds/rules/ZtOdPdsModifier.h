#pragma once
#include "rules/ZtOdPdsCriterion.h"
#include "ztutil/ZtUVector.h"

#include <cstddef>
#include <memory>

class ZtOdPdsNode;
struct ZtOdPdsDstContext;

// The FIND of a scope: its criterion, negated for FIND ALL BUT.
class ZtOdPdsFindClause {
public:
    explicit ZtOdPdsFindClause(int negate) : negate_(negate) {}

    // Takes `criterion` over.
    void SetCriterion(ZtOdPdsCriterion* criterion) { criterion_.reset(criterion); }
    // The criterion's expression, its negation toggled in place for FIND ALL BUT; or null.
    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context);

    int GetNegate() const { return negate_; }
    const ZtOdPdsCriterion* GetCriterion() const { return criterion_.get(); }

private:
    int negate_;
    std::unique_ptr<ZtOdPdsCriterion> criterion_;
};

// One step of a scope: a statement that widens (ADD, ADD ALL BUT) or narrows (KEEP ONLY,
// THROW AWAY) what the scope has found so far, by a criterion.
class ZtOdPdsModifier {
public:
    // kRoot is the kind of a display set's root scope, which is never applied as a step.
    enum Kind { kRoot = 0, kAdd = 1, kAddAllBut = 2, kKeepOnly = 3, kThrowAway = 4 };

    explicit ZtOdPdsModifier(int kind) : kind_(kind) {}
    ZtOdPdsModifier(const ZtOdPdsModifier&) = delete;
    ZtOdPdsModifier& operator=(const ZtOdPdsModifier&) = delete;
    virtual ~ZtOdPdsModifier();

    // The step's own expression, or null.
    virtual ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context);

    // Takes `criterion` over.
    void SetCriterion(ZtOdPdsCriterion* criterion) { criterion_.reset(criterion); }
    // `tree` with this step applied: null if `tree` or the step's expression is null.
    ZtOdPdsNode* Apply(ZtOdPdsNode* tree, ZtOdPdsDstContext* context);
    // `tree` joined with the step's expression `step`, by OR or AND as the kind says, the
    // step negated in place for ADD ALL BUT and THROW AWAY. Both must be non-null.
    ZtOdPdsNode* Join(ZtOdPdsNode* tree, ZtOdPdsNode* step) const;

    int GetKind() const { return kind_; }
    const ZtOdPdsCriterion* GetCriterion() const { return criterion_.get(); }

private:
    int kind_;
    std::unique_ptr<ZtOdPdsCriterion> criterion_;
};

// A scope: at most one FIND and its steps in the order of their lines, nested scopes
// among them. Evaluating it gives (((F op1 m1) op2 m2) ...), and null as soon as the FIND,
// a step or a nested scope gives null. Nested scopes are evaluated and destroyed with an
// explicit stack, so that deep nesting can't exhaust the thread's.
class ZtOdPdsCompModifier : public ZtOdPdsModifier {
public:
    explicit ZtOdPdsCompModifier(int kind) : ZtOdPdsModifier(kind) {}
    ~ZtOdPdsCompModifier() override;

    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context) override;

    // Takes `find` over.
    void SetFind(ZtOdPdsFindClause* find) { find_.reset(find); }
    const ZtOdPdsFindClause* GetFind() const { return find_.get(); }
    // Appends a step; the scope owns it.
    void AddModifier(ZtOdPdsModifier* modifier) { modifiers_.PushBack(modifier); }
    std::size_t GetNumModifiers() const { return modifiers_.Size(); }
    ZtOdPdsModifier* GetModifier(std::size_t index) const { return modifiers_[index]; }

private:
    std::unique_ptr<ZtOdPdsFindClause> find_;
    ZtUOwnPtrVector<ZtOdPdsModifier> modifiers_;
    // While an enclosing scope takes its steps apart: the next emptied scope to free.
    ZtOdPdsCompModifier* nextDying_ = nullptr;
};
