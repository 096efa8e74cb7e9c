#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

const std::string kPipes = ZT_SOURCE_DIR "/examples/plant/pipes.dgn";

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZT_PEAK_MEMORY_UNCHECKED 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define ZT_PEAK_MEMORY_UNCHECKED 1
#endif

// A step may take 8 times the size of the file it reads, plus 128 MB. The sanitizer's
// shadow memory and quarantine make its peak no measure of ours.
void ExpectWithinMemoryBound(const ProgramRun& run, std::uint64_t fileSize, const char* what) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    (void)run, (void)fileSize;
    std::printf("%s: peak memory not checked under AddressSanitizer\n", what);
#else
    EXPECT_LE(run.peakBytes, 8 * fileSize + (128u << 20)) << what;
#endif
}

// From a run over a smaller file to one over a larger, peak memory grows by at most 8
// bytes a byte, with a little room for the allocator's rounding.
void ExpectGrowthWithinMemoryBound(const std::uint64_t (&sizes)[2], const std::uint64_t (&peaks)[2],
                                   const char* what) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    (void)sizes, (void)peaks, (void)what;
#else
    EXPECT_LE(peaks[1], peaks[0] + 8 * (sizes[1] - sizes[0]) + (8u << 20))
        << what << ": " << peaks[0] << " then " << peaks[1] << " bytes";
#endif
}

// The control block of a real model, then a hole to 64 GiB: no element is read from the
// hole, nothing is reserved for it, and the user is told.
TEST(HostileInput, ASparseDesignFileLoadsWithAWarning) {
    const std::string pipes = ZtTestReadBytes(kPipes);
    ASSERT_GT(pipes.size(), 4u);
    const std::size_t controlBlock =
        4 + 2 * (static_cast<unsigned char>(pipes[2]) | static_cast<unsigned char>(pipes[3]) << 8);
    ZtTestTempDir dir;
    const std::string model = dir.File("sparse.dgn");
    ASSERT_TRUE(ZtTestWriteBytes(model, pipes.substr(0, controlBlock)));
    ASSERT_EQ(::truncate(model.c_str(), off_t{64} << 30), 0);
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("sparse.dri"),
                                 "DesignReview_Control{\ndgn{name{sparse.dgn}}\n}\n"));
    const std::string warning = "the file holds zero bytes where an element should begin, at "
                                "byte " +
                                std::to_string(controlBlock) + "; the " +
                                std::to_string((std::uint64_t{64} << 30) - controlBlock) +
                                " bytes from there on are not read";
    for (const char* step : {"model", "open"}) {
        const std::string file = std::string(step) == "model" ? model : dir.File("sparse.dri");
        const ProgramRun run = RunProgram(PdsReviewProgram(), {"--quiet", step, file});
        EXPECT_EQ(run.exitStatus, 0) << step << run.err;
        EXPECT_NE(run.out.find("0 elements"), std::string::npos) << step << run.out;
        EXPECT_NE(run.out.find(warning), std::string::npos) << step << run.out;
        // Bounded by what was read, not by the 64 GiB the file claims.
        ExpectWithinMemoryBound(run, controlBlock, step);
    }
}

// Runs pdsreview with its report thrown away: the report of these inputs is many times
// their size, and only pdsreview's own memory is measured.
ProgramRun RunDiscardingReport(std::vector<std::string> args) {
    args.insert(args.begin(),
                {"-c", "exec \"$0\" \"$@\" >/dev/null", PdsReviewProgram(), "--quiet"});
    return RunProgram("/bin/sh", args);
}

// One long line, at two lengths: a display set's comment, a tag block that holds no inner
// block, a tag's counted text, and a model's name in a control file. Each run keeps to
// the bound, and peak memory grows by at most 8 bytes a byte of input between the two
// lengths, which catches a third copy of the line that 128 MB would hide at either.
TEST(HostileInput, ALongLineIsHeldInProportionToTheFile) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    // Only the outcome is checked there, and the sanitizer reads slowly.
    const std::size_t lengths[] = {1u << 20, 2u << 20};
#else
    const std::size_t lengths[] = {8u << 20, 40u << 20};
