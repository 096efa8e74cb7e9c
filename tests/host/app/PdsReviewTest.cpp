// Runs the built pdsreview as a user does, with the built plug-in library.
#include "support/RunProgram.h"

#include <gtest/gtest.h>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";

// Each run succeeds, says nothing on standard error, prints the same twice, and prints
// `parts` in this order.
TEST(PdsReview, RunsPrintWhatTheyAskFor) {
    struct Case {
        std::vector<std::string> args;
        std::vector<const char*> parts;
    };
    const Case cases[] = {
        {{"--json", "plugins"},
         {"\"steps\": [\n    {\"step\": \"plugins\", \"status\": 0}\n  ]", "\"plugins\": [",
          "\"sceneSet\": null", "\"models\": []", "\"focalDistance\": null",
          "\"worldUp\": [0, 0, 1]", "\"savedViews\": []", "\"selectionSets\": []",
          "\"nextIds\": {\"tag\": 1, \"comment\": 1}"}},
        {{"plugins"}, {"Plug-ins:"}},
        {{"--json", "--next-ids", "7,12", "plugins"},
         {"\"nextIds\": {\"tag\": 7, \"comment\": 12}"}},
        // Outside control mode 0 the library offers no plug-in.
        {{"--json", "--control-mode", "1", "plugins"}, {"\"plugins\": []"}},
        // The empty model of the option comes first, then the loaded one.
        {{"--json", "--uors-per-master", "2.5", "model", ZT_SOURCE_DIR "/examples/plant/pipes.dgn"},
         {"\"uorsPerMaster\": 2.5", "\"file\": \"pipes.dgn\""}},
        {{"--help"}, {"usage: pdsreview [OPTIONS] STEP [STEP ...]"}},
    };
    for (const Case& c : cases) {
        const std::string what = ::testing::PrintToString(c.args);
        const ProgramRun run = RunProgram(kProgram, c.args);
        ASSERT_EQ(run.exitStatus, 0) << what << run.err;
        EXPECT_EQ(run.err, "") << what;
        EXPECT_EQ(RunProgram(kProgram, c.args).out, run.out) << what << " is not deterministic";
        std::size_t at = 0;
        for (const char* part : c.parts) {
            at = run.out.find(part, at);
            ASSERT_NE(at, std::string::npos) << what << ": " << part << "\n" << run.out;
        }
    }
    EXPECT_EQ(RunProgram(kProgram, {"--json", "plugins"}).out.find("\"selections\""),
              std::string::npos);
}

TEST(PdsReview, HostFailuresExitWithTwoAndSayWhy) {
    struct Case {
        std::vector<std::string> args;
        const char* message;
    };
    const Case cases[] = {
        {{}, "pdsreview: no step given"},
        {{"plugins", "--bogus"}, "pdsreview: unknown option --bogus"},
        {{"import-tags"}, "pdsreview: step import-tags needs a file"},
        // Outside control mode 0 the library offers no plug-in to run a menu step with.
        {{"--control-mode", "1", "import-dst", "x.dst"},
         "pdsreview: step import-dst needs the plug-in ZtOdPdsDstImportPlugin, which the "
         "plug-in library does not offer"},
        {{"--plugin", "/nonexistent/ztodpds.so", "plugins"},
         "pdsreview: cannot load plug-in library /nonexistent/ztodpds.so"},
        {{"--plugin", ZT_BIN_DIR "/libztutil.so", "plugins"},
         "has no entry function ZtOpPluginEntryztodpds"},
        {{"model", ZT_SOURCE_DIR "/README.md"}, "not a DGN V7 design file"},
        {{"--redline-color", "1,0", "plugins"}, "--redline-color"},
        {{"--redline-color", "2,0,0", "plugins"}, "--redline-color"},
    };
    for (const Case& c : cases) {
        const ProgramRun run = RunProgram(kProgram, c.args);
        EXPECT_EQ(run.exitStatus, 2) << c.message;
        EXPECT_EQ(run.err.rfind("pdsreview: ", 0), 0u) << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "") << c.message;
    }
}

} // namespace
