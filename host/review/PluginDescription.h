#pragma once
#include <optional>
#include <string>
#include <vector>

class ZtOpPlugin;

// What the host shows of one plug-in: its identity and the texts of its menu entry or
// file format, as the plug-in itself answers them.
struct PluginDescription {
    std::string registeredName;
    unsigned typeNumber = 0;
    std::string resourceName;
    // Export-family plug-ins (menu entries).
    std::optional<std::wstring> menuName, fileTypeName, fileExtension;
    std::optional<int> helpId;
    // File plug-ins (formats).
    std::optional<std::wstring> formatName, formatExtension;
};

PluginDescription DescribePlugin(ZtOpPlugin& plugin);
