#include "review/TagLineEndBudget.h"
#include "tools/ZtTestFiles.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

// A tag line with `texts` text blocks, then `lineFeeds` LFs in all.
std::string Tag(int texts, int lineFeeds) {
    std::string tag = "tag{1 1 0 0 0 0 0";
    for (int i = 0; i < texts; ++i)
        tag += "text{2}";
    return tag + std::string(lineFeeds, '\n');
}

// Against a budget of 10 and a document into which nothing came, every tag line of a file
// counts as dropped once the most its tags could widen passes the budget, and none before.
TEST(TagLineEndBudget, CountsTagsOnlyWhenTheBudgetCanHaveRunOut) {
    const struct {
        std::string text;
        std::size_t dropped;
    } cases[] = {
        {Tag(1, 10), 0},
        {Tag(1, 11), 1},
        {Tag(10, 1), 0},
        {Tag(0, 1000), 0},
        // Each tag counts its own text blocks and LFs.
        {Tag(1, 5) + Tag(1, 5), 0},
        {Tag(1, 5) + Tag(1, 6), 2},
        // A "text{" that begins inside a "tex" still counts.
        {"tag{1 text{2}textext{2}" + std::string(6, '\n'), 1},
        // No tag begins an indented line.
        {"  " + Tag(3, 20), 0},
    };
    ZtTestTempDir dir;
    const ZtOpState state;
    const TagLineEndBudget budget(state, 10);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.tag"), c.text));
        EXPECT_EQ(budget.CountDropped(state, dir.WideFile("t.tag").c_str()), c.dropped);
    }
    EXPECT_EQ(budget.CountDropped(state, L"/nonexistent.tag"), 0u);
}

} // namespace
