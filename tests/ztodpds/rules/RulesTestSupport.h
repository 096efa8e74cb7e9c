#pragma once
#include "rules/ZtOdPdsFindSpecBuilder.h"
#include "rules/ZtOdPdsOperation.h"
#include "rules/ZtOdPdsStatement.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztutil/ZtUSysString.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// Expressions and find queries in a form that tests can write down and compare whole.

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

// The expression of an infix form as Infix writes it, with leaves from Leaf: "null" for
// no node, "W~13" for a leaf with operator 13. `text` is left behind what was read.
inline ZtOdPdsNode* Parse(ZtUNameDict& names, const char*& text) {
    const bool negated = *text == '!';
    text += negated;
    ZtOdPdsNode* node = nullptr;
    if (*text == '(') {
        ++text;
        ZtOdPdsNode* left = Parse(names, text);
        const bool isAnd = std::strncmp(text, " AND ", 5) == 0;
        text += isAnd ? 5 : 4;
        ZtOdPdsNode* right = Parse(names, text);
        ++text;
        node = isAnd ? And(left, right) : Or(left, right);
    } else {
        const std::wstring label(text, text + std::strcspn(text, " )~"));
        text += label.size();
        int op = ZtOpFindConditionOp::kEqual;
        if (*text == '~') {
            op = std::atoi(++text);
            text += std::strspn(text, "0123456789");
        }
        if (label != L"null")
            node = Leaf(names, label.c_str(), static_cast<ZtOpFindConditionOp::Enum>(op));
    }
    if (negated)
        node->ToggleNegated();
    return node;
}

inline ZtOdPdsNode* Parse(ZtUNameDict& names, const std::string& infix) {
    const char* text = infix.c_str();
    return Parse(names, text);
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

// Every condition of a spec in one of the forms above: Each(spec, Short).
inline std::vector<std::string> Each(const ZtOpFindSpec& spec,
                                     std::string (*form)(const ZtOpFindCondition&)) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < spec.GetNumConditions(); ++i)
        out.push_back(form(spec.GetCondition(i)));
    return out;
}
