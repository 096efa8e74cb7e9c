#pragma once
#include "rules/ZtOdPdsFindSpecBuilder.h"
#include "rules/ZtOdPdsOperation.h"
#include "rules/ZtOdPdsStatement.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztutil/ZtUSysString.h"

#include <string>
#include <vector>

// Expressions and find specs in a form that tests can write down and compare whole.

// A statement whose condition has the property "P", flags 5, operator `op` and the value
// `label`.
inline ZtOdPdsStatement* Leaf(ZtUNameDict& names, const wchar_t* label,
                              ZtOpFindConditionOp::Enum op = ZtOpFindConditionOp::kEqual) {
    ZtUData value;
    value.SetWideString(label);
    return new ZtOdPdsStatement(
        label, ZtOpFindCondition(nullptr, names.Find(L"P", "P"),
                                 static_cast<ZtOpFindConditionFlags::Enum>(5), op, value));
}

inline ZtOdPdsOperation* And(ZtOdPdsNode* left, ZtOdPdsNode* right) {
    return new ZtOdPdsOperation(left, ZtOdPdsOperation::kAnd, right);
}

inline ZtOdPdsOperation* Or(ZtOdPdsNode* left, ZtOdPdsNode* right) {
    return new ZtOdPdsOperation(left, ZtOdPdsOperation::kOr, right);
}

inline ZtOdPdsNode* Not(ZtOdPdsNode* node) {
    node->ToggleNegated();
    return node;
}

inline std::string Narrow(const std::wstring& text) {
    return ZtUSysString::WideToUtf8(text);
}

// The infix form of an expression: "(A AND !B)"; "!" marks a negated node.
inline std::string Infix(const ZtOdPdsNode* node) {
    if (!node)
        return "null";
    const std::string negation = node->IsNegated() ? "!" : "";
    if (node->IsStatement())
        return negation + Narrow(static_cast<const ZtOdPdsStatement*>(node)->GetName().Str());
    const auto* operation = static_cast<const ZtOdPdsOperation*>(node);
    return negation + "(" + Infix(operation->GetLeft()) +
           (operation->GetKind() == ZtOdPdsOperation::kAnd ? " AND " : " OR ") +
           Infix(operation->GetRight()) + ")";
}

// A condition as "value" with its operator and flags where they differ from those of
// Leaf: "~op" for another operator, "+flags" for flags other than 5 and 64, and a "*"
// in front for flag 64. Enough for specs whose conditions come from Leaf.
inline std::string Short(const ZtOpFindCondition& condition) {
    std::string text;
    const unsigned flags = condition.GetFlags();
    if (flags & ZtOpFindConditionFlags::kNewAlternative)
        text += "*";
    text += Narrow(condition.GetValue().GetWideString());
    if (condition.GetCondition() != ZtOpFindConditionOp::kEqual)
        text += "~" + std::to_string(condition.GetCondition());
    const unsigned rest = flags & ~static_cast<unsigned>(ZtOpFindConditionFlags::kNewAlternative);
    if (rest != 5)
        text += "+" + std::to_string(rest);
    return text;
}

inline std::vector<std::string> Shorts(const ZtOpFindSpec& spec) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < spec.GetNumConditions(); ++i)
        out.push_back(Short(spec.GetCondition(i)));
    return out;
}

// Everything of a condition: "category|property|flags|op|value", with the internal and
// display form of each name ("-" for none).
inline std::string Full(const ZtOpFindCondition& condition) {
    auto name = [](const ZtUName* n) {
        return n ? n->GetInternal().Str() + "/" + Narrow(n->GetDisplay().Str()) : std::string("-");
    };
    return name(condition.GetCategory()) + "|" + name(condition.GetProperty()) + "|" +
           std::to_string(condition.GetFlags()) + "|" + std::to_string(condition.GetCondition()) +
           "|" + Narrow(condition.GetValue().GetWideString());
}

inline std::vector<std::string> Fulls(const ZtOpFindSpec& spec) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < spec.GetNumConditions(); ++i)
        out.push_back(Full(spec.GetCondition(i)));
    return out;
}
