// `pdsreview open` as a user runs it, with the built plug-in library.
#include "OpenTestReview.h"

#include "support/RunProgram.h"
#include "support/ZtTestJson.h"

#include <cmath>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";

class OpenEndToEnd : public ::testing::Test {
protected:
    // Runs pdsreview --json with `args`.
    ProgramRun Run(std::vector<std::string> args, ZtTestJson* json) {
        args.insert(args.begin(), {"--json", "--quiet"});
        ProgramRun run = RunProgram(kProgram, args);
        std::string error;
        if (json && run.exitStatus != 2) {
            EXPECT_TRUE(ZtTestParseJson(run.out, json, &error)) << error << "\n" << run.out;
        }
        return run;
    }

    OpenTestReview review_;
};

TEST_F(OpenEndToEnd, StatusesOfTheControlFileAreTheExitStatus) {
    review_.Model("a.dgn", OpenTestReview::Metres());
    review_.Text("empty.dri", "no block here\n");
    review_.Text("other.dri", "DESIGNREVIEW_CONTROL{dgn{name{a.dgn}}}");
    review_.Text("good.dri", "DesignReview_Control{dgn{name{a.dgn}}}");
    struct Case {
        std::string file;
        int status;
    };
    const Case cases[] = {
        {"missing.dri", 64}, {"empty.dri", 64}, {"other.dri", 128}, {"good.dri", 0}};
    for (const Case& c : cases) {
        ZtTestJson json;
        const ProgramRun run = Run({"open", review_.File(c.file)}, &json);
        EXPECT_EQ(run.exitStatus, c.status) << c.file << "\n" << run.err;
        EXPECT_EQ(json["steps"][0]["step"].text, "open");
        EXPECT_EQ(json["steps"][0]["status"].number, c.status);
        EXPECT_EQ(json["sceneSet"].IsNull(), c.status != 0) << c.file;
        EXPECT_EQ(json["models"].items.size(), c.status == 0 ? 1u : 0u) << c.file;
    }
}

