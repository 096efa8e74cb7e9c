#include "DisplaySetFilesTestSupport.h"

#include "displaysets/ZtOdPdsDstImportAction.h"
#include "support/ZtTestRecordingDiagnostics.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using C = ZtOdPdsCheck;

// Imports `path` with a sink or without; the selection sets that came in.
std::vector<std::string> Import(const std::wstring& path, ZtOdPdsDiagnostics* sink) {
    ZtOpState state;
    ZtOdPdsDstImportAction action(&state);
    action.SetDiagnostics(sink);
    EXPECT_EQ(action.Perform(path.c_str(), nullptr), 0);
    return DescribeSets(action.GetFolder());
}

std::string Repeated(const std::string& text, int times) {
    std::string out;
    for (int i = 0; i < times; ++i)
        out += text;
    return out;
}

TEST(ZtOdPdsDstReport, EachLineStatementAndSetIsReportedWhereItStands) {
    const std::string set = "[DEFINITION SECTION]\n<Display Set>\n1 s\n<Definition>\n";
    const struct Case {
        std::string text;
        std::vector<ZtTestHeard> heard;
    } cases[] = {
        {set + "FIND Level 1, 2\nADD Color 3\nKEEP ONLY Data nps  = 6\nTHROW AWAY File a.dgn\n"
               "ADD\nFIND Level 9\nEND FIND\nEND FIND\n",
         {}},
        {set + "FIND Level abc, 10-12, 7\n",
         {{C::kListNumber, 5, 12, 0}, {C::kListNumber, 5, 17, 10}}},
        {set + "FIND Level 1\nFIND Level 2\n", {{C::kSecondFind, 6, 6}}},
        {set + "find Level 1\nFIND Level 1\n", {{C::kNotStatement, 5, 1}}},
        {set + "FIND Colour 1\nFIND  Level 1\nFIND\nFIND Level 1\n",
         {{C::kCriterion, 5, 6, 1}, {C::kCriterion, 6, 6, 1}, {C::kCriterion, 7, 5, 0}}},
        {set + "FIND-Level 1\nEND FIND now\nEND FIND\n",
         {{C::kSeparator, 5, 5}, {C::kEndFindText, 6, 10}, {C::kNoScope, 7, 1, 1}}},
        {set + "FIND Data nps = 6\nADD Data size  >= 6*\nADD Data size  =x\nADD Data novalue\n",
         {{C::kDataAttribute, 5, 13, 1},
          {C::kDataOperator, 6, 16, 2},
          {C::kDataValue, 7, 17, 0},
          {C::kDataOperator, 8, 10, 0}}},
        // References to a later, an unknown and the set itself, and to a set that yields
        // nothing; the later and the unknown are told apart at the section's end.
        {"[DEFINITION SECTION]\n<Display Set>\n1 a\n<Definition>\nFIND Display Set b, c, a\n"
         "<Display Set>\n2 b\n<Definition>\nFIND Level 1\n"
         "<Display Set>\n3 e\n<Definition>\nADD Level 1\n"
         "<Display Set>\n4 d\n<Definition>\nFIND Display Set e\n",
         {{C::kSetReference, 5, 24, 2},
          {C::kSetEmpty, 2, 1, kZtOdPdsSetIncomplete},
          {C::kSetEmpty, 10, 1, kZtOdPdsSetNoFind},
          {C::kSetReference, 17, 18, 3},
          {C::kSetEmpty, 14, 1, kZtOdPdsSetNothing},
          {C::kSetReference, 5, 18, 1},
          {C::kSetReference, 5, 21, 0}}},
        {"[definition section]\n<Display Set>\n1 x\n[DEFINITION SECTION]\n<Display Set>\n"
         "Main pipes\n<Definition>\nFIND Level 1\n<Display Set> 2\n<Display Set>\n3\n"
         "<Definition>\nFIND Level 1\n<Display Set>\n<Foo>\nFIND Level 2\n<Definition>\n"
         "FIND Level 3\n",
         {{C::kSection, 1, 1},
          {C::kSetOutsideSection, 2, 1},
          {C::kSetName, 6, 1, 0},
          {C::kMarkerLine, 9, 1},
          {C::kSetName, 11, 1, 1},
          {C::kSetName, 15, 1, 2},
          {C::kIgnoredLines, 15, 1, 1}}},
        {set + "FIND Level 1\n" + Repeated("ADD\n", 10000),
         {{C::kSetEmpty, 2, 1, kZtOdPdsSetScopeDepth}}},
        {set + "FIND Level " + Repeated("1, ", 200) + "\n",
         {{C::kLineSplit, 5, 512, 511}, {C::kNotStatement, 5, 513}}},
    };
    for (const Case& c : cases) {
        ZtTestTempDir dir;
        ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.dst"), c.text));
        ZtTestRecordingDiagnostics heard;
        EXPECT_EQ(Import(dir.WideFile("t.dst"), &heard), Import(dir.WideFile("t.dst"), nullptr))
            << c.text.substr(0, 300);
        EXPECT_EQ(heard.Heard({C::kFactSection, C::kFactOutsideSection}), c.heard)
            << c.text.substr(0, 300);
    }
}

// Once the file's budget of conditions is spent, every later set is abandoned: one report
// counts them, and nothing is said of what else befalls them.
TEST(ZtOdPdsDstReport, ASpentBudgetIsReportedOnceWithTheSetsItAbandons) {
    // 19 doublings to 524,288 conditions, then sets of them until the budget is spent.
    std::string text = "[DEFINITION SECTION]\n<Display Set>\n0 s0\n<Definition>\nFIND Level 1\n";
    for (int k = 1; k < 20; ++k)
        text += "<Display Set>\n" + std::to_string(k) + " s" + std::to_string(k) +
                "\n<Definition>\nFIND Display Set s" + std::to_string(k - 1) +
                "\nADD Display Set s" + std::to_string(k - 1) + "\n";
    for (int k = 0; k < 10; ++k)
        text += "<Display Set>\n" + std::to_string(100 + k) + " r" + std::to_string(k) +
                "\n<Definition>\nFIND Display Set s19\n";
    text += "<Display Set>\n200 late\n<Definition>\nFIND Display Set unknown\n";
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.dst"), text));
    ZtTestRecordingDiagnostics heard;
    Import(dir.WideFile("t.dst"), &heard);
    EXPECT_EQ(heard.Heard({C::kFactSection}),
              (std::vector<ZtTestHeard>{{C::kSetEmpty, 121, 1, kZtOdPdsSetFileBudget}}));
    EXPECT_EQ(heard.records.back().diagnostic.figures[1], 6) << "r5 to r9, and late";
}

} // namespace
