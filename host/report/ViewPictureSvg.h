#pragma once
#include "report/ViewPicture.h"

#include <string>
#include <vector>

struct ReportScene;

// Characters at least this high on the screen are shown as text, lower ones as the box of
// their line.
constexpr double kLegiblePixels = 4;

// The picture's shapes as SVG paths, one for each shape's run of strokes, classed by the
// element's level and colour number ("l12 c2"). data-e names the outermost element that
// holds it, data-c the element itself where that differs.
void AppendShapesSvg(std::string& out, const ReportScene& scene,
                     const std::vector<SceneShape>& shapes, const ViewPicture& picture);

// The picture's lines of text, each a group of the box of its line and the text itself
// stretched onto it, classed as the shapes are and "legible" where its characters reach
// kLegiblePixels; data-h holds their height in pixels.
void AppendTextsSvg(std::string& out, const ReportScene& scene,
                    const std::vector<SceneShape>& shapes, const ViewPicture& picture);

// The picture's pins: each a group of its tag's number with its point (data-anchor, "x
// y") and where its head wants to be (data-head), drawn there with a leader between them;
// the page's script moves heads apart that would overlap.
void AppendPinsSvg(std::string& out, const ViewPicture& picture);
