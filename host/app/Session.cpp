#include "app/Session.h"

#include "ztplugin/ZtOpPlugin.h"

#include <unistd.h>

Session::Session(const CommandLine& commandLine)
    : options(commandLine), progress(stderr, !commandLine.quiet && isatty(2)) {}

ZtOpPlugin* Session::FindPlugin(const char* registeredName) const {
    for (ZtOpPlugin* plugin : library.GetPlugins())
        if (plugin->GetRegisteredName() == registeredName)
            return plugin;
    return nullptr;
}
