#include "ztplugin/ZtOpFindSpecEvaluator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <limits>
#include <string>

#include <utility>
#include <vector>

namespace {

ZtUData Text(const wchar_t* text) {
    ZtUData value;
    value.SetWideString(text);
    return value;
}

// An object with properties as a list, for the evaluator alone.
class Target : public ZtOpFindTarget {
public:
    struct Entry {
        const ZtUName* category;
        const ZtUName* name;
        ZtUData value;
    };
    explicit Target(std::vector<Entry> entries) : entries_(std::move(entries)) {}
    std::size_t GetNumFindProperties() const override { return entries_.size(); }
    ZtOpFindProperty GetFindProperty(std::size_t index) const override {
        return {entries_[index].category, entries_[index].name, &entries_[index].value};
    }

private:
    std::vector<Entry> entries_;
};

class FindSpecEvaluation : public ::testing::Test {
protected:
    ZtOpFindCondition Make(const ZtUName* category, const ZtUName* property, unsigned flags, int op,
                           const wchar_t* text) {
        return ZtOpFindCondition(category, property,
                                 static_cast<ZtOpFindConditionFlags::Enum>(flags),
                                 static_cast<ZtOpFindConditionOp::Enum>(op), Text(text));
    }

    ZtUNameDict names;
    ZtUNameDict other;
    const ZtUName* element = names.Find(L"Element", "ZtDgnElement");
    const ZtUName* pds = names.Find(L"PDS", "ZtDgnPDSAttributes");
    const ZtUName* level = ZtUName::StandardName(17, &names);
    const ZtUName* colour = ZtUName::StandardName(18, &names);
    const ZtUName* file = ZtUName::StandardName(19, &names);
    const ZtUName* size = names.Find(L"size", "ZtDgnPDSAttribute");
    Target plant{{{element, level, Text(L"Level 3")},
                  {element, colour, Text(L"Colour 2")},
                  {element, file, Text(L"pipes.dgn")},
                  {pds, size, Text(L" 12.5 ")}}};
};

TEST_F(FindSpecEvaluation, ConditionOperatorsAndFlags) {
    ZtUData forty;
    forty.SetInt32(40);
    const Target number({{pds, size, forty}});
    const Target twoSizes({{pds, size, Text(L"1")}, {element, size, Text(L"2")}});
    const Target* targets[] = {&plant, &number, &twoSizes};
    const ZtUName* categories[] = {nullptr, element, pds};
    const ZtUName* properties[] = {level,
                                   colour,
                                   file,
                                   size,
                                   ZtUName::StandardName(17, &other),
                                   other.Find(L"Level", "Other")};
    struct Case {
        int target;   // 0 plant, 1 the number 40, 2 two sizes
        int category; // 0 none, 1 element, 2 pds
        int property; // 0 level, 1 colour, 2 file, 3 size, 4 and 5 levels of another dictionary
        unsigned flags;
        int op;
        const wchar_t* value;
        bool matches;
    };
    const Case cases[] = {
        {0, 0, 0, 5, 6, L"Level 3", true},
        {0, 0, 0, 5, 6, L"level 3", true},  // flag 1 ignores case
        {0, 0, 0, 4, 6, L"level 3", false}, // without it case counts
        {0, 0, 0, 5, 7, L"Level 3", false},
        {0, 0, 0, 5, 7, L"Level 4", true},
        {0, 1, 0, 5, 6, L"Level 3", true},
        {0, 2, 0, 5, 6, L"Level 3", false}, // wrong category
        {0, 0, 3, 9, 6, L"12.50", true},    // numbers where both sides parse
        {0, 0, 3, 9, 8, L"100", true},      // 12.5 < 100 as numbers, not as text
        {0, 0, 3, 9, 11, L"9", true},
        {0, 0, 3, 9, 9, L"12.5", true},
        {0, 0, 3, 9, 10, L"13", false},
        {0, 0, 0, 9, 8, L"Level 30", true}, // text: "Level 3" sorts before "Level 30"
        {0, 0, 2, 5, 13, L"p*.dgn", true},
        {0, 0, 2, 5, 13, L"P?PES.DGN", true},
        {0, 0, 2, 4, 13, L"P?PES.DGN", false},
        {0, 0, 2, 5, 13, L"*.dg", false}, // the whole value must match
        {0, 0, 2, 37, 13, L"*.dg", true}, // flag 32: has it, and the match fails
        {0, 0, 3, 37, 13, L" 1*", false}, // ... the match holds
        {0, 2, 1, 37, 6, L"x", false},    // ... hasn't the property: fails
        {0, 0, 0, 37, 3, L"", true},      // flag 32 does nothing to operators 0 to 5
        {0, 0, 0, 5, 3, L"", true},
        {0, 0, 0, 5, 4, L"", false},
        {0, 2, 0, 5, 3, L"", false},
        {0, 2, 0, 5, 4, L"", true},
        {0, 1, 0, 5, 1, L"", true},
        {0, 2, 0, 5, 2, L"", false},
        {0, 0, 0, 5, 1, L"", false}, // no category to have
        {0, 0, 0, 5, 0, L"Level 3", false},
        {0, 0, 0, 5, 5, L"Level 3", false},
        {0, 0, 0, 5, 12, L"Level 3", false},
        // Names of another dictionary are the same where both their forms are.
        {0, 0, 4, 5, 6, L"Level 3", true},
        {0, 0, 5, 5, 6, L"Level 3", false},
        // Values that are not text compare by their text.
        {1, 2, 3, 9, 6, L"40.0", true},
        {1, 2, 3, 9, 13, L"4?", true},
        // Any matching property counts; a negated condition needs all of them to fail.
        {2, 0, 3, 9, 6, L"2", true},
        {2, 0, 3, 41, 6, L"2", false},
        {2, 2, 3, 41, 6, L"2", true},
    };
    for (const Case& c : cases) {
        const ZtOpFindCondition condition =
            Make(categories[c.category], properties[c.property], c.flags, c.op, c.value);
        EXPECT_EQ(ZtOpFindConditionMatches(condition, *targets[c.target]), c.matches)
            << "target " << c.target << " op " << c.op << " flags " << c.flags << " value "
            << ::testing::PrintToString(c.value);
    }
}

TEST_F(FindSpecEvaluation, SpecIsAnOrOfAndGroups) {
    ZtOpFindSpec spec;
    EXPECT_FALSE(ZtOpFindSpecMatches(spec, plant));
    const std::pair<ZtOpFindCondition, bool> steps[] = {
        {Make(nullptr, level, 5, 6, L"Level 7"), false},
        {Make(nullptr, colour, 5, 6, L"Colour 2"), false},
        {Make(nullptr, level, 69, 6, L"Level 3"), true}, // flag 64 opens the next group
        {Make(nullptr, colour, 5, 6, L"Colour 9"), false},
        {Make(nullptr, file, 69, 6, L"pipes.dgn"), true},
    };
    for (const auto& [condition, matches] : steps) {
        spec.AddCondition(condition);
        EXPECT_EQ(ZtOpFindSpecMatches(spec, plant), matches) << spec.GetNumConditions();
    }
}

// Values that are not text compare as their text would, also where that text is never
// made: numbers against numbers, anything else as text.
TEST(ZtOpFindComparison, ValuesOfEveryKindCompareAsTheirText) {
    ZtUNameDict names;
    const ZtUName* size = names.Find(L"size", "size");
    auto value = [&](int kind, double number) {
        ZtUData data;
        switch (kind) {
        case 0:
            data.SetInt64(static_cast<std::int64_t>(number));
            break;
        case 1:
            data.SetUInt64(~std::uint64_t{0});
            break;
        case 2:
            data.SetDouble(number);
            break;
        case 3:
            data.SetBool(number != 0);
            break;
        case 4:
            data.SetName(names.Find(L"Level 3", "level3"));
            break;
        }
        return data;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    struct Case {
        int kind; // 0 int64, 1 the largest uint64, 2 double, 3 bool, 4 a name, 5 empty
        double number;
        int op;
        const wchar_t* wanted;
        bool holds;
    };
    const Case cases[] = {
        {0, 10, 6, L"1e1", true},
        {0, 10, 6, L" 10.0 ", true},
        {0, 7, 11, L"10", false}, // as numbers, where "7" > "10" as text
        {0, -5, 8, L"-4.5", true},
        {0, 9007199254740993.0, 6, L"9007199254740992", true}, // both round alike
        {0, 12, 13, L"1?", true},
        {0, 12, 6, L"12x", false},
        {0, 12, 8, L"a", true}, // "12" < "a" as text
        {1, 0, 6, L"18446744073709551615", true},
        {2, 0.1, 6, L"0.1", true},
        {2, 0.1 + 0.2, 6, L"0.3", false},
        {2, 1e300, 11, L"1e299", true},
        {2, -0.0, 6, L"0", true},
        {2, 0.5, 13, L"0.5", true},
        {2, nan, 6, L"nan", true}, // not a number: as text
        {2, inf, 10, L"1e308", true},
        {2, -inf, 8, L"-9", false}, // as text: "-inf" sorts after "-9"
        {3, 1, 6, L"1.0", true},
        {3, 0, 8, L"1", true},
        {4, 0, 6, L"Level 3", true},
        {4, 0, 8, L"9", false}, // "Level 3" > "9" as text
        {5, 0, 6, L"", true},
        {5, 0, 8, L"1", true},
    };
    for (const Case& c : cases) {
        ZtUData wanted;
        wanted.SetWideString(c.wanted);
        const ZtOpFindComparison comparison(
            ZtOpFindCondition(nullptr, size, ZtOpFindConditionFlags::kNone,
                              static_cast<ZtOpFindConditionOp::Enum>(c.op), wanted));
        EXPECT_EQ(comparison.Holds(value(c.kind, c.number)), c.holds)
            << "kind " << c.kind << " " << c.number << " op " << c.op << " "
            << ::testing::PrintToString(c.wanted);
    }
}

// One evaluator over objects one after another: what it resolved for one layout of names
// must not carry over to objects named otherwise, nor a result to the next object.
TEST_F(FindSpecEvaluation, EvaluatorFollowsEachObjectsNames) {
    ZtUData nine;
    nine.SetInt32(9);
    const ZtUName* otherLevel = ZtUName::StandardName(17, &other);
    const Target objects[] = {
        plant,
        Target({{pds, level, Text(L"Level 3")}, // the names of plant's, one in another category
                {element, colour, Text(L"Colour 2")},
                {element, file, Text(L"pipes.dgn")},
                {pds, size, Text(L" 12.5 ")}}),
        Target({{element, level, Text(L"Level 4")},
                {element, colour, Text(L"Colour 2")},
                {element, file, Text(L"pipes.dgn")},
                {pds, size, Text(L" 12.5 ")}}),
        Target({{element, file, Text(L"steel.dgn")}, {element, level, Text(L"Level 3")}}),
        Target({{element, otherLevel, Text(L"Level 3")}, {pds, size, nine}}),
        Target({{element, other.Find(L"Level", "Other"), Text(L"Level 3")}, {pds, size, nine}}),
        Target({{element, level, Text(L"Level 3")}, {pds, nullptr, nine}}),
        Target({}),
        plant,
    };
    ZtOpFindSpec levelThree, orColour, hasPds, notPipes, noSize, exactCase;
    levelThree.AddCondition(Make(element, level, 5, 6, L"level 3"));
    orColour.Follow(levelThree);
    orColour.AddCondition(Make(element, level, 5, 6, L"level 3"));
    orColour.AddCondition(Make(nullptr, file, 1, 13, L"p*"));
    orColour.AddCondition(Make(nullptr, colour, 65, 6, L"Colour 2"));
    hasPds.AddCondition(Make(pds, nullptr, 0, 1, L""));
    hasPds.AddCondition(Make(pds, size, 0, 8, L"10"));
    notPipes.AddCondition(Make(nullptr, file, 33, 13, L"pipes*"));
    noSize.AddCondition(Make(nullptr, size, 0, 4, L""));
    exactCase.AddCondition(Make(element, level, 4, 6, L"level 3")); // levelThree's, but for case
    const std::vector<const ZtOpFindSpec*> specs = {&levelThree, &orColour, &hasPds,
                                                    &notPipes,   &noSize,   &exactCase};
    // For each object, which find queries it meets.
    const char* expected[] = {"110000", "010000", "010000", "100110", "101000",
                              "001000", "100010", "000010", "110000"};
    ZtOpFindSpecEvaluator evaluator(specs);
    for (std::size_t o = 0; o < std::size(objects); ++o) {
        std::vector<ZtOpFindProperty> properties;
        for (std::size_t i = 0; i < objects[o].GetNumFindProperties(); ++i)
            properties.push_back(objects[o].GetFindProperty(i));
        evaluator.SetObject(properties.data(), properties.size());
        std::string met;
        for (std::size_t s = 0; s < specs.size(); ++s) {
            met += evaluator.Matches(s) ? '1' : '0';
            EXPECT_EQ(ZtOpFindSpecMatches(*specs[s], objects[o]), met.back() == '1') << o << s;
        }
        EXPECT_EQ(met, expected[o]) << "object " << o;
    }
}

// Objects of one layout, as a model's elements: results kept by the texts at the places
// read must be those of each object evaluated alone, whatever comes before it, missing
// values and values that are not text included.
TEST_F(FindSpecEvaluation, EvaluatorKeepsResultsByTheTextsRead) {
    ZtOpFindSpec levelAndFile, bigOrSteel;
    levelAndFile.AddCondition(Make(element, level, 5, 6, L"level 3"));
    levelAndFile.AddCondition(Make(nullptr, file, 33, 13, L"steel*"));
    bigOrSteel.AddCondition(Make(pds, size, 0, 11, L"10"));
    bigOrSteel.AddCondition(Make(nullptr, file, 65, 6, L"steel.dgn"));
    ZtOpFindSpecEvaluator evaluator({&levelAndFile, &bigOrSteel});
    ZtUData levels[] = {Text(L"Level 3"), Text(L"Level 4")};
    ZtUData files[] = {Text(L"pipes.dgn"), Text(L"steel.dgn")};
    ZtUData sizes[] = {Text(L"12"), Text(L"9"), ZtUData(), Text(L"")}; // 40 reads as no text
    sizes[2].SetInt32(40);
    std::string met;
    for (int i = 0; i < 48; ++i) {
        const ZtOpFindProperty properties[] = {
            {element, level, &levels[i % 2]},
            {element, file, i % 5 == 4 ? nullptr : &files[i / 2 % 2]},
            {pds, size, i % 7 == 6 ? nullptr : &sizes[i / 4 % 4]},
        };
        evaluator.SetObject(properties, std::size(properties));

        struct Listed : ZtOpFindTarget {
            std::vector<ZtOpFindProperty> list;
            std::size_t GetNumFindProperties() const override { return list.size(); }
            ZtOpFindProperty GetFindProperty(std::size_t i) const override { return list[i]; }
        } target;
        target.list.assign(std::begin(properties), std::end(properties));
        for (std::size_t s = 0; s < 2; ++s) {
            met += evaluator.Matches(s) ? '1' : '0';
            EXPECT_EQ(ZtOpFindSpecMatches(s == 0 ? levelAndFile : bigOrSteel, target),
                      met.back() == '1')
                << "object " << i << " spec " << s;
        }
    }
    EXPECT_NE(met.find('1'), std::string::npos);
    EXPECT_NE(met.find('0'), std::string::npos);
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
                  c.matches)
            << ::testing::PrintToString(c.pattern) << " " << ::testing::PrintToString(c.text);
}

} // namespace
