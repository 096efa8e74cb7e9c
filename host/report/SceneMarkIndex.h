#pragma once
#include "report/ReportScene.h"
#include "ztcore/ZtOcBoxHierarchy.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

class ViewProjection;

// Whether a picture marks the element as the pixels of its box where it is not drawn as
// a shape: an element without components that `isShape` (by element) does not name.
inline bool IsMarkedElement(const ReportScene& scene, const std::vector<bool>& isShape,
                            std::uint32_t element) {
    return scene.elements[element].components == 0 &&
           !(element < isShape.size() && isShape[element]);
}

// The elements a picture marks as the pixels of their boxes (the leaves not drawn as
// shapes), so that a view in perspective finds those whose marks may reach it without
// testing every element of the scene. They are taken in runs of consecutive elements,
// as a file keeps what is near together; a box hierarchy holds each run's reach: the
// boxes about its elements' centres as far each way as the element's largest side. A
// run the hierarchy can't hold (a coordinate out of its range) is always given.
class SceneMarkIndex {
public:
    // `isShape` tells, by element, which are drawn as shapes.
    SceneMarkIndex(const ReportScene& scene, const std::vector<bool>& isShape);

    // Ranges [first, end) of elements, ascending and apart, outside which no element's
    // mark reaches the view's picture; none where the view can't bound its marks.
    using Range = std::pair<std::uint32_t, std::uint32_t>;
    std::optional<std::vector<Range>> RangesInView(const ViewProjection& view) const;

private:
    ZtOcBoxHierarchy runs_;
    std::vector<ZtLBox3f> reaches_; // each run's reach, by run; the hierarchy keeps only ordinals
    std::vector<std::uint32_t> unheld_; // runs the hierarchy can't hold
    std::uint32_t elements_;
};
