// Runs the built pdsreview as a user does, where a run needs a shell or a test-made
// file; the other end-to-end runs are the folders of cases/.
#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>

namespace {

const std::string kPlant = ZT_SOURCE_DIR "/examples/plant";

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

// An export that fails part-way, here at a limit on file sizes whose signal would end
// the process, leaves the old file byte for byte and fails the run; so does standard
// output that can't be written, to a full device or a pipe closed early.
TEST(PdsReview, FailedWritesLoseNothingAndFailTheRun) {
    ZtTestTempDir dir;
    const std::string old(5000, 'o');
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("old.tag"), old));
    const ProgramRun cut = RunShellWithPdsReview(
        dir.Path(), "ulimit -f 1; pdsreview open '" + kPlant + "/plant.dri' export-tags old.tag");
    EXPECT_EQ(cut.exitStatus, 4);
    EXPECT_NE(cut.err.find("export-tags old.tag: status 4: cannot write old.tag: File too large; "
                           "the old file is left as it was"),
              std::string::npos)
        << cut.err;
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.tag")), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);

    const ProgramRun full = RunShellWithPdsReview(dir.Path(), "pdsreview plugins >/dev/full");
    EXPECT_EQ(full.exitStatus, 4);
    EXPECT_NE(full.err.find("cannot write standard output: No space left on device"),
              std::string::npos)
        << full.err;
    // Four times the sample's models with their elements: more than a pipe holds.
    std::string opens;
    for (int i = 0; i < 4; ++i)
        opens += " open '" + kPlant + "/plant.dri'";
    const ProgramRun closed =
        RunProgram("/bin/bash", {"-c", "'" ZT_BIN_DIR "/pdsreview' --json --elements" + opens +
                                           " | head -c 10 >/dev/null; exit ${PIPESTATUS[0]}"});
    EXPECT_EQ(closed.exitStatus, 4);
    EXPECT_EQ(closed.err, "pdsreview: cannot write standard output: Broken pipe\n");

    const ProgramRun fresh = RunShellWithPdsReview(
        dir.Path(), "umask 022; pdsreview open '" + kPlant + "/plant.dri' export-tags new.tag");
    EXPECT_EQ(fresh.exitStatus, 0) << fresh.err;
    struct stat status;
    ASSERT_EQ(::stat(dir.File("new.tag").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644u);
}

// The examples of the README and of --help run as written from the repository root (a
// copy of it, so that what they write lands elsewhere).
TEST(PdsReview, ExamplesRunAsWritten) {
    std::ifstream readme(ZT_SOURCE_DIR "/README.md");
    std::stringstream text;
    text << readme.rdbuf();
    std::vector<std::string> examples = Examples(text.str(), "    ");
    EXPECT_GE(examples.size(), 5u);
    const std::vector<std::string> help =
        Examples(RunProgram(PdsReviewProgram(), {"--help"}).out, "  ");
    EXPECT_GE(help.size(), 2u);
    examples.insert(examples.end(), help.begin(), help.end());

    ZtTestTempDir root;
    std::filesystem::copy(ZT_SOURCE_DIR "/examples", root.File("examples"),
                          std::filesystem::copy_options::recursive);
    for (const std::string& example : examples) {
        const ProgramRun run = RunShellWithPdsReview(root.Path(), example);
        EXPECT_EQ(run.exitStatus, 0) << example << "\n" << run.err;
        EXPECT_EQ(run.err, "") << example;
    }
    EXPECT_EQ(RunProgram(PdsReviewProgram(), {"--version"}).out, "pdsreview " ZTODPDS_VERSION "\n");
    EXPECT_EQ(RunShellWithPdsReview(ZT_BIN_DIR, "pdsreview --plugin ztodpds.so plugins").exitStatus,
              0);
}

} // namespace
