// What each plug-in of the library tells the host about itself, and the components each
// starts and ends, one row a plug-in.
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "plugin/ZtOdPdsEntry.h"
#include "rules/ZtOdPdsCriterion.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"
#include "ztplugin/ZtOpPluginList.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

std::string Narrow(const ZtUWideStringBuffer& text) {
    return ZtUSysString::WideToUtf8(text.Str());
}

TEST(PluginTable, EachPluginDescribesItself) {
    struct Row {
        const char* name;
        unsigned type;
        const char* menu;     // the menu entry, or the loader's format name
        const char* fileType; // empty for the loader
        const char* extension;
        int helpTopic; // 0: the plug-in sets none
    };
    // In the order of the entry's list.
    const Row rows[] = {
        {"ZtOdPdsTagImportPlugin", 137, "PDS Tags...", "PDS Tag File", ".tag", 0},
        {"ZtOdPdsTagExportPlugin", 131, "PDS Tags...", "PDS Tag File", ".tag", 0},
        {"ZtOdPdsDstImportPlugin", 137, "Import PDS Display Sets...", "PDS Display Set File",
         ".dst", 61471},
        {"ZtOdPdsDriLoaderPlugin", 5, "PDS Design Review File", "", ".dri", 0},
    };
    std::unique_ptr<ZtOpPluginList> list(ZtOpPluginEntryztodpds());
    ASSERT_EQ(list->Size(), std::size(rows));
    for (std::size_t i = 0; i < list->Size(); ++i) {
        const Row& row = rows[i];
        std::unique_ptr<ZtOpPlugin> plugin(static_cast<ZtOpPlugin*>(list->Get(i)));
        SCOPED_TRACE(row.name);
        EXPECT_EQ(plugin->GetRegisteredName().Str(), row.name);
        EXPECT_EQ(plugin->GetTypeNumber(), row.type);
        EXPECT_EQ(plugin->GetFlags(), 1);
        ZtUStringBuffer resource;
        plugin->IGetResourceName(&resource);
        EXPECT_EQ(resource.Str(), "ztodpds");
        ZtUWideStringBuffer text;
        if (auto* exporter = dynamic_cast<ZtOpExportPlugin*>(plugin.get())) {
            exporter->IGetMenuName(&text);
            EXPECT_EQ(Narrow(text), row.menu);
            exporter->IGetFileTypeName(&text);
            EXPECT_EQ(Narrow(text), row.fileType);
            exporter->IGetFileExtension(&text);
            EXPECT_EQ(Narrow(text), row.extension);
            EXPECT_EQ(exporter->IHelp(), 1);
            if (row.helpTopic) {
                EXPECT_EQ(ZtOpPlugin::GetLastHelpTopic(), row.helpTopic);
            }
        } else {
            auto* loader = dynamic_cast<ZtOpFilePlugin*>(plugin.get());
            ASSERT_NE(loader, nullptr);
            EXPECT_EQ(loader->IsScenePropsPlugin(), 1);
            loader->IGetFormatName(&text, ZtOpFilePlugin::kNameForMenu);
            EXPECT_EQ(Narrow(text), row.menu);
            loader->IGetFormatExtension(&text);
            EXPECT_EQ(Narrow(text), row.extension);
            EXPECT_EQ(loader->IUnderstandsFile(L"plant.dri"), 1);
        }
    }
}

// Starting a plug-in's component starts those it stands on; ending it ends them, and
// ending one that is not live stops the chain at once.
TEST(PluginTable, ComponentsStartAndEndInTheirChainOrder) {
    struct Row {
        int (*start)();
        int (*end)();
        std::vector<const ZtUComponent*> chain; // the plug-in's own component first
        std::vector<const char*> names;
    };
    const Row rows[] = {
        {ZtOdPdsTagImportPlugin::StartComponent,
         ZtOdPdsTagImportPlugin::EndComponent,
         {&ZtOdPdsTagImportPlugin::GetComponent(), &ZtOdPdsTagImportAction::GetComponent()},
         {"ZtOdPdsTagImportPlugin", "ZtOdPdsTagImportAction"}},
        {ZtOdPdsTagExportPlugin::StartComponent,
         ZtOdPdsTagExportPlugin::EndComponent,
         {&ZtOdPdsTagExportPlugin::GetComponent()},
         {"ZtOdPdsTagExportPlugin"}},
        {ZtOdPdsDstImportPlugin::StartComponent,
         ZtOdPdsDstImportPlugin::EndComponent,
         {&ZtOdPdsDstImportPlugin::GetComponent(), &ZtOdPdsDstImportAction::GetComponent(),
          &ZtOdPdsCriterion::GetComponent()},
         {"ZtOdPdsDstImportPlugin", "ZtOdPdsDstImportAction", "ZtOdPdsCriterion"}},
        {ZtOdPdsDriLoaderPlugin::StartComponent,
         ZtOdPdsDriLoaderPlugin::EndComponent,
         {&ZtOdPdsDriLoaderPlugin::GetComponent()},
         {"ZtOdPdsDriLoaderPlugin"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.names[0]);
        EXPECT_EQ(row.start(), 1);
        for (std::size_t i = 0; i < row.chain.size(); ++i) {
            EXPECT_TRUE(row.chain[i]->IsLive()) << row.names[i];
            EXPECT_EQ(std::string(row.chain[i]->GetName().Str()), row.names[i]);
        }
        EXPECT_EQ(row.end(), 1);
        for (const ZtUComponent* component : row.chain)
            EXPECT_FALSE(component->IsLive());
        EXPECT_EQ(row.end(), 0);
    }
}

} // namespace
