#pragma once
#include "report/ReportScene.h"
#include "ztlddgn/ZtDgnGeometry.h"

#include <map>

// Scenes made in memory for the report's tests.

// A source that hands out the geometry it was given, by element.
class FakeElementSource : public ReportElementSource {
public:
    bool Geometry(std::size_t element, ZtDgnGeometry* out) override {
        const auto found = geometry.find(element);
        if (found == geometry.end())
            return false;
        *out = found->second;
        return true;
    }
    ReportElementFacts Facts(std::size_t element) override {
        const auto found = facts.find(element);
        return found == facts.end() ? ReportElementFacts{} : found->second;
    }

    std::map<std::size_t, ZtDgnGeometry> geometry;
    std::map<std::size_t, ReportElementFacts> facts;
};

// A camera at `eye` looking at `target`, up along +z, as the tag import makes them.
inline ZtNvCamera LookingAt(const ZtLPos3f& eye, const ZtLPos3f& target, double heightField = 0.7) {
    ZtNvCamera camera;
    camera.SetPosition(eye);
    camera.PointAt(target);
    camera.SetHeightField(heightField);
    camera.AlignUp({0, 0, 1});
    return camera;
}

// A polyline element's geometry.
inline ZtDgnGeometry Polyline(std::vector<ZtLPos3f> points, bool closed = false) {
    ZtDgnGeometry g;
    g.polylines.push_back({std::move(points), closed});
    return g;
}
