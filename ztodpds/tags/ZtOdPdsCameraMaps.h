#pragma once
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLVec3f.h"

class ZtNvCamera;

// Maps between the spaces of a view. Model space is in master units. Frustum space is
// what the camera's frustum matrix makes of a point: x and y from -1 to 1 across the
// view. Window space runs from 0 to 1 across the view. Camera space is where redlines
// keep their 2D positions (ZtOpRedline).

// A camera without a valid frustum maps through the default frustum.
ZtLPos3f ZtOdPdsModelToFrustum(const ZtLPos3f& position, const ZtNvCamera& camera);
// z is dropped.
ZtLPos2f ZtOdPdsFrustumToWindow(const ZtLPos3f& position);
// At z = -1, the near plane.
ZtLPos3f ZtOdPdsWindowToFrustum(const ZtLPos2f& position);
ZtLPos2f ZtOdPdsModelToWindow(const ZtLPos3f& position, const ZtNvCamera& camera);
ZtLPos2f ZtOdPdsModelToCameraSpace(const ZtLPos3f& position, const ZtNvCamera& camera);

// ZtOdPdsModelToCameraSpace for the many points of one camera: its frustum and the
// frustum's matrix are made once. The camera must outlive the map.
class ZtOdPdsCameraMap {
public:
    explicit ZtOdPdsCameraMap(const ZtNvCamera& camera);
    ZtLPos2f ToCameraSpace(const ZtLPos3f& position) const;

private:
    const ZtNvCamera& camera_;
    ZtLMatrix4f matrix_;
};
