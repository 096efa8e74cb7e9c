#pragma once
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaClipPlaneSet.h"

// A view that is not saved under a name: what the user looks at now, and the part of a
// saved view that says how it looks: the viewpoint and the clip planes.
class ZtOpAnonView {
public:
    const ZtNvViewPoint& GetViewPoint() const { return viewPoint_; }
    ZtNvViewPoint* EditViewPoint() { return &viewPoint_; }

    const ZtOaClipPlaneSet& GetClipPlaneSet() const { return clipPlanes_; }
    ZtOaClipPlaneSet* EditClipPlaneSet() { return &clipPlanes_; }

private:
    ZtNvViewPoint viewPoint_;
    ZtOaClipPlaneSet clipPlanes_;
};
