#include "review/ReviewRun.h"

#include "ztplugin/ZtOpPlugin.h"

ReviewRun::~ReviewRun() {
    for (ZtOpPlugin* plugin : library.GetPlugins())
        plugin->IStateDestroyed(&state);
}

bool ReviewRun::LoadLibrary(const std::string& path, std::string* error) {
    if (!library.Load(path, "ztodpds", error))
        return false;
    for (ZtOpPlugin* plugin : library.GetPlugins())
        plugin->IStateCreated(&state);
    return true;
}

ZtOpPlugin* ReviewRun::FindPlugin(const char* registeredName) const {
    for (ZtOpPlugin* plugin : library.GetPlugins())
        if (plugin->GetRegisteredName() == registeredName)
            return plugin;
    return nullptr;
}
