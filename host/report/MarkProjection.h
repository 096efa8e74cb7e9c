#pragma once
#include "report/ViewProjection.h"
#include "ztlinear/ZtLBox3f.h"

#include <algorithm>
#include <vector>

// The corners of an element's mark in a picture, in floats as a picture keeps them.
struct MarkCorners {
    float x0, y0, x1, y1;
};

// How a view maps an element's box to the pixels of its mark: in a drawing along an axis
// the box's own, in perspective a square about its centre as big as the box's largest side
// there. The view's terms are copied out once, so that a mark costs a few multiplications
// and no call. Each mark is worked out by the very operations, in the very order, of the
// view's Pixel, Keeps and PixelsPerUnit, so that it lands on the same bits as theirs.
class MarkProjection {
public:
    explicit MarkProjection(const ViewProjection& view);

    // The mark of a box; false where it has none (an empty box, or in perspective one whose
    // centre the view does not keep).
    bool Mark(const ZtLBox3f& box, MarkCorners* mark) const {
        if (box.IsEmpty())
            return false;
        return perspective_ ? Perspective(box, mark) : Orthographic(box, mark);
    }

private:
    struct Plane {
        double x, y, z, distance;
    };

    bool Orthographic(const ZtLBox3f& box, MarkCorners* mark) const {
        const ZtLPos3f& low = box.GetMin();
        const ZtLPos3f& high = box.GetMax();
        *mark = {static_cast<float>(ox_ + scale_ * Axis(low, u_)),
                 static_cast<float>(oy_ - scale_ * Axis(high, v_)),
                 static_cast<float>(ox_ + scale_ * Axis(high, u_)),
                 static_cast<float>(oy_ - scale_ * Axis(low, v_))};
        return true;
    }

    bool Perspective(const ZtLBox3f& box, MarkCorners* mark) const {
        const ZtLPos3f& low = box.GetMin();
        const ZtLVec3f size = box.GetMax() - low;
        const double x = low.x + size.x * 0.5, y = low.y + size.y * 0.5, z = low.z + size.z * 0.5;
        for (const Plane& plane : keep_)
            if (!(plane.x * x + plane.y * y + plane.z * z - plane.distance >= 0))
                return false;
        const double depth =
            viewDir_.x * (x - eye_.x) + viewDir_.y * (y - eye_.y) + viewDir_.z * (z - eye_.z);
        const double perUnit = depth > 0 ? pixelsAtUnitDepth_ / depth : 0;
        const double half = std::max({size.x, size.y, size.z}) * perUnit / 2;
        const double w = x * column_[3][0] + y * column_[3][1] + z * column_[3][2] + column_[3][3];
        const double fx =
            (x * column_[0][0] + y * column_[0][1] + z * column_[0][2] + column_[0][3]) / w;
        const double fy =
            (x * column_[1][0] + y * column_[1][1] + z * column_[1][2] + column_[1][3]) / w;
        const double px = (fx + 1) * 0.5 * width_, py = (1 - (fy + 1) * 0.5) * height_;
        *mark = {static_cast<float>(px - half), static_cast<float>(py - half),
                 static_cast<float>(px + half), static_cast<float>(py + half)};
        return true;
    }

    static double Axis(const ZtLPos3f& p, int axis) {
        return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
    }

    bool perspective_;
    // Along an axis.
    int u_, v_;
    double scale_, ox_, oy_;
    // In perspective: the frustum matrix by column (x, y, and w the divisor), the
    // picture's size, the eye and the line of sight, and the planes whose kept side a
    // mark's centre must lie on.
    double column_[4][4];
    double width_, height_, pixelsAtUnitDepth_;
    ZtLPos3f eye_;
    ZtLVec3f viewDir_;
    std::vector<Plane> keep_;
};
