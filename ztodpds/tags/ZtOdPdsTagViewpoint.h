#pragma once
#include "ztlinear/ZtLVec3f.h"

class ZtOpView;

// The viewpoint that a tag file's sticky keys (target, eye, up, persp_ang, clip_near,
// clip_far) build up for the tags that follow them, in master units and radians.
struct ZtOdPdsTagViewpoint {
    ZtLPos3f target{0.0, 0.0, 0.0};
    ZtLPos3f eye{1.0, 0.0, 0.0};
    double perspAngle = 45 * 0.017453292519943295;
    // Not above 0: no clip plane.
    double clipNear = -1.0;
    double clipFar = -1.0;
    ZtLUnitVec3f up{0.0, 0.0, 1.0};

    // A new view of the viewpoint (the caller owns it), or null when its camera spans no
    // frustum.
    ZtOpView* MakeView() const;
};

// Switches on the first free clip plane of `view` (the last if none is free), at right
// angles to the view at `distance` from the eye, its normal along the view for
// `direction` 1 and against it for -1. A null view is left alone.
void ZtOdPdsAddTagClipPlane(double direction, double distance, ZtOpView* view);
