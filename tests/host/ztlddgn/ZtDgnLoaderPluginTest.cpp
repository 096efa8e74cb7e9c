#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztplugin/ZtOpDB.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtDgnLoaderPlugin, IsRegisteredOnceWithOption10On) {
    ZtDgnLoaderPlugin* loader = ZtDgnRegisterLoaderPlugin();
    ASSERT_TRUE(loader);
    EXPECT_EQ(ZtDgnRegisterLoaderPlugin(), loader);
    EXPECT_EQ(ZtOpDB::GetPluginByName("ZtKvcLoaderPlugin:ztlddgn"), loader);
    EXPECT_TRUE(loader->IsScenePropsPlugin());
    EXPECT_TRUE(loader->IUnderstandsFile(L"/x/PIPES.DGN"));
    EXPECT_FALSE(loader->IUnderstandsFile(L"/x/pipes.kvc"));
    ZtUData value;
    ASSERT_EQ(loader->GetOptionSet()->GetValue(10, &value), 1);
    EXPECT_EQ(value.GetType(), ZtUData::kBool);
    EXPECT_TRUE(value.GetBool());
}

} // namespace
