#include "FileStreams.h"

#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <string>
#include <vector>
#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

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
#if WCHAR_MAX > 0xFFFF
        // A whole code point in one wchar_t, as a literal gives it where wchar_t is 32 bits.
        {{std::wstring{static_cast<wchar_t>(0x1F600)}}, "\xf0\x9f\x98\x80"},
        {{std::wstring{static_cast<wchar_t>(0x110000)}}, "\xef\xbf\xbd"},
#endif
        {{L""}, ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Written(c.texts), c.bytes) << c.bytes;
}

// The names in the test folder, sorted; a temporary file left behind shows here.
std::vector<std::string> FolderNames(const ZtTestTempDir& dir) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(ZtUFileWrite, TheOldFileStandsUntilTheClose) {
    ZtUSysFile::TakeWriteFailures();
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("old.txt"), "a much longer old content\n"));
    ZtUFile* file = OpenForWriting(dir.WideFile("old.txt"));
    ASSERT_NE(file, nullptr);
    ZtUSysFile::fwprintf(file, L"new");
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.txt")), "a much longer old content\n");
    EXPECT_EQ(ZtUSysFile::fclose(file), 0);
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.txt")), "new");
    EXPECT_EQ(FolderNames(dir), std::vector<std::string>{"old.txt"});
    EXPECT_TRUE(ZtUSysFile::TakeWriteFailures().empty());
}

TEST(ZtUFileWrite, ReplacingKeepsTheModeAndNewFilesFollowTheUmask) {
#ifdef _WIN32
    GTEST_SKIP() << "file modes and the umask are POSIX's";
#else
    const auto modeOf = [](const std::string& path) {
        struct stat status;
        return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    };
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("old.txt"), "old\n"));
    ASSERT_EQ(::chmod(dir.File("old.txt").c_str(), 0640), 0);
    EXPECT_EQ(ZtUSysFile::fclose(OpenForWriting(dir.WideFile("old.txt"))), 0);
    EXPECT_EQ(modeOf(dir.File("old.txt")), 0640u);
    const mode_t mask = ::umask(022);
    EXPECT_EQ(ZtUSysFile::fclose(OpenForWriting(dir.WideFile("fresh.txt"))), 0);
    ::umask(mask);
    EXPECT_EQ(modeOf(dir.File("fresh.txt")), 0644u);
#endif
}

TEST(ZtUFileWrite, AFailedWriteLeavesTheOldFileAndSaysWhy) {
    if (!ZtTestCanBreakOpenFiles())
        GTEST_SKIP() << "this platform can't break an open file";
    ZtUSysFile::TakeWriteFailures();
    ZtTestTempDir dir;
    const std::string old = "old content\n";
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("broken.txt"), old));
    ZtUFile* file = OpenForWriting(dir.WideFile("broken.txt"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ZtUSysFile::fwprintf(file, L"buffered\n"), 9);
    const std::vector<std::string> names = FolderNames(dir);
    ASSERT_EQ(names.size(), 2u);
    ASSERT_TRUE(ZtTestBreakOpenFile(dir.File(names[0] == "broken.txt" ? names[1] : names[0])));
    EXPECT_EQ(ZtUSysFile::ferror(file), 0) << "nothing reached the file yet";
    const std::wstring large(100000, L'y');
    EXPECT_LT(ZtUSysFile::fwprintf(file, L"%s", large.c_str()), 0);
    EXPECT_NE(ZtUSysFile::ferror(file), 0);
    EXPECT_NE(ZtUSysFile::fclose(file), 0);

    EXPECT_EQ(ZtTestReadBytes(dir.File("broken.txt")), old);
    EXPECT_EQ(FolderNames(dir), std::vector<std::string>{"broken.txt"});
    const std::vector<ZtUSysFile::WriteFailure> failures = ZtUSysFile::TakeWriteFailures();
    ASSERT_EQ(failures.size(), 1u);
    EXPECT_EQ(failures[0].path, dir.File("broken.txt"));
    EXPECT_EQ(failures[0].reason, std::strerror(EBADF)) << "a write on the directory";
}

// A file-size limit cuts the write part-way, as a full disk would; the child that hits it
// says how its close went.
TEST(ZtUFileWrite, AWriteCutByAFileSizeLimitLeavesTheOldFile) {
#ifdef _WIN32
    GTEST_SKIP() << "fork and file-size limits are POSIX's";
#else
    ZtTestTempDir dir;
    const std::string old(3000, 'o');
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("big.txt"), old));
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const struct rlimit limit = {1024, 1024};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ZtUFile* file = OpenForWriting(dir.WideFile("big.txt"));
        const std::wstring text(200000, L'n');
        ZtUSysFile::fwprintf(file, L"%s", text.c_str());
        const bool failed = ZtUSysFile::fclose(file) != 0;
        const auto failures = ZtUSysFile::TakeWriteFailures();
        ::_exit(failed && failures.size() == 1 && failures[0].reason == std::strerror(EFBIG) ? 0
                                                                                             : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(ZtTestReadBytes(dir.File("big.txt")), old);
    EXPECT_EQ(FolderNames(dir), std::vector<std::string>{"big.txt"});
#endif
}

TEST(ZtUFileWrite, WhatCannotBeCreatedIsRecorded) {
    ZtUSysFile::TakeWriteFailures();
    ZtTestTempDir dir;
    ASSERT_TRUE(std::filesystem::create_directory(dir.File("folder")));
    const struct {
        std::string path;
        int error;
    } cases[] = {
        {dir.File("missing/out.txt"), ENOENT},
        {dir.File("folder"), EISDIR},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(OpenForWriting(ZtTestWide(c.path)), nullptr) << c.path;
        const std::vector<ZtUSysFile::WriteFailure> failures = ZtUSysFile::TakeWriteFailures();
        ASSERT_EQ(failures.size(), 1u) << c.path;
        EXPECT_EQ(failures[0].path, c.path);
        EXPECT_EQ(failures[0].reason, std::strerror(c.error));
    }
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