#endif
    struct Case {
        const char* file;
        std::string (*text)(const std::string& line);
        std::vector<std::string> steps;
        const char* warning; // null: none
    };
    const Case cases[] = {
        {"line.dst",
         [](const std::string& line) {
             return "[DEFINITION SECTION]\n<Display Set>\n1 long\n" + line +
                    "\n<Definition>\nFIND Level 1\n";
         },
         {"model", kPipes, "import-dst"},
         nullptr},
        {"block.tag",
         [](const std::string& line) { return "tag{101 1 0 0.0 1 2 3\np{1 2 3}\n" + line + "}\n"; },
         {"model", kPipes, "import-tags"},
         "nothing came in"},
        {"text.tag",
         [](const std::string& line) {
             return "tag{101 1 0 0.0 1 2 3\ntext{" + std::to_string(line.size() + 2) + "\n" + line +
                    "}}\n";
         },
         {"model", kPipes, "import-tags"},
         nullptr},
        {"name.dri",
         [](const std::string& line) {
             return "DesignReview_Control{\ndgn{name{" + line + "}}\n}\n";
         },
         {"open"},
         " not loaded: cannot open the file: File name too long"},
    };
    for (const Case& c : cases) {
        std::uint64_t sizes[2] = {};
        std::uint64_t peaks[2] = {};
        for (int i = 0; i < 2; ++i) {
            ZtTestTempDir dir;
            const std::string text = c.text(std::string(lengths[i], 'x'));
            ASSERT_TRUE(ZtTestWriteBytes(dir.File(c.file), text));
            std::vector<std::string> args = c.steps;
            args.push_back(dir.File(c.file));
            const ProgramRun run = RunDiscardingReport(args);
            EXPECT_EQ(run.exitStatus, 0) << c.file << run.err.substr(0, 200);
            if (c.warning)
                EXPECT_NE(run.err.find(c.warning), std::string::npos) << c.file;
            else
                EXPECT_EQ(run.err, "") << c.file;
            ExpectWithinMemoryBound(run, text.size(), c.file);
            sizes[i] = text.size();
            peaks[i] = run.peakBytes;
        }
        ExpectGrowthWithinMemoryBound(sizes, peaks, c.file);
    }
}

// Ten thousand references to one small model load it once: memory follows the control
// file, not the count of references.
TEST(HostileInput, ManyReferencesToOneModelShareIt) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("pipes.dgn"), ZtTestReadBytes(kPipes)));
    std::string control = "DesignReview_Control{\n";
    for (int i = 0; i < 10000; ++i)
        control += "dgn{name{pipes.dgn}}\n";
    control += "}\n";
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("many.dri"), control));
    const ProgramRun run =
        RunProgram(PdsReviewProgram(), {"--quiet", "open", dir.File("many.dri")});
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(run.out.find("10000 models loaded, 0 models not loaded"), std::string::npos)
        << run.out.substr(run.out.size() > 2000 ? run.out.size() - 2000 : 0);
    EXPECT_NE(run.out.find("  10000. pipes.dgn: " + dir.File("pipes.dgn")), std::string::npos);
    ExpectWithinMemoryBound(run, control.size(), "many.dri");
}

// Sets that repeat another set's conditions share them: 17 doublings to 131,072
// conditions, then eight references to the last, emit 1.2 million conditions from 3 KB.
TEST(HostileInput, DisplaySetsThatRepeatAnotherShareItsConditions) {
    std::string text = "[DEFINITION SECTION]\n<Display Set>\n0 s0\n<Definition>\nFIND Level 1\n";
    for (int k = 1; k <= 17; ++k) {
        const std::string previous = "s" + std::to_string(k - 1);
        text += "<Display Set>\n" + std::to_string(k) + " s" + std::to_string(k) +
                "\n<Definition>\nFIND Display Set " + previous + "\nADD Display Set " + previous +
                "\n";
    }
    for (int k = 0; k < 8; ++k)
        text += "<Display Set>\n" + std::to_string(100 + k) + " r" + std::to_string(k) +
                "\n<Definition>\nFIND Display Set s17\n";
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("repeats.dst"), text));
    const ProgramRun run = RunProgram(
        PdsReviewProgram(), {"--quiet", "model", kPipes, "import-dst", dir.File("repeats.dst")});
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("Selection sets: 26"), std::string::npos);
    ExpectWithinMemoryBound(run, text.size(), "repeats.dst");
}

// Display sets whose rules grow with each set, so that the file's rules written out are
// hundreds of times the file: the import keeps to the file's budget, and the report goes
// out as it is made.
TEST(HostileInput, DisplaySetsWhoseRulesDwarfTheFileStayWithinTheMemoryBound) {
    std::string chained = "[DEFINITION SECTION]\n<Display Set>\n0 s0\n<Definition>\nFIND Level 1\n";
    for (int k = 1; k < 3000; ++k)
        chained += "<Display Set>\n" + std::to_string(k) + " s" + std::to_string(k) +
                   "\n<Definition>\nFIND Display Set s" + std::to_string(k - 1) + "\nADD Level " +
                   std::to_string(k % 60 + 1) + "\n";
    // 19 doublings to 524,288 conditions, then 40 sets of them.
    std::string doubled = "[DEFINITION SECTION]\n<Display Set>\n0 s0\n<Definition>\nFIND Level 1\n";
    for (int k = 1; k < 20; ++k)
        doubled += "<Display Set>\n" + std::to_string(k) + " s" + std::to_string(k) +
                   "\n<Definition>\nFIND Display Set s" + std::to_string(k - 1) +
                   "\nADD Display Set s" + std::to_string(k - 1) + "\n";
    for (int k = 0; k < 40; ++k)
        doubled += "<Display Set>\n" + std::to_string(100 + k) + " r" + std::to_string(k) +
                   "\n<Definition>\nFIND Display Set s19\n";
    const struct {
        const char* file;
        const std::string& text;
        const char* warning;
    } cases[] = {
        {"chained.dst", chained, "173 display sets were abandoned"},
        {"doubled.dst", doubled, "35 display sets were abandoned"},
    };
    ZtTestTempDir dir;
    for (const auto& c : cases) {
        ASSERT_TRUE(ZtTestWriteBytes(dir.File(c.file), c.text));
        for (const char* format : {"--quiet", "--json"}) {
            const ProgramRun run =
                RunDiscardingReport({format, "model", kPipes, "import-dst", dir.File(c.file)});
            EXPECT_EQ(run.exitStatus, 0) << c.file << format << run.err;
            EXPECT_NE(run.err.find(c.warning), std::string::npos) << c.file << run.err;
            ExpectWithinMemoryBound(run, c.text.size(), c.file);
        }
    }
}

