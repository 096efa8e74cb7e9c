// `pdsreview import-tags` and `open` as a user runs them, with the built plug-in library.
#include "support/RunProgram.h"
#include "support/ZtTestJson.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";
const std::string kFixtures = ZT_TEST_DIR "/fixtures/";
const std::string kPlant = ZT_SOURCE_DIR "/examples/plant/";

ProgramRun RunJson(std::vector<std::string> args, ZtTestJson* json) {
    args.insert(args.begin(), {"--json", "--quiet"});
    ProgramRun run = RunProgram(kProgram, args);
    std::string error;
    if (json && run.exitStatus != 2) {
        EXPECT_TRUE(ZtTestParseJson(run.out, json, &error)) << error << "\n" << run.out;
    }
    return run;
}

TEST(PdsReviewImportTags, StatusOfTheImportIsTheExitStatus) {
    struct Case {
        std::vector<std::string> args;
        int status;
    };
    const Case cases[] = {
        {{"--uors-per-master", "10", "import-tags", kFixtures + "example.tag"}, 0},
        {{"--uors-per-master", "10", "import-tags", kFixtures + "missing.tag"}, 1},
        // No model, so no units factor: the file is not read.
        {{"import-tags", kFixtures + "example.tag"}, 6},
    };
    for (const Case& c : cases) {
        ZtTestJson json;
        const ProgramRun run = RunJson(c.args, &json);
        EXPECT_EQ(run.exitStatus, c.status) << c.args.back() << "\n" << run.err;
        EXPECT_EQ(json["steps"][0]["step"].text, "import-tags");
        EXPECT_EQ(json["steps"][0]["status"].number, c.status);
        if (c.status != 0) {
            EXPECT_TRUE(json["document"]["savedViews"].items.empty());
            EXPECT_EQ(json["document"]["nextIds"]["tag"].number, 1);
        }
    }
}

TEST(PdsReviewImportTags, TheExampleFileInTheJsonTwice) {
    ZtTestJson json;
    // Imported twice, with the look of the redline tool set.
    const ProgramRun run = RunJson(
        {"--redline-color", "0,0.5,1", "--redline-thickness", "4", "--uors-per-master", "10",
         "import-tags", kFixtures + "example.tag", "import-tags", kFixtures + "example.tag"},
        &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(json["document"]["nextIds"]["tag"].number, 10);
    EXPECT_EQ(json["document"]["nextIds"]["comment"].number, 10);
    const ZtTestJson& views = json["document"]["savedViews"];
    ASSERT_EQ(views.items.size(), 4u);
    // The example is read field by field in the action's own test; here it passes through
    // the plug-in library and the report.
    const ZtTestJson& first = views[0];
    EXPECT_EQ(first["name"].text, "Tag View 7");
    EXPECT_EQ(views[1]["name"].text, "Tag View 9");
    EXPECT_NE(first["guid"].text, views[1]["guid"].text);
    EXPECT_EQ(first["viewpoint"]["position"][0].number, 50);
    EXPECT_EQ(first["clipPlanes"].items.size(), 2u);
    EXPECT_EQ(first["comments"][0]["body"].text, "Check this valve.");
    const ZtTestJson& tag = first["redlines"][1];
    EXPECT_EQ(tag["tagId"].number, 8);
    EXPECT_EQ(tag["pos3d"][2].number, 31);
    // Seen from (50, 20, 30) along -X with up +Z: right is +Y.
    EXPECT_NEAR(tag["pos2dA"][0].number, 2.0 / 37, 1e-12);
    EXPECT_EQ(tag["lineColor"][1].number, 0.5);
    EXPECT_EQ(tag["lineColor"][2].number, 1);
    EXPECT_EQ(tag["lineThickness"].number, 4);
    EXPECT_EQ(views[2]["name"].text, "Tag View 7");
    EXPECT_EQ(views[2]["comments"][1]["id"].number, 8);
}

TEST(PdsReviewImportTags, NextIdsMoveOnlyWhenTheyWouldMeetAnImportedOne) {
    struct Case {
        const char* before;
        double tag, comment;
    };
    const Case cases[] = {
        {"3,100", 10, 10}, {"10,10", 10, 10}, {"9,50", 10, 10}, {"50,60", 50, 60}};
    for (const Case& c : cases) {
        ZtTestJson json;
        const ProgramRun run = RunJson({"--next-ids", c.before, "--uors-per-master", "10",
                                        "import-tags", kFixtures + "example.tag"},
                                       &json);
        ASSERT_EQ(run.exitStatus, 0) << run.err;
        EXPECT_EQ(json["document"]["nextIds"]["tag"].number, c.tag) << c.before;
        EXPECT_EQ(json["document"]["nextIds"]["comment"].number, c.comment) << c.before;
    }
}

TEST(PdsReviewImportTags, TheReadableSummaryListsTagsWithTheirTexts) {
    const ProgramRun run = RunProgram(
        kProgram, {"--quiet", "--uors-per-master", "10", "import-tags", kFixtures + "example.tag"});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(run.out.find("Saved views: 2\n"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("tag 7 at (12, 21, 30.5): Check this valve.\n"), std::string::npos)
        << run.out;
}

// The tag file beside the control file comes in with the review, and the same file
// imported again gives the same views behind them. The tags count in the UORs of the first
// model, pipes.dgn.
TEST(PdsReviewImportTags, TheSampleReviewsTagsOnItsModels) {
    ZtTestJson json;
    const ProgramRun run =
        RunJson({"open", kPlant + "plant.dri", "import-tags", kPlant + "plant.tag"}, &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(json["document"]["nextIds"]["tag"].number, 107);
    EXPECT_EQ(json["document"]["nextIds"]["comment"].number, 107);
    const ZtTestJson& views = json["document"]["savedViews"];
    ASSERT_EQ(views.items.size(), 6u);
    for (std::size_t first : {0u, 3u}) {
        SCOPED_TRACE(first);
        EXPECT_EQ(views[first]["name"].text, "Tag View 101");
        EXPECT_EQ(views[first + 1]["clipPlanes"].items.size(), 2u);
        EXPECT_EQ(views[first + 2]["clipPlanes"].items.size(), 1u);
        const ZtTestJson& valve = views[first]["redlines"][0]["pos3d"];
        EXPECT_EQ(valve[0].number, 8);
        EXPECT_EQ(valve[1].number, 6);
        EXPECT_EQ(valve[2].number, 1.5);
        EXPECT_EQ(views[first + 1]["comments"][0]["body"].text,
                  "Flange rating {PN 16} to be confirmed; bolts M16 {4 off} per side.\r\n"
                  "See note } in the line list.");
        EXPECT_EQ(views[first + 2]["comments"][0]["body"].text,
                  "V-304 \xC3\x98 150 mm \xE2\x80\x93 Absperrventil, Pr\xC3\xBC"
                  "fung f\xC3\xA4llig.\r\nOperator platform needed, see steel {S-12} first.");
    }
}

} // namespace
