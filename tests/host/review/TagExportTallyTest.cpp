#include "review/TagExportTally.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Fate = TagExportTally::Fate;

// The pieces an export prints for one tag of `body` (written as it stands, with `count`
// as its count), seen with a field of `degrees`.
std::vector<std::wstring> TagPieces(std::uint64_t id, const std::wstring& body, int count,
                                    int degrees = 45) {
    return {L"persp_ang{" + std::to_wstring(degrees) + L"}\n",
            L"tag{" + std::to_wstring(static_cast<long long>(id)) + L" 1 0 0.000000 1 2 3\n",
            L"p{1 2 3}\n", L"text{" + std::to_wstring(count) + L"\n" + body + L"}}\n"};
}

TagExportTally::Record Tally(const std::vector<std::wstring>& pieces, std::string* problem) {
    TagExportTally tally(1, {}, false);
    for (const std::wstring& piece : pieces)
        tally.Wrote(piece);
    *problem = tally.GetProblems().empty() ? "" : tally.GetProblems()[0];
    return tally.GetRecords().at(0);
}

// What becomes of a record when the file is read back, and why.
TEST(TagExportTally, SaysWhatTheFormatCantCarryBack) {
    const std::wstring pair{0xD83D, 0xDE00};
    const struct {
        std::wstring body;
        int count;
        int degrees;
        Fate fate;
        const char* problem; // the start of the warning; null for none
    } cases[] = {
        {L"Check this valve.", 17, 45, Fate::kReadsBack, nullptr},
        {L"ab}cd" + pair, 7, 45, Fate::kReadsBack, nullptr},
        {L"Flange rating {PN 16}", 21, 45, Fate::kLosesTheRest, "tag 7's text ends in a brace"},
        {L"x{", 2, 45, Fate::kLosesTheRest, "tag 7's text ends in a brace"},
        {L"x", 1, 45, Fate::kLosesTheRest, "tag 7's text has fewer than two characters"},
        {L"", 0, 45, Fate::kLosesTheRest, "tag 7's text has fewer than two characters"},
        // Printed with "%s", a text is cut at its NUL, while its count covers it all.
        {L"cut", 7, 45, Fate::kLosesTheRest, "tag 7's text holds a NUL"},
        {L"a\r\nb", 4, 45, Fate::kLosesTheRest, "tag 7's text holds a CR before a line end"},
        {std::wstring{L'a', 0xFFFF, L'b'}, 3, 45, Fate::kLosesTheRest, "tag 7's text holds U+FFFF"},
        {std::wstring{L'a', 0xD800, L'b'}, 3, 45, Fate::kChanged,
         "tag 7's text holds a lone surrogate"},
        {L"fine", 4, 0, Fate::kLost, "tag 7 is seen with a field of view of 0 degrees"},
        {L"fine", 4, 180, Fate::kLost, "tag 7 is seen with a field of view of 180 degrees"},
        {L"fine", 4, 179, Fate::kReadsBack, nullptr},
    };
    for (const auto& c : cases) {
        std::string problem;
        const TagExportTally::Record record =
            Tally(TagPieces(7, c.body, c.count, c.degrees), &problem);
        EXPECT_EQ(record.id, 7u);
        EXPECT_EQ(record.fate, c.fate) << problem;
        if (c.problem)
            EXPECT_EQ(problem.rfind(c.problem, 0), 0u) << problem;
        else
            EXPECT_EQ(problem, "");
    }
}

// Counts from the prints; a repeated identifier in one reader's view is a problem only
// with another text; a model name that can't name a group is named with what was
// written; a non-empty file left empty warns, and with keepOldFile keeps the old file.
TEST(TagExportTally, CountsGroupsAndKeepsTheOldFileWhenAsked) {
    TagExportTally tally(5, {L"plain.dgn", L"p}}\n.dgn"}, true);
    std::vector<std::wstring> pieces = {L"file{0n{}}\n"};
    for (const std::wstring& piece : TagPieces(1, L"same", 4))
        pieces.push_back(piece);
    pieces.push_back(L"file{1n{p___.dgn}}\n");
    pieces.push_back(L"tag{1 1 0 0.000000 1 2 3\n");
    pieces.push_back(L"text{4\nsame}}\n");
    pieces.push_back(L"tag{-1 1 0 0.000000 1 2 3\n");
    pieces.push_back(L"text{5\nother}}\n");
    pieces.push_back(L"tag{1 1 0 0.000000 1 2 3\n");
    pieces.push_back(L"text{5\nother}}\n");
    for (const std::wstring& piece : pieces)
        tally.Wrote(piece);
    ASSERT_EQ(tally.GetRecords().size(), 4u);
    EXPECT_EQ(tally.GetUnfiled(), 1u);
    EXPECT_EQ(tally.GetFileGroups(), 1u);
    EXPECT_EQ(tally.GetRecords()[1].fate, Fate::kReadsBack);
    EXPECT_EQ(tally.GetRecords()[2].id, 18446744073709551615u);
    EXPECT_EQ(tally.GetRecords()[3].fate, Fate::kChanged);
    EXPECT_FALSE(tally.MayReplace({"out.tag", 100, 50})) << "problems keep the old file";
    EXPECT_TRUE(tally.KeptOldFile());
    const std::vector<std::string> expected = {
        "the model file name \"p}}\n.dgn\" holds braces or line ends, which a tag file can't "
        "hold in a group's name: the group is written as \"p___.dgn\"",
        "tag 1 shares its identifier with an earlier tag of its view, whose text a reader "
        "gives it",
        "1 of 5 tags were not written"};
    EXPECT_EQ(tally.GetProblems(), expected);

    TagExportTally empty(0, {}, false);
    EXPECT_TRUE(empty.MayReplace({"old.tag", 0, 12}));
    EXPECT_EQ(empty.GetProblems(), std::vector<std::string>{"nothing to write: the 12-byte file "
                                                            "old.tag is left empty"});
    EXPECT_FALSE(empty.KeptOldFile());
    TagExportTally fresh(0, {}, true);
    EXPECT_TRUE(fresh.MayReplace({"new.tag", 0, -1})) << "a new empty file takes nothing";
}

} // namespace
