#include "FileStreams.h"

#include "tools/ZtTestFiles.h"
#include "ztutil/ZtUFileReader.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>
#ifndef _WIN32
#include <unistd.h>
#endif

namespace {

using namespace std::string_literals;
using Units = std::vector<unsigned>;

// The stream decodes in chunks of this many bytes; cases around it test the seams.
constexpr std::size_t kChunk = 64 * 1024;

// The same characters, taken with fgetws into an array of `count`.
Units ReadUnitsByLines(const std::wstring& path, int count) {
    Units units;
    ZtUFile* file = OpenForReading(path);
    if (!file)
        return units;
    std::vector<wchar_t> line(static_cast<std::size_t>(count));
    while (wchar_t* got = ZtUSysFile::fgetws(line.data(), count, file)) {
        const std::size_t length = ZtUSysString::WideStrlen(got);
        EXPECT_GT(length, 0u);
        EXPECT_LT(length, static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < length; ++i) {
            units.push_back(static_cast<unsigned>(got[i]));
            // A LF ends the piece.
            EXPECT_TRUE(got[i] != L'\n' || i + 1 == length);
        }
    }
    ZtUSysFile::fclose(file);
    return units;
}

// Code page 1252 from 0x80 to 0x9F; its five undefined bytes keep their value.
constexpr unsigned kWindows1252[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};

// What the stream must make of UTF-8 bytes without BOM: the host's UTF-8 decoding, in
// which a byte that begins no sequence is a character of code page 1252, then CR LF to LF,
// then the end at the first U+FFFF. Utf8ToWide is that decoding with Latin-1 for such
// bytes, which the table turns into 1252 (no input here holds an encoded U+0080-U+009F).
Units Expected(const std::string& bytes) {
    const std::wstring wide = ZtUSysString::Utf8ToWide(bytes);
    Units units;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (wide[i] == 0xFFFF)
            break;
        if (wide[i] == L'\r' && i + 1 < wide.size() && wide[i + 1] == L'\n')
            continue;
        const auto unit = static_cast<unsigned>(wide[i]);
        units.push_back(unit >= 0x80 && unit < 0xA0 ? kWindows1252[unit - 0x80] : unit);
    }
    return units;
}

TEST(ZtUFileRead, DecodesFixturesAndShortFiles) {
    struct Case {
        const char* fixture; // or null for `bytes`
        std::string bytes;
        Units units;
    };
    const Case cases[] = {
        // Only a leading BOM is skipped; a later U+FEFF is a character.
        {"utf8_bom.txt", "", {'a', 0xFEFF, 'b', '\n'}},
        // Surrogates pass through; the CR before a lone last byte stays, the byte goes.
        {"utf16le_bom.txt", "", {'A', '\n', 'B', 0xD83D, 0xDE00, '\r'}},
        {"utf16be_bom.txt", "", {'x', 0xE9, '\n', '\n', 'y'}},
        {"utf16le_uffff.txt", "", {'a', 'b'}},
        // Overlong forms, encoded surrogates, code points past U+10FFFF, stray and
        // truncated sequences: each byte is a Windows-1252 character.
        {"invalid_utf8.txt",
         "",
         {0xE9, 0xC0, 0xAF, 0xE0, 0x20AC, 0xAF, 0xED, 0xA0, 0x20AC, 0xF4, 0x90, 0x20AC, 0x20AC,
          0x20AC, 0xFF, 0xD83D, 0xDE00, 0xE2, 0x201A}},
        // A Windows author's en dash; the code page's undefined bytes keep their value.
        {nullptr, "a\x96z\x81\x8d\x8f\x90\x9d", {'a', 0x2013, 'z', 0x81, 0x8D, 0x8F, 0x90, 0x9D}},
        {"line_ends.txt", "", {'a', '\n', 'b', '\r', 'c', '\n', '\n', '\r', '\r', 'd', '\r'}},
        {"uffff.txt", "", {'a', 'b'}},
        {"no_bom_latin1.txt", "", {'c', 'a', 'f', 0xE9, ' ', 0xA3}},
        {"empty.txt", "", {}},
        {"bom_only.txt", "", {}},
        {"utf16_bom_only_odd.txt", "", {}},
        {nullptr, "a", {'a'}},
        {nullptr, "\r", {'\r'}},
        {nullptr, "\r\n", {'\n'}},
        {nullptr, "\xff\xfe"s, {}},
        {nullptr, "\xfe\xff\x00"s, {}},
        {nullptr, "\xff\xfe\x0d\x00\x0a\x00"s, {'\n'}},
        // Two bytes of a UTF-8 BOM are no mark.
        {nullptr, "\xef\xbb", {0xEF, 0xBB}},
        {nullptr, "\xef\xbb\xbf\xef\xbf\xbf", {}},
    };
    ZtTestTempDir dir;
    for (const Case& c : cases) {
        std::wstring path = dir.WideFile("short.txt");
        if (c.fixture)
            path = ZtTestWide(std::string(ZT_TEST_DIR "/fixtures/") + c.fixture);
        else
            ASSERT_TRUE(ZtTestWriteBytes(dir.File("short.txt"), c.bytes));
        const std::string what = c.fixture ? c.fixture : std::to_string(c.bytes.size()) + " bytes";
        EXPECT_EQ(ReadUnits(path), c.units) << what;
        EXPECT_EQ(ReadUnitsByLines(path, 3), c.units) << what;
    }
}

