#pragma once
#include "ztutil/ZtUComponent.h"
#include "ztutil/ZtUVector.h"
#include "ztutil/ZtUWideString.h"

#include <cstddef>
#include <cstdint>

class ZtOdPdsNode;
class ZtOdPdsRuleReporter;
struct ZtOdPdsDstContext;

// Where a criterion's text stands, for a parse that reports what it makes of the text:
// the reporter, and the offset of the text's first character in the line being read.
struct ZtOdPdsCriterionSpot {
    ZtOdPdsRuleReporter* reporter;
    std::size_t offset;
};

// The part of a statement that says which objects are meant. A criterion parses its text
// when it is made and turns it into expression nodes only when its display set ends, so
// that references to other display sets see the sets ended by then. The base class stands
// for a text that names no known criterion.
class ZtOdPdsCriterion {
public:
    enum Kind { kData = 0, kFile = 1, kLevel = 2, kColour = 3, kDisplaySet = 4, kUnknown = 5 };

    ZtOdPdsCriterion() : kind_(kUnknown) {}
    ZtOdPdsCriterion(const ZtOdPdsCriterion&) = delete;
    ZtOdPdsCriterion& operator=(const ZtOdPdsCriterion&) = delete;
    virtual ~ZtOdPdsCriterion() = default;

    // The expression for the criterion, or null; its new nodes have no holder yet.
    virtual ZtOdPdsNode* Evaluate(ZtOdPdsDstContext*) { return nullptr; }

    int GetKind() const { return kind_; }

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();

protected:
    explicit ZtOdPdsCriterion(int kind) : kind_(kind) {}

private:
    int kind_;
};

// A comparison on a PDS attribute: the name, two separator characters, an operator, one
// separator character, the value.
class ZtOdPdsDataCriterion : public ZtOdPdsCriterion {
public:
    enum Comparison {
        kNoOperator = 0,
        kEqual = 1,
        kGreater = 2,
        kGreaterEqual = 3,
        kLess = 4,
        kLessEqual = 5,
        kWildcard = 6,
    };

    // `spot`, if given, hears what the parse makes of the text.
    explicit ZtOdPdsDataCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot = nullptr);
    ~ZtOdPdsDataCriterion() override = default;

    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context) override;

    const ZtUWideString& GetAttribute() const { return attribute_; }
    int GetComparison() const { return comparison_; }
    const ZtUWideString& GetValue() const { return value_; }

private:
    ZtUWideString attribute_;
    int comparison_ = kNoOperator;
    ZtUWideString value_;
};

// A list of source files, separated by commas.
class ZtOdPdsFileCriterion : public ZtOdPdsCriterion {
public:
    explicit ZtOdPdsFileCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot = nullptr);
    ~ZtOdPdsFileCriterion() override = default;

    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context) override;

    const ZtUOwnPtrVector<ZtUWideString>& GetFiles() const { return files_; }

private:
    ZtUOwnPtrVector<ZtUWideString> files_;
};

// A list of DGN levels, separated by commas.
class ZtOdPdsLevelCriterion : public ZtOdPdsCriterion {
public:
    explicit ZtOdPdsLevelCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot = nullptr);
    ~ZtOdPdsLevelCriterion() override = default;

    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context) override;

    const ZtUInt32Vector& GetLevels() const { return levels_; }

private:
    ZtUInt32Vector levels_;
};

// A list of DGN colours, separated by commas.
class ZtOdPdsColourCriterion : public ZtOdPdsCriterion {
public:
    explicit ZtOdPdsColourCriterion(const wchar_t* text,
                                    const ZtOdPdsCriterionSpot* spot = nullptr);
    ~ZtOdPdsColourCriterion() override = default;

    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context) override;

    const ZtUInt32Vector& GetColours() const { return colours_; }

private:
    ZtUInt32Vector colours_;
};

// A list of names of display sets that ended earlier in the same section. Their trees are
// shared, not copied.
class ZtOdPdsDisplaySetCriterion : public ZtOdPdsCriterion {
public:
    explicit ZtOdPdsDisplaySetCriterion(const wchar_t* text,
                                        const ZtOdPdsCriterionSpot* spot = nullptr);
    ~ZtOdPdsDisplaySetCriterion() override = default;

    ZtOdPdsNode* Evaluate(ZtOdPdsDstContext* context) override;

    const ZtUOwnPtrVector<ZtUWideString>& GetSets() const { return sets_; }

private:
    ZtUOwnPtrVector<ZtUWideString> sets_;
};

// The decimal number at the head of `text`, blanks before it skipped, as the C library's
// wcstol reads it where a long has 32 bits: 0 if there is none, the nearest 32-bit value
// if it is out of range.
std::int32_t ZtOdPdsParseInt32(const wchar_t* text);

// The criterion that `text` begins with ("Data", "File", "Level", "Color", "Display
// Set"), made from the text one character behind that word; a criterion of kind kUnknown
// for any other text, and null for an empty one. `spot`, if given, hears what the parse
// makes of the text.
ZtOdPdsCriterion* ZtOdPdsMakeCriterion(const wchar_t* text,
                                       const ZtOdPdsCriterionSpot* spot = nullptr);
