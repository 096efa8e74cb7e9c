#pragma once
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpFilePlugin.h"

#include <memory>
#include <string>

class ZtOpProgress;
class ZtUNameDict;

// The host's loader of DGN V7 design files. The host registers its model loaders under
// "ZtKvcLoaderPlugin:<library>". Its option set has option 10, a boolean that defaults to
// true; this loader does not act on it but records in each model the value it had.
class ZtDgnLoaderPlugin : public ZtOpScenePropsPlugin {
public:
    static constexpr const char* kRegisteredName = "ZtKvcLoaderPlugin:ztlddgn";
    static constexpr unsigned int kTypeNumber = 4;
    static constexpr int kOption10 = 10;

    ZtDgnLoaderPlugin();
    ~ZtDgnLoaderPlugin() override;

    void IGetResourceName(ZtUStringBuffer* name) override;
    void IGetFormatName(ZtUWideStringBuffer* name, NameContext context) override;
    void IGetFormatExtension(ZtUWideStringBuffer* extension) override;

    // The present value of option 10.
    bool GetOption10();
    // Loads `path` as a model (see ZtDgnReadModel), noting option 10's present value.
    std::unique_ptr<ZtDgnModel> LoadModel(const wchar_t* path, ZtUNameDict* names,
                                          ZtOpProgress* progress, std::string* reason);
    // LoadModel in two halves, for files read ahead on other threads: DecodeModel reads
    // the file and touches nothing shared (ZtDgnDecodeModel); AdoptModel, on the document's
    // thread, names the model and notes option 10's present value, so that the model is
    // what LoadModel would have given at that point.
    static std::unique_ptr<ZtDgnModel> DecodeModel(const wchar_t* path, ZtOpProgress* progress,
                                                   std::string* reason);
    void AdoptModel(ZtDgnModel& model, ZtUNameDict* names);
};

// The loader registered in ZtOpDB, registering it first if no plug-in has its name yet;
// null if a plug-in of another class holds the name. ZtOpDB owns the plug-in.
ZtDgnLoaderPlugin* ZtDgnRegisterLoaderPlugin();
