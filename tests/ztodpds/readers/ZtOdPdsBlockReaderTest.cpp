#include "readers/ZtOdPdsBlockReader.h"
#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "readers/ZtOdPdsBlockTracker.h"
#include "support/ZtTestRecordingDiagnostics.h"
#include "tools/ZtTestFiles.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>
#include <string>
#include <vector>
#ifndef _WIN32
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

struct Block {
    std::wstring name;
    std::wstring value;
    bool operator==(const Block&) const = default;
};

void PrintTo(const Block& block, std::ostream* out) {
    *out << ZtUSysString::WideToUtf8(block.name) << "{" << ZtUSysString::WideToUtf8(block.value)
         << "}";
}

using Blocks = std::vector<Block>;

Block Of(const ZtOdPdsBlock& block) {
    return {block.GetName().Str(), block.GetValue().Str()};
}

// The blocks that NextChild splits out of a value holding `text`.
Blocks Children(const std::wstring& text, std::uint32_t flags) {
    ZtOdPdsBlock parent;
    parent.SetValue(text.data(), text.size());
    parent.AddFlags(flags);
    Blocks blocks;
    ZtOdPdsBlock child;
    while (parent.NextChild(&child)) {
        EXPECT_EQ(child.GetFlags(), flags);
        blocks.push_back(Of(child));
    }
    EXPECT_EQ(parent.NextChild(&child), 0) << "the end of a value stays the end";
    // The tracked read takes one character at a time where the plain one takes runs.
    ZtTestRecordingDiagnostics heard;
    ZtOdPdsBlockTracker tracker(heard, L"value");
    parent.SetCursor(0);
    Blocks tracked;
    while (parent.NextChild(&child, tracker))
        tracked.push_back(Of(child));
    EXPECT_EQ(tracked, blocks) << "tracked";
    return blocks;
}

// The blocks that NextBlock reads from a file holding `bytes`.
Blocks FileBlocks(const std::string& bytes, std::uint32_t flags) {
    ZtTestTempDir dir;
    EXPECT_TRUE(ZtTestWriteBytes(dir.File("blocks.txt"), bytes));
    ZtOdPdsBlockFileSource source(flags);
    EXPECT_EQ(source.Open(dir.WideFile("blocks.txt").c_str()), 1);
    Blocks blocks;
    ZtOdPdsBlock block;
    while (source.NextBlock(&block))
        blocks.push_back(Of(block));
    // The tracked read takes one character at a time where the plain one takes runs.
    EXPECT_EQ(source.Open(dir.WideFile("blocks.txt").c_str()), 1);
    ZtTestRecordingDiagnostics heard;
    ZtOdPdsBlockTracker tracker(heard, L"blocks.txt");
    Blocks tracked;
    while (source.NextBlock(&block, tracker))
        tracked.push_back(Of(block));
    EXPECT_EQ(tracked, blocks) << "tracked";
    return blocks;
}

std::string Utf8(const std::wstring& text) {
    return ZtUSysString::WideToUtf8(text);
}

struct Case {
    std::wstring text;
    Blocks blocks;
};

