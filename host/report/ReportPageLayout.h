#pragma once
#include "report/ViewProjection.h"
#include "ztlinear/ZtLBox3f.h"

#include <span>

struct ReportScene;

// How the review page maps the scene to its three drawings: a plan and two elevations,
// each an orthographic view along an axis, all at one scale so that one scale bar holds.

// The largest drawing of a view, in pixels, and the margin around the scene in it.
constexpr double kPageMaxViewWidth = 760;
constexpr double kPageMaxViewHeight = 440;
constexpr double kPageViewMargin = 28;

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
    ViewProjection Projection(const PageView& view) const {
        return ViewProjection::Orthographic(view.u, view.v, scale, OriginX(view), OriginY(view),
                                            Width(view), Height(view));
    }
};

// The layout that fits the scene's elements, eyes and tags into the largest drawings.
PageLayout MakePageLayout(const ReportScene& scene);
