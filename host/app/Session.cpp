#include "app/Session.h"

#include "app/ProcessEnvironment.h"
#include "ztplugin/ZtOpPlugin.h"

Session::Session(const CommandLine& commandLine)
    : options(commandLine),
      progress(stderr, !commandLine.quiet && ProcessEnvironment::IsTerminal(2)) {}

Session::~Session() {
    for (ZtOpPlugin* plugin : library.GetPlugins())
        plugin->IStateDestroyed(&state);
}

bool Session::LoadLibrary(const std::string& path, std::string* error) {
    if (!library.Load(path, "ztodpds", error))
        return false;
    for (ZtOpPlugin* plugin : library.GetPlugins())
        plugin->IStateCreated(&state);
    return true;
}

ZtOpPlugin* Session::FindPlugin(const char* registeredName) const {
    for (ZtOpPlugin* plugin : library.GetPlugins())
        if (plugin->GetRegisteredName() == registeredName)
            return plugin;
    return nullptr;
}
