#include "checkapp/CheckCommandLine.h"
#include "report/FindingReport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(CheckCommandLine, OptionsTakeTheirValuesJoinedOrApart) {
    CheckCommandLine line;
    std::string error;
    ASSERT_TRUE(ParseCheckCommandLine({"--format=sarif", "--as", "dst", "-Werror", "-Wno-tag-id",
                                       "-Wno-unit", "-Wunit", "--no-tags", "a.tag", "b"},
                                      &line, &error))
        << error;
    EXPECT_EQ(line.format, CheckFormat::kSarif);
    EXPECT_EQ(line.readAs, FileKind::kDisplaySets);
    EXPECT_TRUE(line.warningsAreErrors);
    EXPECT_EQ(line.silenced, (std::set<std::string>{"tag-id"}));
    EXPECT_FALSE(line.sideFiles.tags);
    EXPECT_TRUE(line.sideFiles.displaySets);
    EXPECT_EQ(line.files, (std::vector<std::string>{"a.tag", "b"}));
    ASSERT_TRUE(ParseCheckCommandLine({"--format", "json", "--as=tag", "x"}, &line, &error));
    EXPECT_EQ(line.format, CheckFormat::kJson);
    EXPECT_EQ(line.readAs, FileKind::kTags);
}

TEST(CheckCommandLine, UsageErrorsSayWhat) {
    const struct {
        std::vector<std::string> args;
        const char* error;
    } cases[] = {
        {{}, "no file given"},
        {{"--format=xml", "a"}, "--format takes text, json or sarif, not 'xml'"},
        {{"--as", "dgn", "a"}, "--as takes dri, dst or tag, not 'dgn'"},
        {{"-Wno-frobs", "a"}, "no warning is named 'frobs' (see --help)"},
        {{"a", "--as"}, "option --as needs a value"},
        {{"--strict", "a"}, "unknown option --strict"},
    };
    for (const auto& c : cases) {
        CheckCommandLine line;
        std::string error;
        EXPECT_FALSE(ParseCheckCommandLine(c.args, &line, &error));
        EXPECT_EQ(error, c.error);
    }
}

TEST(FindingReport, PathsBecomeUriReferences) {
    EXPECT_EQ(PathUri(L"plant.tag"), "plant.tag");
    EXPECT_EQ(PathUri(L"a dir/caf\u00e9#1.tag"), "a%20dir/caf%C3%A9%231.tag");
    EXPECT_EQ(PathUri(L"/work/plant.dri"), "file:///work/plant.dri");
    EXPECT_EQ(PathUri(L"C:\\review\\plant.dri"), "file:///C:/review/plant.dri");
}

} // namespace
