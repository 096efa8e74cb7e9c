#pragma once
#include "ztlinear/ZtLVec3f.h"

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

    // The vertical field of view, in radians.
    double GetHeightField() const { return heightField_; }
    void SetHeightField(double radians) { heightField_ = radians; }
    double GetAspectRatio() const { return aspect_; }
    double GetNear() const { return near_; }
    double GetFar() const { return far_; }
    void SetNearFar(double nearDistance, double farDistance) {
        near_ = nearDistance;
        far_ = farDistance;
    }

private:
    ZtLPos3f position_{0, 0, 0};
    ZtLVec3f viewDir_{0, 0, -1};
    ZtLVec3f up_{0, 1, 0};
    double heightField_ = 0.7853981633974483; // 45 degrees
    double aspect_ = 1.0;
    double near_ = 0.01;
    double far_ = 1e6;
};
