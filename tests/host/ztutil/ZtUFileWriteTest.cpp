#include "FileStreams.h"

#include "ztutil/ZtUFileScope.h"

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
#include <grp.h>
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
    const ZtUFileScope scope;
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("old.txt"), "a much longer old content\n"));
    ZtUFile* file = OpenForWriting(dir.WideFile("old.txt"));
    ASSERT_NE(file, nullptr);
    ZtUSysFile::fwprintf(file, L"new");
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.txt")), "a much longer old content\n");
    EXPECT_EQ(ZtUSysFile::fclose(file), 0);
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.txt")), "new");
    EXPECT_EQ(FolderNames(dir), std::vector<std::string>{"old.txt"});

    // Given up unclosed, as on an exception's way out, the text goes and the old stays.
    file = OpenForWriting(dir.WideFile("old.txt"));
    ASSERT_NE(file, nullptr);
    ZtUSysFile::fwprintf(file, L"abandoned");
    ZtUSysFile::fdiscard(file);
    EXPECT_EQ(ZtTestReadBytes(dir.File("old.txt")), "new");
    EXPECT_EQ(FolderNames(dir), std::vector<std::string>{"old.txt"});
    EXPECT_TRUE(scope.GetFailures().empty());
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
    const ZtUFileScope scope;
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
    const std::vector<ZtUFileScope::Failure>& failures = scope.GetFailures();
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
        const ZtUFileScope scope;
        ZtUFile* file = OpenForWriting(dir.WideFile("big.txt"));
        const std::wstring text(200000, L'n');
        ZtUSysFile::fwprintf(file, L"%s", text.c_str());
        const bool failed = ZtUSysFile::fclose(file) != 0;
        const auto& failures = scope.GetFailures();
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
    ZtTestTempDir dir;
    ASSERT_TRUE(std::filesystem::create_directory(dir.File("folder")));
    const struct {
        std::string path;
        int error;
    } cases[] = {
        {dir.File("missing/out.txt"), ENOENT},
        {dir.File("folder"), EISDIR},
        {dir.File("folder/"), EISDIR},
        {dir.File("folder/.."), EISDIR},
    };
    for (const auto& c : cases) {
        const ZtUFileScope scope;
        EXPECT_EQ(OpenForWriting(ZtTestWide(c.path)), nullptr) << c.path;
        const std::vector<ZtUFileScope::Failure>& failures = scope.GetFailures();
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

// Names up to the longest a folder takes are written: the temporary name is cut to fit,
// never in the middle of a character.
TEST(ZtUFileWrite, NamesOfEveryLegalLengthCanBeWritten) {
#ifdef _WIN32
    GTEST_SKIP() << "a path with such a name is longer than MAX_PATH, which Windows opens only "
                    "with long paths switched on";
#endif
    ZtTestTempDir dir;
    const std::string accented = "\xc3\xa9";
    for (const std::string& name :
         {std::string(248, 'n'), std::string(255, 'n'), std::string(253, 'n') + accented,
          std::string(246, 'n') + accented + ".tag"}) {
        const ZtUFileScope scope;
        ZtUFile* file = OpenForWriting(dir.WideFile(name));
        ASSERT_NE(file, nullptr) << name.size();
        ZtUSysFile::fwprintf(file, L"x");
        EXPECT_EQ(ZtUSysFile::fclose(file), 0);
        EXPECT_EQ(ZtTestReadBytes(dir.File(name)), "x") << name.size();
        EXPECT_TRUE(scope.GetFailures().empty());
    }
    EXPECT_EQ(FolderNames(dir).size(), 4u) << "no temporary file is left";
}

// A file the scope protects (an input of the run) is refused under any of its names, and
// is left as it was; the watcher sees every print and may keep the old file.
TEST(ZtUFileWrite, ScopesProtectFilesAndWatchWrites) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("input.txt"), "input\n"));
    ZtUFileIdentity input;
    ASSERT_TRUE(ZtUSysFile::IdentifyW(dir.WideFile("input.txt").c_str(), &input));
    std::error_code error;
    std::filesystem::create_symlink("input.txt", dir.File("link.txt"), error);
    std::filesystem::create_hard_link(dir.File("input.txt"), dir.File("hard.txt"), error);
    {
        ZtUFileScope outer;
        outer.Protect(input, "it is an input of this run");
        const ZtUFileScope inner;
        for (const char* name : {"input.txt", "link.txt", "hard.txt"}) {
            if (!std::filesystem::exists(dir.File(name)))
                continue;
            EXPECT_EQ(OpenForWriting(dir.WideFile(name)), nullptr) << name;
        }
        ASSERT_FALSE(inner.GetFailures().empty());
        EXPECT_EQ(inner.GetFailures()[0].reason, "it is an input of this run");
        EXPECT_TRUE(outer.GetFailures().empty()) << "failures go to the innermost scope";
        const std::size_t failed = inner.GetFailures().size();
        {
            const ZtUFileScope nested;
            EXPECT_EQ(OpenForWriting(dir.WideFile("input.txt")), nullptr);
        }
        EXPECT_EQ(inner.GetFailures().size(), failed + 1) << "and on outward when it ends";
    }
    EXPECT_EQ(ZtTestReadBytes(dir.File("input.txt")), "input\n");

    struct Watcher : ZtUWriteWatcher {
        std::wstring seen;
        std::vector<std::pair<std::uint64_t, long long>> asked;
        bool allow = true;
        void Wrote(std::wstring_view text) override { seen += text; }
        bool MayReplace(const Replacement& r) override {
            asked.push_back({r.bytes, r.oldBytes});
            return allow;
        }
    } watcher;
    ZtUFileScope scope;
    scope.Watch(&watcher);
    for (const bool allow : {false, true}) {
        watcher.allow = allow;
        ZtUFile* file = OpenForWriting(dir.WideFile("input.txt"));
        ASSERT_NE(file, nullptr);
        ZtUSysFile::fwprintf(file, L"n\u00e9w %d", 1);
        EXPECT_EQ(ZtUSysFile::fclose(file), 0) << "keeping the old file is no failure";
        EXPECT_EQ(ZtTestReadBytes(dir.File("input.txt")), allow ? "n\xc3\xa9w 1" : "input\n");
    }
    EXPECT_EQ(watcher.seen, L"n\u00e9w 1n\u00e9w 1");
    using Asked = std::vector<std::pair<std::uint64_t, long long>>;
    EXPECT_EQ(watcher.asked, (Asked{{6, 6}, {6, 6}}));
    EXPECT_TRUE(scope.GetFailures().empty());
}

