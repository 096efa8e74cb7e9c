#include "review/ModelLoad.h"

#include "review/AttributeSource.h"
#include "review/SavedItems.h"
#include "ztcore/ZtOcGeometryIndex.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include <vector>

std::vector<const ZtDgnModel*> SceneModels(const ZtOpState& state) {
    std::vector<const ZtDgnModel*> models;
    const ZtOaPartition* root = state.GetRootNode();
    for (int i = 0; root && i < root->GetNumChildren(); ++i)
        if (const auto* model = dynamic_cast<const ZtDgnModel*>(root->GetChild(i)))
            models.push_back(model);
    return models;
}

void MakeIndexesForTagPicks(const ZtOpState& state, std::size_t threads) {
    if (CountSavedItems(state).tags == 0)
        return;
    const std::vector<const ZtDgnModel*> models = SceneModels(state);
    ZtOcGeometryIndex::MakeAll(std::vector<const ZtOaPartition*>(models.begin(), models.end()),
                               threads);
}

int LoadModelIntoScene(ZtOpState& state, const std::wstring& path, std::string* error,
                       ZtOpProgress* progress, AttributeSource* attributes) {
    ZtDgnLoaderPlugin* loader = ZtDgnRegisterLoaderPlugin();
    std::string reason;
    std::unique_ptr<ZtDgnModel> model =
        loader ? loader->LoadModel(path.c_str(), state.EditNameDict(), progress, &reason) : nullptr;
    if (!loader)
        reason =
            std::string("another plug-in holds the name ") + ZtDgnLoaderPlugin::kRegisteredName;
    if (!model) {
        if (error)
            *error = "cannot load " + ZtUSysString::WideToPath(path) + " as a model: " + reason;
        return 2;
    }
    if (attributes && !attributes->Attach(*model, error ? error : &reason))
        return 2;
    state.GetRootNode()->AddChild(model.release());
    return 0;
}
