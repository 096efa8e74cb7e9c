#include "review/PluginDescription.h"

#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"

PluginDescription DescribePlugin(ZtOpPlugin& plugin) {
    PluginDescription d;
    d.registeredName = plugin.GetRegisteredName().Str();
    d.typeNumber = plugin.GetTypeNumber();
    ZtUStringBuffer resource;
    plugin.IGetResourceName(&resource);
    d.resourceName = resource.Str();
    ZtUWideStringBuffer text;
    if (auto* file = dynamic_cast<ZtOpFilePlugin*>(&plugin)) {
        file->IGetFormatName(&text, ZtOpFilePlugin::kNameForMenu);
        d.formatName = text.Str();
        file->IGetFormatExtension(&text);
        d.formatExtension = text.Str();
    }
    if (auto* menu = dynamic_cast<ZtOpExportPlugin*>(&plugin)) {
        menu->IGetMenuName(&text);
        d.menuName = text.Str();
        menu->IGetFileTypeName(&text);
        d.fileTypeName = text.Str();
        menu->IGetFileExtension(&text);
        d.fileExtension = text.Str();
        // The help id is the topic the plug-in opens when asked for help.
        ZtOpPlugin::InvokeHelp(nullptr, 0);
        menu->IHelp();
        d.helpId = ZtOpPlugin::GetLastHelpTopic();
    }
    return d;
}
