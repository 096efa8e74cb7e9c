#pragma once
#include "ztlinear/ZtLPlane3f.h"

// One clip plane of a view: a plane and a switch. A new plane is switched off and lies
// at z = 0 facing +Z. An enabled plane keeps what lies on the side its normal points to.
class ZtOaClipPlane {
public:
    // How AlignToPick takes the normal it is given.
    enum Alignment : int {
        // Snapped to the nearest of the six axis directions.
        kAlignToAxis = 0,
        // As it stands.
        kAlignToNormal = 1,
    };

    // Lays the plane through `point` with `normal` taken as `alignment` says. With
    // `facing`, the normal is turned round where it points against that direction.
    void AlignToPick(Alignment alignment, const ZtLPos3f& point, const ZtLUnitVec3f& normal,
                     const ZtLUnitVec3f* facing);

    int IsEnabled() const { return enabled_ ? 1 : 0; }
    void SetEnabled(bool enabled) { enabled_ = enabled; }

    const ZtLUnitVec3f& GetNormal() const { return plane_.GetNormal(); }
    const ZtLPlane3f& GetPlane3f() const { return plane_; }

private:
    ZtLPlane3f plane_;
    bool enabled_ = false;
};
