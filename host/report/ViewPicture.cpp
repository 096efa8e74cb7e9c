#include "report/ViewPicture.h"

#include "report/ReportScene.h"
#include "report/SceneMarkIndex.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace {

// How far an arc's pieces may stray from it, in pixels.
constexpr double kChordTolerance = 0.25;
constexpr int kMinArcPieces = 8;
constexpr int kMaxArcPieces = 1024;
// Pieces of an arc whose centre lies behind the eye, where its size can't be told.
constexpr int kUnsizedArcPieces = 256;

double Cross(const ZtLPos2f& o, const ZtLPos2f& a, const ZtLPos2f& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// The convex hull of the points, anticlockwise from the lowest (monotone chains).
std::vector<ZtLPos2f> Hull(std::vector<ZtLPos2f> p) {
    std::sort(p.begin(), p.end(), [](const ZtLPos2f& a, const ZtLPos2f& b) {
        return a.x < b.x || (a.x == b.x && a.y < b.y);
    });
    if (p.size() < 3)
        return p;
    std::vector<ZtLPos2f> hull(2 * p.size());
    std::size_t k = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        while (k >= 2 && Cross(hull[k - 2], hull[k - 1], p[i]) <= 0)
            --k;
        hull[k++] = p[i];
    }
    for (std::size_t i = p.size() - 1, lower = k + 1; i-- > 0;) {
        while (k >= lower && Cross(hull[k - 2], hull[k - 1], p[i]) <= 0)
            --k;
        hull[k++] = p[i];
    }
    hull.resize(k - 1);
    return hull;
}

