#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "DisplaySetFilesTestSupport.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

int Import(ZtOdPdsDstImportPlugin& plugin, ZtOpState* state, const std::wstring& path,
           ZtOpProgress* progress = nullptr) {
    const ZtUWideString name(path.c_str());
    return plugin.IExport(0, state, progress, &name);
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
    ZtTestRecordingProgress progress;
    EXPECT_EQ(Import(plugin, &state, BreakingDst(dir, progress), &progress), 3);
    EXPECT_EQ(ZtOpSelectionSetsElement::Get(&state)->Get()->GetNumChildren(), 0u);
}

} // namespace
