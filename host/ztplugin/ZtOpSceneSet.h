#pragma once
#include "ztobject/ZtOaUnit.h"
#include "ztplugin/ZtOpSceneRef.h"
#include "ztutil/ZtUVector.h"

// The models of a scene, as a scene-set plug-in reads them from its file: the list of
// references, which the set owns, and the units the scene counts in.
class ZtOpSceneSet {
public:
    // A new set: no references, metres.
    ZtOpSceneSet() = default;
    ZtOpSceneSet(const ZtOpSceneSet&) = delete;
    ZtOpSceneSet& operator=(const ZtOpSceneSet&) = delete;

    const ZtUOwnPtrVector<ZtOpSceneRef>& GetSceneRefs() const { return refs_; }
    // References pushed here belong to the set.
    ZtUOwnPtrVector<ZtOpSceneRef>& EditSceneRefs() { return refs_; }

    ZtOaUnit::Linear GetLinearUnits() const { return linearUnits_; }
    void SetLinearUnits(ZtOaUnit::Linear units) { linearUnits_ = units; }

private:
    ZtUOwnPtrVector<ZtOpSceneRef> refs_;
    ZtOaUnit::Linear linearUnits_ = ZtOaUnit::kMetres;
};