// Comments take CR LF line ends, and each text block of a tag puts one more CR before
// every LF of its body: a body of 20 MB of line feeds, or a thousand lines behind 20,000
// empty text blocks (145 KB, 20 million CRs), would take many times its file. The tag is
// dropped for the file's budget and the user is told; the tag before it comes in.
TEST(HostileInput, LineEndsThatWouldOutgrowTheirFileDropTheirTag) {
    std::string lines;
    for (int i = 0; i < 1000; ++i)
        lines += "line " + std::to_string(i) + "\n";
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    // Just over the budget: the sanitizer reads slowly.
    const std::string feeds(9u << 19, '\n');
#else
    const std::string feeds(20u << 20, '\n');
#endif
    const struct {
        const char* file;
        const std::string& body;
        int emptyTexts;
    } cases[] = {{"texts.tag", lines, 20000}, {"feeds.tag", feeds, 0}};
    ZtTestTempDir dir;
    for (const auto& c : cases) {
        std::string text = "tag{1 1 0 0.0 1 2 3\ntext{4\nok}}\ntag{2 1 0 0.0 1 2 3\ntext{" +
                           std::to_string(c.body.size() + 2) + "\n" + c.body + "}";
        for (int i = 0; i < c.emptyTexts; ++i)
            text += "text{2}";
        text += "}\n";
        ASSERT_TRUE(ZtTestWriteBytes(dir.File(c.file), text));
        const ProgramRun run = RunProgram(
            PdsReviewProgram(), {"--quiet", "model", kPipes, "import-tags", dir.File(c.file)});
        EXPECT_EQ(run.exitStatus, 0) << c.file << run.err;
        EXPECT_EQ(run.err, "pdsreview: warning: import-tags " + dir.File(c.file) +
                               ": 1 tags were dropped: their line ends would add more than "
                               "4000000 characters in all\n");
        ExpectWithinMemoryBound(run, text.size(), c.file);
    }
}

// With too little memory for a 20 MB model name, the run ends with a word from
// pdsreview, whether the library or the host ran short, never with an abort. The
// sanitizer needs more address space than the limit allows.
TEST(HostileInput, MemoryThatRunsOutEndsTheRunWithAMessage) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    GTEST_SKIP() << "an address-space limit leaves AddressSanitizer no room";
#endif
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("long.dri"), "DesignReview_Control{\ndgn{name{" +
                                                           std::string(20u << 20, 'a') +
                                                           "}}\n}\n"));
    const ProgramRun run =
        RunProgram("/bin/sh", {"-c", "ulimit -v 200000 && exec \"$0\" --quiet open \"$1\"",
                               PdsReviewProgram(), dir.File("long.dri")});
    EXPECT_TRUE(run.exitStatus == 2 || run.exitStatus == 64) << run.exitStatus << run.err;
    EXPECT_EQ(run.err.rfind("pdsreview: ", 0), 0u) << run.err;
}

// A name whose bytes are no UTF-8 opens, and a missing one is named as it was given.
TEST(HostileInput, FileNamesThatAreNoUtf8) {
    ZtTestTempDir dir;
    const std::string tags = dir.File("caf\xe9.tag");
    ASSERT_TRUE(ZtTestWriteBytes(tags, ZtTestReadBytes(ZT_SOURCE_DIR "/examples/plant/plant.tag")));
    const ProgramRun found =
        RunProgram(PdsReviewProgram(), {"--quiet", "model", kPipes, "import-tags", tags});
    EXPECT_EQ(found.exitStatus, 0) << found.err;
    EXPECT_NE(found.out.find("Saved views: 3"), std::string::npos) << found.out;

    const std::string missing = dir.File("x\xe9\xff.dgn");
    const ProgramRun absent = RunProgram(PdsReviewProgram(), {"--quiet", "model", missing});
    EXPECT_EQ(absent.exitStatus, 2);
    EXPECT_NE(absent.err.find("cannot load " + missing +
                              " as a model: cannot open the file: No "
                              "such file or directory"),
              std::string::npos)
        << absent.err;
}

} // namespace
