#include "ztplugin/ZtOpFindSpecEvaluator.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Op = ZtOpFindConditionOp;
using Flags = ZtOpFindConditionFlags;

// An object with properties as a list, for the evaluator alone.
class Target : public ZtOpFindTarget {
public:
    void Add(const ZtUName* category, const ZtUName* name, const wchar_t* text) {
        ZtUData value;
        value.SetWideString(text);
        entries_.push_back({category, name, value});
    }
    void AddInt(const ZtUName* category, const ZtUName* name, int number) {
        ZtUData value;
        value.SetInt32(number);
        entries_.push_back({category, name, value});
    }
    std::size_t GetNumFindProperties() const override { return entries_.size(); }
    ZtOpFindProperty GetFindProperty(std::size_t index) const override {
        return {entries_[index].category, entries_[index].name, &entries_[index].value};
    }

private:
    struct Entry {
        const ZtUName* category;
        const ZtUName* name;
        ZtUData value;
    };
    std::vector<Entry> entries_;
};

class FindSpecEvaluation : public ::testing::Test {
protected:
    FindSpecEvaluation() {
        element = names.Find(L"Element", "ZtDgnElement");
        pds = names.Find(L"PDS", "ZtDgnPDSAttributes");
        level = ZtUName::StandardName(17, &names);
        colour = ZtUName::StandardName(18, &names);
        file = ZtUName::StandardName(19, &names);
        size = names.Find(L"size", "ZtDgnPDSAttribute");
        target.Add(element, level, L"Level 3");
        target.Add(element, colour, L"Colour 2");
        target.Add(element, file, L"pipes.dgn");
        target.Add(pds, size, L" 12.5 ");
    }

    ZtOpFindCondition Make(const ZtUName* category, const ZtUName* property, unsigned flags, int op,
                           const wchar_t* text) {
        ZtUData value;
        value.SetWideString(text);
        return ZtOpFindCondition(category, property, static_cast<Flags::Enum>(flags),
                                 static_cast<Op::Enum>(op), value);
    }

    ZtUNameDict names;
    const ZtUName* element;
    const ZtUName* pds;
    const ZtUName* level;
    const ZtUName* colour;
    const ZtUName* file;
    const ZtUName* size;
    Target target;
};

TEST_F(FindSpecEvaluation, ConditionOperatorsAndFlags) {
    struct Case {
        int category; // 0 none, 1 element, 2 pds
        int property; // 0 level, 1 colour, 2 file, 3 size
        unsigned flags;
        int op;
        const wchar_t* value;
        bool matches;
    };
    const Case cases[] = {
        {0, 0, 5, 6, L"Level 3", true},
        {0, 0, 5, 6, L"level 3", true},  // flag 1 ignores case
        {0, 0, 4, 6, L"level 3", false}, // without it case counts
        {0, 0, 5, 7, L"Level 3", false},
        {0, 0, 5, 7, L"Level 4", true},
        {1, 0, 5, 6, L"Level 3", true},
        {2, 0, 5, 6, L"Level 3", false}, // wrong category
        {0, 3, 9, 6, L"12.50", true},    // numbers where both sides parse
        {0, 3, 9, 8, L"100", true},      // 12.5 < 100 as numbers, not as text
        {0, 3, 9, 11, L"9", true},
        {0, 3, 9, 9, L"12.5", true},
        {0, 3, 9, 10, L"13", false},
        {0, 0, 9, 8, L"Level 30", true}, // text: "Level 3" sorts before "Level 30"
        {0, 2, 5, 13, L"p*.dgn", true},
        {0, 2, 5, 13, L"P?PES.DGN", true},
        {0, 2, 4, 13, L"P?PES.DGN", false},
        {0, 2, 5, 13, L"*.dg", false}, // the whole value must match
        {0, 2, 37, 13, L"*.dg", true}, // flag 32: has it, and the match fails
        {0, 3, 37, 13, L" 1*", false}, // ... the match holds
        {2, 1, 37, 6, L"x", false},    // ... hasn't the property: fails
        {0, 0, 37, 3, L"", true},      // flag 32 does nothing to operators 0 to 5
        {0, 0, 5, 3, L"", true},
        {0, 0, 5, 4, L"", false},
        {2, 0, 5, 3, L"", false},
        {2, 0, 5, 4, L"", true},
        {1, 0, 5, 1, L"", true},
        {2, 0, 5, 2, L"", false},
        {0, 0, 5, 1, L"", false}, // no category to have
        {0, 0, 5, 0, L"Level 3", false},
        {0, 0, 5, 5, L"Level 3", false},
        {0, 0, 5, 12, L"Level 3", false},
    };
    const ZtUName* categories[] = {nullptr, element, pds};
    const ZtUName* properties[] = {level, colour, file, size};
    for (const Case& c : cases) {
        const ZtOpFindCondition condition =
            Make(categories[c.category], properties[c.property], c.flags, c.op, c.value);
        EXPECT_EQ(ZtOpFindConditionMatches(condition, target), c.matches)
            << "op " << c.op << " flags " << c.flags << " value "
            << std::string(c.value, c.value + std::wcslen(c.value));
    }
}

