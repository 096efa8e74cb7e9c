// `pdsreview export-tags` as a user runs it: tags read from a file, picked over models
// written as design files, and written back grouped by the file of the element under
// each.
#include "support/RunProgram.h"
#include "tools/ZtTestDgnWriter.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";

// A model in metres and millimetres (1000 UORs a master unit) with one line string from
// `low` to `high`, linked to the DMRS occurrence `occurrence`.
void WriteModel(const std::string& path, ZtTestDgnPoint low, ZtTestDgnPoint high,
                std::uint32_t occurrence) {
    ZtTestDgnWriter writer(3, {1000, 1, "m", "mm", {0, 0, 0}});
    ZtTestDgnSymbology s;
    s.linkages = {ZtTestDmrsLinkage(12, occurrence)};
    writer.LineString(s, {low, high});
    writer.EndOfDesign();
    ASSERT_TRUE(writer.Save(path));
}

TEST(PdsReviewExportTags, GroupsTagsByTheModelUnderThem) {
    ZtTestTempDir dir;
    WriteModel(dir.File("beta.dgn"), {2000, 0, 0}, {3000, 1000, 200}, 7);
    WriteModel(dir.File("alpha.dgn"), {0, 0, 0}, {1000, 1000, 200}, 5);
    // One view from straight above: a tag on beta, one on nothing, one on alpha.
    ZtTestWriteBytes(dir.File("in.tag"), "target{500 500 0}\n"
                                         "eye{500 500 10000}\n"
                                         "tag{1 1 0 0.000000 2500 500 200\n"
                                         "text{4\nBeta}}\n"
                                         "tag{2 1 0 0.000000 5000 5000 0\n"
                                         "text{7\nNowhere}}\n"
                                         "tag{3 1 0 0.000000 500 500 200\n"
                                         "p{600 700 200}\n"
                                         "text{11\nAlpha\r\nline}}\n");
    const ProgramRun run = RunProgram(
        kProgram, {"--quiet", "model", dir.File("beta.dgn"), "model", dir.File("alpha.dgn"),
                   "import-tags", dir.File("in.tag"), "export-tags", dir.File("out.tag")});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    // Second points come back from the image through the tag's plane at 0.2 master units,
    // a hair under 200 UORs, and are cut to 199; positions stand as read.
    EXPECT_EQ(ZtTestReadBytes(dir.File("out.tag")), "file{0n{}}\n"
                                                    "target{500 500 9000}\n"
                                                    "persp_ang{45}\n"
                                                    "eye{500 500 10000}\n"
                                                    "tag{2 1 0 0.000000 5000 5000 0\n"
                                                    "p{5000 5000 0}\n"
                                                    "text{7\nNowhere}}\n"
                                                    "file{1n{alpha.dgn}}\n"
                                                    "tag{3 1 0 0.000000 500 500 200\n"
                                                    "p{600 700 199}\n"
                                                    "l{0 12 5 0}\n"
                                                    "text{10\nAlpha\nline}}\n"
                                                    "file{2n{beta.dgn}}\n"
                                                    "tag{1 1 0 0.000000 2500 500 200\n"
                                                    "p{2499 500 199}\n"
                                                    "l{0 12 7 0}\n"
                                                    "text{4\nBeta}}\n");
}

} // namespace
