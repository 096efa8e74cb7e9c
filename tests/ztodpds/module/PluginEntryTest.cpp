#include "module/ZtOdPdsEntry.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpPlugin.h"
#include "ztplugin/ZtOpPluginLibrary.h"
#include "ztplugin/ZtOpPluginList.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

namespace {

const std::string kModule = ZT_BIN_DIR "/ztodpds.so";

// The names of the symbols that the module defines and exports, from its dynamic table.
std::set<std::string> ExportedSymbols(const std::string& path) {
    std::set<std::string> names;
    const std::string command = "nm -D --defined-only " + path + " 2>/dev/null";
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return names;
    char line[1024];
    while (std::fgets(line, sizeof line, pipe)) {
        char address[64], type[8], name[900];
        if (std::sscanf(line, "%63s %7s %899s", address, type, name) == 3)
            names.insert(name);
    }
    pclose(pipe);
    return names;
}

class ControlModeScope {
public:
    explicit ControlModeScope(int mode) {
        ZtOpDB::SetControlMode(static_cast<ZtOpDB::EMode>(mode));
    }
    ~ControlModeScope() { ZtOpDB::SetControlMode(ZtOpDB::kModeNormal); }
};

TEST(PluginEntry, ModuleExportsTheEntryAndNothingElse) {
    EXPECT_EQ(ExportedSymbols(kModule), std::set<std::string>{"ZtOpPluginEntryztodpds"});
}

TEST(PluginEntry, HostLoadsTheModuleThroughItsEntry) {
    ZtOpPluginLibrary library;
    std::string error;
    ASSERT_TRUE(library.Load(kModule, "ztodpds", &error)) << error;
    EXPECT_TRUE(library.IsLoaded());
    // Every plug-in of the list is in the host's database under its registered name.
    for (ZtOpPlugin* plugin : library.GetPlugins())
        EXPECT_EQ(ZtOpDB::GetPluginByName(plugin->GetRegisteredName().GetString()), plugin);
    library.Unload();
    EXPECT_FALSE(library.IsLoaded());
    EXPECT_TRUE(library.GetPlugins().empty());
}

TEST(PluginEntry, OtherControlModesGiveAnEmptyListNotNull) {
    for (int mode : {1, 2, -1}) {
        ControlModeScope scope(mode);
        ZtOpPluginList* list = ZtOpPluginEntryztodpds();
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->Size(), 0u);
        delete list;
    }
}

} // namespace
