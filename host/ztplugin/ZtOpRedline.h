#pragma once
#include "ztlinear/ZtLColor3f.h"
#include "ztlinear/ZtLVec3f.h"

#include <cstddef>

class ZtNvCamera;

// A mark drawn over a view, owned by the view that lists it. Redlines keep their 2D
// positions in camera space: the image plane at distance 1 in front of the eye, x along
// the camera's right and y along its up, so that a point on the line of sight is (0, 0)
// whatever the field of view.
class ZtOpRedline {
public:
    // GetRedlineType of a ZtOpRedlineTag.
    static constexpr int kTypeTag = 3;

    // Redlines live on the host's heap, so that one made by a plug-in is freed by the host.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    ZtOpRedline() = default;
    ZtOpRedline(const ZtOpRedline&) = delete;
    ZtOpRedline& operator=(const ZtOpRedline&) = delete;
    virtual ~ZtOpRedline() = default;

    virtual int GetRedlineType() const = 0;

    const ZtLColor3f& GetLineColor() const { return lineColor_; }
    void SetLineColor(const ZtLColor3f& color) { lineColor_ = color; }
    int GetLineThickness() const { return lineThickness_; }
    void SetLineThickness(int thickness) { lineThickness_ = thickness; }

    // Window space (0..1 across the view) to camera space:
    // ((2 wx - 1) tan(h/2) aspect, (2 wy - 1) tan(h/2)), h the camera's height field.
    // With `yDown` the window's y counts from its top edge instead of its bottom.
    static ZtLPos2f WindowToCameraSpace(const ZtNvCamera& camera, bool yDown,
                                        const ZtLPos2f& window);
    // The inverse of WindowToCameraSpace.
    static ZtLPos2f CameraToWindowSpace(const ZtNvCamera& camera, bool yDown,
                                        const ZtLPos2f& cameraSpace);

private:
    ZtLColor3f lineColor_{1, 0, 0};
    int lineThickness_ = 1;
};
