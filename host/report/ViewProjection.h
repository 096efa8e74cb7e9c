#pragma once
#include "ztlinear/ZtLMatrix4f.h"
#include "ztlinear/ZtLPlane3f.h"
#include "ztlinear/ZtLVec3f.h"

#include <optional>
#include <vector>

class ZtNvCamera;

// How a view maps the scene to its pixels (x to the right, y downwards from the top left
// corner): an orthographic drawing along an axis, or a saved view's camera in
// perspective with the view's clip planes. Points the view does not keep (behind the
// eye, or cut off by a clip plane) have no pixel; segments are cut to what it keeps.
class ViewProjection {
public:
    // Scene axes u and v (0 x, 1 y, 2 z) to the right and upwards, `scale` pixels a scene
    // unit, the scene's origin at pixel (ox, oy).
    static ViewProjection Orthographic(int u, int v, double scale, double ox, double oy, int width,
                                       int height);
    // The camera's view, in a picture `width` wide and as high as the camera's aspect
    // ratio makes it, keeping what lies in front of its near distance and on the kept
    // side of each clip plane. None for a camera without a valid frustum.
    static std::optional<ViewProjection>
    Perspective(const ZtNvCamera& camera, const std::vector<ZtLPlane3f>& clipPlanes, int width);

    int Width() const { return width_; }
    int Height() const { return height_; }
    bool IsPerspective() const { return perspective_; }

    bool Keeps(const ZtLPos3f& p) const;
    // Cuts the segment to the part the view keeps; false when none of it is kept.
    bool Clip(ZtLPos3f* a, ZtLPos3f* b) const;
    // The pixel of a point the view keeps.
    ZtLPos2f Pixel(const ZtLPos3f& p) const;
    // The pixel of a window-space position (0 to 1 across the view, upwards).
    ZtLPos2f WindowPixel(const ZtLPos2f& window) const;
    // Pixels a scene unit at the point, across the line of sight.
    double PixelsPerUnit(const ZtLPos3f& p) const;

    // Planes bounding what a view in perspective may mark, each keeping the side its
    // normal points to: the near and clip planes, and the sides of the window widened by
    // two pixels. The mark of a box `s` across at most (its largest side) reaches into
    // the picture only if every plane keeps some point within `s` of the box's centre.
    // Empty where that can't be told: a view along an axis, a near distance not in front
    // of the eye, pixels far from square.
    std::vector<ZtLPlane3f> MarkBounds() const;

private:
    friend class MarkProjection; // copies out the view's terms once, for its many marks

    ViewProjection() = default;

    int width_ = 0, height_ = 0;
    bool perspective_ = false;
    // Orthographic.
    int u_ = 0, v_ = 1;
    double scale_ = 1, ox_ = 0, oy_ = 0;
    // Perspective.
    ZtLMatrix4f frustum_;
    ZtLPos3f eye_;
    ZtLVec3f viewDir_;
    double pixelsAtUnitDepth_ = 1;
    // The window's axes and its extent on the plane at distance 1 along them.
    ZtLVec3f right_, up_;
    double left_ = -1, rightEdge_ = 1, bottom_ = -1, top_ = 1;
    double near_ = 0;
    // What the view keeps: the points where every plane's signed distance is at least 0.
    std::vector<ZtLPlane3f> keep_;
};
