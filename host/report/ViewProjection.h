#pragma once
#include "ztlinear/ZtLBox3f.h"
#include "ztlinear/ZtLMatrix4f.h"
#include "ztlinear/ZtLPlane3f.h"
#include "ztlinear/ZtLVec3f.h"

#include <algorithm>
#include <optional>
#include <vector>

class ZtNvCamera;

// The corners of an element's mark in a picture, in floats as a picture keeps them.
struct MarkCorners {
    float x0, y0, x1, y1;
};

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

    // The four below and Mark are inline, forced where the compiler would stop short: a
    // picture asks them for each of up to millions of marks.
    [[gnu::always_inline]] bool Keeps(const ZtLPos3f& p) const {
        for (const ZtLPlane3f& plane : keep_)
            if (!(plane.SignedDistance(p) >= 0))
                return false;
        return true;
    }
    // The pixel of a point the view keeps.
    [[gnu::always_inline]] ZtLPos2f Pixel(const ZtLPos3f& p) const {
        if (!perspective_)
            return {ox_ + scale_ * Axis(p, u_), oy_ - scale_ * Axis(p, v_)};
        const ZtLPos3f f = p * frustum_;
        return WindowPixel({(f.x + 1) * 0.5, (f.y + 1) * 0.5});
    }
    // The pixel of a window-space position (0 to 1 across the view, upwards).
    ZtLPos2f WindowPixel(const ZtLPos2f& window) const {
        return {window.x * width_, (1 - window.y) * height_};
    }
    // Pixels a scene unit at the point, across the line of sight.
    double PixelsPerUnit(const ZtLPos3f& p) const {
        if (!perspective_)
            return scale_;
        const double depth = viewDir_.Dot(p - eye_);
        return depth > 0 ? pixelsAtUnitDepth_ / depth : 0;
    }

    // The corners of the pixels an element's box covers, its mark: in a drawing along an
    // axis its box's, in perspective a square about its centre as big as the box's
    // largest side there. False where it has none (an empty box, or in perspective one
    // whose centre the view does not keep).
    [[gnu::always_inline]] bool Mark(const ZtLBox3f& box, MarkCorners* mark) const {
        if (box.IsEmpty())
            return false;
        if (!perspective_) {
            const ZtLPos2f low = Pixel(box.GetMin()), high = Pixel(box.GetMax());
            *mark = {static_cast<float>(low.x), static_cast<float>(high.y),
                     static_cast<float>(high.x), static_cast<float>(low.y)};
            return true;
        }
        const ZtLVec3f size = box.GetSize();
        const ZtLPos3f centre = box.GetMin() + size * 0.5;
        if (!Keeps(centre))
            return false;
        const double half = std::max({size.x, size.y, size.z}) * PixelsPerUnit(centre) / 2;
        const ZtLPos2f at = Pixel(centre);
        *mark = {static_cast<float>(at.x - half), static_cast<float>(at.y - half),
                 static_cast<float>(at.x + half), static_cast<float>(at.y + half)};
        return true;
    }

    // Cuts the segment to the part the view keeps; false when none of it is kept.
    bool Clip(ZtLPos3f* a, ZtLPos3f* b) const;

    // Planes bounding what a view in perspective may mark, each keeping the side its
    // normal points to: the near and clip planes, and the sides of the window widened by
    // two pixels. The mark of a box `s` across at most (its largest side) reaches into
    // the picture only if every plane keeps some point within `s` of the box's centre.
    // Empty where that can't be told: a view along an axis, a near distance not in front
    // of the eye, pixels far from square.
    std::vector<ZtLPlane3f> MarkBounds() const;

private:
    ViewProjection() = default;

    static double Axis(const ZtLPos3f& p, int axis) {
        return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
    }

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
