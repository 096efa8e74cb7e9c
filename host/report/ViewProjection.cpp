#include "report/ViewProjection.h"

#include "ztlinear/ZtLFrustum3f.h"
#include "ztnav/ZtNvCamera.h"

#include <cmath>

ViewProjection ViewProjection::Orthographic(int u, int v, double scale, double ox, double oy,
                                            int width, int height) {
    ViewProjection view;
    view.u_ = u, view.v_ = v;
    view.scale_ = scale, view.ox_ = ox, view.oy_ = oy;
    view.width_ = width, view.height_ = height;
    return view;
}

std::optional<ViewProjection> ViewProjection::Perspective(const ZtNvCamera& camera,
                                                          const std::vector<ZtLPlane3f>& clipPlanes,
                                                          int width) {
    ZtLFrustum3f frustum;
    const double aspect = camera.GetAspectRatio();
    if (!camera.Frustum(&frustum, 0.0) || !(width > 0))
        return std::nullopt;
    ViewProjection view;
    view.perspective_ = true;
    view.width_ = width;
    view.height_ = std::max(1, static_cast<int>(std::lround(width / aspect)));
    view.frustum_ = frustum.GetMatrix();
    view.eye_ = camera.GetPosition();
    view.viewDir_ = camera.ViewDir();
    view.pixelsAtUnitDepth_ = view.height_ / (2 * camera.GetHalfHeight());
    view.right_ = frustum.GetRight();
    view.up_ = frustum.GetUp();
    view.left_ = frustum.GetWindowLeft(), view.rightEdge_ = frustum.GetWindowRight();
    view.bottom_ = frustum.GetWindowBottom(), view.top_ = frustum.GetWindowTop();
    view.near_ = camera.GetNear();
    // In front of the near distance, so that no kept point meets the eye's own plane.
    view.keep_.emplace_back(ZtLUnitVec3f(view.viewDir_),
                            view.viewDir_.Dot(view.eye_) + camera.GetNear());
    view.keep_.insert(view.keep_.end(), clipPlanes.begin(), clipPlanes.end());
    return view;
}

bool ViewProjection::Clip(ZtLPos3f* a, ZtLPos3f* b) const {
    for (const ZtLPlane3f& plane : keep_) {
        const double da = plane.SignedDistance(*a), db = plane.SignedDistance(*b);
        if (!(da >= 0) && !(db >= 0))
            return false;
        if (da >= 0 && db >= 0)
            continue;
        if (!std::isfinite(da) || !std::isfinite(db))
            return false;
        const ZtLPos3f cut = *a + (*b - *a) * (da / (da - db));
        (da < 0 ? *a : *b) = cut;
    }
    return true;
}

std::vector<ZtLPlane3f> ViewProjection::MarkBounds() const {
    // A mark is the square of half side s * pixelsAtUnitDepth / (2 depth) about its
    // centre's pixel; a step of s * pixelsAtUnitDepth / (2 k) along the window's axis at the
    // centre's depth moves the pixel that far, k being the pixels a unit of the window
    // at distance 1 takes. While that step is under s, a point within s of the centre
    // lies as far out as the mark's edge.
    const double across = width_ / (rightEdge_ - left_), upwards = height_ / (top_ - bottom_);
    if (!perspective_ || !(near_ > 0) || !(pixelsAtUnitDepth_ <= 1.5 * across) ||
        !(pixelsAtUnitDepth_ <= 1.5 * upwards))
        return {};
    constexpr double kMarginPixels = 2;
    const double left = left_ - kMarginPixels / across;
    const double right = rightEdge_ + kMarginPixels / across;
    const double bottom = bottom_ - kMarginPixels / upwards;
    const double top = top_ + kMarginPixels / upwards;
    // The window's sides as planes through the eye: x / depth within left..right, and
    // likewise y.
    std::vector<ZtLPlane3f> bounds = keep_;
    for (const ZtLVec3f& normal : {right_ - viewDir_ * left, viewDir_ * right - right_,
                                   up_ - viewDir_ * bottom, viewDir_ * top - up_}) {
        if (!(normal.Length() > 0))
            return {};
        bounds.emplace_back(ZtLUnitVec3f(normal), eye_);
    }
    return bounds;
}
