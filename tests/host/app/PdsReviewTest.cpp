// Runs the built pdsreview as a user does, with the built plug-in library.
#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";
const std::string kPlant = ZT_SOURCE_DIR "/examples/plant";

// Runs a shell command in `folder` with the built pdsreview first on the path.
ProgramRun Shell(const std::string& folder, const std::string& command) {
    return RunProgram("/bin/sh",
                      {"-c", "cd '" + folder + "' && PATH='" ZT_BIN_DIR "':$PATH && " + command});
}

// The example commands of a text: the lines of `indent` and "pdsreview " that follow a
// line beginning with "Examples", up to the first other line that is not empty.
std::vector<std::string> Examples(const std::string& text, const std::string& indent) {
    std::vector<std::string> examples;
    std::istringstream lines(text);
    bool inExamples = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("Examples", 0) == 0) {
            inExamples = true;
        } else if (inExamples && line.rfind(indent + "pdsreview ", 0) == 0) {
            examples.push_back(line.substr(indent.size()));
        } else if (inExamples && !line.empty() && !examples.empty()) {
            inExamples = false;
        }
    }
    return examples;
}

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
        {{"-V"}, "pdsreview: unknown option -V\nTry 'pdsreview --help' for more.\n"},
    };
    for (const Case& c : cases) {
        const ProgramRun run = RunProgram(kProgram, c.args);
        EXPECT_EQ(run.exitStatus, 2) << c.message;
        EXPECT_EQ(run.err.rfind("pdsreview: ", 0), 0u) << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "") << c.message;
    }
}

// A failed step says which cause of its status applies.
TEST(PdsReview, FailedStepsSayWhichCauseApplies) {
    ZtTestTempDir dir;
    const std::string model = kPlant + "/pipes.dgn";
    struct Case {
        std::vector<std::string> args;
        int status;
        std::string message;
    };
    const Case cases[] = {
        {{"import-tags", dir.File("none.tag")},
         6,
         "cannot read " + dir.File("none.tag") + ": No such file or directory"},
        {{"import-tags", dir.Path()}, 6, dir.Path() + " is a folder"},
        {{"import-tags", kPlant + "/plant.tag"}, 6, "no model is loaded"},
        {{"import-dst", dir.File("none.dst")}, 1, "cannot read " + dir.File("none.dst")},
        {{"model", model, "export-tags", dir.File("no/out.tag")},
         1,
         "cannot write " + dir.File("no/out.tag") + ": the folder " + dir.File("no") +
             " does not exist"},
        {{"model", model, "export-tags", dir.Path()},
         1,
         "cannot write " + dir.Path() + ": it is a folder"},
        {{"open", dir.File("none.dri")}, 64, "cannot read " + dir.File("none.dri")},
    };
    for (const Case& c : cases) {
        const ProgramRun run = RunProgram(kProgram, c.args);
        EXPECT_EQ(run.exitStatus, c.status) << c.message;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
    }
}

// An export that fails part-way leaves the old file byte for byte and fails the run; so
// does standard output that can't be written.
TEST(PdsReview, FailedWritesLoseNothingAndFailTheRun) {
    ZtTestTempDir dir;
    const std::string old(5000, 'o');
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("old.tag"), old));
    const ProgramRun cut = Shell(dir.Path(), "trap '' XFSZ; ulimit -f 1; pdsreview open '" +
                                                 kPlant + "/plant.dri' export-tags old.tag");
    EXPECT_EQ(cut.exitStatus, 4);
    EXPECT_NE(cut.err.find("export-tags old.tag: status 4: cannot write old.tag: File too large; "
                           "the old file is left as it was"),
              std::string::npos)
        << cut.err;
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.tag")), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);

    const ProgramRun full = Shell(dir.Path(), "pdsreview plugins >/dev/full");
    EXPECT_EQ(full.exitStatus, 4);
    EXPECT_NE(full.err.find("cannot write standard output: No space left on device"),
              std::string::npos)
        << full.err;

    const ProgramRun fresh = Shell(dir.Path(), "umask 022; pdsreview open '" + kPlant +
                                                   "/plant.dri' export-tags new.tag");
    EXPECT_EQ(fresh.exitStatus, 0) << fresh.err;
    struct stat status;
    ASSERT_EQ(::stat(dir.File("new.tag").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644u);
}

