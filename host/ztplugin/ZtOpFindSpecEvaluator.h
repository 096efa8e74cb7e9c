#pragma once
#include "ztplugin/ZtOpFindSpec.h"

#include <cstddef>

// One property of an object as a find spec sees it. `category` may be null.
struct ZtOpFindProperty {
    const ZtUName* category;
    const ZtUName* name;
    const ZtUData* value;
};

// An object that find specs are evaluated on: its properties, in any order.
class ZtOpFindTarget {
public:
    virtual std::size_t GetNumFindProperties() const = 0;
    virtual ZtOpFindProperty GetFindProperty(std::size_t index) const = 0;

protected:
    ~ZtOpFindTarget() = default;
};

// True if `target` meets `condition`, with the operators and flags of
// ZtOpFindConditionOp and ZtOpFindConditionFlags:
// - Names are the same if they are one object, or if both their forms are equal.
// - A value comparison looks at every property of the condition's name (in its category,
//   or in any category if it has none) and holds if it holds for one of them. Values
//   compare as numbers where both parse entirely as decimal numbers (blanks around them
//   allowed), otherwise as text, code unit by code unit; kIgnoreCase folds ASCII letters.
// - kNegate on a value comparison: the target must have the property, and the comparison
//   must hold for none of its values.
bool ZtOpFindConditionMatches(const ZtOpFindCondition& condition, const ZtOpFindTarget& target);

// True if `target` meets every condition of at least one alternative of `spec`. An empty
// spec matches nothing.
bool ZtOpFindSpecMatches(const ZtOpFindSpec& spec, const ZtOpFindTarget& target);

// Wildcard matching of a whole text: "*" is any run of characters, "?" any one character.
bool ZtOpWildcardMatches(const wchar_t* pattern, std::size_t patternLength, const wchar_t* text,
                         std::size_t textLength, bool ignoreCase);
