#include "ztlinear/ZtLFrustum3f.h"

namespace {

// Sets column `k` to the linear form p -> v . (p - eye) scaled by `scale`, plus `offset`.
void SetColumn(ZtLMatrix4f& m, int k, const ZtLVec3f& v, const ZtLPos3f& eye, double scale,
               double offset) {
    m.Set(0, k, v.x * scale);
    m.Set(1, k, v.y * scale);
    m.Set(2, k, v.z * scale);
    m.Set(3, k, -v.Dot(eye) * scale + offset);
}

} // namespace

void ZtLFrustum3f::SetPerspective(const ZtLPos3f& eye, const ZtLVec3f& viewDir, const ZtLVec3f& up,
                                  double halfWidth, double halfHeight, double nearDistance,
                                  double farDistance) {
    eye_ = eye;
    viewDir_ = viewDir;
    up_ = up;
    left_ = -halfWidth;
    right_ = halfWidth;
    bottom_ = -halfHeight;
    top_ = halfHeight;
    near_ = nearDistance;
    far_ = farDistance;
}

void ZtLFrustum3f::Narrow(double x0, double x1, double y0, double y1) {
    const double width = right_ - left_;
    const double height = top_ - bottom_;
    const double left = left_;
    const double bottom = bottom_;
    left_ = left + x0 * width;
    right_ = left + x1 * width;
    bottom_ = bottom + y0 * height;
    top_ = bottom + y1 * height;
}

ZtLLine3f ZtLFrustum3f::ProjectPointToLine(const ZtLPos2f& window) const {
    const double across = left_ + window.x * (right_ - left_);
    const double upward = bottom_ + window.y * (top_ - bottom_);
    return ZtLLine3f(eye_, viewDir_ + GetRight() * across + up_ * upward);
}

ZtLMatrix4f ZtLFrustum3f::GetMatrix() const {
    // In eye coordinates (xe, ye along right and up, d the depth along the view), the
    // point maps to x = (2 xe / d - (r + l)) / (r - l), likewise y, and
    // z = (f + n) / (f - n) - 2 f n / ((f - n) d). W carries the d.
    const ZtLVec3f right = GetRight();
    ZtLMatrix4f m;
    const double width = right_ - left_;
    const double height = top_ - bottom_;
    const double depth = far_ - near_;
    const ZtLVec3f xForm = right * 2.0 - viewDir_ * (right_ + left_);
    const ZtLVec3f yForm = up_ * 2.0 - viewDir_ * (top_ + bottom_);
    SetColumn(m, 0, xForm, eye_, 1.0 / width, 0.0);
    SetColumn(m, 1, yForm, eye_, 1.0 / height, 0.0);
    SetColumn(m, 2, viewDir_, eye_, (far_ + near_) / depth, -2.0 * far_ * near_ / depth);
    SetColumn(m, 3, viewDir_, eye_, 1.0, 0.0);
    return m;
}