TEST(ZtUFileRead, SequencesAndLineEndsAcrossChunkSeams) {
    const std::string pieces[] = {"\r\n",     "\xc3\xa9", "\xe2\x82\xac", "\xf0\x9f\x98\x80",
                                  "\xe2\x82", "\r\r\n"};
    ZtTestTempDir dir;
    for (const std::string& piece : pieces) {
        for (std::size_t seam : {kChunk, 2 * kChunk}) {
            for (std::size_t before = seam - 5; before <= seam + 1; ++before) {
                const std::string bytes = std::string(before, 'a') + piece + "z";
                ASSERT_TRUE(ZtTestWriteBytes(dir.File("seam.txt"), bytes));
                const Units units = ReadUnits(dir.WideFile("seam.txt"));
                ASSERT_EQ(units, Expected(bytes))
                    << "piece of " << piece.size() << " at " << before;
                ASSERT_EQ(ReadUnitsByLines(dir.WideFile("seam.txt"), 7), units) << before;
            }
        }
    }
}

TEST(ZtUFileRead, RecordsTheFilesReadAsWindows1252) {
    struct Case {
        std::string bytes;
        std::uint64_t count; // bytes read as Windows-1252; 0: the file is not recorded
        std::uint64_t first; // the character offset of the first
    };
    const Case cases[] = {
        {"plain \xc3\xa9", 0, 0},
        {"a\x96z\x96", 2, 1},
        // Behind a character beyond the basic plane, two units.
        {"\xf0\x9f\x98\x80\x80", 1, 2},
        // In a later chunk, behind a CR LF that became one character.
        {"\r\n" + std::string(kChunk + 3, 'a') + "\xe9", 1, kChunk + 4},
    };
    ZtTestTempDir dir;
    ZtUSysFile::TakeLegacyReads();
    for (const Case& c : cases) {
        ASSERT_TRUE(ZtTestWriteBytes(dir.File("legacy.txt"), c.bytes));
        ReadUnits(dir.WideFile("legacy.txt"));
        const std::vector<ZtUSysFile::LegacyRead> reads = ZtUSysFile::TakeLegacyReads();
        if (c.count == 0) {
            EXPECT_TRUE(reads.empty()) << c.bytes;
            continue;
        }
        ASSERT_EQ(reads.size(), 1u) << c.bytes;
        EXPECT_EQ(reads[0].path, dir.WideFile("legacy.txt"));
        EXPECT_EQ(reads[0].bytes, c.count) << c.bytes;
        EXPECT_EQ(reads[0].firstCharacter, c.first) << c.bytes.size();
    }
    // A process that never takes the record keeps no more than a few.
    for (std::size_t i = 0; i < ZtUSysFile::kLegacyReadsKept + 5; ++i)
        ReadUnits(dir.WideFile("legacy.txt"));
    EXPECT_EQ(ZtUSysFile::TakeLegacyReads().size(), ZtUSysFile::kLegacyReadsKept);
}

TEST(ZtUFileRead, Utf16LineEndAcrossChunkSeam) {
    ZtTestTempDir dir;
    for (std::size_t before = kChunk / 2 - 4; before <= kChunk / 2 + 1; ++before) {
        std::string bytes = "\xff\xfe";
        for (std::size_t i = 0; i < before; ++i)
            bytes += std::string("a\0", 2);
        bytes += std::string("\r\0\n\0z\0", 6);
        ASSERT_TRUE(ZtTestWriteBytes(dir.File("seam16.txt"), bytes));
        Units expected(before, 'a');
        expected.push_back('\n');
        expected.push_back('z');
        ASSERT_EQ(ReadUnits(dir.WideFile("seam16.txt")), expected) << before;
    }
}

