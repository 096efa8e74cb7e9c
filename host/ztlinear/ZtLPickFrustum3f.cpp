#include "ztlinear/ZtLPickFrustum3f.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// The least and the greatest of direction·p over the box, each summed term by term from
// the corner coordinates that make it least or greatest.
double LowOnAxis(const ZtLVec3f& d, const ZtLBox3f& box) {
    const ZtLPos3f& lo = box.GetMin();
    const ZtLPos3f& hi = box.GetMax();
    return (d.x >= 0 ? d.x * lo.x : d.x * hi.x) + (d.y >= 0 ? d.y * lo.y : d.y * hi.y) +
           (d.z >= 0 ? d.z * lo.z : d.z * hi.z);
}

double HighOnAxis(const ZtLVec3f& d, const ZtLBox3f& box) {
    const ZtLPos3f& lo = box.GetMin();
    const ZtLPos3f& hi = box.GetMax();
    return (d.x >= 0 ? d.x * hi.x : d.x * lo.x) + (d.y >= 0 ? d.y * hi.y : d.y * lo.y) +
           (d.z >= 0 ? d.z * hi.z : d.z * lo.z);
}

// Both sides of every comparison use the same sum, so that a corner of the frustum
// lying on a box face is seen on the face.
double Project(const ZtLVec3f& d, const ZtLPos3f& p) {
    return (d.x * p.x + d.y * p.y) + d.z * p.z;
}

} // namespace

ZtLPickFrustum3f::ZtLPickFrustum3f(const ZtLFrustum3f& frustum) : frustum_(frustum) {
    const ZtLPos3f& eye = frustum.GetEye();
    const ZtLVec3f& view = frustum.GetViewDir();
    const ZtLVec3f& up = frustum.GetUp();
    const ZtLVec3f right = frustum.GetRight();
    const double xs[4] = {frustum.GetWindowLeft(), frustum.GetWindowRight(),
                          frustum.GetWindowRight(), frustum.GetWindowLeft()};
    const double ys[4] = {frustum.GetWindowBottom(), frustum.GetWindowBottom(),
                          frustum.GetWindowTop(), frustum.GetWindowTop()};
    ZtLVec3f rays[4];
    for (int i = 0; i < 4; ++i) {
        rays[i] = view + right * xs[i] + up * ys[i];
        corners_[i] = eye + rays[i] * frustum.GetNear();
        corners_[4 + i] = eye + rays[i] * frustum.GetFar();
    }
    eyeDepth_ = Project(view, eye);
    CornerLanes lanes;
    for (int i = 0; i < 8; ++i) {
        lanes.x[i] = corners_[i].x;
        lanes.y[i] = corners_[i].y;
        lanes.z[i] = corners_[i].z;
    }

    // Faces: near, far, and the four sides through the eye, each normal turned inwards.
    const ZtLPos3f centre = eye + view * ((frustum.GetNear() + frustum.GetFar()) * 0.5);
    const int faces[6][3] = {{0, 1, 2}, {4, 6, 5}, {0, 4, 1}, {1, 5, 2}, {2, 6, 3}, {3, 7, 0}};
    for (int f = 0; f < 6; ++f) {
        const ZtLPos3f& a = corners_[faces[f][0]];
        ZtLVec3f n = (corners_[faces[f][1]] - a).Cross(corners_[faces[f][2]] - a).Normalized();
        if (n.Dot(centre - a) < 0)
            n = -n;
        faceNormals_[f] = n;
        faceDistances_[f] = Project(n, a);
        AddAxis(n, lanes);
    }
    const ZtLVec3f boxAxes[3] = {ZtLUnitVec3f::X(), ZtLUnitVec3f::Y(), ZtLUnitVec3f::Z()};
    boxAxesFirst_ = axisCount_;
    for (int k = 0; k < 3; ++k) {
        const int before = axisCount_;
        AddAxis(boxAxes[k], lanes);
        const double none = std::numeric_limits<double>::quiet_NaN();
        boundsLow_[k] = axisCount_ > before ? axes_[before].low : none;
        boundsHigh_[k] = axisCount_ > before ? axes_[before].high : none;
    }
    chiefAxisCount_ = axisCount_;
    const ZtLVec3f edges[6] = {right, up, rays[0], rays[1], rays[2], rays[3]};
    for (const ZtLVec3f& axis : boxAxes)
        for (const ZtLVec3f& edge : edges)
            AddAxis(axis.Cross(edge), lanes);
}

