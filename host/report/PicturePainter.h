#pragma once
#include "report/PaletteRaster.h"
#include "report/ViewPicture.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct ReportScene;

// The palette index an element is painted in (0 leaves it out).
using ElementIndex = std::function<std::uint8_t(std::uint32_t element)>;

// Paints the picture's marks, each in its element's index.
void PaintMarks(const ViewPicture& picture, const ElementIndex& indexOf, PaletteRaster* raster);

// The whole picture as pixels for an image file: strokes, text boxes and marks in their
// elements' indexes, then each pin as a disc with a leader to its point in `pinIndex`.
void PaintPicture(const ViewPicture& picture, const std::vector<SceneShape>& shapes,
                  const ElementIndex& indexOf, std::uint8_t pinIndex, PaletteRaster* raster);

// A saved view as its camera saw it, as a PNG `width` pixels wide (as high as the
// camera's aspect ratio makes it): the scene's biggest elements drawn as shapes, the rest
// as pixels, on a white ground in the colours of their levels, the view's tags as red
// pins. Empty where the view's camera has no valid frustum.
std::string SavedViewPng(const ReportScene& scene, const ReportView& view, int width);
