#include "tags/ZtOdPdsTagImportPlugin.h"

#include "plugin/ZtOdPdsComponents.h"
#include "plugin/ZtOdPdsGuard.h"
#include "plugin/ZtOdPdsStatus.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUResource.h"

namespace {

constexpr unsigned int kImportTypeNumber = 137;
constexpr int kImportHelpId = 61466;

} // namespace

ZtOdPdsTagImportPlugin::ZtOdPdsTagImportPlugin()
    : ZtOpExportPlugin(kImportTypeNumber, "ZtOdPdsTagImportPlugin", 1) {}

ZtOdPdsTagImportPlugin::~ZtOdPdsTagImportPlugin() = default;

void ZtOdPdsTagImportPlugin::IGetResourceName(ZtUStringBuffer* name) {
    name->SetString("ztodpds");
}

void ZtOdPdsTagImportPlugin::IGetMenuName(ZtUWideStringBuffer* name) {
    name->SetString(ZtUResource::FindString("ztodpds_tag_menu", L"PDS Tags..."));
}

void ZtOdPdsTagImportPlugin::IGetFileTypeName(ZtUWideStringBuffer* name) {
    name->SetString(ZtUResource::FindString("ztodpds_tag_file", L"PDS Tag File"));
}

void ZtOdPdsTagImportPlugin::IGetFileExtension(ZtUWideStringBuffer* extension) {
    extension->SetString(L".tag");
}

int ZtOdPdsTagImportPlugin::IExport(unsigned int, ZtOpState* state, ZtOpProgress* progress,
                                    const ZtUWideString* fileName) {
    if (!fileName)
        return kZtOdPdsNoFile;
    if (!state)
        return kZtOdPdsNoState;
    return ZtOdPdsGuard(static_cast<int>(kZtOdPdsNoState),
                        [&] { return Import(state, fileName->GetString(), progress); });
}

int ZtOdPdsTagImportPlugin::Import(ZtOpState* state, const wchar_t* path, ZtOpProgress* progress) {
    ZtOdPdsTagImportAction action(state, state->GetRootNode());
    const int status = action.Perform(path, progress);
    if (status != kZtOdPdsOk)
        return status;
    {
        // The new views go behind the document's own; nothing of those is touched.
        ZtOpAutoLock lock(ZtOpSavedViewsElement::GetClass(), state, 0);
        if (ZtOpSavedViewsElement* element = ZtOpSavedViewsElement::Edit(state, lock))
            action.AppendTo(element);
    }
    // The identifiers of the file stand as they are; the next ones only move past them,
    // both together, when either would come to an imported one.
    const std::uint64_t highest = action.GetHighestId();
    if (state->GetNextCommentId(0) > highest && state->GetNextTagId(0) > highest)
        return kZtOdPdsOk;
    ZtOpAutoLock lock(ZtOpNextCommentIdElement::GetClass(), state, 0);
    if (ZtOpNextCommentIdElement* element = ZtOpNextCommentIdElement::Edit(state, lock))
        action.UpdateNextIds(element);
    return kZtOdPdsOk;
}

int ZtOdPdsTagImportPlugin::IHelp() {
    InvokeHelp(nullptr, kImportHelpId);
    return 1;
}

ZtUComponent& ZtOdPdsTagImportPlugin::GetComponent() {
    static ZtUComponent component;
    return component;
}

// Own component first, then the action's, in the same order both ways.
int ZtOdPdsTagImportPlugin::StartComponent() {
    return ZtOdPdsStartComponents(
        {{&GetComponent(), "ZtOdPdsTagImportPlugin"},
         {&ZtOdPdsTagImportAction::GetComponent(), "ZtOdPdsTagImportAction"}});
}

int ZtOdPdsTagImportPlugin::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent(), &ZtOdPdsTagImportAction::GetComponent()});
}
