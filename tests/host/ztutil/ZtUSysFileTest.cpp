#include "ztutil/ZtUSysFile.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>
#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

TEST(ZtUSysFilePaths, PopPath) {
    struct Case {
        const wchar_t* path;
        const wchar_t* directory;
        const wchar_t* name;
        int hadDirectory;
    };
    const Case cases[] = {
        {L"/models/plant/a.dri", L"/models/plant", L"a.dri", 1},
        {L"a.dri", L"", L"a.dri", 0},
        {L"/a.dri", L"/", L"a.dri", 1},
        {L"models\\plant\\a.dri", L"models\\plant", L"a.dri", 1},
        {L"mixed/sub\\a.dri", L"mixed/sub", L"a.dri", 1},
        {L"a//b", L"a", L"b", 1},
        {L"dir/", L"dir", L"", 1},
        {L"", L"", L"", 0},
    };
    for (const Case& c : cases) {
        ZtUWideStringBuffer directory(L"old"), name(L"old");
        EXPECT_EQ(ZtUSysFile::PopPathW(c.path, &directory, &name), c.hadDirectory) << c.path;
        EXPECT_EQ(directory.Str(), c.directory) << c.path;
        EXPECT_EQ(name.Str(), c.name) << c.path;
    }
    ZtUWideStringBuffer inPlace(L"/x/y.dri");
    ZtUSysFile::PopPathW(inPlace.GetString(), &inPlace, nullptr);
    EXPECT_EQ(inPlace.Str(), L"/x");
}

TEST(ZtUSysFilePaths, ExtensionsAndNames) {
    struct Case {
        const wchar_t* path;
        const wchar_t* withoutExtension;
        const wchar_t* withoutDirectory;
    };
    const Case cases[] = {
        {L"/m/pipes.dgn", L"/m/pipes", L"pipes.dgn"},
        {L"a/b.c.dgn", L"a/b.c", L"b.c.dgn"},
        {L"x.dir/file", L"x.dir/file", L"file"},
        {L"x.dir\\file", L"x.dir\\file", L"file"},
        {L"noext", L"noext", L"noext"},
        {L".tag", L"", L".tag"},
        {L"a.", L"a", L"a."},
        {L"dir/", L"dir/", L""},
    };
    for (const Case& c : cases) {
        ZtUWideStringBuffer out(L"old");
        ZtUSysFile::RemoveFileExtensionW(c.path, &out);
        EXPECT_EQ(out.Str(), c.withoutExtension) << c.path;
        ZtUSysFile::RemovePathnameW(c.path, &out);
        EXPECT_EQ(out.Str(), c.withoutDirectory) << c.path;
    }
}

TEST(ZtUSysFilePaths, HasFileExtension) {
    struct Case {
        const wchar_t* name;
        const wchar_t* extension;
        bool has;
    };
    const Case cases[] = {
        {L"/m/a.tag", L"tag", true}, {L"a.TAG", L"tag", true},      {L"atag", L"tag", false},
        {L"a.Dst", L"DST", true},    {L"a.TAGS", L"tag", false},    {L"tag", L"tag", false},
        {L".tag", L"tag", true},     {L"a.tag.bak", L"tag", false}, {L"a.dst", L"dst", true},
        {L"a.dst", L"st", false},    {nullptr, L"tag", false},      {L"a.tag", nullptr, false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ZtUSysFile::HasFileExtensionW(c.name, c.extension), c.has)
            << (c.name ? c.name : L"(null)");
}

TEST(ZtUSysFilePaths, MakeAbsolute) {
    struct Case {
        const wchar_t* folder;
        const wchar_t* path;
        const wchar_t* result;
    };
    const Case cases[] = {
        {L"/m/dri", L"a.dgn", L"/m/dri/a.dgn"},
        {L"/m/dri", L"sub\\a.dgn", L"/m/dri/sub/a.dgn"},
        {L"/m/dri", L"..\\x\\.\\a.dgn", L"/m/x/a.dgn"},
        {L"/m", L"/abs//a.dgn", L"/abs/a.dgn"},
        {L"/m", L"\\abs\\a.dgn", L"/abs/a.dgn"},
        {L"/", L"a", L"/a"},
        {L"/m/", L"a", L"/m/a"},
        {L"/m", L"../../../a", L"/a"},
        {L"rel", L"../../a", L"../a"},
        {L"", L"a.dgn", L"a.dgn"},
        {L"/m", L"", L"/m"},
        {L"m", L"..", L"."},
        {L"/m/a", L"../..", L"/"},
        {L"a/b", L"../../..", L".."},
    };
    for (const Case& c : cases) {
        ZtUWideStringBuffer out(L"old");
        ZtUSysFile::MakeAbsoluteW(c.folder, c.path, &out);
        EXPECT_EQ(out.Str(), c.result) << c.folder << L" + " << c.path;
    }
    ZtUWideStringBuffer inPlace(L"b.kvc");
    ZtUSysFile::MakeAbsoluteW(L"/m", inPlace.GetString(), &inPlace);
    EXPECT_EQ(inPlace.Str(), L"/m/b.kvc");
}

TEST(ZtUSysFile, ExistsAndOpenRefuseWhatIsNoRegularFile) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("file.txt"), "x"));
#ifndef _WIN32
    // FIFOs, symbolic links and /dev/null are POSIX's.
    ASSERT_EQ(::mkfifo(dir.File("fifo").c_str(), 0600), 0);
    ASSERT_EQ(::symlink(dir.File("file.txt").c_str(), dir.File("link.txt").c_str()), 0);
    ASSERT_EQ(::symlink(dir.File("missing").c_str(), dir.File("dangling").c_str()), 0);
    EXPECT_FALSE(ZtUSysFile::ExistsW(dir.WideFile("dangling").c_str()));
