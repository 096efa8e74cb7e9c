#pragma once
#include "ztplugin/ZtOpSceneSet.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class AttributeSource;
class ZtDgnModel;
class ZtOpProgress;
class ZtOpSceneSetPlugin;
class ZtOpState;

// The loader's parameters as the command line gives them.
struct OpenParameters {
    int inputFiles = 0;            // --input-files: model 0, cache 1, either 2
    bool importTags = true;        // false with --no-tags
    bool importDisplaySets = true; // false with --no-display-sets
    // Whether NAME.db beside NAME.dri gives the models their attributes, where the run has
    // no source of its own (false with --no-attributes).
    bool readAttributeDatabase = true;
    // The threads that read the models' files (0: one a core; 1: each file read at its
    // turn, on the road's own thread).
    std::size_t threads = 0;
};

// The files beside a control file that opening it imports: the ".tag" and ".dst" files
// of its folder, as the parameters ask for them, in the order the loader imports them
// (every tag file, then every display-set file, each kind in the order of the walk).
std::vector<std::wstring> SideFilesOf(const std::wstring& controlFile,
                                      const OpenParameters& parameters);

// The value of --input-files for its name ("model", "cache", "either"), or none.
std::optional<int> InputFilesValue(const std::string& name);

// What the host made of one reference of a scene set.
struct OpenedRef {
    // The model loaded for the reference and placed where it says, which the document's
    // scene owns; null if none.
    const ZtDgnModel* model = nullptr;
    // Why there is no model.
    std::string notLoaded;
};

// The scene set of an `open` step, with the fate of each reference, in the set's order.
struct OpenedSceneSet {
    ZtOpSceneSet set;
    std::vector<OpenedRef> refs;
    // The files beside the control file that the loader imported, in its order.
    std::vector<std::wstring> sideFiles;
};

// The `open` step, the host's road for a control file. The loader learns of the document
// and gets its parameters; IReadSet reads the file; each reference's load file, resolved
// against the control file's folder, is loaded by the DGN loader into the document's
// scene and placed with IPlaceSceneRef, and the model's partition takes the reference's
// placement (ZtOpSceneRef::GetPlacement), so that the scene is the placed review;
// references to one file share its model where they place it alike. IFinishSet gets the
// scene's root, and the view it sets up becomes the document's current view. A reference
// without a load file, with a cache file (which this host does not read), or whose file
// is missing or no readable model is not loaded, with the reason, and is not placed.
// With `attributes`, each model takes its elements' attributes from the source when it has
// loaded; the first read that fails stops the attaching and goes to `attachError`, while
// the road goes on to its end.
//
// Returns the status of IReadSet. With 0, `sceneSet` receives the scene set; otherwise it
// is left alone and the document is untouched.
int OpenControlFile(ZtOpState& state, ZtOpSceneSetPlugin& loader, const std::wstring& path,
                    const OpenParameters& parameters, std::unique_ptr<OpenedSceneSet>* sceneSet,
                    ZtOpProgress* progress = nullptr, AttributeSource* attributes = nullptr,
                    std::string* attachError = nullptr);
