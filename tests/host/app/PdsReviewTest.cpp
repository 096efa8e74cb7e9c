// Runs the built pdsreview as a user does, with the built plug-in library.
#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";

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
