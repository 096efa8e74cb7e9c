#include "ztlddgn/ZtDgnLoaderPlugin.h"

#include "ztlddgn/ZtDgnReader.h"
#include "ztplugin/ZtOpDB.h"
#include "ztutil/ZtUResource.h"

ZtDgnLoaderPlugin::ZtDgnLoaderPlugin() : ZtOpScenePropsPlugin(kTypeNumber, kRegisteredName, 0) {
    options_ = ZtUAutoRefPtr<ZtUOptionSet>(new ZtUOptionSet);
    ZtUData on;
    on.SetBool(true);
    options_->Define(kOption10, L"DGN option 10", on);
}

ZtDgnLoaderPlugin::~ZtDgnLoaderPlugin() = default;

void ZtDgnLoaderPlugin::IGetResourceName(ZtUStringBuffer* name) {
    if (name)
        name->SetString("ztlddgn");
}

void ZtDgnLoaderPlugin::IGetFormatName(ZtUWideStringBuffer* name, NameContext) {
    if (name)
        name->SetString(ZtUResource::FindString("ztlddgn_format", L"DGN V7 Design File"));
}

void ZtDgnLoaderPlugin::IGetFormatExtension(ZtUWideStringBuffer* extension) {
    if (extension)
        extension->SetString(L".dgn");
}

bool ZtDgnLoaderPlugin::GetOption10() {
    ZtUData value;
    ZtUAutoRefPtr<ZtUOptionSet> options = GetOptionSet();
    return options && options->GetValue(kOption10, &value) ? value.GetBool() : true;
}

std::unique_ptr<ZtDgnModel> ZtDgnLoaderPlugin::LoadModel(const wchar_t* path, ZtUNameDict* names,
                                                         ZtOpProgress* progress,
                                                         std::string* reason) {
    return ZtDgnReadModel(path, names, GetOption10(), progress, reason);
}

std::unique_ptr<ZtDgnModel>
ZtDgnLoaderPlugin::DecodeModel(const wchar_t* path, ZtOpProgress* progress, std::string* reason) {
    return ZtDgnDecodeModel(path, progress, reason);
}

void ZtDgnLoaderPlugin::AdoptModel(ZtDgnModel& model, ZtUNameDict* names) {
    model.BindNames(names);
    model.SetOption10AtLoad(GetOption10());
}

ZtDgnLoaderPlugin* ZtDgnRegisterLoaderPlugin() {
    if (ZtOpPlugin* present = ZtOpDB::GetPluginByName(ZtDgnLoaderPlugin::kRegisteredName))
        return dynamic_cast<ZtDgnLoaderPlugin*>(present);
    auto* plugin = new ZtDgnLoaderPlugin;
    ZtOpDB::AddPlugin(plugin);
    return plugin;
}