TEST_F(FindSpecEvaluation, NamesFromAnotherDictionaryAreTheSameByTheirForms) {
    ZtUNameDict other;
    EXPECT_TRUE(ZtOpFindConditionMatches(
        Make(nullptr, ZtUName::StandardName(17, &other), 5, 6, L"Level 3"), target));
    EXPECT_FALSE(ZtOpFindConditionMatches(
        Make(nullptr, other.Find(L"Level", "Other"), 5, 6, L"Level 3"), target));
}

TEST_F(FindSpecEvaluation, ValuesThatAreNotTextCompareByTheirText) {
    Target numbers;
    numbers.AddInt(pds, size, 40);
    EXPECT_TRUE(ZtOpFindConditionMatches(Make(pds, size, 9, 6, L"40.0"), numbers));
    EXPECT_TRUE(ZtOpFindConditionMatches(Make(pds, size, 9, 13, L"4?"), numbers));
}

TEST_F(FindSpecEvaluation, AnyMatchingPropertyCountsAndNegationNeedsAllToFail) {
    Target two;
    two.Add(pds, size, L"1");
    two.Add(element, size, L"2");
    EXPECT_TRUE(ZtOpFindConditionMatches(Make(nullptr, size, 9, 6, L"2"), two));
    EXPECT_FALSE(ZtOpFindConditionMatches(Make(nullptr, size, 41, 6, L"2"), two));
    EXPECT_TRUE(ZtOpFindConditionMatches(Make(pds, size, 41, 6, L"2"), two));
}

TEST_F(FindSpecEvaluation, SpecIsAnOrOfAndGroups) {
    ZtOpFindSpec spec;
    EXPECT_FALSE(ZtOpFindSpecMatches(spec, target));
    spec.AddCondition(Make(nullptr, level, 5, 6, L"Level 7"));
    spec.AddCondition(Make(nullptr, colour, 5, 6, L"Colour 2"));
    EXPECT_FALSE(ZtOpFindSpecMatches(spec, target));
    spec.AddCondition(Make(nullptr, level, 69, 6, L"Level 3"));
    EXPECT_TRUE(ZtOpFindSpecMatches(spec, target));
    spec.AddCondition(Make(nullptr, colour, 5, 6, L"Colour 9"));
    EXPECT_FALSE(ZtOpFindSpecMatches(spec, target));
    spec.AddCondition(Make(nullptr, file, 69, 6, L"pipes.dgn"));
    EXPECT_TRUE(ZtOpFindSpecMatches(spec, target));
}

TEST(ZtOpWildcardMatches, Patterns) {
    struct Case {
        const wchar_t* pattern;
        const wchar_t* text;
        bool matches;
    };
    const Case cases[] = {
        {L"", L"", true},
        {L"*", L"", true},
        {L"?", L"", false},
        {L"a*b*c", L"abc", true},
        {L"a*b*c", L"aXbYbZc", true},
        {L"a*b", L"aXbYc", false},
        {L"*a", L"bbba", true},
        {L"**", L"x", true},
        {L"?*?", L"x", false},
        {L"a?c", L"abc", true},
        {L"a?c", L"ac", false},
        {L"*x*", L"abc", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ZtOpWildcardMatches(c.pattern, std::wcslen(c.pattern), c.text,
                                      std::wcslen(c.text), false),
                  c.matches);
}

} // namespace
