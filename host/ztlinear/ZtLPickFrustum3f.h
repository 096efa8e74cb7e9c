#pragma once
#include "ztlinear/ZtLBox3f.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLVec3f.h"

// A frustum prepared for testing many boxes against it: its corners, and the ranges it
// covers along every axis that can separate it from a box (its six face normals, the
// three box axes and the cross products of box axes with its edges). A box meets the
// frustum exactly when it overlaps it on all these axes.
//
// Box tests take the box's projections from its corners term by term, so that a box
// inside another never gives a smaller projection range, nor a smaller depth, even after
// rounding: a test that rejects a box rejects every box inside it.
class ZtLPickFrustum3f {
public:
    static constexpr int kMaxAxes = 27;

    explicit ZtLPickFrustum3f(const ZtLFrustum3f& frustum);

    const ZtLFrustum3f& GetFrustum() const { return frustum_; }
    // Near face first (bottom left, bottom right, top right, top left), then the far face.
    const ZtLPos3f& GetCorner(int index) const { return corners_[index]; }

    // True if the box and the frustum share a point; touching counts. An empty box meets
    // nothing.
    bool Intersects(const ZtLBox3f& box) const;
    // False only where Intersects is false; true for every box that meets the frustum and
    // some that do not. Tests the frustum's bounding box and the inner side of each face,
    // which turn most boxes away, and not the axes of its edges: for pruning a search
    // cheaply.
    bool MayIntersect(const ZtLBox3f& box) const;
    // True if every point of the box lies in the frustum, faces included.
    bool Contains(const ZtLBox3f& box) const;
    // The least depth of a point of the box along the view direction, from the eye.
    double Depth(const ZtLBox3f& box) const;

private:
    struct Axis {
        ZtLVec3f direction;
        double low;
        double high;
    };
    // The corners coordinate by coordinate, so that projecting all eight onto an axis is
    // a few operations on lanes of them.
    struct CornerLanes {
        double x[8];
        double y[8];
        double z[8];
    };
    void AddAxis(const ZtLVec3f& direction, const CornerLanes& corners);
    // True if the box, every coordinate of it finite, lies wholly beside the frustum's
    // bounding box; sets `finite`.
    bool BesideBounds(const ZtLBox3f& box, bool& finite) const;

    ZtLFrustum3f frustum_;
    ZtLPos3f corners_[8];
    double eyeDepth_;
    Axis axes_[kMaxAxes];
    int axisCount_ = 0;
    // The axes of the faces come first, then the box axes from boxAxesFirst_ on, all
    // three of them: chiefAxisCount_ axes together.
    int boxAxesFirst_ = 0;
    int chiefAxisCount_ = 0;
    // The ranges on the three box axes: the frustum's bounding box (NaN where an axis is
    // missing, so that it turns nothing away).
    double boundsLow_[3];
    double boundsHigh_[3];
    // The six faces' planes with inward normals, as n·x >= d.
    ZtLVec3f faceNormals_[6];
    double faceDistances_[6];
};