#endif

    EXPECT_TRUE(ZtUSysFile::ExistsW(dir.WideFile("file.txt").c_str()));
    EXPECT_TRUE(ZtUSysFile::ExistsW(ZtTestWide(dir.Path()).c_str()));
    EXPECT_FALSE(ZtUSysFile::ExistsW(dir.WideFile("missing").c_str()));
    EXPECT_FALSE(ZtUSysFile::ExistsW(L""));

    struct Case {
        std::wstring path;
        ZtUSysFile::AccessMode access;
        ZtUSysFile::CreationMode creation;
        ZtUSysFile::TranslationMode translation;
        bool opens;
    };
    using F = ZtUSysFile;
    const auto text = F::kTranslateText;
    const Case cases[] = {
        {dir.WideFile("file.txt"), F::kAccessRead, F::kOpenExisting, text, true},
        {dir.WideFile("missing"), F::kAccessRead, F::kOpenExisting, text, false},
        {ZtTestWide(dir.Path()), F::kAccessRead, F::kOpenExisting, text, false},
        {ZtTestWide(dir.Path()), F::kAccessWrite, F::kCreateAlways, text, false},
#ifndef _WIN32
        {dir.WideFile("link.txt"), F::kAccessRead, F::kOpenExisting, text, true},
        {dir.WideFile("dangling"), F::kAccessRead, F::kOpenExisting, text, false},
        // A FIFO would block a reader until a writer came; it is refused instead.
        {dir.WideFile("fifo"), F::kAccessRead, F::kOpenExisting, text, false},
        {dir.WideFile("fifo"), F::kAccessWrite, F::kCreateAlways, text, false},
        {L"/dev/null", F::kAccessRead, F::kOpenExisting, text, false},
#endif
        {L"", F::kAccessRead, F::kOpenExisting, text, false},
        {dir.WideFile("file.txt"), F::kAccessRead, F::kCreateAlways, text, false},
        {dir.WideFile("file.txt"), F::kAccessWrite, F::kOpenExisting, text, false},
        {dir.WideFile("file.txt"), F::kAccessRead, F::kOpenExisting,
         static_cast<F::TranslationMode>(0), false},
        {dir.WideFile("new.txt"), F::kAccessWrite, F::kCreateAlways, text, true},
    };
    for (const Case& c : cases) {
        ZtUFile* file = F::fopenW(c.path.c_str(), c.access, c.creation, c.translation,
                                  F::kShareReadWrite, 0, 384);
        EXPECT_EQ(file != nullptr, c.opens) << c.path << L" " << c.access << L" " << c.creation;
        if (file) {
            EXPECT_EQ(F::fclose(file), 0);
        }
    }
    EXPECT_EQ(
        F::fopenW(nullptr, F::kAccessRead, F::kOpenExisting, text, F::kShareReadWrite, 0, 384),
        nullptr);
    EXPECT_EQ(F::fclose(nullptr), -1);
    EXPECT_EQ(ZtTestReadBytes(dir.File("file.txt")), "x") << "refused opens change nothing";
}

std::vector<std::wstring> Walk(const std::wstring& path) {
    std::vector<std::wstring> names;
    for (ZtUSysDirHandle dir = ZtUSysFile::OpenDirW(path.c_str()); dir.IsValid(); dir.Next()) {
        ZtUSysFileInfoHandle* info = dir.OpenFileInfo();
        names.emplace_back(info->GetFullNameW());
        ZtUSysFile::CloseFileInfo(info);
    }
    return names;
}

TEST(ZtUSysFile, DirectoryWalkGivesRegularFilesInByteOrder) {
    ZtTestTempDir dir;
    for (const char* name : {"b.tag", "a.tag", "B.dst", "\xc3\xa9.tag", "~z", "sub/inner.tag"}) {
        std::filesystem::create_directories(std::filesystem::path(dir.File(name)).parent_path());
        ASSERT_TRUE(ZtTestWriteBytes(dir.File(name), "x"));
    }
    const std::wstring base = ZtTestWide(dir.Path());
    std::vector<std::wstring> expected = {
        base + L"/B.dst", base + L"/a.tag", base + L"/b.tag", base + L"/~z", base + L"/\u00e9.tag",
    };
#ifndef _WIN32
    // A link to a regular file is walked; a link to a folder and a FIFO are not.
    ASSERT_EQ(::symlink("a.tag", dir.File("link.tag").c_str()), 0);
    ASSERT_EQ(::symlink("sub", dir.File("link.dir").c_str()), 0);
    ASSERT_EQ(::mkfifo(dir.File("fifo.tag").c_str(), 0600), 0);
    expected.insert(expected.begin() + 3, base + L"/link.tag");
#endif
    EXPECT_EQ(Walk(base), expected);
    EXPECT_EQ(Walk(base + L"/"), expected);
    EXPECT_TRUE(Walk(base + L"/missing").empty());
    EXPECT_TRUE(Walk(base + L"/b.tag").empty());
    // The folder of a bare name is the working directory.
    const std::filesystem::path working = std::filesystem::current_path();
    std::filesystem::current_path(dir.File("sub"));
    EXPECT_EQ(Walk(L""), std::vector<std::wstring>{L"inner.tag"});
    std::filesystem::current_path(working);

    ZtUSysDirHandle end = ZtUSysFile::OpenDirW(base.c_str());
    for (std::size_t i = 0; i < expected.size() + 2; ++i)
        end.Next();
    EXPECT_FALSE(end.IsValid());
    EXPECT_EQ(end.OpenFileInfo(), nullptr);
}

} // namespace
