#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"

#include <gtest/gtest.h>

namespace {

class CountedPlugin : public ZtOpExportPlugin {
public:
    CountedPlugin(const char* name, int* alive) : ZtOpExportPlugin(137, name, 1), alive_(alive) {
        ++*alive_;
    }
    ~CountedPlugin() override { --*alive_; }

private:
    int* alive_;
};

class DriLikePlugin : public ZtOpSceneSetPlugin {
public:
    DriLikePlugin() : ZtOpSceneSetPlugin(5, "formats", 1) {}
    void IGetFormatExtension(ZtUWideStringBuffer* extension) override {
        extension->SetString(L".dri");
    }
};

TEST(ZtOpDB, LooksPluginsUpByRegisteredNameAndOwnsThem) {
    int alive = 0;
    auto* first = new CountedPlugin("same", &alive);
    auto* second = new CountedPlugin("same", &alive);
    auto* other = new CountedPlugin("other", &alive);
    ZtOpDB::AddPlugin(first);
    ZtOpDB::AddPlugin(second);
    ZtOpDB::AddPlugin(other);
    EXPECT_EQ(ZtOpDB::GetPluginByName("same"), first);
    EXPECT_EQ(ZtOpDB::GetPluginByName("other"), other);
    EXPECT_EQ(ZtOpDB::GetPluginByName("none"), nullptr);
    EXPECT_EQ(ZtOpDB::GetPluginByName(nullptr), nullptr);
    EXPECT_EQ(ZtOpDB::RemovePlugin(first), 1);
    EXPECT_EQ(alive, 2);
    EXPECT_EQ(ZtOpDB::GetPluginByName("same"), second);
    ZtOpDB::RemoveAllPlugins();
    EXPECT_EQ(alive, 0);
    EXPECT_TRUE(ZtOpDB::GetPlugins().empty());
}

TEST(ZtOpFilePlugin, UnderstandsFilesByExtensionIgnoringCase) {
    DriLikePlugin plugin;
    EXPECT_TRUE(plugin.IsFilePlugin());
    EXPECT_TRUE(plugin.IsScenePropsPlugin());
    EXPECT_TRUE(plugin.IUnderstandsFile(L"/a/plant.dri"));
    EXPECT_TRUE(plugin.IUnderstandsFile(L"PLANT.DRI"));
    EXPECT_FALSE(plugin.IUnderstandsFile(L"plant.dst"));
    EXPECT_FALSE(plugin.IUnderstandsFile(L"ri"));
    ZtUWideStringBuffer filter;
    plugin.IGetFormatFilter(&filter);
    EXPECT_EQ(filter.Str(), L"*.dri");
}

} // namespace
