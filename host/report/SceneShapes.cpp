#include "report/SceneShapes.h"

#include "report/ReportScene.h"

#include <algorithm>

namespace {

// The twelve edges of a box, as its bottom and top faces and the four edges between.
ZtDgnGeometry BoxEdges(const ZtLBox3f& box) {
    const ZtLPos3f& l = box.GetMin();
    const ZtLPos3f& h = box.GetMax();
    ZtDgnGeometry g;
    for (double z : {l.z, h.z})
        g.polylines.push_back({{{l.x, l.y, z}, {h.x, l.y, z}, {h.x, h.y, z}, {l.x, h.y, z}}, true});
    for (const auto& [x, y] : {std::pair{l.x, l.y}, {h.x, l.y}, {h.x, h.y}, {l.x, h.y}})
        g.polylines.push_back({{{x, y, l.z}, {x, y, h.z}}, false});
    return g;
}

} // namespace

std::vector<std::uint32_t> ChooseShapes(const ReportScene& scene, double minimumSize) {
    std::vector<std::uint32_t> big;
    std::vector<double> sizes(scene.elements.size());
    for (std::size_t i = 0; i < scene.elements.size(); ++i) {
        const ReportElement& e = scene.elements[i];
        const ZtLVec3f size = e.box.GetSize();
        sizes[i] = std::max({size.x, size.y, size.z});
        if (e.components == 0 && !e.box.IsEmpty() && sizes[i] >= minimumSize)
            big.push_back(static_cast<std::uint32_t>(i));
    }
    if (big.size() > kMaxSceneShapes) {
        std::stable_sort(big.begin(), big.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return sizes[a] > sizes[b]; });
        big.resize(kMaxSceneShapes);
        std::sort(big.begin(), big.end());
    }
    return big;
}

std::vector<std::uint32_t> TopElements(const ReportScene& scene) {
    std::vector<std::uint32_t> top(scene.elements.size());
    for (std::size_t i = 0; i < scene.elements.size();) {
        const std::size_t end = std::min<std::size_t>(
            scene.elements.size(), i + 1 + std::size_t{scene.elements[i].components});
        std::fill(top.begin() + static_cast<std::ptrdiff_t>(i),
                  top.begin() + static_cast<std::ptrdiff_t>(end), static_cast<std::uint32_t>(i));
        i = end;
    }
    return top;
}

std::vector<SceneShape> ReadSceneShapes(const ReportScene& scene,
                                        const std::vector<std::uint32_t>& chosen) {
    const std::vector<std::uint32_t> top = TopElements(scene);
    std::vector<SceneShape> shapes;
    shapes.reserve(chosen.size());
    for (std::uint32_t element : chosen) {
        SceneShape shape{element, top[element], {}};
        if (!scene.source || !scene.source->Geometry(element, &shape.geometry) ||
            shape.geometry.IsEmpty())
            shape.geometry = BoxEdges(scene.elements[element].box);
        shapes.push_back(std::move(shape));
    }
    return shapes;
}