std::size_t CodePoints(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

// Paints one shape after another into a picture.
class ShapePainter {
public:
    ShapePainter(const ViewProjection& view, ViewPicture& picture)
        : view_(view), picture_(picture) {}

    // Paints the shape; one under a pixel across becomes a mark of what it covers.
    void Paint(std::uint32_t shape, const SceneShape& s) {
        shape_ = shape;
        const std::size_t points = picture_.points.size();
        const std::size_t strokes = picture_.strokes.size();
        const std::size_t texts = picture_.texts.size();
        for (const ZtDgnPolyline& line : s.geometry.polylines)
            Run(line.points.data(), line.points.size(), line.closed);
        for (const ZtDgnArc& arc : s.geometry.arcs)
            Arc(arc);
        for (const ZtDgnCone& cone : s.geometry.cones)
            Cone(cone);
        for (const ZtDgnText& text : s.geometry.texts)
            Text(text);
        float x0 = INFINITY, y0 = INFINITY, x1 = -INFINITY, y1 = -INFINITY;
        auto cover = [&](const ZtLPos2f& p) {
            x0 = std::min(x0, static_cast<float>(p.x)), x1 = std::max(x1, static_cast<float>(p.x));
            y0 = std::min(y0, static_cast<float>(p.y)), y1 = std::max(y1, static_cast<float>(p.y));
        };
        for (std::size_t i = points; i < picture_.points.size(); ++i)
            cover(picture_.points[i]);
        for (std::size_t i = texts; i < picture_.texts.size(); ++i) {
            const PictureText& t = picture_.texts[i];
            cover(t.origin);
            cover({t.origin.x + t.across.x + t.up.x, t.origin.y + t.across.y + t.up.y});
            cover({t.origin.x + t.across.x, t.origin.y + t.across.y});
            cover({t.origin.x + t.up.x, t.origin.y + t.up.y});
        }
        if (x0 > x1 || std::max(x1 - x0, y1 - y0) >= 1)
            return;
        picture_.points.resize(points);
        picture_.strokes.resize(strokes);
        picture_.texts.resize(texts);
        picture_.marks.push_back({{x0, y0, x1, y1}, s.element});
    }

private:
    // Points joined in order (and back to the first where closed), cut to what the view
    // keeps: each kept piece becomes a stroke of its own.
    void Run(const ZtLPos3f* p, std::size_t n, bool closed) {
        if (n == 0)
            return;
        if (std::all_of(p, p + n, [&](const ZtLPos3f& q) { return view_.Keeps(q); })) {
            const auto first = static_cast<std::uint32_t>(picture_.points.size());
            for (std::size_t i = 0; i < n; ++i)
                picture_.points.push_back(view_.Pixel(p[i]));
            if (n == 1) // a point, drawn as a dot
                picture_.points.push_back(picture_.points.back());
            picture_.strokes.push_back({shape_, first,
                                        static_cast<std::uint32_t>(std::max(n, std::size_t{2})),
                                        closed && n > 2});
            return;
        }
        const std::size_t segments = closed && n > 2 ? n : n - 1;
        bool joined = false; // the last stroke ends where the next segment starts
        for (std::size_t s = 0; s < segments; ++s) {
            ZtLPos3f a = p[s], b = p[(s + 1) % n];
            if (!view_.Clip(&a, &b)) {
                joined = false;
                continue;
            }
            if (!joined || a != p[s]) {
                picture_.strokes.push_back(
                    {shape_, static_cast<std::uint32_t>(picture_.points.size()), 1, false});
                picture_.points.push_back(view_.Pixel(a));
            }
            picture_.points.push_back(view_.Pixel(b));
            ++picture_.strokes.back().count;
            joined = b == p[(s + 1) % n];
        }
    }

    int ArcPieces(const ZtDgnArc& arc) const {
        const double scale = view_.PixelsPerUnit(arc.centre);
        if (!(scale > 0))
            return kUnsizedArcPieces;
        const double radius = std::max(arc.a.Length(), arc.b.Length()) * scale;
        const double step = radius > kChordTolerance ? 2 * std::acos(1 - kChordTolerance / radius)
                                                     : std::numbers::pi;
        const double pieces = std::ceil(std::abs(arc.sweep) / step);
        return std::isfinite(pieces) && step > 0
                   ? static_cast<int>(std::clamp<double>(pieces, kMinArcPieces, kMaxArcPieces))
                   : kMaxArcPieces;
    }

    static bool IsWhole(const ZtDgnArc& arc) {
        return !(std::abs(arc.sweep) < 2 * std::numbers::pi - 1e-12);
    }

    // The arc's points: `pieces` of a whole ellipse, or pieces + 1 from end to end.
    static std::vector<ZtLPos3f> ArcPoints(const ZtDgnArc& arc, int pieces) {
        const bool whole = IsWhole(arc);
        std::vector<ZtLPos3f> points;
        for (int i = 0; i < pieces + (whole ? 0 : 1); ++i) {
            const double t = arc.start + (whole ? 2 * std::numbers::pi : arc.sweep) * i / pieces;
            points.push_back(arc.centre + arc.a * std::cos(t) + arc.b * std::sin(t));
        }
        return points;
    }

    void Arc(const ZtDgnArc& arc) {
        const std::vector<ZtLPos3f> points = ArcPoints(arc, ArcPieces(arc));
        Run(points.data(), points.size(), IsWhole(arc));
    }

    // Both end circles, and the outline of the solid between them: the hull of the two
    // where the view keeps all of it, else four of its lines.
    void Cone(const ZtDgnCone& cone) {
        ZtDgnArc base = cone.base, top = cone.top;
        base.start = top.start = 0;
        base.sweep = top.sweep = 2 * std::numbers::pi;
        const int pieces = std::max(ArcPieces(base), ArcPieces(top));
        const std::vector<ZtLPos3f> a = ArcPoints(base, pieces), b = ArcPoints(top, pieces);
        const auto kept = [&](const ZtLPos3f& p) { return view_.Keeps(p); };
        if (std::all_of(a.begin(), a.end(), kept) && std::all_of(b.begin(), b.end(), kept)) {
            std::vector<ZtLPos2f> pixels;
            for (const std::vector<ZtLPos3f>* end : {&a, &b})
                for (const ZtLPos3f& p : *end)
                    pixels.push_back(view_.Pixel(p));
            const std::vector<ZtLPos2f> hull = Hull(std::move(pixels));
            picture_.strokes.push_back({shape_, static_cast<std::uint32_t>(picture_.points.size()),
                                        static_cast<std::uint32_t>(hull.size()), hull.size() > 2});
            picture_.points.insert(picture_.points.end(), hull.begin(), hull.end());
        } else {
            for (int quarter = 0; quarter < 4; ++quarter) {
                const std::size_t k = static_cast<std::size_t>(pieces * quarter / 4);
                const ZtLPos3f line[2] = {a[k], b[k]};
                Run(line, 2, false);
            }
        }
        Run(a.data(), a.size(), true);
        Run(b.data(), b.size(), true);
    }

    void Text(const ZtDgnText& text) {
        if (text.text.empty())
            return;
        const ZtLVec3f along = text.advance * static_cast<double>(CodePoints(text.text));
        const ZtLPos3f corners[4] = {text.origin, text.origin + along,
                                     text.origin + along + text.height, text.origin + text.height};
        if (!std::all_of(std::begin(corners), std::end(corners),
                         [&](const ZtLPos3f& p) { return view_.Keeps(p); })) {
            Run(corners, 4, true);
            return;
        }
        const ZtLPos2f o = view_.Pixel(corners[0]);
        const ZtLPos2f x = view_.Pixel(corners[1]), y = view_.Pixel(corners[3]);
        picture_.texts.push_back(
            {shape_, o, {x.x - o.x, x.y - o.y}, {y.x - o.x, y.y - o.y}, text.text});
    }

    const ViewProjection& view_;
    ViewPicture& picture_;
    std::uint32_t shape_ = 0;
};

} // namespace

