#include "report/ViewProjection.h"

#include "ztlinear/ZtLFrustum3f.h"
#include "ztnav/ZtNvCamera.h"

#include <cmath>

namespace {

double Axis(const ZtLPos3f& p, int axis) {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

} // namespace

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
    view.pixelsAtUnitDepth_ = view.height_ / (2 * std::tan(camera.GetHeightField() / 2));
    // In front of the near distance, so that no kept point meets the eye's own plane.
    view.keep_.emplace_back(ZtLUnitVec3f(view.viewDir_),
                            view.viewDir_.Dot(view.eye_) + camera.GetNear());
    view.keep_.insert(view.keep_.end(), clipPlanes.begin(), clipPlanes.end());
    return view;
}

bool ViewProjection::Keeps(const ZtLPos3f& p) const {
    for (const ZtLPlane3f& plane : keep_)
        if (!(plane.SignedDistance(p) >= 0))
            return false;
    return true;
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

ZtLPos2f ViewProjection::Pixel(const ZtLPos3f& p) const {
    if (!perspective_)
        return {ox_ + scale_ * Axis(p, u_), oy_ - scale_ * Axis(p, v_)};
    const ZtLPos3f f = p * frustum_;
    return WindowPixel({(f.x + 1) * 0.5, (f.y + 1) * 0.5});
}

ZtLPos2f ViewProjection::WindowPixel(const ZtLPos2f& window) const {
    return {window.x * width_, (1 - window.y) * height_};
}

double ViewProjection::PixelsPerUnit(const ZtLPos3f& p) const {
    if (!perspective_)
        return scale_;
    const double depth = viewDir_.Dot(p - eye_);
    return depth > 0 ? pixelsAtUnitDepth_ / depth : 0;
}
