// Runs of pdsreview that would write where they should not: over their own inputs or
// standard streams, through another user's link, over another user's file, and runs
// whose writes a pipe or a limit cuts short.
#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string kSample = ZT_SOURCE_DIR "/examples/plant";
constexpr uid_t kNobody = 65534;

// A copy of the sample review in a folder of its own, and a folder "out" in it for what
// runs write: a tag file beside the control file would be one of its side files.
struct PlantCopy {
    PlantCopy() {
        for (const auto& entry : std::filesystem::directory_iterator(kSample))
            std::filesystem::copy(entry.path(), dir.File(entry.path().filename().string()));
        std::filesystem::create_directory(dir.File("out"));
    }
    std::string Bytes(const std::string& name) const { return ZtTestReadBytes(dir.File(name)); }
    ZtTestTempDir dir;
};

// An output that is an input of the run, or the run's standard output or error, is
// refused before any step runs when it can be known then (the control file, its side
// files, the steps' files, through links too); a model that a control file names is
// refused when the export comes to it. Nothing is written, and "-" makes no file.
TEST(HostileOutput, NoRunWritesOverItsInputsOrItsStandardStreams) {
    const struct {
        const char* command;
        int status;
        const char* message;
    } cases[] = {
        {"pdsreview open plant.dri export-tags pipes.dgn report plant.dri", 2,
         "pdsreview: report plant.dri: it is the same file as plant.dri, which open plant.dri "
         "reads; pdsreview writes over no file that the run reads\n"},
        {"pdsreview --quiet open plant.dri export-tags pipes.dgn", 1,
         "export-tags pipes.dgn: status 1: cannot write pipes.dgn: it is a file that this run "
         "read (open plant.dri); the old file is left as it was\n"},
        {"pdsreview open plant.dri export-tags plant.tag", 2,
         "pdsreview: export-tags plant.tag: it is the same file as plant.tag, which open "
         "plant.dri reads; pdsreview writes over no file that the run reads\n"},
        {"ln -s pipes.dgn link.dgn && pdsreview model pipes.dgn report link.dgn", 2,
         "pdsreview: report link.dgn: it is the same file as pipes.dgn, which model pipes.dgn "
         "reads; pdsreview writes over no file that the run reads\n"},
        {"pdsreview open plant.dri export-tags /dev/stdout >out.json", 2,
         "pdsreview: export-tags /dev/stdout: it is pdsreview's standard output\n"},
        {"pdsreview open plant.dri report /dev/stderr 2>err.txt; s=$?; cat err.txt >&2; exit $s", 2,
         "pdsreview: report /dev/stderr: it is pdsreview's standard error\n"},
        {"pdsreview open plant.dri export-tags -", 2,
         "pdsreview: export-tags -: '-' is standard output, which carries pdsreview's "
         "report; name a file\n"},
    };
    for (const auto& c : cases) {
        PlantCopy plant;
        const ProgramRun run = RunShellWithPdsReview(plant.dir.Path(), c.command);
        EXPECT_EQ(run.exitStatus, c.status) << c.command << "\n" << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << c.command << "\n" << run.err;
        for (const char* name : {"plant.dri", "plant.tag", "pipes.dgn"})
            EXPECT_EQ(plant.Bytes(name), ZtTestReadBytes(kSample + "/" + name)) << c.command;
        EXPECT_FALSE(std::filesystem::exists(plant.dir.File("-")));
        EXPECT_EQ(plant.Bytes("out.json"), "") << "the report goes nowhere but its stream";
    }
}

