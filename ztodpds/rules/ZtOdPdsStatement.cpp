#include "rules/ZtOdPdsStatement.h"

#include "rules/ZtOdPdsFindSpecBuilder.h"

ZtOdPdsStatement::ZtOdPdsStatement(const wchar_t* name, const ZtOpFindCondition& condition)
    : name_(name), condition_(condition) {}

bool ZtOdPdsStatement::Complement(ZtOpFindConditionOp::Enum op,
                                  ZtOpFindConditionOp::Enum* complement) {
    using Op = ZtOpFindConditionOp;
    switch (op) {
    case Op::kHasCategory:
        *complement = Op::kHasNotCategory;
        return true;
    case Op::kHasNotCategory:
        *complement = Op::kHasCategory;
        return true;
    case Op::kHasProperty:
        *complement = Op::kHasNotProperty;
        return true;
    case Op::kHasNotProperty:
        *complement = Op::kHasProperty;
        return true;
    case Op::kEqual:
        *complement = Op::kNotEqual;
        return true;
    case Op::kNotEqual:
        *complement = Op::kEqual;
        return true;
    case Op::kLess:
        *complement = Op::kGreaterEqual;
        return true;
    case Op::kLessEqual:
        *complement = Op::kGreater;
        return true;
    case Op::kGreaterEqual:
        *complement = Op::kLess;
        return true;
    case Op::kGreater:
        *complement = Op::kLessEqual;
        return true;
    default:
        return false;
    }
}

void ZtOdPdsStatement::Emit(ZtOdPdsFindSpecBuilder& builder) {
    if (IsNegated()) {
        ZtOpFindConditionOp::Enum complement;
        if (Complement(condition_.GetCondition(), &complement)) {
            condition_.SetCondition(complement);
        } else {
            // No operator says "not this": the condition is marked negated, and a second
            // condition in the same group requires the property to be there.
            condition_.AddFlags(ZtOpFindConditionFlags::kNegate);
            extraCondition_ = condition_;
            extraCondition_.SetCondition(ZtOpFindConditionOp::kHasProperty);
        }
        SetNegated(0);
    }
    if (!builder.AddCondition(condition_))
        return;
    if (extraCondition_.GetCondition() != ZtOpFindConditionOp::kNone)
        builder.AddCondition(extraCondition_);
}