TEST(ZtOdPdsBlockReader, SplitsOneLevelOfBlocks) {
    const Case cases[] = {
        {L"a{1}", {{L"a", L"1"}}},
        {L"a{b{c}d}", {{L"a", L"b{c}d"}}},
        {L"  a b {1}", {{L"a b", L"1"}}},
        {L"{1}", {{L"", L"1"}}},
        {L"a{}", {{L"a", L""}}},
        {L"a\n{1}", {{L"", L"1"}}},
        {L"a\r{1}", {{L"", L"1"}}},
        {L"a{1} b{2}", {{L"a", L"1"}, {L"b", L"2"}}},
        {L"a{1}x y{2}", {{L"a", L"1"}, {L"x y", L"2"}}},
        {L"k{ \n v \t}", {{L"k", L" \n v \t"}}},
        {L"notes\nmore notes\n a{1}\ntrailing text", {{L"a", L"1"}}},
        {L"a{1", {}},
        {L"", {}},
        // NUL cuts a name or value.
        {std::wstring(L"a\0b{c\0d}", 8), {{L"a", L"c"}}},
        // Without counted texts "text" is a name like any other.
        {L"text{3\n{}}", {{L"text", L"3\n{}"}}},
        {L"text{5\nH{llo}", {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Children(c.text, 0), c.blocks) << Utf8(c.text);
        EXPECT_EQ(FileBlocks(Utf8(c.text), 0), c.blocks) << Utf8(c.text);
    }
}

TEST(ZtOdPdsBlockReader, CountedTexts) {
    const Case cases[] = {
        {L"text{5\nHello}", {{L"text", L"5\nHello"}}},
        // A brace inside the first count - 2 characters survives.
        {L"text{5\nH{llo}", {{L"text", L"5\nH{llo"}}},
        {L"text{5\nH}llo}", {{L"text", L"5\nH}llo"}}},
        // Behind them it counts again.
        {L"text{5\nHel{o}", {}},
        {L"text{3\n{}}", {{L"text", L"3\n{"}}},
        // Any key ending in "text" counts, exactly and only right before the brace.
        {L"context{4\n}}x}", {{L"context", L"4\n}}x"}}},
        {L"Text{4\n}}x}", {{L"Text", L"4\n"}}},
        {L"text {4\n}}x}", {{L"text", L"4\n"}}},
        // At any depth.
        {L"tag{text{3\n}}}", {{L"tag", L"text{3\n}}"}}},
        // A count of 2 passes nothing.
        {L"text{2\n}", {{L"text", L"2\n"}}},
        {L"text{2 }x{1}", {{L"text", L"2 "}, {L"x", L"1"}}},
        // Any other character ends the count, even the one behind '9'.
        {L"text{4:}}x}", {{L"text", L"4:}}x"}}},
        {L"tag{text{4:}}x}}", {{L"tag", L"text{4:}}x}"}}},
        // A brace among the digits is a brace, and counting goes on behind it.
        {L"text{1{}2\n}}}}}}}}}}}", {{L"text", L"1{}2\n}}}}}}}}}}"}}},
        // Counts too large for 32 bits wrap: 4294967299 is 3.
        {L"text{4294967299\nab}cd}", {{L"text", L"4294967299\nab"}}},
        // Counts below 2, and no digits at all, let the rest of the input through.
        {L"text{0\n}}}} a{1}", {}},
        {L"text{1\n} a{1}", {}},
        {L"text{x} a{1}", {}},
        // Braces come before the count, so an empty counted text is just empty.
        {L"a{1}text{}b{2}", {{L"a", L"1"}, {L"text", L""}, {L"b", L"2"}}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Children(c.text, ZtOdPdsCountedText), c.blocks) << Utf8(c.text);
        EXPECT_EQ(FileBlocks(Utf8(c.text), ZtOdPdsCountedText), c.blocks) << Utf8(c.text);
    }
}

// Where a value and a file holding the same text read differently.
TEST(ZtOdPdsBlockReader, ValuesAndFilesDiffer) {
    struct DifferCase {
        std::wstring text;
        Blocks fromValue;
        Blocks fromFile;
    };
    const std::wstring uffff(1, wchar_t(0xFFFF)), pair{0xD83D, 0xDE00};
    const DifferCase cases[] = {
        // A file read ends at a stray closing brace; a value read passes over it.
        {L"a{1}}b{2}", {{L"a", L"1"}}, {{L"a", L"1"}}},
        {L"}a{1}", {}, {}},
        // Below depth 0 nothing completes until the braces make up for it.
        {L"a{1}}b{{2}}c{3}", {{L"a", L"1"}, {L"b{", L"2"}}, {{L"a", L"1"}}},
        // The text on both sides of a stray closing brace makes one name.
        {L"x y}b{{2}}", {{L"x yb{", L"2"}}, {}},
        {L"x}y}z{{{1}}}", {{L"xyz{{", L"1"}}, {}},
        // U+FFFF is a character of a value but the end of a file.
        {L"a{1}b{" + uffff + L"}c{3}", {{L"a", L"1"}, {L"b", uffff}, {L"c", L"3"}}, {{L"a", L"1"}}},
        // Files translate CR LF, skip a leading BOM and decode UTF-8 to UTF-16.
        {L"k{x\r\ny\r}\r\nm\r\n{2}",
         {{L"k", L"x\r\ny\r"}, {L"", L"2"}},
         {{L"k", L"x\ny\r"}, {L"", L"2"}}},
        {L"\uFEFFn\u00e9{" + pair + L"}", {{L"\uFEFFn\u00e9", pair}}, {{L"n\u00e9", pair}}},
    };
    for (const DifferCase& c : cases) {
        EXPECT_EQ(Children(c.text, 0), c.fromValue) << Utf8(c.text);
        EXPECT_EQ(FileBlocks(Utf8(c.text), 0), c.fromFile) << Utf8(c.text);
    }
}

TEST(ZtOdPdsBlockReader, LongNamesAndValuesGrowTheBuffer) {
    const std::wstring name(700, L'n');
    const std::wstring value = std::wstring(100000, L'v') + L"{" + std::wstring(513, L'w') + L"}";
    const std::wstring text = name + L"{" + value + L"}";
    EXPECT_EQ(Children(text, 0), (Blocks{{name, value}}));
    EXPECT_EQ(FileBlocks(Utf8(text), 0), (Blocks{{name, value}}));
}

// From a file, a name longer than the longest and the text behind a NUL are not gathered:
// neither can change what is read, which only the last characters of such text can (by
// a "text" before a counted value). A line end starts a new name as always.
TEST(ZtOdPdsBlockReader, FilesGatherNoTextThatCannotCount) {
    constexpr std::size_t kLongest = ZtOdPdsBlockReader::kMaxNameLength;
    const std::string longest(kLongest, 'x');
    const std::wstring longestWide(kLongest, L'x');
    const std::string nul(1, '\0');
    const struct {
        std::string bytes;
        std::uint32_t flags;
        Blocks blocks;
    } cases[] = {
        {longest + "x{v}", 0, {{L"", L"v"}}},
        {longest + "  y{v}", 0, {{L"", L"v"}}},
        // White space around the longest name is trimmed as ever.
        {" \t" + longest + " \t " + std::string(kLongest, ' ') + "{v}", 0, {{longestWide, L"v"}}},
        {longest + "   " + nul + "y{v}", 0, {{longestWide, L"v"}}},
        {"tag" + nul + longest + longest + "{v}", 0, {{L"tag", L"v"}}},
        {longest + longest + "\nb{2}", 0, {{L"b", L"2"}}},
        {"n" + nul + longest + "text{3\n}x}", ZtOdPdsCountedText, {{L"n", L"3\n}x"}}},
        {"a{b" + nul + longest + "text{4\n}}}}z{1}",
         ZtOdPdsCountedText,
         {{L"a", L"b"}, {L"z", L"1"}}},
        {"a{b" + nul + "{c}{" + longest + "}}z{1}", 0, {{L"a", L"b"}, {L"z", L"1"}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FileBlocks(c.bytes, c.flags), c.blocks) << c.bytes.substr(0, 40);
}

#ifndef _WIN32
#if defined(__SANITIZE_ADDRESS__)
#define ZT_NO_ADDRESS_LIMIT 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZT_NO_ADDRESS_LIMIT 1
#endif
#endif

// When memory runs short for a value, the reader gathers nothing more of that block and
// goes on with the next, rather than asking for the memory again at every character.
TEST(ZtOdPdsBlockReader, AValueThatMemoryRunsShortForIsSkipped) {
#ifdef ZT_NO_ADDRESS_LIMIT
    GTEST_SKIP() << "an address-space limit leaves AddressSanitizer no room";
#else
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("big.txt"), "a{" + std::string(40u << 20, 'v') +
                                                          "}\nb{2}\nc{" + std::string(9000, 'w') +
                                                          "}\n"));
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        long pages = 0;
        if (FILE* statm = std::fopen("/proc/self/statm", "r")) {
            if (std::fscanf(statm, "%ld", &pages) != 1)
                pages = 0;
            std::fclose(statm);
        }
        const rlim_t room = static_cast<rlim_t>(pages) * ::sysconf(_SC_PAGESIZE) + (48u << 20);
        const struct rlimit limit = {room, room};
        ::setrlimit(RLIMIT_AS, &limit);
        ZtOdPdsBlockFileSource source(0);
        ZtOdPdsBlock block;
        std::wstring names;
        if (source.Open(dir.WideFile("big.txt").c_str()))
            while (source.NextBlock(&block))
                names += block.GetName().Str() + L":" +
                         std::to_wstring(block.GetValue().GetLength()) + L" ";
        ::_exit(names == L"b:1 c:9000 " ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
#endif
}
#endif

TEST(ZtOdPdsBlockFileSource, ReadsAnEnclosingBlockByName) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("c.dri"), "noise\ndri {\n dgn{name{a}}\n opt{1}\n}\n"
                                                    "after{9}\n"));
    ZtOdPdsBlockFileSource source(ZtOdPdsCountedText);
    EXPECT_EQ(source.GetFlags(), ZtOdPdsCountedText);
    ASSERT_EQ(source.Open(dir.WideFile("c.dri").c_str()), 1);
    ZtUWideStringBuffer name(L"old");
    ASSERT_EQ(source.ReadName(&name), 1);
    EXPECT_EQ(name.Str(), L"dri");
    ZtOdPdsBlock block;
    ASSERT_EQ(source.NextBlock(&block), 1);
    EXPECT_EQ(Of(block), (Block{L"dgn", L"name{a}"}));
    EXPECT_EQ(block.GetFlags(), ZtOdPdsCountedText);
    ASSERT_EQ(source.NextBlock(&block), 1);
    EXPECT_EQ(Of(block), (Block{L"opt", L"1"}));
    EXPECT_EQ(source.NextBlock(&block), 0) << "the enclosing brace ends the reading";
    // What lies behind the enclosing block is for a later reading.
    ASSERT_EQ(source.NextBlock(&block), 1);
    EXPECT_EQ(Of(block), (Block{L"after", L"9"}));
    EXPECT_EQ(source.ReadName(&name), 0);
    EXPECT_EQ(name.Str(), L"dri") << "left alone at the end of the input";
}