TEST(ZtUFileRead, NothingIsReadBehindUffff) {
    ZtTestTempDir dir;
    const std::string bytes = std::string(kChunk - 1, 'x') + "\xef\xbf\xbf" + "tail\n";
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("stop.txt"), bytes));
    ZtUFile* file = OpenForReading(dir.WideFile("stop.txt"));
    ASSERT_NE(file, nullptr);
    std::vector<wchar_t> line(kChunk * 2);
    const int count = static_cast<int>(line.size());
    ASSERT_NE(ZtUSysFile::fgetws(line.data(), count, file), nullptr);
    EXPECT_EQ(ZtUSysString::WideStrlen(line.data()), kChunk - 1);
    EXPECT_EQ(ZtUSysFile::fgetws(line.data(), count, file), nullptr);
    EXPECT_EQ(ZtUSysFile::fgetwc(file), kEnd);
    EXPECT_EQ(ZtUSysFile::ferror(file), 0);
    ZtUSysFile::fclose(file);
}

TEST(ZtUFileRead, LineReadsStopBehindLfOrWhenFull) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("lines.txt"), "abcdef\r\ng\n\nxyz"));
    ZtUFile* file = OpenForReading(dir.WideFile("lines.txt"));
    ASSERT_NE(file, nullptr);
    wchar_t line[5];
    std::vector<std::wstring> pieces;
    while (ZtUSysFile::fgetws(line, 5, file))
        pieces.emplace_back(line);
    EXPECT_EQ(pieces, (std::vector<std::wstring>{L"abcd", L"ef\n", L"g\n", L"\n", L"xyz"}));
    ZtUSysFile::fclose(file);
}

TEST(ZtUFileRead, ReadErrorEndsTheInputAndSetsTheFlag) {
    if (!ZtTestCanBreakOpenFiles())
        GTEST_SKIP() << "this platform can't break an open file";
    ZtTestTempDir dir;
    const std::string bytes = std::string(4 * kChunk, 'r');
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("broken.txt"), bytes));
    ZtUFile* file = OpenForReading(dir.WideFile("broken.txt"));
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(ZtUSysFile::fgetwc(file), unsigned{'r'});
    ASSERT_TRUE(ZtTestBreakOpenFile(dir.File("broken.txt")));
    std::size_t count = 1;
    while (ZtUSysFile::fgetwc(file) != kEnd)
        ++count;
    // What was decoded before the failure is still delivered.
    EXPECT_GT(count, kChunk / 2);
    EXPECT_LT(count, bytes.size());
    EXPECT_NE(ZtUSysFile::ferror(file), 0);
    EXPECT_EQ(ZtUSysFile::fgetwc(file), kEnd);
    ZtUSysFile::fclose(file);
}

// A file that grows while it is read is read to the size it had at the start and a
// margin, as one that claims no size and never ends would be.
TEST(ZtUFileRead, AFileIsReadNoFurtherThanItsSizeAtTheStartAndAMargin) {
    ZtTestTempDir dir;
    for (const std::size_t start : {std::size_t{0}, std::size_t{10}, 3 * kChunk}) {
        ASSERT_TRUE(ZtTestWriteBytes(dir.File("growing.txt"), std::string(start, 'g')));
        ZtUFile* file = OpenForReading(dir.WideFile("growing.txt"));
        ASSERT_NE(file, nullptr);
        ASSERT_TRUE(
            ZtTestWriteBytes(dir.File("growing.txt"), std::string(start + 4 * kChunk, 'g')));
        std::size_t count = 0;
        while (ZtUSysFile::fgetwc(file) != kEnd)
            ++count;
        EXPECT_EQ(count, start + ZtUFileReader::kGrowthMargin) << start;
        EXPECT_EQ(ZtUSysFile::fclose(file), 0);
    }
}

#ifndef _WIN32
// A link into /proc or /sys, such as a side file planted beside a control file, is not
// read: such files are no one's text, and some never end.
TEST(ZtUFileRead, FilesOfTheKernelAreNotRead) {
    ZtTestTempDir dir;
    ASSERT_EQ(::symlink("/proc/self/pagemap", dir.File("evil.tag").c_str()), 0);
    const ZtUFileScope scope;
    EXPECT_EQ(OpenForReading(dir.WideFile("evil.tag")), nullptr);
    ASSERT_EQ(scope.GetWarnings().size(), 1u);
    EXPECT_EQ(scope.GetWarnings()[0],
              dir.File("evil.tag") + " is a file of the kernel's (in /proc or /sys), not read");
    EXPECT_TRUE(scope.GetReads().empty());
}
#endif

} // namespace
