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
        {{"--uors-per-master", "0", "import-tags", kFixtures + "example.tag"}, 6},
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

TEST(PdsReviewImportTags, TheExampleFileInTheJson) {
    ZtTestJson json;
    const ProgramRun run =
        RunJson({"--uors-per-master", "10", "import-tags", kFixtures + "example.tag"}, &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(json["document"]["nextIds"]["tag"].number, 10);
    EXPECT_EQ(json["document"]["nextIds"]["comment"].number, 10);
    const ZtTestJson& views = json["document"]["savedViews"];
    ASSERT_EQ(views.items.size(), 2u);
    const ZtTestJson& first = views[0];
    EXPECT_EQ(first["kind"].text, "view");
    EXPECT_EQ(first["name"].text, "Tag View 7");
    EXPECT_EQ(views[1]["name"].text, "Tag View 9");
    EXPECT_NE(first["guid"].text, views[1]["guid"].text);
    const ZtTestJson& viewpoint = first["viewpoint"];
    EXPECT_EQ(viewpoint["position"][0].number, 50);
    EXPECT_EQ(viewpoint["position"][1].number, 20);
    EXPECT_EQ(viewpoint["viewDir"][0].number, -1);
    EXPECT_EQ(viewpoint["up"][2].number, 1);
    EXPECT_NEAR(viewpoint["heightField"].number, 0.7853981633974483, 1e-15);
    EXPECT_TRUE(viewpoint["focalDistance"].IsNull());
    EXPECT_TRUE(viewpoint["worldUp"].IsNull());
    const ZtTestJson& planes = first["clipPlanes"];
    ASSERT_EQ(planes.items.size(), 2u);
    EXPECT_EQ(planes[0]["index"].number, 0);
    EXPECT_EQ(planes[0]["normal"][0].number, -1);
    EXPECT_NEAR(planes[0]["distance"].number, -49, 1e-12);
    EXPECT_EQ(planes[1]["normal"][0].number, 1);
    EXPECT_NEAR(planes[1]["distance"].number, -40, 1e-12);
    ASSERT_EQ(first["comments"].items.size(), 2u);
    EXPECT_EQ(first["comments"][0]["id"].number, 7);
    EXPECT_EQ(first["comments"][0]["body"].text, "Check this valve.");
    EXPECT_EQ(first["comments"][1]["body"].text, "Second remark.");
    ASSERT_EQ(first["redlines"].items.size(), 2u);
    const ZtTestJson& tag = first["redlines"][0];
    EXPECT_EQ(tag["type"].text, "tag");
    EXPECT_EQ(tag["tagId"].number, 7);
    EXPECT_EQ(tag["commentId"].number, 7);
    EXPECT_TRUE(tag["pos3dValid"].boolean);
    EXPECT_EQ(tag["pos3d"][2].number, 30.5);
    // Seen from (50, 20, 30) along -X with up +Z: right is +Y.
    EXPECT_NEAR(tag["pos2dA"][0].number, 1.0 / 38, 1e-12);
    EXPECT_NEAR(tag["pos2dA"][1].number, 0.5 / 38, 1e-12);
    EXPECT_NEAR(tag["pos2dB"][0].number, 1.5 / 37.5, 1e-12);
    EXPECT_EQ(tag["lineThickness"].number, 1);
    EXPECT_EQ(views[1]["comments"][0]["body"].text, "Done");
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

TEST(PdsReviewImportTags, TwoImportsAppendTwice) {
    ZtTestJson json;
    const ProgramRun run =
        RunJson({"--uors-per-master", "10", "import-tags", kFixtures + "example.tag", "import-tags",
                 kFixtures + "example.tag"},
                &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const ZtTestJson& views = json["document"]["savedViews"];
    ASSERT_EQ(views.items.size(), 4u);
    EXPECT_EQ(views[2]["name"].text, "Tag View 7");
    EXPECT_EQ(views[2]["comments"][1]["id"].number, 8);
}

TEST(PdsReviewImportTags, TheRedlineToolsLookReachesTheTags) {
    ZtTestJson json;
    const ProgramRun run =
        RunJson({"--redline-color", "0,0.5,1", "--redline-thickness", "4", "--uors-per-master",
                 "10", "import-tags", kFixtures + "example.tag"},
                &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const ZtTestJson& tag = json["document"]["savedViews"][1]["redlines"][0];
    EXPECT_EQ(tag["lineColor"][1].number, 0.5);
    EXPECT_EQ(tag["lineColor"][2].number, 1);
    EXPECT_EQ(tag["lineThickness"].number, 4);
    for (const char* bad : {"1,0", "2,0,0"}) {
        const ProgramRun refused = RunProgram(kProgram, {"--redline-color", bad, "plugins"});
        EXPECT_EQ(refused.exitStatus, 2) << bad;
        EXPECT_NE(refused.err.find("--redline-color"), std::string::npos) << refused.err;
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

TEST(PdsReviewImportTags, TheSampleReviewsTagsOnItsModels) {
    // The tags count in the UORs of the first model, pipes.dgn.
    ZtTestJson json;
    const ProgramRun run = RunJson(
        {"--no-tags", "open", kPlant + "plant.dri", "import-tags", kPlant + "plant.tag"}, &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(json["document"]["nextIds"]["tag"].number, 107);
    const ZtTestJson& views = json["document"]["savedViews"];
    ASSERT_EQ(views.items.size(), 3u);
    EXPECT_EQ(views[0]["name"].text, "Tag View 101");
    EXPECT_EQ(views[1]["clipPlanes"].items.size(), 2u);
    EXPECT_EQ(views[2]["clipPlanes"].items.size(), 1u);
    const ZtTestJson& valve = views[0]["redlines"][0]["pos3d"];
    EXPECT_EQ(valve[0].number, 8);
    EXPECT_EQ(valve[1].number, 6);
    EXPECT_EQ(valve[2].number, 1.5);
    EXPECT_EQ(views[1]["comments"][0]["body"].text,
              "Flange rating {PN 16} to be confirmed; bolts M16 {4 off} per side.\r\n"
              "See note } in the line list.");
    EXPECT_EQ(views[2]["comments"][0]["body"].text,
              "V-304 \xC3\x98 150 mm \xE2\x80\x93 Absperrventil, Pr\xC3\xBC"
              "fung f\xC3\xA4llig.\r\nOperator platform needed, see steel {S-12} first.");
}

TEST(PdsReviewOpen, TheTagFilesBesideTheControlFileComeIn) {
    ZtTestJson json;
    const ProgramRun run = RunJson({"open", kPlant + "plant.dri"}, &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(json["document"]["savedViews"].items.size(), 3u);
    EXPECT_EQ(json["document"]["nextIds"]["tag"].number, 107);
    EXPECT_EQ(json["document"]["nextIds"]["comment"].number, 107);
}

} // namespace
