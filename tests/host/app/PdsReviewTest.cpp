// Runs the built pdsreview as a user does, with the built plug-in library.
#include "support/RunProgram.h"

#include <gtest/gtest.h>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";

TEST(PdsReview, PluginsPrintsTheEmptyDocumentShape) {
    const ProgramRun run = RunProgram(kProgram, {"--json", "plugins"});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(run.err, "");
    for (const char* member :
         {"\"steps\": [\n    {\"step\": \"plugins\", \"status\": 0}\n  ]", "\"plugins\": [",
          "\"sceneSet\": null", "\"models\": []", "\"savedViews\": []", "\"selectionSets\": []",
          "\"nextIds\": {\"tag\": 1, \"comment\": 1}", "\"worldUp\": [0, 0, 1]",
          "\"focalDistance\": null"})
        EXPECT_NE(run.out.find(member), std::string::npos) << member << "\n" << run.out;
    EXPECT_EQ(run.out.find("\"selections\""), std::string::npos);
}

TEST(PdsReview, OutputIsDeterministic) {
    const ProgramRun first = RunProgram(kProgram, {"--json", "plugins"});
    const ProgramRun second = RunProgram(kProgram, {"--json", "plugins"});
    EXPECT_EQ(first.out, second.out);
    const ProgramRun text = RunProgram(kProgram, {"plugins"});
    EXPECT_EQ(text.exitStatus, 0);
    EXPECT_NE(text.out.find("Plug-ins:"), std::string::npos) << text.out;
}

TEST(PdsReview, NextIdsReachTheDocument) {
    const ProgramRun run = RunProgram(kProgram, {"--json", "--next-ids", "7,12", "plugins"});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(run.out.find("\"nextIds\": {\"tag\": 7, \"comment\": 12}"), std::string::npos);
}

TEST(PdsReview, AnotherControlModeGetsNoPlugins) {
    const ProgramRun run = RunProgram(kProgram, {"--json", "--control-mode", "1", "plugins"});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(run.out.find("\"plugins\": []"), std::string::npos) << run.out;
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
    };
    for (const Case& c : cases) {
        const ProgramRun run = RunProgram(kProgram, c.args);
        EXPECT_EQ(run.exitStatus, 2) << c.message;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "") << c.message;
    }
}

TEST(PdsReview, ModelStepLoadsIntoTheDocument) {
    const ProgramRun run = RunProgram(kProgram, {"--json", "--uors-per-master", "2.5", "model",
                                                 ZT_SOURCE_DIR "/examples/plant/pipes.dgn"});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    // The empty model of the option comes first, then the loaded one.
    const std::size_t empty = run.out.find("\"uorsPerMaster\": 2.5");
    const std::size_t pipes = run.out.find("\"file\": \"pipes.dgn\"");
    ASSERT_NE(empty, std::string::npos) << run.out;
    ASSERT_NE(pipes, std::string::npos) << run.out;
    EXPECT_LT(empty, pipes);
}

TEST(PdsReview, AFileThatIsNoModelIsAHostFailure) {
    const ProgramRun run = RunProgram(kProgram, {"model", ZT_SOURCE_DIR "/README.md"});
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_NE(run.err.find("pdsreview: "), std::string::npos);
    EXPECT_NE(run.err.find("not a DGN V7 design file"), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
}

TEST(PdsReview, HelpGoesToStandardOutput) {
    const ProgramRun run = RunProgram(kProgram, {"--help"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_NE(run.out.find("usage: pdsreview [OPTIONS] STEP [STEP ...]"), std::string::npos);
}

} // namespace