TEST(ZtOdPdsBlockFileSource, OpenCloseAndUnfinishedBlocks) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("a.tag"), "first{1}"));
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("b.tag"), "second{2"));
    ZtOdPdsBlockFileSource source;
    ZtOdPdsBlock block;
    ZtUWideStringBuffer name;
    EXPECT_EQ(source.NextBlock(&block), 0) << "nothing is open";
    EXPECT_EQ(source.ReadName(&name), 0);
    EXPECT_EQ(source.Open(dir.WideFile("missing.tag").c_str()), 0);
    ASSERT_EQ(source.Open(dir.WideFile("a.tag").c_str()), 1);
    ASSERT_EQ(source.Open(dir.WideFile("b.tag").c_str()), 1) << "reopening closes the first";
    EXPECT_EQ(source.NextBlock(&block), 0);
    EXPECT_EQ(Of(block), (Block{L"second", L""})) << "the name was reached, the value not";
    source.Close();
    source.Close();
    EXPECT_EQ(source.NextBlock(&block), 0);
}

TEST(ZtOdPdsBlockFileSource, ManyBlocksAcrossTheStreamsChunks) {
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "tag{text{9\nbody {" + std::to_string(i % 10) + "}}\n";
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("many.tag"), text));
    ZtOdPdsBlockFileSource source(ZtOdPdsCountedText);
    ASSERT_EQ(source.Open(dir.WideFile("many.tag").c_str()), 1);
    ZtOdPdsBlock block, child;
    int count = 0;
    while (source.NextBlock(&block)) {
        ASSERT_EQ(block.NextChild(&child), 1);
        ASSERT_EQ(child.GetValue().Str(), L"9\nbody {" + std::to_wstring(count % 10));
        ++count;
    }
    EXPECT_EQ(count, 20000);
}

} // namespace
