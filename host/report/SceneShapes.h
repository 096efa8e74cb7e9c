#pragma once
#include "ztlddgn/ZtDgnGeometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

struct ReportScene;

// Elements drawn as shapes at most; the smallest of the rest are drawn as pixels, so that a
// page of a big scene stays small enough to load quickly.
constexpr std::size_t kMaxSceneShapes = 20000;

// An element drawn as what it is: a leaf of the scene (an element without components)
// with its geometry in scene coordinates, and the element it is part of (the outermost
// cell or complex element holding it, or itself).
struct SceneShape {
    std::uint32_t element;
    std::uint32_t top;
    ZtDgnGeometry geometry;
};

// Which leaves are drawn as shapes: those at least `minimumSize` scene units across, the
// biggest first up to kMaxSceneShapes; their numbers, ascending.
std::vector<std::uint32_t> ChooseShapes(const ReportScene& scene, double minimumSize);

// The shapes of the chosen elements, read from the scene's source in their order; an
// element whose geometry can't be had, or that draws nothing, is drawn as the edges of
// its box.
std::vector<SceneShape> ReadSceneShapes(const ReportScene& scene,
                                        const std::vector<std::uint32_t>& chosen);

// The outermost element that holds each element (itself for one that stands alone), for
// every element of the scene.
std::vector<std::uint32_t> TopElements(const ReportScene& scene);
