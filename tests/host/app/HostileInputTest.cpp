#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <functional>

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
         "line.dst:4:512: this line is longer than 511 characters"},
        {"block.tag",
         [](const std::string& line) { return "tag{101 1 0 0.0 1 2 3\np{1 2 3}\n" + line + "}\n"; },
         {"model", kPipes, "import-tags"},
         "block.tag:1:1: the tag has no text{} block"},
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

// A project database whose rows are written by `fill`, given an insert of (entity,
// occurrence, name, value) as texts, in one transaction.
void WriteAttributeDatabase(const std::string& path,
                            const std::function<void(sqlite3_stmt* insert)>& fill) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    sqlite3_exec(db,
                 "CREATE TABLE element_attributes(entity INTEGER, occurrence INTEGER, name TEXT, "
                 "value TEXT); BEGIN",
                 nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO element_attributes VALUES (12, 101, ?, ?)", -1, &insert,
                       nullptr);
    fill(insert);
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

void InsertRow(sqlite3_stmt* insert, const std::string& name, const std::string& value) {
    sqlite3_bind_text(insert, 1, name.data(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
    sqlite3_bind_text(insert, 2, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    sqlite3_step(insert);
    sqlite3_reset(insert);
}

// A value of many megabytes, values full of NUL bytes, and a million rows for one
// element: attached to a line of the sample's pipes, each is selected on by Data criteria
// and listed whole in the JSON, within the memory bound of the database's size.
TEST(HostileInput, HostileAttributeSourcesStayWithinTheMemoryBound) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    constexpr int scale = 1; // the sanitizer reads slowly, and its peak is no measure
#else
    constexpr int scale = 10;
#endif
    struct Case {
        const char* name;
        std::function<void(sqlite3_stmt*)> fill;
    };
    const Case cases[] = {
        {"huge value",
         [](sqlite3_stmt* insert) {
             InsertRow(insert, "nps", std::string(std::size_t(scale) << 22, '7'));
         }},
        {"NUL bytes",
         [](sqlite3_stmt* insert) {
             std::string value(std::size_t(scale) << 20, '\0');
             InsertRow(insert, std::string("nps\0x", 5), value);
             for (std::size_t i = 0; i < value.size(); i += 2)
                 value[i] = '6';
             InsertRow(insert, "spec", value);
         }},
        {"a million rows",
         [](sqlite3_stmt* insert) {
             for (int i = 0; i < scale * 100000; ++i)
                 InsertRow(insert, "n" + std::to_string(i % 7), std::to_string(i));
         }},
    };
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("data.dst"), "[DEFINITION SECTION]\n"
                                                       "<Display Set>\n1 large\n<Definition>\n"
                                                       "FIND Data nps  >= 6\n"
                                                       "<Display Set>\n2 spec\n<Definition>\n"
                                                       "FIND Data spec  = A*\n"));
    for (const Case& c : cases) {
        const std::string database = dir.File(std::string(c.name) + ".db");
        WriteAttributeDatabase(database, c.fill);
        const ProgramRun run =
            RunDiscardingReport({"--json", "--elements", "--attributes", database, "model", kPipes,
                                 "import-dst", dir.File("data.dst"), "select"});
        EXPECT_EQ(run.exitStatus, 0) << c.name << ": " << run.err.substr(0, 300);
        ExpectWithinMemoryBound(run, std::filesystem::file_size(database), c.name);
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
        {"chained.dst", chained, "display set 's2827' and the 172 sets after it are abandoned"},
        {"doubled.dst", doubled, "display set 'r5' and the 34 sets after it are abandoned"},
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
        EXPECT_NE(run.err.find(dir.File(c.file) + ":4:1: the tag's text would take the file's "
                                                  "comments past their budget of line ends"),
                  std::string::npos)
            << run.err;
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

// A copy of the sample review in a fresh folder.
void CopyPlant(const ZtTestTempDir& dir) {
    for (const char* name :
         {"plant.dri", "plant.tag", "plant.dst", "pipes.dgn", "steel.dgn", "equipment.dgn"})
        ASSERT_TRUE(ZtTestWriteBytes(
            dir.File(name), ZtTestReadBytes(ZT_SOURCE_DIR "/examples/plant/" + std::string(name))));
}

// Sparse files of zero bytes, a side tag file, a tag file and a control file: a name
// gathers nothing behind a NUL, so memory follows what the files hold on disk (nothing),
// not their size.
TEST(HostileInput, SparseFilesTakeNoMemoryForTheirHoles) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    const off_t size = off_t{8} << 20;
#else
    const off_t size = off_t{128} << 20;
#endif
    ZtTestTempDir dir;
    CopyPlant(dir);
    for (const char* name : {"hole.tag", "alone/hole.tag", "alone/hole.dri"}) {
        std::filesystem::create_directories(std::filesystem::path(dir.File(name)).parent_path());
        ASSERT_TRUE(ZtTestWriteBytes(dir.File(name), ""));
        ASSERT_EQ(::truncate(dir.File(name).c_str(), size), 0);
    }
    const struct {
        std::vector<std::string> args;
        int status;
    } runs[] = {
        {{"open", dir.File("plant.dri")}, 0},
        {{"model", kPipes, "import-tags", dir.File("alone/hole.tag")}, 0},
        {{"open", dir.File("alone/hole.dri")}, 64},
    };
    for (const auto& r : runs) {
        std::vector<std::string> args = {"--quiet"};
        args.insert(args.end(), r.args.begin(), r.args.end());
        const ProgramRun run = RunProgram(PdsReviewProgram(), args);
        EXPECT_EQ(run.exitStatus, r.status) << r.args.back() << run.err;
        ExpectWithinMemoryBound(run, 4u << 20, r.args.back().c_str());
    }
}

// A side file that is a link into /proc or /sys is no review file, and one such never
// ends: each is skipped with a warning, which fails the run under --strict.
TEST(HostileInput, SideFilesOfTheKernelAreSkipped) {
    ZtTestTempDir dir;
    CopyPlant(dir);
    ASSERT_EQ(::symlink("/proc/self/pagemap", dir.File("evil.tag").c_str()), 0);
    ASSERT_EQ(::symlink("/proc/self/status", dir.File("evil.dst").c_str()), 0);
    for (const char* strict : {"--quiet", "--strict"}) {
        const ProgramRun run =
            RunProgram(PdsReviewProgram(), {"--quiet", strict, "open", dir.File("plant.dri")});
        EXPECT_EQ(run.exitStatus, std::string(strict) == "--strict" ? 5 : 0) << run.err;
        for (const char* name : {"evil.dst", "evil.tag"})
            EXPECT_NE(run.err.find("pdsreview: warning: open " + dir.File("plant.dri") + ": " +
                                   dir.File(name) +
                                   " is a file of the kernel's (in /proc or /sys), not read"),
                      std::string::npos)
                << run.err;
    }
}

// A tag whose text memory runs short for is skipped whole, and the tag behind it comes
// in: the reader does not ask for the memory again at each character, nor keeps a cut
// text.
TEST(HostileInput, ATagThatMemoryRunsShortForIsSkipped) {
#ifdef ZT_PEAK_MEMORY_UNCHECKED
    GTEST_SKIP() << "an address-space limit leaves AddressSanitizer no room";
#endif
    ZtTestTempDir dir;
    const std::string body(100u << 20, 'x');
    ASSERT_TRUE(
        ZtTestWriteBytes(dir.File("long.tag"), "eye{0 0 10000}\ntag{1 1 0 0.0 1 2 3\ntext{" +
                                                   std::to_string(body.size() + 2) + "\n" + body +
                                                   "}}\ntag{2 1 0 0.0 1 2 3\ntext{7\nbehind}}\n"));
    const ProgramRun run = RunProgram(
        "/bin/sh", {"-c", "ulimit -v 300000 && exec \"$0\" --quiet model \"$1\" import-tags \"$2\"",
                    PdsReviewProgram(), kPipes, dir.File("long.tag")});
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(run.out.find(": behind\n"), std::string::npos) << run.out.substr(0, 2000);
    EXPECT_EQ(run.out.find("tag 1 "), std::string::npos);
}

// A model whose file name holds braces and line ends names its group in an exported tag
// file with '_' instead, and says so: the name forges no tag there.
TEST(HostileInput, ModelFileNamesForgeNoTags) {
    ZtTestTempDir dir;
    const std::string model = dir.File("p}}\ntag{666 1 0 0.0 1 2 3\ntext{10\nINJECTED}}.dgn");
    ASSERT_TRUE(ZtTestWriteBytes(model, ZtTestReadBytes(kPipes)));
    const ProgramRun run =
        RunProgram(PdsReviewProgram(),
                   {"--quiet", "model", model, "import-tags",
                    ZT_SOURCE_DIR "/examples/plant/plant.tag", "export-tags", dir.File("out.tag")});
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(run.err.find("the model file name \"p}}\\x0atag{666 1 0 0.0 1 2 3\\x0atext{10\\x0a"
                           "INJECTED}}.dgn\" holds braces or line ends"),
              std::string::npos)
        << run.err;
    const ProgramRun back = RunProgram(PdsReviewProgram(), {"--quiet", "--uors-per-master", "80000",
                                                            "import-tags", dir.File("out.tag")});
    EXPECT_NE(back.out.find("6 tags"), std::string::npos) << back.out;
    EXPECT_EQ(back.out.find("INJECTED"), std::string::npos);
}

// Whether `text` is UTF-8 throughout.
bool IsUtf8(const std::string& text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    char32_t codePoint;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length =
            bytes[at] < 0x80 ? 1
                             : ZtUSysString::DecodeUtf8(bytes + at, text.size() - at, &codePoint);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

// A name whose bytes are no UTF-8 opens, and is shown with its odd bytes as \xNN: in
// messages, and in the JSON, which stays UTF-8 throughout.
TEST(HostileInput, FileNamesThatAreNoUtf8) {
    ZtTestTempDir dir;
    const std::string tags = dir.File("caf\xe9.tag");
    ASSERT_TRUE(ZtTestWriteBytes(tags, ZtTestReadBytes(ZT_SOURCE_DIR "/examples/plant/plant.tag")));
    const ProgramRun found =
        RunProgram(PdsReviewProgram(), {"--quiet", "model", kPipes, "import-tags", tags});
    EXPECT_EQ(found.exitStatus, 0) << found.err;
    EXPECT_NE(found.out.find("Saved views: 3"), std::string::npos) << found.out;
    const ProgramRun json =
        RunProgram(PdsReviewProgram(), {"--json", "--quiet", "model", kPipes, "import-tags", tags});
    EXPECT_EQ(json.exitStatus, 0) << json.err;
    EXPECT_TRUE(IsUtf8(json.out));
    EXPECT_NE(json.out.find("\"file\": \"" + dir.File("caf\\\\xe9.tag\"")), std::string::npos);

    const std::string missing = dir.File("x\xe9\xff.dgn");
    const ProgramRun absent = RunProgram(PdsReviewProgram(), {"--quiet", "model", missing});
    EXPECT_EQ(absent.exitStatus, 2);
    EXPECT_NE(absent.err.find("cannot load " + dir.File("x\\xe9\\xff.dgn") +
                              " as a model: cannot open the file: No "
                              "such file or directory"),
              std::string::npos)
        << absent.err;
}

} // namespace
