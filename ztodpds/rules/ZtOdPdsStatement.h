#pragma once
#include "rules/ZtOdPdsNode.h"
#include "ztplugin/ZtOpFindCondition.h"
#include "ztutil/ZtUWideString.h"

// A leaf of the expression: one find condition. A negated statement resolves its negation
// into the condition itself when it is emitted, once; the change stays on the statement,
// so that a statement shared by several groups gives the same conditions in each.
class ZtOdPdsStatement : public ZtOdPdsNode {
public:
    // Copies `condition`; `name` labels the leaf and is not read back.
    ZtOdPdsStatement(const wchar_t* name, const ZtOpFindCondition& condition);

    int IsComplete() override { return 1; }
    void PushNegation() override {}
    int Flatten(ZtOdPdsRewriteBudget&) override { return 1; }
    int Walk() override { return 0; }
    void ToggleKind() override {}
    void Emit(ZtOdPdsFindSpecBuilder& builder) override;
    int IsOperation() const override { return 0; }
    int IsStatement() const override { return 1; }

    const ZtUWideString& GetName() const { return name_; }
    const ZtOpFindCondition& GetCondition() const { return condition_; }
    // Operator 0 unless a negated condition without complement needed the second
    // condition that goes out behind it.
    const ZtOpFindCondition& GetExtraCondition() const { return extraCondition_; }

    // The complement of `op` in *complement; false if it has none.
    static bool Complement(ZtOpFindConditionOp::Enum op, ZtOpFindConditionOp::Enum* complement);

private:
    ZtUWideString name_;
    ZtOpFindCondition condition_;
    ZtOpFindCondition extraCondition_;
};
