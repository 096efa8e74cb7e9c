#include "ztplugin/ZtOpExportPlugin.h"

// Out of line, so that the class's type information lives in the host library alone and
// the host can recognise the class in plug-ins that hide their own symbols.
ZtOpExportPlugin::~ZtOpExportPlugin() = default;
