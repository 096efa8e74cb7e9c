#include "readers/ZtOdPdsTextFile.h"
#include "readers/ZtOdPdsInputConsumer.h"
#include "tools/ZtTestFiles.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

// Records what a read hands it: "Begin", each line, "End".
class Recorder : public ZtOdPdsInputConsumer {
public:
    std::vector<std::wstring> events;
    // Refuses the line with this number (from 1), if any.
    std::size_t refuse = 0;
    std::function<void()> onFirstLine;

    int Begin() override {
        events.push_back(L"Begin");
        return 1;
    }
    int End() override {
        events.push_back(L"End");
        return 0;
    }
    int Line(ZtUWideStringBuffer& line) override {
        if (lines_++ == 0 && onFirstLine)
            onFirstLine();
        events.push_back(line.Str());
        // Consumers may change the line; the reader must not mind.
        line.SetString(L"changed");
        return lines_ == refuse ? 0 : 1;
    }

private:
    std::size_t lines_ = 0;
};

struct Read {
    int result = -1;
    std::vector<std::wstring> events;
};

Read ReadFile(const std::string& bytes, std::size_t refuse = 0) {
    ZtTestTempDir dir;
    EXPECT_TRUE(ZtTestWriteBytes(dir.File("lines.dst"), bytes));
    ZtOdPdsTextFile file;
    EXPECT_NE(file.Open(dir.WideFile("lines.dst").c_str()), 0);
    Recorder recorder;
    recorder.refuse = refuse;
    const int result = file.ReadLines(recorder);
    return {result, recorder.events};
}

using Events = std::vector<std::wstring>;

std::vector<std::wstring> Framed(std::vector<std::wstring> lines) {
    lines.insert(lines.begin(), L"Begin");
    lines.push_back(L"End");
    return lines;
}

TEST(ZtOdPdsTextFile, DeliversLinesWithoutTheirLf) {
    struct Case {
        std::string bytes;
        Events lines;
    };
    const std::string a511(511, 'a'), b600(600, 'b');
    const Case cases[] = {
        {"", {}},
        {"\n\n\r\n\n", {}},
        {"   \n", {L"   "}},
        {"A\n", {L"A"}},
        {"A", {}},
        {"x\ny", {L"x"}},
        {"AB", {L"AB"}},
        {"[DEFINITION SECTION]\r\n<Display Set>\r\nFIND Level 1\r\n",
         {L"[DEFINITION SECTION]", L"<Display Set>", L"FIND Level 1"}},
        // Only LF is taken off; a lone CR stays, also as the whole line.
        {"ab\rcd\n\r\r\n", {L"ab\rcd", L"\r"}},
        // A NUL ends what the line holds.
        {std::string("ab\0cd\nef\n", 9), {L"ab", L"ef"}},
        {a511 + "\n", {std::wstring(511, L'a')}},
        {a511 + "\nz", {std::wstring(511, L'a')}},
        {std::string(510, 'a') + "\n", {std::wstring(510, L'a')}},
        {a511 + "xy\n", {std::wstring(511, L'a'), L"xy"}},
        {a511 + "x\n", {std::wstring(511, L'a'), L"x"}},
        {a511 + "x", {std::wstring(511, L'a')}},
        {b600 + "\n", {std::wstring(511, L'b'), std::wstring(89, L'b')}},
        {std::string(1022, 'c') + "\n", {std::wstring(511, L'c'), std::wstring(511, L'c')}},
        {"caf\xc3\xa9 \xe2\x82\xac\n", {L"caf\u00e9 \u20ac"}},
    };
    for (const Case& c : cases) {
        const Read read = ReadFile(c.bytes);
        EXPECT_EQ(read.result, 1) << c.bytes;
        EXPECT_EQ(read.events, Framed(c.lines)) << c.bytes;
    }
}

TEST(ZtOdPdsTextFile, ARefusedLineStopsTheRead) {
    const Read read = ReadFile("one\ntwo\nthree\n", 2);
    EXPECT_EQ(read.result, 0);
    EXPECT_EQ(read.events, Framed({L"one", L"two"}));
}

// The lines read before a read error stand; the result tells of the error.
TEST(ZtOdPdsTextFile, ReadErrorEndsTheInputAndFailsTheRead) {
    if (!ZtTestCanBreakOpenFiles())
        GTEST_SKIP() << "this platform can't break an open file";
    ZtTestTempDir dir;
    std::string bytes;
    for (int i = 0; bytes.size() < 300000; ++i)
        bytes += "line " + std::to_string(i) + "\n";
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("big.dst"), bytes));
    ZtOdPdsTextFile file;
    ASSERT_NE(file.Open(dir.WideFile("big.dst").c_str()), 0);
    Recorder recorder;
    recorder.onFirstLine = [&] { EXPECT_TRUE(ZtTestBreakOpenFile(dir.File("big.dst"))); };
    EXPECT_EQ(file.ReadLines(recorder), 0);
    ASSERT_GT(recorder.events.size(), 100u);
    EXPECT_LT(recorder.events.size(), 30000u);
    EXPECT_EQ(recorder.events[1], L"line 0");
    EXPECT_EQ(recorder.events.back(), L"End");
}

TEST(ZtOdPdsTextFile, OpenCloseAndReadAgain) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("a.dst"), "aa\nbb\n"));
    ZtOdPdsTextFile file;
    EXPECT_EQ(file.Open(dir.WideFile("missing.dst").c_str()), 0);
    Recorder closed;
    EXPECT_EQ(file.ReadLines(closed), 0);
    EXPECT_EQ(closed.events, Framed({}));

    ASSERT_NE(file.Open(dir.WideFile("a.dst").c_str()), 0);
    ASSERT_NE(file.Open(dir.WideFile("a.dst").c_str()), 0) << "reopening closes the first";
    Recorder first;
    EXPECT_EQ(file.ReadLines(first), 1);
    Recorder exhausted;
    EXPECT_EQ(file.ReadLines(exhausted), 1);
    EXPECT_EQ(exhausted.events, Framed({}));
    EXPECT_EQ(file.Close(), 1);
    EXPECT_EQ(file.Close(), 1);
    ASSERT_NE(file.Open(dir.WideFile("a.dst").c_str()), 0);
    Recorder second;
    EXPECT_EQ(file.ReadLines(second), 1);
    EXPECT_EQ(first.events, Framed({L"aa", L"bb"}));
    EXPECT_EQ(second.events, first.events);
}

} // namespace
