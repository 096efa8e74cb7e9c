#pragma once
#include "ztlinear/ZtLAffine3f.h"
#include "ztobject/ZtOaUnit.h"
#include "ztutil/ZtUWideString.h"

#include <cstddef>

// One model of a scene set: the name it was given by, the file the host is to load for
// it, the units it counts in and where it is placed.
class ZtOpSceneRef {
public:
    // A new reference: empty names, the identity transform, metres, load kind 0.
    ZtOpSceneRef() = default;
    ZtOpSceneRef(const ZtOpSceneRef&) = delete;
    ZtOpSceneRef& operator=(const ZtOpSceneRef&) = delete;
    virtual ~ZtOpSceneRef();

    // The host's storage, so that a reference made in a plug-in library is freed by the
    // host's scene set.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    const ZtUWideString& GetSourceName() const {
        return sourceIsLoadFile_ ? loadFile_ : sourceName_;
    }
    void SetSourceName(const wchar_t* name);
    // Empty when there is no file to load.
    const ZtUWideString& GetLoadFile() const { return loadFile_; }
    void SetLoadFile(const wchar_t* path);

    // Where the reference puts its model, in the scene's units.
    const ZtLAffine3f& GetTransform() const { return transform_; }
    ZtLAffine3f& EditTransform() { return transform_; }
    // The map from the model's coordinates (master units, which the reference says are
    // its linear units) to those of a scene in `sceneUnits`: scaled from the one unit to
    // the other, then the transform. The host gives it to the model's partition when it
    // places the model.
    ZtLAffine3f GetPlacement(ZtOaUnit::Linear sceneUnits) const;

    ZtOaUnit::Linear GetLinearUnits() const { return linearUnits_; }
    void SetLinearUnits(ZtOaUnit::Linear units) { linearUnits_ = units; }
    // How the host is to load the file; the plug-in that makes the reference decides.
    int GetLoadKind() const { return loadKind_; }
    void SetLoadKind(int kind) { loadKind_ = kind; }

private:
    // A source name that is the load file, as it mostly is, is not held twice: a name may
    // be as long as the control file that gives it.
    ZtUWideString sourceName_;
    ZtUWideString loadFile_;
    bool sourceIsLoadFile_ = false;
    ZtLAffine3f transform_;
    ZtOaUnit::Linear linearUnits_ = ZtOaUnit::kMetres;
    int loadKind_ = 0;
};
