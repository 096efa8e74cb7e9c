#include "displaysets/ZtOdPdsDstImportPlugin.h"

#include "displaysets/ZtOdPdsDstImportAction.h"
#include "plugin/ZtOdPdsComponents.h"
#include "plugin/ZtOdPdsGuard.h"
#include "plugin/ZtOdPdsStatus.h"
#include "rules/ZtOdPdsCriterion.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztutil/ZtUResource.h"

namespace {

constexpr unsigned int kTypeNumber = 137;
constexpr int kHelpId = 61471;

} // namespace

ZtOdPdsDstImportPlugin::ZtOdPdsDstImportPlugin()
    : ZtOpExportPlugin(kTypeNumber, "ZtOdPdsDstImportPlugin", 1) {}

ZtOdPdsDstImportPlugin::~ZtOdPdsDstImportPlugin() = default;

void ZtOdPdsDstImportPlugin::IGetResourceName(ZtUStringBuffer* name) {
    name->SetString("ztodpds");
}

void ZtOdPdsDstImportPlugin::IGetMenuName(ZtUWideStringBuffer* name) {
    name->SetString(ZtUResource::FindString("ztodpds_dst_menu", L"Import PDS Display Sets..."));
}

void ZtOdPdsDstImportPlugin::IGetFileTypeName(ZtUWideStringBuffer* name) {
    name->SetString(ZtUResource::FindString("ztodpds_dst_file", L"PDS Display Set File"));
}

void ZtOdPdsDstImportPlugin::IGetFileExtension(ZtUWideStringBuffer* extension) {
    extension->SetString(L".dst");
}

int ZtOdPdsDstImportPlugin::IExport(unsigned int, ZtOpState* state, ZtOpProgress* progress,
                                    const ZtUWideString* fileName) {
    if (!fileName)
        return kZtOdPdsNoFile;
    if (!state)
        return kZtOdPdsNoState;
    return ZtOdPdsGuard(static_cast<int>(kZtOdPdsNoState), [&] {
        ZtOdPdsDstImportAction action(state);
        const int status = action.Perform(fileName->GetString(), progress);
        if (status == kZtOdPdsOk) {
            // The lock is held for the hand-over only, not while the file is read.
            ZtOpAutoLock lock(ZtOpSelectionSetsElement::GetClass(), state, 0);
            if (ZtOpSelectionSetsElement* element = ZtOpSelectionSetsElement::Edit(state, lock))
                action.AppendTo(element);
        }
        return status;
    });
}

int ZtOdPdsDstImportPlugin::IHelp() {
    InvokeHelp(nullptr, kHelpId);
    return 1;
}

ZtUComponent& ZtOdPdsDstImportPlugin::GetComponent() {
    static ZtUComponent component;
    return component;
}

int ZtOdPdsDstImportPlugin::StartComponent() {
    return ZtOdPdsStartComponents(
        {{&GetComponent(), "ZtOdPdsDstImportPlugin"},
         {&ZtOdPdsDstImportAction::GetComponent(), "ZtOdPdsDstImportAction"},
         {&ZtOdPdsCriterion::GetComponent(), "ZtOdPdsCriterion"}});
}

int ZtOdPdsDstImportPlugin::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent(), &ZtOdPdsDstImportAction::GetComponent(),
                                 &ZtOdPdsCriterion::GetComponent()});
}
