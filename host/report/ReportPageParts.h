#pragma once
#include "report/SceneShapes.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct ReportScene;

// The parts of the review page besides its drawings, each appended to the page.

// DGN levels run from 0 to 63, colour numbers from 0 to 255.
constexpr int kPageLevels = 64;
constexpr int kPageColours = 256;

// The levels and colour numbers that the scene's elements use.
struct PageKeys {
    std::array<bool, kPageLevels> levels{};
    std::array<bool, kPageColours> colours{};
};

// The choice of colouring and, for each, its legend: folded where it is long, so that it
// never crowds the page.
void AppendColouring(std::string& out, const PageKeys& keys);

// The saved views with their tags, each tag a button that selects it and opens its view.
void AppendTagList(std::string& out, const ReportScene& scene);

// The selection sets, each with its toggle, count, comment and rule.
void AppendSetList(std::string& out, const ReportScene& scene);

// The data the page's script works from, as JSON in a script element: the models' names,
// the names of the element types drawn, each set's elements among the shapes, and what
// the page tells of each element that is drawn or can be clicked (a shape, its outermost
// element, a tag's element): model, index in the file, level, colour, type, components,
// DMRS value and attributes (shared where equal).
void AppendPageData(std::string& out, const ReportScene& scene,
                    const std::vector<SceneShape>& shapes,
                    const std::vector<std::vector<std::uint32_t>>& setShapes);
