#pragma once

class ZtOpPluginList;

// The plug-in library's one export, under its plain name: the host calls it once after
// loading the library and owns the list and its plug-ins from then on.
extern "C" __attribute__((visibility("default"))) ZtOpPluginList* ZtOpPluginEntryztodpds();
