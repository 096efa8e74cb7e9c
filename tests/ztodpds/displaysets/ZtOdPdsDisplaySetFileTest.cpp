#include "displaysets/ZtOdPdsDisplaySetFile.h"
#include "DisplaySetFilesTestSupport.h"
#include "displaysets/ZtOdPdsDefinitionSection.h"
#include "displaysets/ZtOdPdsDisplaySetCounter.h"
#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsTextFile.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "ztutil/ZtUName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Sets = std::vector<std::string>;

// Both passes over a file, as the import action makes them.
class DisplaySetFile : public ::testing::Test {
protected:
    DisplaySetFile() {
        context.names = &names;
        context.folder = &folder;
    }

    int Count(const std::wstring& path) {
        ZtOdPdsTextFile file;
        ZtOdPdsDisplaySetCounter counter;
        EXPECT_TRUE(file.Open(path.c_str()));
        EXPECT_EQ(file.ReadLines(counter), 1);
        return counter.GetCount();
    }

    void Read(const std::wstring& path) {
        total = Count(path);
        ZtOdPdsTextFile file;
        ZtOdPdsDisplaySetFile sets(&context, total, &progress);
        ASSERT_TRUE(file.Open(path.c_str()));
        EXPECT_EQ(file.ReadLines(sets), 1);
        // Every section has let its dictionary go.
        ZtOdPdsDisplaySetDict* dict = ZtOdPdsDisplaySetDict::Instance();
        EXPECT_EQ(dict->Size(), 0u);
        ZtOdPdsDisplaySetDict::Destroy();
    }

    ZtUNameDict names;
    ZtOpFolderItem folder;
    ZtOdPdsDstContext context;
    ZtTestRecordingProgress progress;
    int total = 0;
};

TEST_F(DisplaySetFile, Fixtures) {
    struct Case {
        const char* fixture;
        int total;
        Sets sets;
        std::vector<double> fractions;
    };
    const Case cases[] = {
        {"sample.dst",
         2,
         {"Main pipes (North rack\n\rSecond bay): Level 7 6 5, Colour 2 6 5, Level 3 6 69, "
          "Colour 2 6 5,",
          // The FIND ALL BUT runs through the first set's tree, which it shares.
          "Other pipes: Colour 2 6 5, Level 3 7 69, Level 7 7 69, Level 3 7 69, Colour 2 6 69, "
          "Colour 2 6 69, Level 7 7 69, Colour 2 6 69,"},
         {0.5, 1.0}},
        // Counted: every line that begins with "<Display Set>", in and out of sections. Two
        // sets finished in each of the three sections read; done starts anew in each.
        {"sections.dst",
         10,
         {"first: Level 1 6 5,", "second: Level 1 6 5,", "fifth: Level 5 6 5,",
          "last: Level 7 6 5,"},
         {0.1, 0.2, 0.1, 0.2, 0.1, 0.2}},
        {"crlf.dst", 1, {"Crlf set (Lines end in CR LF): Level 4 6 5, L* 13 41, L* 3 41,"}, {1.0}},
    };
    for (const Case& c : cases) {
        ZtOpFolderItem sets;
        context.folder = &sets;
        progress.seen.clear();
        Read(Fixture(c.fixture));
        EXPECT_EQ(total, c.total) << c.fixture;
        EXPECT_EQ(DescribeSets(sets), c.sets) << c.fixture;
        EXPECT_EQ(progress.seen, c.fractions) << c.fixture;
    }
}

TEST_F(DisplaySetFile, LongLinesArriveInPiecesOf511) {
    ZtTestTempDir dir;
    // "FIND Level " and 250 times "1," fill 511 characters exactly; the rest of the line
    // comes as a line of its own and is no statement.
    std::string statement = "FIND Level ";
    for (int i = 0; i < 250; ++i)
        statement += "1,";
    statement += "2,3";
    const std::string comment(600, 'c');
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("long.dst"),
                                 "[DEFINITION SECTION]\n<Display Set>\n1 long\n" + comment +
                                     "\n<Definition>\n" + statement + "\n"));
    Read(dir.WideFile("long.dst"));
    ASSERT_EQ(folder.GetNumChildren(), 1u);
    const auto* set = static_cast<const ZtOpSelectionSet*>(folder.GetChild(0));
    const ZtOpFindSpec* spec = set->GetImplicitSelection().GetImplicitFindSpec();
    ASSERT_EQ(spec->GetNumConditions(), 250u);
    EXPECT_STREQ(spec->GetCondition(249).GetValue().GetWideString(), L"Level 1");
    EXPECT_EQ(set->GetComments()[0]->GetBody().Str(),
              std::wstring(511, L'c') + L"\n\r" + std::wstring(89, L'c'));
}

TEST_F(DisplaySetFile, SectionWithoutCountReportsNoProgress) {
    ZtOdPdsDefinitionSection section(&context, 0, &progress);
    section.Begin();
    for (const wchar_t* text :
         {L"<Display Set>", L"1 a", L"<Definition>", L"FIND Level 1", L"<Display Set>"}) {
        ZtUWideStringBuffer line(text);
        EXPECT_EQ(section.Line(line), 1);
    }
    EXPECT_EQ(section.End(), 1);
    EXPECT_EQ(section.GetDone(), 2);
    EXPECT_TRUE(progress.seen.empty());
    EXPECT_EQ(folder.GetNumChildren(), 1u);
}

TEST(ZtOdPdsDisplaySetCounter, CountsLinesThatBeginWithTheSetLine) {
    ZtOdPdsDisplaySetCounter counter;
    EXPECT_EQ(counter.Begin(), 1);
    for (const wchar_t* text : {L"<Display Set>", L"<Display Set> x", L" <Display Set>",
                                L"<Display Se", L"<display set>", L"<Display Set>"}) {
        ZtUWideStringBuffer line(text);
        EXPECT_EQ(counter.Line(line), 1);
    }
    EXPECT_EQ(counter.End(), 1);
    EXPECT_EQ(counter.GetCount(), 3);
}

} // namespace
