#pragma once
#include "ztlinear/ZtLVec3f.h"

class ZtNvCamera;

// A mark drawn over a view. Redlines keep their 2D positions in camera space: the image
// plane at distance 1 in front of the eye, x along the camera's right and y along its up,
// so that a point on the line of sight is (0, 0) whatever the field of view.
class ZtOpRedline {
public:
    // Window space (0..1 across the view) to camera space:
    // ((2 wx - 1) tan(h/2) aspect, (2 wy - 1) tan(h/2)), h the camera's height field.
    // With `yDown` the window's y counts from its top edge instead of its bottom.
    static ZtLPos2f WindowToCameraSpace(const ZtNvCamera& camera, bool yDown,
                                        const ZtLPos2f& window);
    // The inverse of WindowToCameraSpace.
    static ZtLPos2f CameraToWindowSpace(const ZtNvCamera& camera, bool yDown,
                                        const ZtLPos2f& cameraSpace);
};