#ifndef _WIN32
std::uint64_t LinksOf(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 ? status.st_nlink : 0;
}

TEST(ZtUFileWrite, ReplacingAFileWithOtherNamesWarns) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("a.txt"), "old\n"));
    ASSERT_EQ(::link(dir.File("a.txt").c_str(), dir.File("b.txt").c_str()), 0);
    const ZtUFileScope scope;
    EXPECT_EQ(ZtUSysFile::fclose(OpenForWriting(dir.WideFile("a.txt"))), 0);
    ASSERT_EQ(scope.GetWarnings().size(), 1u);
    EXPECT_EQ(scope.GetWarnings()[0], dir.File("a.txt") +
                                          " had 2 hard links: it is replaced under this name, "
                                          "and the other names keep the old text");
    EXPECT_EQ(ZtTestReadBytes(dir.File("b.txt")), "old\n");
    EXPECT_EQ(LinksOf(dir.File("a.txt")), 1u);
}

constexpr uid_t kNobody = 65534;

// Links planted by another user: followed only where the link's owner is the writer or
// the owner of the folder it stands in, as the kernel's protected-links rule says, and
// whatever the system's own setting is.
TEST(ZtUFileWrite, LinksOfOtherUsersAreNotFollowed) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "links of another user need root to make";
    ZtTestTempDir dir;
    ASSERT_EQ(::chmod(dir.Path().c_str(), 0755), 0);
    const struct {
        uid_t folder;
        uid_t link;
        bool followed;
    } cases[] = {
        {0, kNobody, false},      // planted by another in a folder of root's, such as /tmp
        {kNobody, kNobody, true}, // the folder's owner could move the file there anyway
        {kNobody, 0, true},       // the writer's own link
    };
    for (const auto& c : cases) {
        ZtTestTempDir shared(dir.Path());
        ASSERT_EQ(::chmod(shared.Path().c_str(), 01777), 0);
        ASSERT_EQ(::chown(shared.Path().c_str(), c.folder, c.folder), 0);
        const std::string victim = dir.File("victim.txt");
        ASSERT_TRUE(ZtTestWriteBytes(victim, "precious\n"));
        ASSERT_EQ(::symlink(victim.c_str(), shared.File("out.txt").c_str()), 0);
        ASSERT_EQ(::lchown(shared.File("out.txt").c_str(), c.link, c.link), 0);
        const ZtUFileScope scope;
        ZtUFile* file = OpenForWriting(shared.WideFile("out.txt"));
        ASSERT_EQ(file != nullptr, c.followed) << c.folder << " " << c.link;
        if (file) {
            ZtUSysFile::fwprintf(file, L"new");
            EXPECT_EQ(ZtUSysFile::fclose(file), 0);
        } else {
            ASSERT_EQ(scope.GetFailures().size(), 1u);
            EXPECT_EQ(scope.GetFailures()[0].reason,
                      "it is a link of user 65534 in a folder of user 0, which is not followed");
        }
        EXPECT_EQ(ZtTestReadBytes(victim), c.followed ? "new" : "precious\n");
        EXPECT_TRUE(std::filesystem::is_symlink(shared.File("out.txt")));
    }
}

struct Ownership {
    uid_t owner;
    gid_t group;
    mode_t mode;
    bool operator==(const Ownership&) const = default;
};

Ownership OwnershipOf(const std::string& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return {status.st_uid, status.st_gid, status.st_mode & 07777};
}

// Root's write over a user's file leaves it the user's. A user who can't keep the group
// gives the group no more than others get, so that no other group gains access.
TEST(ZtUFileWrite, ReplacingKeepsOwnerAndGroupWherePermitted) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "files of another user need root to make";
    ZtTestTempDir dir;
    ASSERT_EQ(::chmod(dir.Path().c_str(), 0777), 0);
    const std::string file = dir.File("user.txt");
    ASSERT_TRUE(ZtTestWriteBytes(file, "old\n"));
    ASSERT_EQ(::chown(file.c_str(), kNobody, kNobody), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    EXPECT_EQ(ZtUSysFile::fclose(OpenForWriting(ZtTestWide(file))), 0);
    EXPECT_EQ(OwnershipOf(file), (Ownership{kNobody, kNobody, 0640}));

    ASSERT_EQ(::chown(file.c_str(), 0, 0), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0664), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const bool dropped =
            ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
        ::_exit(dropped && ZtUSysFile::fclose(OpenForWriting(ZtTestWide(file))) == 0 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(OwnershipOf(file), (Ownership{kNobody, kNobody, 0644}));
}
#endif

} // namespace
