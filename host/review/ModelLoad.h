#pragma once
#include <cstddef>
#include <string>
#include <vector>

class AttributeSource;
class ZtDgnModel;
class ZtOpProgress;
class ZtOpState;

// The `model` step: loads `path` with the DGN loader plug-in (registering it if need be),
// gives its elements their attributes from `attributes` if there is a source, and adds
// the model to the document's scene, unplaced. Returns 0, or 2 with the reason in `error`
// when the file can't be loaded as a model or the source's rows can't be read; the scene
// is then left as it was.
int LoadModelIntoScene(ZtOpState& state, const std::wstring& path, std::string* error,
                       ZtOpProgress* progress = nullptr, AttributeSource* attributes = nullptr);

// The DGN models of the document's scene, in load order.
std::vector<const ZtDgnModel*> SceneModels(const ZtOpState& state);

// Where the document holds saved tags, makes the geometry index of each of the scene's
// models on `threads` threads (0: one a core): the first tag's pick would make them one
// after another. Without tags there is no pick, and no index is made.
void MakeIndexesForTagPicks(const ZtOpState& state, std::size_t threads);
