// What each plug-in of the library tells the host about itself, and the components each
// starts and ends, one row a plug-in.
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "module/ZtOdPdsEntry.h"
#include "rules/ZtOdPdsCriterion.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"
#include "ztplugin/ZtOpPluginList.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

// The plugins case shows each plug-in's names, type, menu, file type, extension and help
// topic in the entry's order; these are what it does not show.
TEST(PluginTable, EachPluginDescribesItself) {
    std::unique_ptr<ZtOpPluginList> list(ZtOpPluginEntryztodpds());
    ASSERT_EQ(list->Size(), 4u);
    for (std::size_t i = 0; i < list->Size(); ++i) {
        std::unique_ptr<ZtOpPlugin> plugin(static_cast<ZtOpPlugin*>(list->Get(i)));
        SCOPED_TRACE(plugin->GetRegisteredName().Str());
        EXPECT_EQ(plugin->GetFlags(), 1);
        if (auto* exporter = dynamic_cast<ZtOpExportPlugin*>(plugin.get())) {
            EXPECT_EQ(exporter->IHelp(), 1);
        } else {
            auto* loader = dynamic_cast<ZtOpFilePlugin*>(plugin.get());
            ASSERT_NE(loader, nullptr);
            EXPECT_EQ(loader->IsScenePropsPlugin(), 1);
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
