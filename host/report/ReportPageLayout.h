#pragma once
#include "ztlinear/ZtLBox3f.h"

#include <cstddef>
#include <span>
#include <vector>

struct ReportScene;

// How the review page maps the scene to its three drawings: a plan and two elevations,
// each an orthographic view along an axis, all at one scale so that one scale bar holds.

// The largest drawing of a view, in pixels, and the margin around the scene in it.
constexpr double kPageMaxViewWidth = 760;
constexpr double kPageMaxViewHeight = 440;
constexpr double kPageViewMargin = 28;
// Elements drawn as shapes at most; the smallest of the rest join the raster, so that a
// page of a big scene stays small enough to load quickly.
constexpr std::size_t kPageMaxShapes = 20000;
// The longest a scale bar may be, in pixels.
constexpr double kPageScaleBarPixels = 150;

// One drawing: the scene's axes (0 x, 1 y, 2 z) drawn to the right and upwards.
struct PageView {
    const char* id;
    const char* title;
    int u, v;
};

// The plan, the south elevation and the east elevation.
std::span<const PageView> PageViews();

// A coordinate of a point along an axis (0 x, 1 y, 2 z).
double AxisOf(const ZtLPos3f& p, int axis);

struct PageLayout {
    ZtLBox3f extent;  // the scene with some room around it
    double scale = 1; // pixels per scene unit

    double X(const PageView& view, const ZtLPos3f& p) const {
        return OriginX(view) + scale * AxisOf(p, view.u);
    }
    double Y(const PageView& view, const ZtLPos3f& p) const {
        return OriginY(view) - scale * AxisOf(p, view.v);
    }
    double OriginX(const PageView& view) const {
        return kPageViewMargin - scale * AxisOf(extent.GetMin(), view.u);
    }
    double OriginY(const PageView& view) const {
        return kPageViewMargin + scale * AxisOf(extent.GetMax(), view.v);
    }
    int Width(const PageView& view) const;
    int Height(const PageView& view) const;
    // The scale bar's length in scene units: the longest of 1, 2 or 5 times a power of
    // ten that fits in kPageScaleBarPixels.
    double ScaleBarLength() const;
};

// The layout that fits the scene's elements, eyes and tags into the largest drawings.
PageLayout MakePageLayout(const ReportScene& scene);

// Which elements are drawn as shapes: those at least a pixel across, the biggest first
// up to kPageMaxShapes. The rest are drawn into the raster.
std::vector<bool> ChooseShapes(const ReportScene& scene, double scale);
