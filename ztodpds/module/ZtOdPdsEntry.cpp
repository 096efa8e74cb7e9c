#include "module/ZtOdPdsEntry.h"

#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "plugin/ZtOdPdsGuard.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpPluginList.h"

#include <memory>

ZtOpPluginList* ZtOpPluginEntryztodpds() {
    return ZtOdPdsGuard(static_cast<ZtOpPluginList*>(nullptr), [] {
        auto list = std::make_unique<ZtOpPluginList>();
        // The library offers nothing in any other control mode: an empty list, not a null.
        if (ZtOpDB::GetControlMode() != ZtOpDB::kModeNormal)
            return list.release();
        // The host relies on this order: tag import, tag export, display-set import,
        // control-file loader.
        list->PushBack(new ZtOdPdsTagImportPlugin);
        list->PushBack(new ZtOdPdsTagExportPlugin);
        list->PushBack(new ZtOdPdsDstImportPlugin);
        list->PushBack(new ZtOdPdsDriLoaderPlugin);
        return list.release();
    });
}
