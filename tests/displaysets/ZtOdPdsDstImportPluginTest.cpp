#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "DisplaySetFilesTestSupport.h"
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "rules/ZtOdPdsCriterion.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

const ZtOpFolderItem& Sets(const ZtOpState& state) {
    return *ZtOpSelectionSetsElement::Get(&state)->Get();
}

int Import(ZtOdPdsDstImportPlugin& plugin, ZtOpState* state, const std::wstring& path,
           ZtOpProgress* progress = nullptr) {
    const ZtUWideString name(path.c_str());
    return plugin.IExport(0, state, progress, &name);
}

TEST(ZtOdPdsDstImportPlugin, DescribesItself) {
    ZtOdPdsDstImportPlugin plugin;
    EXPECT_EQ(plugin.GetTypeNumber(), 137u);
    EXPECT_EQ(plugin.GetRegisteredName().Str(), "ZtOdPdsDstImportPlugin");
    EXPECT_EQ(plugin.GetFlags(), 1);
    ZtUStringBuffer resource;
    plugin.IGetResourceName(&resource);
    EXPECT_EQ(resource.Str(), "ztodpds");
    ZtUWideStringBuffer text;
    plugin.IGetMenuName(&text);
    EXPECT_EQ(text.Str(), L"Import PDS Display Sets...");
    plugin.IGetFileTypeName(&text);
    EXPECT_EQ(text.Str(), L"PDS Display Set File");
    plugin.IGetFileExtension(&text);
    EXPECT_EQ(text.Str(), L".dst");
    EXPECT_EQ(plugin.IHelp(), 1);
    EXPECT_EQ(ZtOpPlugin::GetLastHelpTopic(), 61471);
}

TEST(ZtOdPdsDstImportPlugin, TestsFileNameThenState) {
    ZtOdPdsDstImportPlugin plugin;
    ZtOpState state;
    EXPECT_EQ(plugin.IExport(0, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(plugin.IExport(0, &state, nullptr, nullptr), 1);
    EXPECT_EQ(Import(plugin, nullptr, Fixture("sample.dst")), 3);
    EXPECT_EQ(Import(plugin, &state, L"/nonexistent.dst"), 1);
    EXPECT_EQ(Sets(state).GetNumChildren(), 0u);
}

TEST(ZtOdPdsDstImportPlugin, AddsTheSetsBehindThoseOfTheDocument) {
    ZtOdPdsDstImportPlugin plugin;
    ZtOpState state;
    RecordingProgress progress;
    EXPECT_EQ(Import(plugin, &state, Fixture("sample.dst"), &progress), 0);
    EXPECT_EQ(Import(plugin, &state, Fixture("no-definitions.dst")), 0);
    EXPECT_EQ(Import(plugin, &state, Fixture("sample.dst")), 0);
    const ZtOpFolderItem& sets = Sets(state);
    ASSERT_EQ(sets.GetNumChildren(), 4u);
    EXPECT_EQ(sets.GetChild(3)->GetName().Str(), L"Other pipes");
    EXPECT_NE(sets.GetChild(0)->GetGuid(), sets.GetChild(2)->GetGuid());
    EXPECT_EQ(progress.fractions, (std::vector<double>{0.5, 1.0}));
    // The lock was held for the hand-over only.
    EXPECT_FALSE(state.GetElementList().IsLocked(ZtOpSelectionSetsElement::GetClass()));
}

TEST(ZtOdPdsDstImportPlugin, FailedReadLeavesTheDocumentAlone) {
    ZtTestTempDir dir;
    const std::string path = dir.File("broken.dst");
    std::string text = "[DEFINITION SECTION]\n<Display Set>\n1 early\n<Definition>\nFIND Level 1\n"
                       "<Display Set>\n2 late\n";
    for (int i = 0; i < 100000; ++i)
        text += "a comment line of the second set\n";
    ASSERT_TRUE(ZtTestWriteBytes(path, text));
    RecordingProgress progress;
    progress.onReport = [&] { ZtTestBreakOpenFile(path); };
    ZtOdPdsDstImportPlugin plugin;
    ZtOpState state;
    EXPECT_EQ(Import(plugin, &state, dir.WideFile("broken.dst"), &progress), 3);
    EXPECT_EQ(Sets(state).GetNumChildren(), 0u);
}

TEST(ZtOdPdsDstImportPlugin, ComponentsStartAndEndInTheirChainOrder) {
    EXPECT_EQ(ZtOdPdsDstImportPlugin::StartComponent(), 1);
    EXPECT_TRUE(ZtOdPdsDstImportPlugin::GetComponent().IsLive());
    EXPECT_TRUE(ZtOdPdsDstImportAction::GetComponent().IsLive());
    EXPECT_TRUE(ZtOdPdsCriterion::GetComponent().IsLive());
    EXPECT_EQ(ZtOdPdsDstImportAction::GetComponent().GetName().Str(), "ZtOdPdsDstImportAction");
    EXPECT_EQ(ZtOdPdsDstImportPlugin::EndComponent(), 1);
    // The chain stops at the first component that is not live.
    EXPECT_EQ(ZtOdPdsDstImportPlugin::EndComponent(), 0);
    EXPECT_EQ(ZtOdPdsDstImportAction::StartComponent(), 1);
    EXPECT_EQ(ZtOdPdsDstImportAction::EndComponent(), 1);
    EXPECT_FALSE(ZtOdPdsCriterion::GetComponent().IsLive());
}

} // namespace
