#pragma once
#include <string>
#include <vector>

class ZtOpPlugin;

// A plug-in library loaded at run time, as the host loads one: open the shared object,
// find its entry function "ZtOpPluginEntry<name>", call it once and take the plug-ins.
// The plug-ins go to ZtOpDB; unloading removes them from it before the library closes.
class ZtOpPluginLibrary {
public:
    ZtOpPluginLibrary() = default;
    ZtOpPluginLibrary(const ZtOpPluginLibrary&) = delete;
    ZtOpPluginLibrary& operator=(const ZtOpPluginLibrary&) = delete;
    ~ZtOpPluginLibrary() { Unload(); }

    // Loads `path` and calls ZtOpPluginEntry<entryName>. Returns false with a reason in
    // `error` if the library can't be opened or has no such entry.
    bool Load(const std::string& path, const std::string& entryName, std::string* error);
    void Unload();

    // The plug-ins of the entry's list, in its order.
    const std::vector<ZtOpPlugin*>& GetPlugins() const { return plugins_; }
    bool IsLoaded() const { return handle_ != nullptr; }

private:
    void* handle_ = nullptr;
    std::vector<ZtOpPlugin*> plugins_;
};
