#include "ztnav/ZtNvCamera.h"

#include "ztlinear/ZtLFrustum3f.h"

#include <cmath>
#include <numbers>

void ZtNvCamera::SetOrientation(const ZtLVec3f& viewDir, const ZtLVec3f& up) {
    const ZtLVec3f dir = viewDir.Normalized();
    if (dir.Length() == 0)
        return;
    const ZtLVec3f across = up - dir * up.Dot(dir);
    if (across.Length() < ZtLVec::GetResabs())
        return;
    viewDir_ = dir;
    up_ = across.Normalized();
}

void ZtNvCamera::PointAt(const ZtLPos3f& target) {
    const ZtLVec3f to = (target - position_).Normalized();
    if (to.Length() == 0)
        return;
    const ZtLVec3f axis = viewDir_.Cross(to);
    const double sine = axis.Length();
    const double cosine = viewDir_.Dot(to);
    if (sine < ZtLVec::GetResabs()) {
        // Along the line of sight already, or straight behind, where the half turn about
        // up keeps up as it is.
        SetOrientation(to, up_);
        return;
    }
    // The same rotation carries up along (Rodrigues' formula about the unit axis).
    const ZtLVec3f k = axis / sine;
    const ZtLVec3f up = up_ * cosine + k.Cross(up_) * sine + k * (k.Dot(up_) * (1 - cosine));
    SetOrientation(to, up);
}

void ZtNvCamera::AlignUp(const ZtLVec3f& up) {
    const ZtLVec3f across = up - viewDir_ * up.Dot(viewDir_);
    if (across.Length() < ZtLVec::GetResabs())
        return;
    up_ = across.Normalized();
}

int ZtNvCamera::HasValidFrustum(double aspect) const {
    const double ratio = aspect == 0.0 ? aspect_ : aspect;
    return heightField_ > 0 && heightField_ < std::numbers::pi && near_ > 0 && near_ < far_ &&
           ratio > 0;
}

int ZtNvCamera::Frustum(ZtLFrustum3f* frustum, double aspect) const {
    if (!HasValidFrustum(aspect))
        return 0;
    const double ratio = aspect == 0.0 ? aspect_ : aspect;
    frustum->SetPerspective(position_, viewDir_, up_, halfHeight_ * ratio, halfHeight_, near_,
                            far_);
    return 1;
}
