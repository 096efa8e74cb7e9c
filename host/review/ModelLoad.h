#pragma once
#include <string>
#include <vector>

class ZtDgnModel;
class ZtOpProgress;
class ZtOpState;

// The `model` step: loads `path` with the DGN loader plug-in (registering it if need be)
// and adds the model to the document's scene, unplaced. Returns 0, or 2 with the reason
// in `error` when the file can't be loaded as a model.
int LoadModelIntoScene(ZtOpState& state, const std::wstring& path, std::string* error,
                       ZtOpProgress* progress = nullptr);

// The DGN models of the document's scene, in load order.
std::vector<const ZtDgnModel*> SceneModels(const ZtOpState& state);
