// A mark worked out from a view's terms taken once lands on the very bits the view's own
// Pixel, Keeps and PixelsPerUnit give.
#include "report/MarkProjection.h"
#include "ReportTestScenes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace {

// The mark as the view itself makes it.
bool ViewMark(const ViewProjection& view, const ZtLBox3f& box, MarkCorners* mark) {
    const ZtLVec3f size = box.GetSize();
    const ZtLPos3f centre = box.GetMin() + size * 0.5;
    if (box.IsEmpty() || (view.IsPerspective() && !view.Keeps(centre)))
        return false;
    const ZtLPos2f low = view.Pixel(box.GetMin()), high = view.Pixel(box.GetMax());
    const double half = std::max({size.x, size.y, size.z}) * view.PixelsPerUnit(centre) / 2;
    const ZtLPos2f at = view.IsPerspective() ? view.Pixel(centre) : ZtLPos2f{};
    *mark = view.IsPerspective()
                ? MarkCorners{static_cast<float>(at.x - half), static_cast<float>(at.y - half),
                              static_cast<float>(at.x + half), static_cast<float>(at.y + half)}
                : MarkCorners{static_cast<float>(low.x), static_cast<float>(high.y),
                              static_cast<float>(high.x), static_cast<float>(low.y)};
    return true;
}

TEST(MarkProjection, MarksAsTheViewDoes) {
    const ZtLPlane3f cut(ZtLUnitVec3f(0.3, -1, 0.2), -2.5);
    const struct {
        const char* what;
        std::optional<ViewProjection> view;
    } cases[] = {
        {"from above", ViewProjection::Perspective(LookingAt({3, 3, 9}, {3, 3.001, 0}), {}, 333)},
        {"oblique, clipped",
         ViewProjection::Perspective(LookingAt({-4, -3, 2}, {5, 4, 0}, 1.1), {cut}, 217)},
        {"inside the boxes",
         ViewProjection::Perspective(LookingAt({5, 5, 0.5}, {9, 6, 0.4}), {}, 90)},
        {"along z", ViewProjection::Orthographic(0, 1, 13.7, 4.1, 190.3, 200, 200)},
        {"along x", ViewProjection::Orthographic(1, 2, 0.37, -3, 20, 50, 30)},
    };
    std::uint32_t seed = 99;
    auto next = [&] { return seed = seed * 1103515245u + 12345u, ((seed >> 8) % 100000) / 7919.0; };
    std::vector<ZtLBox3f> boxes = {ZtLBox3f(), ZtLBox3f({1, 1, 1}, {1, 1, 1})};
    for (int i = 0; i < 400; ++i) {
        const ZtLPos3f low{next() - 1, next() - 2, next() / 4 - 1};
        boxes.emplace_back(low, low + ZtLVec3f(next() / 9, next() / 13, next() / 5));
    }
    for (const auto& c : cases) {
        ASSERT_TRUE(c.view) << c.what;
        const MarkProjection projection(*c.view);
        int marked = 0;
        for (const ZtLBox3f& box : boxes) {
            MarkCorners ours{}, theirs{};
            const bool has = projection.Mark(box, &ours);
            ASSERT_EQ(has, ViewMark(*c.view, box, &theirs)) << c.what;
            if (!has)
                continue;
            ++marked;
            EXPECT_EQ(std::tie(ours.x0, ours.y0, ours.x1, ours.y1),
                      std::tie(theirs.x0, theirs.y0, theirs.x1, theirs.y1))
                << c.what;
        }
        EXPECT_GT(marked, 100) << c.what;
    }
}

} // namespace
