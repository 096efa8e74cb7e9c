#pragma once
#include "ztlinear/ZtLLine3f.h"
#include "ztlinear/ZtLMatrix4f.h"
#include "ztlinear/ZtLVec3f.h"

// A perspective view volume: the eye, its axes, the near and far distances along the
// view direction, and the window as its extent on the plane at distance 1 in front of
// the eye (left and right along the right axis, bottom and top along up).
class ZtLFrustum3f {
public:
    // A new frustum: the eye at the origin looking along -Z with up +Y, a window of
    // -1..1 both ways, near 0.01 and far 1e6.
    ZtLFrustum3f() = default;

    // A window symmetric about the line of sight. `viewDir` and `up` must be unit length
    // and at right angles.
    void SetPerspective(const ZtLPos3f& eye, const ZtLVec3f& viewDir, const ZtLVec3f& up,
                        double halfWidth, double halfHeight, double nearDistance,
                        double farDistance);

    const ZtLPos3f& GetEye() const { return eye_; }
    const ZtLVec3f& GetViewDir() const { return viewDir_; }
    const ZtLVec3f& GetUp() const { return up_; }
    // viewDir x up.
    ZtLVec3f GetRight() const { return viewDir_.Cross(up_); }
    double GetNear() const { return near_; }
    double GetFar() const { return far_; }
    // The window's extent on the plane at distance 1: along right, then along up.
    double GetWindowLeft() const { return left_; }
    double GetWindowRight() const { return right_; }
    double GetWindowBottom() const { return bottom_; }
    double GetWindowTop() const { return top_; }

    // Cuts the window down to the window-space rectangle x0..x1, y0..y1 (0..1 across the
    // present window), so that the frustum holds only what is seen through it.
    void Narrow(double x0, double x1, double y0, double y1);
    // The line of sight through the window-space point: from the eye, in the direction
    // of that point on the plane at distance 1.
    ZtLLine3f ProjectPointToLine(const ZtLPos2f& window) const;

    // The map from model points to frustum space: x and y run from -1 to 1 across the
    // window, z from -1 at the near distance to 1 at the far one.
    ZtLMatrix4f GetMatrix() const;

private:
    ZtLPos3f eye_{0, 0, 0};
    ZtLVec3f viewDir_{0, 0, -1};
    ZtLVec3f up_{0, 1, 0};
    double left_ = -1, right_ = 1, bottom_ = -1, top_ = 1;
    double near_ = 0.01, far_ = 1e6;
};