void ZtLPickFrustum3f::AddAxis(const ZtLVec3f& direction, const CornerLanes& corners) {
    // Parallel edges give no axis; a direction that is all but zero separates nothing
    // that another axis would not. (A length below 0.5 is a squared length below 0.25:
    // the square root rounds no square below 0.25 up to 0.5.)
    const ZtLVec3f d = direction.Normalized();
    if (d.Dot(d) < 0.25 || axisCount_ == kMaxAxes)
        return;
    // Each projection summed as Project sums it; the bounds taken in the corners' order.
    double low = (d.x * corners.x[0] + d.y * corners.y[0]) + d.z * corners.z[0];
    double high = low;
    for (int i = 1; i < 8; ++i) {
        const double p = (d.x * corners.x[i] + d.y * corners.y[i]) + d.z * corners.z[i];
        low = std::min(low, p);
        high = std::max(high, p);
    }
    axes_[axisCount_++] = {d, low, high};
}

bool ZtLPickFrustum3f::BesideBounds(const ZtLBox3f& box, bool& finite) const {
    // On a box axis the projections of a box whose coordinates are all finite are its
    // own coordinates, so the frustum's bounding box answers for those three axes at
    // once and turns most boxes away. A coordinate that is not finite makes the sums of
    // the long way give another answer; such a box goes the long way only.
    const ZtLPos3f& lo = box.GetMin();
    const ZtLPos3f& hi = box.GetMax();
    finite = std::isfinite(lo.x) && std::isfinite(lo.y) && std::isfinite(lo.z) &&
             std::isfinite(hi.x) && std::isfinite(hi.y) && std::isfinite(hi.z);
    if (finite)
        for (int k = 0; k < 3; ++k)
            if (hi[k] < boundsLow_[k] || lo[k] > boundsHigh_[k])
                return true;
    return false;
}

bool ZtLPickFrustum3f::Intersects(const ZtLBox3f& box) const {
    bool finite = false;
    if (box.IsEmpty() || BesideBounds(box, finite))
        return false;
    auto meets = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const Axis& axis = axes_[i];
            if (HighOnAxis(axis.direction, box) < axis.low ||
                LowOnAxis(axis.direction, box) > axis.high)
                return false;
        }
        return true;
    };
    // The bounds have answered for the box axes of a finite box: the long way gives the
    // same sums there, a coordinate plus zeros.
    return meets(0, boxAxesFirst_) && meets(finite ? chiefAxisCount_ : boxAxesFirst_, axisCount_);
}

bool ZtLPickFrustum3f::MayIntersect(const ZtLBox3f& box) const {
    bool finite = false;
    if (box.IsEmpty() || BesideBounds(box, finite))
        return false;
    // Of each face's axis only the side the frustum lies on: a box wholly behind one face
    // is turned away as the full test turns it away, at half the cost; a box beyond the
    // frustum's far side along a face's normal is left to the other faces.
    for (int i = 0; i < boxAxesFirst_; ++i)
        if (HighOnAxis(axes_[i].direction, box) < axes_[i].low)
            return false;
    return true;
}

bool ZtLPickFrustum3f::Contains(const ZtLBox3f& box) const {
    if (box.IsEmpty())
        return false;
    for (int f = 0; f < 6; ++f)
        if (LowOnAxis(faceNormals_[f], box) < faceDistances_[f])
            return false;
    return true;
}

double ZtLPickFrustum3f::Depth(const ZtLBox3f& box) const {
    return LowOnAxis(frustum_.GetViewDir(), box) - eyeDepth_;
}