double PictureText::Height() const {
    const double length = std::hypot(across.x, across.y);
    return length > 0 ? std::abs(across.x * up.y - across.y * up.x) / length
                      : std::hypot(up.x, up.y);
}

ViewPicture DrawShapes(const ReportScene& scene, const std::vector<SceneShape>& shapes,
                       const ViewProjection& view, std::size_t maxShapes) {
    ViewPicture picture;
    picture.width = view.Width();
    picture.height = view.Height();
    std::vector<bool> drawn(shapes.size(), true);
    if (shapes.size() > maxShapes) {
        std::vector<double> size(shapes.size());
        std::vector<std::uint32_t> order(shapes.size());
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const ZtLBox3f& box = scene.elements[shapes[i].element].box;
            const ZtLVec3f extent = box.GetSize();
            size[i] = std::max({extent.x, extent.y, extent.z}) *
                      view.PixelsPerUnit(box.GetMin() + extent * 0.5);
            order[i] = static_cast<std::uint32_t>(i);
        }
        std::stable_sort(order.begin(), order.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return size[a] > size[b]; });
        for (std::size_t i = maxShapes; i < order.size(); ++i)
            drawn[order[i]] = false;
    }
    ShapePainter painter(view, picture);
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        MarkCorners c;
        if (drawn[i])
            painter.Paint(static_cast<std::uint32_t>(i), shapes[i]);
        else if (view.Mark(scene.elements[shapes[i].element].box, &c))
            picture.marks.push_back({c, shapes[i].element});
    }
    return picture;
}

std::vector<SceneMarkIndex::Range>
MarkedRanges(const ReportScene& scene, const ViewProjection& view, const SceneMarkIndex* index) {
    if (index)
        if (std::optional<std::vector<SceneMarkIndex::Range>> ranges = index->RangesInView(view))
            return std::move(*ranges);
    return {{0, static_cast<std::uint32_t>(scene.elements.size())}};
}

ViewPicture DrawScene(const ReportScene& scene, const std::vector<SceneShape>& shapes,
                      const std::vector<bool>& isShape, const ViewProjection& view,
                      std::size_t maxShapes, const SceneMarkIndex* index) {
    ViewPicture picture = DrawShapes(scene, shapes, view, maxShapes);
    const std::vector<SceneMarkIndex::Range> marked = MarkedRanges(scene, view, index);
    // Room for a mark of every element the ranges hold, which most of them become.
    std::size_t most = picture.marks.size();
    for (const auto& [first, end] : marked)
        most += end - first;
    picture.marks.reserve(most);
    for (const auto& [first, end] : marked)
        for (std::uint32_t i = first; i < end; ++i) {
            MarkCorners c;
            if (IsMarkedElement(scene, isShape, i) && view.Mark(scene.elements[i].box, &c))
                picture.marks.push_back({c, i});
        }
    return picture;
}

void AddScenePins(const ReportScene& scene, const ViewProjection& view, ViewPicture* picture) {
    for (const ReportView& saved : scene.views)
        for (const ReportTag& tag : saved.tags)
            if (tag.placed && view.Keeps(tag.position)) {
                const ZtLPos2f at = view.Pixel(tag.position);
                picture->pins.push_back({tag.id, at, at});
            }
}

void AddSavedViewPins(const ReportView& saved, const ViewProjection& view, ViewPicture* picture) {
    for (const ReportTag& tag : saved.tags)
        if (tag.placed && view.Keeps(tag.position))
            picture->pins.push_back(
                {tag.id, view.WindowPixel(tag.window), view.WindowPixel(tag.windowB)});
}
