#pragma once
#include "ztlinear/ZtLVec3f.h"

#include <cmath>

class ZtLFrustum3f;

// A perspective camera in master units. A new camera stands at the origin looking along
// -Z with its up vector +Y.
class ZtNvCamera {
public:
    const ZtLPos3f& GetPosition() const { return position_; }
    void SetPosition(const ZtLPos3f& position) { position_ = position; }
    // The unit direction of sight.
    const ZtLVec3f& ViewDir() const { return viewDir_; }
    const ZtLVec3f& GetUp() const { return up_; }
    // Sets the orientation; `up` is made perpendicular to `viewDir` and both unit length.
    // A degenerate pair leaves the orientation as it was.
    void SetOrientation(const ZtLVec3f& viewDir, const ZtLVec3f& up);
    // Turns the camera by the least rotation that makes it look at `target`; for a
    // target straight behind it, half a turn about its up vector. A target at the
    // camera's own position changes nothing.
    void PointAt(const ZtLPos3f& target);
    // Rolls the camera about its view direction so that its up vector is the part of
    // `up` at right angles to the view. Where that part is shorter than the tolerance
    // (`up` along the line of sight) the roll stays as it is.
    void AlignUp(const ZtLVec3f& up);

    // The vertical field of view, in radians.
    double GetHeightField() const { return heightField_; }
    void SetHeightField(double radians) {
        heightField_ = radians;
        halfHeight_ = std::tan(radians / 2);
    }
    // tan(height field / 2): the half height of the view at unit distance, kept with the
    // field because every projection through the camera needs it.
    double GetHalfHeight() const { return halfHeight_; }
    double GetAspectRatio() const { return aspect_; }
    double GetNear() const { return near_; }
    double GetFar() const { return far_; }
    void SetNear(double distance) { near_ = distance; }
    void SetFar(double distance) { far_ = distance; }
    void SetNearFar(double nearDistance, double farDistance) {
        near_ = nearDistance;
        far_ = farDistance;
    }

    // Nonzero when the camera spans a perspective frustum: 0 < height field < pi and
    // 0 < near < far. An `aspect` of 0.0 means the camera's own aspect ratio; another
    // must be positive.
    int HasValidFrustum(double aspect) const;
    // Fills `frustum` with the camera's view volume and returns nonzero; returns 0 and
    // leaves it alone where HasValidFrustum doesn't hold. `aspect` as there.
    int Frustum(ZtLFrustum3f* frustum, double aspect) const;

private:
    ZtLPos3f position_{0, 0, 0};
    ZtLVec3f viewDir_{0, 0, -1};
    ZtLVec3f up_{0, 1, 0};
    double heightField_ = 0.7853981633974483; // 45 degrees
    double halfHeight_ = std::tan(heightField_ / 2);
    double aspect_ = 1.0;
    double near_ = 0.01;
    double far_ = 1e6;
};
