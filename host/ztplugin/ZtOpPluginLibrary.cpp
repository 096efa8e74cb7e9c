#include "ztplugin/ZtOpPluginLibrary.h"

#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpPlugin.h"
#include "ztplugin/ZtOpPluginList.h"
#include "ztplugin/ZtOpSharedObject.h"

bool ZtOpPluginLibrary::Load(const std::string& path, const std::string& entryName,
                             std::string* error) {
    Unload();
    std::string reason;
    void* handle = ZtOpSharedObject::Open(path, &reason);
    if (!handle) {
        if (error)
            *error = "cannot load plug-in library " + path + ": " + reason;
        return false;
    }
    const std::string symbol = "ZtOpPluginEntry" + entryName;
    using Entry = ZtOpPluginList* (*)();
    auto entry = reinterpret_cast<Entry>(ZtOpSharedObject::Find(handle, symbol.c_str()));
    if (!entry) {
        if (error)
            *error = "plug-in library " + path + " has no entry function " + symbol;
        ZtOpSharedObject::Close(handle);
        return false;
    }
    handle_ = handle;
    ZtOpPluginList* list = entry();
    if (list) {
        for (std::size_t i = 0; i < list->Size(); ++i) {
            auto* plugin = static_cast<ZtOpPlugin*>(list->Get(i));
            plugins_.push_back(plugin);
            ZtOpDB::AddPlugin(plugin);
        }
        delete list;
    }
    return true;
}

void ZtOpPluginLibrary::Unload() {
    // The plug-ins' code lives in the library: destroy them while it is still mapped.
    for (auto at = plugins_.rbegin(); at != plugins_.rend(); ++at)
        ZtOpDB::RemovePlugin(*at);
    plugins_.clear();
    if (handle_)
        ZtOpSharedObject::Close(handle_);
    handle_ = nullptr;
}
