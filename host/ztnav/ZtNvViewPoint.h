#pragma once
#include "ztnav/ZtNvCamera.h"

#include <optional>

// A camera with what a saved view adds to it: a focal distance, a world-up direction,
// and flags telling which parts of the viewpoint are set.
class ZtNvViewPoint {
public:
    // The part flag of a viewpoint that has a focal distance.
    static constexpr unsigned kFocalDistancePart = 8;

    const ZtNvCamera& GetCamera() const { return camera_; }
    // The camera that the view renders with, as a copy the caller may change.
    ZtNvCamera GetRenderCamera() const { return camera_; }
    ZtNvCamera& EditCamera() { return camera_; }
    void SetCamera(const ZtNvCamera& camera) { camera_ = camera; }

    const std::optional<double>& GetFocalDistance() const { return focalDistance_; }
    // Setting or clearing the distance sets or clears its part flag with it.
    void SetFocalDistance(std::optional<double> distance) {
        focalDistance_ = distance;
        parts_ = distance ? parts_ | kFocalDistancePart : parts_ & ~kFocalDistancePart;
    }
    const std::optional<ZtLVec3f>& GetWorldUp() const { return worldUp_; }
    void SetWorldUp(std::optional<ZtLVec3f> up) { worldUp_ = up; }

    unsigned GetParts() const { return parts_; }
    void SetParts(unsigned parts) { parts_ = parts; }
    bool HasPart(unsigned part) const { return (parts_ & part) != 0; }

private:
    ZtNvCamera camera_;
    std::optional<double> focalDistance_;
    std::optional<ZtLVec3f> worldUp_;
    unsigned parts_ = 0;
};