TEST_F(OpenEndToEnd, ModelsInDifferentUnitsArePlaced) {
    review_.Model("models/pipes.dgn", OpenTestReview::Metres(), 2);
    review_.Model("models/tank.dgn", OpenTestReview::Feet(), 3);
    review_.Text("plant.dri", "DesignReview_Control{\n"
                              "transform{0 -1 0 1 0 0 0 0 1}\n"
                              "old_origin{1000 0 0} new_origin{13000 2400 0}\n"
                              "master_unit{m} dgn{name{models/pipes.dgn}}\n"
                              "master_unit{ft} dgn{name{models/tank.dgn}} dgn{name{gone.dgn}}\n"
                              "master_unit{m}\n"
                              "}\n");
    ZtTestJson json;
    const ProgramRun run = Run({"open", review_.File("plant.dri")}, &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const ZtTestJson& set = json["sceneSet"];
    EXPECT_EQ(set["linearUnits"].number, 0);
    ASSERT_EQ(set["refs"].items.size(), 3u);
    struct Expected {
        const char* sourceName;
        int units;
        double x, y;
        int elements;
        double uorsPerMaster;
    };
    const Expected expected[] = {{"models/pipes.dgn", 0, 12, 2.4, 2, 1000},
                                 {"models/tank.dgn", 3, 3.048, 0.6096, 3, 1200}};
    for (std::size_t i = 0; i < 2; ++i) {
        const ZtTestJson& ref = set["refs"][i];
        const Expected& e = expected[i];
        EXPECT_EQ(ref["sourceName"].text, e.sourceName);
        EXPECT_EQ(ref["linearUnits"].number, e.units);
        EXPECT_EQ(ref["transform"]["matrix"][0][1].number, -1);
        EXPECT_EQ(ref["transform"]["matrix"][1][0].number, 1);
        EXPECT_NEAR(ref["transform"]["translation"][0].number, e.x, 1e-12);
        EXPECT_NEAR(ref["transform"]["translation"][1].number, e.y, 1e-12);
        EXPECT_EQ(ref["loadKind"].number, 2);
        EXPECT_EQ(ref["model"]["elements"].number, e.elements);
        EXPECT_EQ(ref["model"]["uorsPerMaster"].number, e.uorsPerMaster);
        EXPECT_TRUE(ref.Has("notLoaded") && ref["notLoaded"].IsNull());
    }
    // A model that is not there: no model, and why.
    const ZtTestJson& gone = set["refs"][2];
    EXPECT_TRUE(gone.Has("model") && gone["model"].IsNull());
    EXPECT_EQ(gone["notLoaded"].kind, ZtTestJson::kString);
    // The models of the document, in load order, loaded with the option off.
    ASSERT_EQ(json["models"].items.size(), 2u);
    EXPECT_EQ(json["models"][1]["file"].text, "tank.dgn");
    EXPECT_EQ(json["models"][1]["dgnOption10AtLoad"].kind, ZtTestJson::kBool);
    EXPECT_FALSE(json["models"][1]["dgnOption10AtLoad"].boolean);
    // The loader set up the view: world-up +Z and its part flag.
    const ZtTestJson& view = json["document"]["currentView"]["viewpoint"];
    EXPECT_EQ(view["worldUp"][2].number, 1);
    EXPECT_EQ(static_cast<int>(view["parts"].number) & 4, 4);
}

const char* const kDisplaySets =
    "[DEFINITION SECTION]\n<Display Set>\n1 Lines\n<Definition>\nFIND Level 1\nEND FIND\n";

// A tag file of one view with the tags `ids`, one metre apart, in a metre model.
std::string TagFile(std::initializer_list<int> ids) {
    std::string text = "eye{0 -10000 0}\ntarget{0 0 0}\n";
    int x = 0;
    for (int id : ids) {
        text += "tag{" + std::to_string(id) + " 1 0 0.0 " + std::to_string(x) + " 0 0\n";
        text += "text{6\nnote}}\n";
        x += 1000;
    }
    return text;
}

TEST_F(OpenEndToEnd, SideFilesComeInWithTheReviewUnlessLeftOut) {
    review_.Model("a.dgn", OpenTestReview::Metres());
    review_.Text("review.dri", "DesignReview_Control{dgn{name{a.dgn}}}");
    review_.Text("bare/review.dri", "DesignReview_Control{dgn{name{../a.dgn}}}");
    // Two tag files go through one action: the highest id spans both.
    review_.Text("one.tag", TagFile({4, 9}));
    review_.Text("two.tag", TagFile({7}));
    review_.Text("sets.dst", kDisplaySets);
    // Files of other kinds, and files in subfolders, stay out.
    review_.Text("notes.txt", "tag{1 1 0 0.0 0 0 0 text{3\nx}}");
    review_.Text("sub/more.tag", TagFile({50}));
    struct Case {
        const char* review;
        std::vector<std::string> options;
        std::size_t views, sets;
        double nextTag, nextComment;
    };
    // The loader sets both next ids past the highest id read, whatever stood before, and
    // to one if it reads no tag file.
    const Case cases[] = {
        {"review.dri", {}, 2, 1, 10, 10},
        {"review.dri", {"--no-tags"}, 0, 1, 40, 41},
        {"review.dri", {"--no-display-sets"}, 2, 0, 10, 10},
        {"review.dri", {"--no-tags", "--no-display-sets"}, 0, 0, 40, 41},
        {"bare/review.dri", {}, 0, 0, 1, 1},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = c.options;
        args.insert(args.end(), {"--next-ids", "40,41", "open", review_.File(c.review)});
        const std::string what = ::testing::PrintToString(args);
        ZtTestJson json;
        const ProgramRun run = Run(args, &json);
        ASSERT_EQ(run.exitStatus, 0) << what << run.err;
        const ZtTestJson& document = json["document"];
        ASSERT_EQ(document["savedViews"].items.size(), c.views) << what;
        EXPECT_EQ(document["selectionSets"].items.size(), c.sets) << what;
        EXPECT_EQ(document["nextIds"]["tag"].number, c.nextTag) << what;
        EXPECT_EQ(document["nextIds"]["comment"].number, c.nextComment) << what;
        // The view is set up in every case.
        EXPECT_EQ(static_cast<int>(document["currentView"]["viewpoint"]["parts"].number) & 4, 4);
        if (c.views) {
            EXPECT_EQ(document["savedViews"][0]["redlines"].items.size(), 2u);
            EXPECT_EQ(document["savedViews"][1]["redlines"][0]["tagId"].number, 7);
        }
        if (c.sets) {
            EXPECT_EQ(document["selectionSets"][0]["name"].text, "Lines");
        }
    }
}

TEST_F(OpenEndToEnd, InputFilesChooseBetweenModelAndCacheFile) {
    review_.Model("a.dgn", OpenTestReview::Metres());
    review_.Text("a.kvc", "cache");
    review_.Model("b.dgn", OpenTestReview::Metres());
    review_.Text("review.dri", "DesignReview_Control{dgn{name{a.dgn}} dgn{name{b.dgn}}}");
    struct Case {
        const char* inputFiles;
        bool aLoaded, bLoaded;
        std::string aLoadFile, bLoadFile;
    };
    const Case cases[] = {
        {"model", true, true, "a.dgn", "b.dgn"},
        {"cache", false, false, review_.File("a.kvc"), ""},
        {"either", false, true, review_.File("a.kvc"), "b.dgn"},
    };
    for (const Case& c : cases) {
        ZtTestJson json;
        const ProgramRun run =
            Run({"--input-files", c.inputFiles, "open", review_.File("review.dri")}, &json);
        ASSERT_EQ(run.exitStatus, 0) << run.err;
        const ZtTestJson& refs = json["sceneSet"]["refs"];
        EXPECT_EQ(refs[0]["loadFile"].text, c.aLoadFile) << c.inputFiles;
        EXPECT_EQ(refs[1]["loadFile"].text, c.bLoadFile) << c.inputFiles;
        EXPECT_EQ(refs[0]["model"].IsNull(), !c.aLoaded) << c.inputFiles;
        EXPECT_EQ(refs[1]["model"].IsNull(), !c.bLoaded) << c.inputFiles;
        EXPECT_EQ(refs[0]["notLoaded"].IsNull(), c.aLoaded) << c.inputFiles;
        EXPECT_EQ(json["models"].items.size(), (c.aLoaded ? 1u : 0u) + (c.bLoaded ? 1u : 0u));
    }
}

TEST_F(OpenEndToEnd, TheSampleReviewOpensWithEveryModelPlaced) {
    const std::string sample = ZT_SOURCE_DIR "/examples/plant/plant.dri";
    ZtTestJson json;
    const ProgramRun run = Run({"open", sample}, &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const ZtTestJson& refs = json["sceneSet"]["refs"];
    ASSERT_EQ(refs.items.size(), 3u);
    for (const ZtTestJson& ref : refs.items) {
        EXPECT_FALSE(ref["model"].IsNull()) << ref["sourceName"].text;
        EXPECT_GT(ref["model"]["elements"].number, 0);
        EXPECT_NE(ref["transform"]["translation"][0].number, 0);
    }

    const ProgramRun summary = RunProgram(kProgram, {"--quiet", "open", sample});
    ASSERT_EQ(summary.exitStatus, 0) << summary.err;
    for (const char* part : {"Scene set: 3 models, scene units m", "pipes.dgn", "equipment.dgn",
                             "steel.dgn", "elements", "placed by rows (0 -1 0) (1 0 0) (0 0 1)"})
        EXPECT_NE(summary.out.find(part), std::string::npos) << part << "\n" << summary.out;
}

} // namespace
