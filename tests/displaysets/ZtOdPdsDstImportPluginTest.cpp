#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "DisplaySetFilesTestSupport.h"
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "rules/ZtOdPdsCriterion.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

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

TEST(ZtOdPdsDstImportPlugin, TestsFileNameThenStateAndLeavesTheDocumentAloneOnAFailure) {
    ZtOdPdsDstImportPlugin plugin;
    ZtOpState state;
    EXPECT_EQ(plugin.IExport(0, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(plugin.IExport(0, &state, nullptr, nullptr), 1);
    EXPECT_EQ(Import(plugin, nullptr, Fixture("sample.dst")), 3);
    if (!ZtTestCanBreakOpenFiles())
        GTEST_SKIP() << "this platform can't break an open file";
    ZtTestTempDir dir;
    RecordingProgress progress;
    EXPECT_EQ(Import(plugin, &state, BreakingDst(dir, progress), &progress), 3);
    EXPECT_EQ(ZtOpSelectionSetsElement::Get(&state)->Get()->GetNumChildren(), 0u);
}

TEST(ZtOdPdsDstImportPlugin, ComponentsStartAndEndInTheirChainOrder) {
    EXPECT_EQ(ZtOdPdsDstImportPlugin::StartComponent(), 1);
    EXPECT_TRUE(ZtOdPdsDstImportPlugin::GetComponent().IsLive());
    EXPECT_TRUE(ZtOdPdsDstImportAction::GetComponent().IsLive());
    EXPECT_TRUE(ZtOdPdsCriterion::GetComponent().IsLive());
    EXPECT_EQ(ZtOdPdsDstImportAction::GetComponent().GetName().Str(), "ZtOdPdsDstImportAction");
    EXPECT_EQ(ZtOdPdsCriterion::GetComponent().GetName().Str(), "ZtOdPdsCriterion");
    EXPECT_EQ(ZtOdPdsDstImportPlugin::EndComponent(), 1);
    // The chain stops at the first component that is not live.
    EXPECT_EQ(ZtOdPdsDstImportPlugin::EndComponent(), 0);
    EXPECT_EQ(ZtOdPdsDstImportAction::StartComponent(), 1);
    EXPECT_EQ(ZtOdPdsDstImportAction::EndComponent(), 1);
    EXPECT_FALSE(ZtOdPdsCriterion::GetComponent().IsLive());
}

} // namespace
