#pragma once
#include "ztplugin/ZtOpFindCondition.h"

#include <cstddef>
#include <string>

// Names are the same if they are one object, or if both their forms are equal. Two null
// names are the same; a null name and another are not.
bool ZtOpSameName(const ZtUName* a, const ZtUName* b);

// Wildcard matching of a whole text: "*" is any run of characters, "?" any one character.
bool ZtOpWildcardMatches(const wchar_t* pattern, std::size_t patternLength, const wchar_t* text,
                         std::size_t textLength, bool ignoreCase);

// The value comparison of one find condition, with its wanted side read once: values
// compare as numbers where both parse entirely as decimal numbers (blanks around them
// allowed), otherwise as text, code unit by code unit; kIgnoreCase folds ASCII letters.
// Keeps a reference to nothing: the condition may go once this is made.
class ZtOpFindComparison {
public:
    explicit ZtOpFindComparison(const ZtOpFindCondition& condition);

    // Whether `value` stands in the condition's relation to the wanted value (the
    // negation flag aside).
    bool Holds(const ZtUData& value) const;

private:
    ZtOpFindConditionOp::Enum op_;
    bool ignoreCase_;
    std::wstring wanted_;
    bool wantedIsNumber_;
    double wantedNumber_ = 0.0;
};