// A link that another user planted in a shared folder, such as /tmp, leads the export and
// the page nowhere: the file it names stays as it was, and the user hears why.
TEST(HostileOutput, LinksThatAnotherUserPlantedAreNotFollowed) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "a link of another user needs root and the user nobody to make";
    PlantCopy plant;
    ZtTestTempDir shared;
    ASSERT_EQ(::chmod(shared.Path().c_str(), 01777), 0);
    const std::string victim = plant.dir.File("victim.txt");
    ASSERT_TRUE(ZtTestWriteBytes(victim, "root's own\n"));
    for (const char* name : {"out.tag", "page.html"}) {
        ASSERT_EQ(::symlink(victim.c_str(), shared.File(name).c_str()), 0);
        ASSERT_EQ(::lchown(shared.File(name).c_str(), kNobody, kNobody), 0);
    }
    const ProgramRun run =
        RunShellWithPdsReview(plant.dir.Path(), "pdsreview --quiet open plant.dri export-tags '" +
                                                    shared.File("out.tag") + "'");
    EXPECT_EQ(run.exitStatus, 1) << run.err;
    EXPECT_NE(run.err.find("cannot write " + shared.File("out.tag") +
                           ": it is a link of user 65534 in a folder of user 0, which is not "
                           "followed"),
              std::string::npos)
        << run.err;
    const ProgramRun page =
        RunShellWithPdsReview(plant.dir.Path(), "pdsreview --quiet open plant.dri report '" +
                                                    shared.File("page.html") + "'");
    EXPECT_EQ(page.exitStatus, 4) << page.err;
    EXPECT_EQ(ZtTestReadBytes(victim), "root's own\n");
}

// Root's export over a user's file leaves it the user's, mode and all; a file with other
// names is replaced under the one given, and the user hears that the others keep the old.
TEST(HostileOutput, ReplacedFilesKeepTheirOwnerAndSayWhenOtherNamesKeepTheOld) {
    PlantCopy plant;
    const std::string out = plant.dir.File("out/out.tag");
    ASSERT_TRUE(ZtTestWriteBytes(out, "old\n"));
    ASSERT_EQ(::chmod(out.c_str(), 0640), 0);
    ASSERT_EQ(::link(out.c_str(), plant.dir.File("out/other.tag").c_str()), 0);
    const bool root = ::geteuid() == 0;
    if (root) {
        ASSERT_EQ(::chown(out.c_str(), kNobody, kNobody), 0);
    }
    const ProgramRun run = RunShellWithPdsReview(
        plant.dir.Path(), "pdsreview --quiet open plant.dri export-tags out/out.tag");
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(run.err, "pdsreview: warning: export-tags out/out.tag: out/out.tag had 2 hard links: "
                       "it is replaced under this name, and the other names keep the old text\n");
    EXPECT_EQ(plant.Bytes("out/other.tag"), "old\n");
    struct stat status;
    ASSERT_EQ(::stat(out.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(status.st_nlink, 1u);
    if (root) {
        EXPECT_EQ(status.st_uid, kNobody);
    } else {
        std::printf("the owner is checked as root only\n");
    }
}

// A name of the longest length a folder takes is written: the temporary file beside it
// takes a shorter name.
TEST(HostileOutput, NamesOfTheLongestLengthAreWritten) {
    PlantCopy plant;
    const std::string tags = "out/" + std::string(251, 't') + ".tag";
    const std::string page = "out/" + std::string(250, 'p') + ".html";
    const ProgramRun run =
        RunShellWithPdsReview(plant.dir.Path(), "pdsreview --quiet open plant.dri export-tags " +
                                                    tags + " report " + page);
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(plant.Bytes(tags).rfind("file{0n{", 0), 0u);
    EXPECT_NE(plant.Bytes(page).find("</html>"), std::string::npos);
}

// Runs that export to one file at once each count what they wrote, and the file is always
// one whole export: no run takes another's file for its own.
TEST(HostileOutput, ConcurrentExportsCountWhatTheyWrote) {
    PlantCopy plant;
    const std::string command =
        "for i in $(seq 24); do pdsreview --quiet open plant.dri export-tags "
        "out/out.tag >/dev/null & done; wait";
    const ProgramRun run = RunShellWithPdsReview(plant.dir.Path(), command);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.err, "") << "no run warns of tags it did not write";
    const ProgramRun one = RunShellWithPdsReview(
        plant.dir.Path(), "pdsreview --quiet open plant.dri export-tags out/one.tag");
    EXPECT_EQ(one.exitStatus, 0) << one.err;
    EXPECT_EQ(plant.Bytes("out/out.tag"), plant.Bytes("out/one.tag"));
}

} // namespace