// Each step counts what it did; what a person should hear of is a warning, which
// --strict makes a failure.
TEST(PdsReview, StepsCountWhatTheyDidAndWarn) {
    const ProgramRun opened = Shell(kPlant, "pdsreview --json open plant.dri");
    EXPECT_EQ(opened.exitStatus, 0) << opened.err;
    EXPECT_NE(opened.out.find("\"counts\": {\"modelsLoaded\": 3, \"modelsNotLoaded\": 0, "
                              "\"views\": 3, \"tags\": 6, \"comments\": 10, "
                              "\"selectionSets\": 5}"),
              std::string::npos)
        << opened.out;

    // A line of a tag's text that looks like a record is not counted as one.
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("in.tag"), "file{0n{pipes.dgn}}\n"
                                                     "eye{4800000 -2400000 2400000}\n"
                                                     "tag{101 1 0 0.000000 640000 480000 120000\n"
                                                     "l{0 13 301 0}\n"
                                                     "text{9\na\ntag{1 2}}\n"));
    const ProgramRun exported =
        Shell(dir.Path(), "pdsreview --json --no-tags open '" + kPlant +
                              "/plant.dri' import-tags in.tag export-tags out.tag");
    EXPECT_EQ(exported.exitStatus, 0) << exported.err;
    EXPECT_NE(exported.out.find("\"counts\": {\"records\": 1, \"unfiled\": 0, "
                                "\"fileGroups\": 1, \"tagsDropped\": 0}"),
              std::string::npos)
        << exported.out;

    ASSERT_TRUE(ZtTestWriteBytes(dir.File("review.dri"),
                                 "DesignReview_Control{\ndgn{name{gone.dgn}}\n}\n"));
    struct Case {
        std::vector<std::string> args;
        std::string warning;
    };
    const Case cases[] = {
        {{"--uors-per-master", "1", "import-tags", kPlant + "/pipes.dgn"},
         "import-tags " + kPlant + "/pipes.dgn: nothing came in from "},
        {{"import-dst", kPlant + "/plant.dri"}, "import-dst " + kPlant + "/plant.dri: nothing"},
        {{"open", dir.File("review.dri")},
         "open " + dir.File("review.dri") + ": model gone.dgn not loaded: "},
    };
    for (const Case& c : cases) {
        const ProgramRun run = RunProgram(kProgram, c.args);
        EXPECT_EQ(run.exitStatus, 0) << c.warning;
        EXPECT_NE(run.err.find("pdsreview: warning: " + c.warning), std::string::npos) << run.err;
        std::vector<std::string> strict = c.args;
        strict.insert(strict.begin(), {"--strict", "--json"});
        const ProgramRun failed = RunProgram(kProgram, strict);
        EXPECT_EQ(failed.exitStatus, 5) << c.warning;
        EXPECT_NE(failed.out.find("\"warnings\": [\n    \"" + c.warning), std::string::npos)
            << failed.out;
    }
}

// The examples of the README and of --help run as written from the repository root (a
// copy of it, so that what they write lands elsewhere).
TEST(PdsReview, ExamplesRunAsWritten) {
    std::ifstream readme(ZT_SOURCE_DIR "/README.md");
    std::stringstream text;
    text << readme.rdbuf();
    std::vector<std::string> examples = Examples(text.str(), "    ");
    EXPECT_GE(examples.size(), 5u);
    const std::vector<std::string> help = Examples(RunProgram(kProgram, {"--help"}).out, "  ");
    EXPECT_GE(help.size(), 2u);
    examples.insert(examples.end(), help.begin(), help.end());

    ZtTestTempDir root;
    std::filesystem::copy(ZT_SOURCE_DIR "/examples", root.File("examples"),
                          std::filesystem::copy_options::recursive);
    for (const std::string& example : examples) {
        const ProgramRun run = Shell(root.Path(), example);
        EXPECT_EQ(run.exitStatus, 0) << example << "\n" << run.err;
        EXPECT_EQ(run.err, "") << example;
    }
    EXPECT_EQ(RunProgram(kProgram, {"--version"}).out, "pdsreview " ZTODPDS_VERSION "\n");
    EXPECT_EQ(Shell(ZT_BIN_DIR, "pdsreview --plugin ztodpds.so plugins").exitStatus, 0);
}

} // namespace
