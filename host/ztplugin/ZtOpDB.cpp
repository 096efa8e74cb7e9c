#include "ztplugin/ZtOpDB.h"

#include "ztplugin/ZtOpPlugin.h"

#include <algorithm>

namespace {

struct Database {
    ZtOpDB::EMode mode = ZtOpDB::kModeNormal;
    std::vector<ZtOpPlugin*> plugins;
    ~Database() { ZtOpDB::RemoveAllPlugins(); }
};

Database& TheDatabase() {
    static Database database;
    return database;
}

} // namespace

ZtOpDB::EMode ZtOpDB::GetControlMode() {
    return TheDatabase().mode;
}

void ZtOpDB::SetControlMode(EMode mode) {
    TheDatabase().mode = mode;
}

void ZtOpDB::AddPlugin(ZtOpPlugin* plugin) {
    if (plugin)
        TheDatabase().plugins.push_back(plugin);
}

ZtOpPlugin* ZtOpDB::GetPluginByName(const char* name) {
    if (!name)
        return nullptr;
    for (ZtOpPlugin* plugin : TheDatabase().plugins)
        if (plugin->GetRegisteredName() == name)
            return plugin;
    return nullptr;
}

const std::vector<ZtOpPlugin*>& ZtOpDB::GetPlugins() {
    return TheDatabase().plugins;
}

int ZtOpDB::RemovePlugin(ZtOpPlugin* plugin) {
    auto& plugins = TheDatabase().plugins;
    auto at = std::find(plugins.begin(), plugins.end(), plugin);
    if (at == plugins.end())
        return 0;
    plugins.erase(at);
    delete plugin;
    return 1;
}

void ZtOpDB::RemoveAllPlugins() {
    auto& plugins = TheDatabase().plugins;
    while (!plugins.empty()) {
        ZtOpPlugin* plugin = plugins.back();
        plugins.pop_back();
        delete plugin;
    }
}
