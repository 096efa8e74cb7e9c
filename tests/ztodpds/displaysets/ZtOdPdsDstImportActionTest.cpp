#include "displaysets/ZtOdPdsDstImportAction.h"
#include "DisplaySetFilesTestSupport.h"
#include "displaysets/ZtOdPdsWalkDirectory.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Sets = std::vector<std::string>;

TEST(ZtOdPdsDstImportAction, Statuses) {
    ZtOpState state;
    ZtOdPdsDstImportAction action(&state);
    EXPECT_EQ(action.Perform(nullptr, nullptr), 1);
    EXPECT_EQ(action.Perform(L"/nonexistent/file.dst", nullptr), 1);
    ZtOdPdsDstImportAction stateless(nullptr);
    EXPECT_EQ(stateless.Perform(nullptr, nullptr), 1);
    EXPECT_EQ(stateless.Perform(Fixture("sample.dst").c_str(), nullptr), 3);
    EXPECT_EQ(action.Perform(Fixture("no-definitions.dst").c_str(), nullptr), 0);
    EXPECT_EQ(action.GetFolder().GetNumChildren(), 0u);
    // A read error keeps the sets finished before it.
    if (!ZtTestCanBreakOpenFiles())
        GTEST_SKIP() << "this platform can't break an open file";
    ZtTestTempDir dir;
    ZtTestRecordingProgress progress;
    EXPECT_EQ(action.Perform(BreakingDst(dir, progress).c_str(), &progress), 3);
    EXPECT_EQ(DescribeSets(action.GetFolder()), (Sets{"early: Level 1 6 5,"}));
}

TEST(ZtOdPdsDstImportAction, GathersTheSetsOfEveryFileAndHandsThemOver) {
    ZtOpState state;
    ZtOdPdsDstImportAction action(&state);
    EXPECT_EQ(action.Perform(Fixture("sample.dst").c_str(), nullptr), 0);
    EXPECT_EQ(action.Perform(Fixture("sample.dst").c_str(), nullptr), 0);
    EXPECT_EQ(action.GetFolder().GetNumChildren(), 4u);
    // The document is left alone until the hand-over.
    ZtOpSelectionSetsElement* element = ZtOpSelectionSetsElement::Require(state.EditElementList());
    EXPECT_EQ(element->Get()->GetNumChildren(), 0u);
    EXPECT_EQ(action.AppendTo(element), 4);
    EXPECT_EQ(action.GetFolder().GetNumChildren(), 0u);
    ASSERT_EQ(element->Get()->GetNumChildren(), 4u);
    EXPECT_EQ(element->Get()->GetChild(2)->GetName().Str(), L"Main pipes");
    EXPECT_EQ(action.AppendTo(element), 0);
    // The conditions name the document's own names.
    const auto* set = static_cast<const ZtOpSelectionSet*>(element->Get()->GetChild(0));
    EXPECT_EQ(set->GetImplicitSelection().GetImplicitFindSpec()->GetCondition(0).GetProperty(),
              ZtUName::StandardName(17, state.EditNameDict()));
}

// Records the files it is run on.
class RecordingAction : public ZtOdPdsFileAction {
public:
    int Perform(const wchar_t* path, ZtOpProgress*) override {
        paths.push_back(ZtUSysString::WideToUtf8(path));
        return 1;
    }
    std::vector<std::string> paths;
};

TEST(ZtOdPdsWalkDirectory, HandsEveryFileWithTheExtensionToTheAction) {
    ZtTestTempDir dir;
    for (const char* name : {"b.dst", "a.dst", "c.tag", "d.dst.bak", "e.DST"})
        ASSERT_TRUE(ZtTestWriteBytes(dir.File(name), "x\n"));
    RecordingAction dst;
    // The extension is matched without regard to case, as the host's platform does.
    EXPECT_EQ(ZtOdPdsWalkDirectory(ZtTestWide(dir.Path()).c_str(), L"dst", &dst, nullptr), 3);
    EXPECT_EQ(dst.paths,
              (std::vector<std::string>{dir.File("a.dst"), dir.File("b.dst"), dir.File("e.DST")}));
    RecordingAction all;
    EXPECT_EQ(ZtOdPdsWalkDirectory(ZtTestWide(dir.Path()).c_str(), nullptr, &all, nullptr), 5);
    RecordingAction none;
    EXPECT_EQ(ZtOdPdsWalkDirectory(L"/nonexistent", nullptr, &none, nullptr), 0);
}

} // namespace
