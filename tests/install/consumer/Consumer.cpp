// Loads the installed plug-in module through its entry function with the installed host
// library, and prints how many plug-ins it gave.
#include "ztplugin/ZtOpPluginLibrary.h"

#include <cstdio>
#include <string>

int main() {
    ZtOpPluginLibrary library;
    std::string error;
    if (!library.Load(ZTODPDS_MODULE, "ztodpds", &error)) {
        std::fprintf(stderr, "consumer: %s\n", error.c_str());
        return 1;
    }
    std::printf("ztodpds %s: %zu plug-ins\n", ZTODPDS_VERSION_SEEN, library.GetPlugins().size());
    return library.GetPlugins().empty() ? 1 : 0;
}
