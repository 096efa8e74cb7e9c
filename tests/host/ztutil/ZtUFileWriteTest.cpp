#include "FileStreams.h"

#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The bytes that printing each text with "%s", one call after the other, leaves in a file.
std::string Written(std::initializer_list<std::wstring> texts) {
    ZtTestTempDir dir;
    ZtUFile* file = OpenForWriting(dir.WideFile("out.txt"));
    if (!file) {
        ADD_FAILURE() << "cannot create";
        return {};
    }
    for (const std::wstring& text : texts)
        EXPECT_EQ(ZtUSysFile::fwprintf(file, L"%s", text.c_str()), static_cast<int>(text.size()));
    EXPECT_EQ(ZtUSysFile::fclose(file), 0);
    return ZtTestReadBytes(dir.File("out.txt"));
}

TEST(ZtUFileWrite, EncodesUtf8WithoutMark) {
    struct Case {
        std::initializer_list<std::wstring> texts;
        std::string bytes;
    };
    const Case cases[] = {
        {{L"a\nb\r\n"}, "a\nb\r\n"},
        {{L"caf\u00e9 \u20ac"}, "caf\xc3\xa9 \xe2\x82\xac"},
        {{std::wstring{0xD83D, 0xDE00}}, "\xf0\x9f\x98\x80"},
        // A pair split over two prints is still one character.
        {{std::wstring{0xD83D}, std::wstring{0xDE00, L'x'}}, "\xf0\x9f\x98\x80x"},
        {{std::wstring{L'a', 0xDE00, L'b'}},
         "a\xef\xbf\xbd"
         "b"},
        {{std::wstring{0xD83D, L'b'}},
         "\xef\xbf\xbd"
         "b"},
        {{std::wstring{0xD83D, 0xD83D, 0xDE00}}, "\xef\xbf\xbd\xf0\x9f\x98\x80"},
        // A high surrogate left at the close.
        {{std::wstring{L'z', 0xDBFF}}, "z\xef\xbf\xbd"},
        // A whole code point in one wchar_t, as a literal gives it on this platform.
        {{std::wstring{static_cast<wchar_t>(0x1F600)}}, "\xf0\x9f\x98\x80"},
        {{std::wstring{static_cast<wchar_t>(0x110000)}}, "\xef\xbf\xbd"},
        {{L""}, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Written(c.texts), c.bytes) << c.bytes;
}

TEST(ZtUFileWrite, WhatIsWrittenReadsBackTheSame) {
    const std::wstring text = std::wstring(L"tag{5\nH{l}o}\r\n\u00e9") + wchar_t(0xD83D) +
                              wchar_t(0xDE00) + std::wstring(70000, L'x') + L"\n";
    ZtTestTempDir dir;
    ZtUFile* out = OpenForWriting(dir.WideFile("r.txt"));
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(ZtUSysFile::fwprintf(out, L"%s", text.c_str()), static_cast<int>(text.size()));
    ASSERT_EQ(ZtUSysFile::fclose(out), 0);

    std::wstring back;
    for (unsigned c : ReadUnits(dir.WideFile("r.txt")))
        back += static_cast<wchar_t>(c);
    // Only the CR LF changes: the stream reads it as LF.
    std::wstring expected = text;
    expected.erase(expected.find(L"\r\n"), 1);
    EXPECT_EQ(back, expected);
}

TEST(ZtUFileWrite, CreatingTruncatesAnOldFile) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("old.txt"), "a much longer old content\n"));
    ZtUFile* file = OpenForWriting(dir.WideFile("old.txt"));
    ASSERT_NE(file, nullptr);
    ZtUSysFile::fwprintf(file, L"new");
    EXPECT_EQ(ZtUSysFile::fclose(file), 0);
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.txt")), "new");

    ZtUSysFile::fclose(OpenForWriting(dir.WideFile("fresh.txt")));
    struct stat status;
    ASSERT_EQ(::stat(dir.File("fresh.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077, 0u) << "created files are private to their owner";
}

TEST(ZtUFileWrite, WriteErrorSetsTheFlagAndFailsTheClose) {
    ZtTestTempDir dir;
    ZtUFile* file = OpenForWriting(dir.WideFile("broken.txt"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ZtUSysFile::fwprintf(file, L"buffered\n"), 9);
    ASSERT_TRUE(ZtTestBreakOpenFile(dir.File("broken.txt")));
    EXPECT_EQ(ZtUSysFile::ferror(file), 0) << "nothing reached the file yet";
    const std::wstring large(100000, L'y');
    EXPECT_LT(ZtUSysFile::fwprintf(file, L"%s", large.c_str()), 0);
    EXPECT_NE(ZtUSysFile::ferror(file), 0);
    EXPECT_NE(ZtUSysFile::fclose(file), 0);
}

TEST(ZtUFileWrite, StreamsRefuseTheOtherDirection) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("in.txt"), "x"));
    ZtUFile* in = OpenForReading(dir.WideFile("in.txt"));
    ASSERT_NE(in, nullptr);
    EXPECT_LT(ZtUSysFile::fwprintf(in, L"no"), 0);
    EXPECT_NE(ZtUSysFile::ferror(in), 0);
    ZtUSysFile::fclose(in);
    EXPECT_EQ(ZtTestReadBytes(dir.File("in.txt")), "x");

    ZtUFile* out = OpenForWriting(dir.WideFile("out.txt"));
    ASSERT_NE(out, nullptr);
    wchar_t line[8];
    EXPECT_EQ(ZtUSysFile::fgetwc(out), kEnd);
    EXPECT_EQ(ZtUSysFile::fgetws(line, 8, out), nullptr);
    EXPECT_EQ(ZtUSysFile::fclose(out), 0);
}

} // namespace
