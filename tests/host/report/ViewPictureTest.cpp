// What a view draws of the scene: shapes projected and cut, arcs in pieces fit for their
// size, cones by their outline, text by legibility, and marks for the rest.
#include "report/ViewPicture.h"
#include "ReportTestScenes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

const ViewProjection kPlan = ViewProjection::Orthographic(0, 1, 10.0, 0, 200, 200, 200);

ReportScene LeafScene(std::size_t count) {
    ReportScene scene;
    for (std::size_t i = 0; i < count; ++i)
        scene.elements.push_back({ZtLBox3f({0, 0, 0}, {1, 1, 1}), 1, 2});
    return scene;
}

ViewPicture Draw(const ZtDgnGeometry& g, const ViewProjection& view = kPlan) {
    const ReportScene scene = LeafScene(1);
    return DrawScene(scene, {{0, 0, g}}, {true}, view);
}

ZtDgnArc Circle(const ZtLPos3f& centre, double radius, const ZtLVec3f& a = {1, 0, 0},
                const ZtLVec3f& b = {0, 1, 0}) {
    return {centre, a * radius, b * radius, 0, 2 * std::numbers::pi};
}

TEST(ViewPicture, PolylinesKeepTheirVerticesAndCutWhereTheViewEnds) {
    const ViewPicture flat = Draw(Polyline({{0, 0, 0}, {5, 0, 3}, {5, 5, 0}}, true));
    ASSERT_EQ(flat.strokes.size(), 1u);
    EXPECT_TRUE(flat.strokes[0].closed);
    EXPECT_EQ(flat.points, (std::vector<ZtLPos2f>{{0, 200}, {50, 200}, {50, 150}}));

    // Through the eye of a camera looking along +x: the part behind it goes, and a closed
    // run that the view cuts is no longer closed.
    const auto view = ViewProjection::Perspective(LookingAt({0, 0, 0}, {1, 0, 0}), {}, 100);
    const ViewPicture cut =
        Draw(Polyline({{-5, 1, 0}, {5, 1, 0}, {5, -1, 0}, {-5, -1, 0}}, true), *view);
    ASSERT_EQ(cut.strokes.size(), 1u);
    EXPECT_FALSE(cut.strokes[0].closed);
    EXPECT_EQ(cut.strokes[0].count, 4u);
    // A run that leaves the view and comes back is two strokes.
    const ViewPicture twice =
        Draw(Polyline({{5, 1, 0}, {-5, 1, 0}, {-5, -1, 0}, {5, -1, 0}}), *view);
    EXPECT_EQ(twice.strokes.size(), 2u);
}

TEST(ViewPicture, ArcsGetMorePiecesTheBiggerTheyLook) {
    const ViewPicture small = Draw({{}, {Circle({10, 10, 0}, 0.5)}, {}, {}});
    const ViewPicture big = Draw({{}, {Circle({10, 10, 0}, 9)}, {}, {}});
    ASSERT_EQ(small.strokes.size(), 1u);
    ASSERT_EQ(big.strokes.size(), 1u);
    EXPECT_TRUE(big.strokes[0].closed);
    EXPECT_GT(big.strokes[0].count, 2 * small.strokes[0].count);
    // Every piece lies on the circle, and no chord strays a quarter pixel from it.
    const double step = 2 * std::numbers::pi / big.strokes[0].count;
    EXPECT_LT(90 * (1 - std::cos(step / 2)), 0.25);
    for (const ZtLPos2f& p : big.points)
        EXPECT_NEAR(std::hypot(p.x - 100, p.y - 100), 90, 1e-9);
    // An open arc runs from its start to its end.
    ZtDgnArc quarter = Circle({0, 0, 0}, 10);
    quarter.start = 0;
    quarter.sweep = std::numbers::pi / 2;
    const ViewPicture arc = Draw({{}, {quarter}, {}, {}});
    EXPECT_FALSE(arc.strokes[0].closed);
    EXPECT_EQ(arc.points.front(), ZtLPos2f(100, 200));
    EXPECT_NEAR(arc.points.back().x, 0, 1e-9);
    EXPECT_NEAR(arc.points.back().y, 100, 1e-9);
}

// A standing cylinder seen from above is its circle; from the side, the rectangle that
// holds both its ends.
TEST(ViewPicture, ConesAreOutlinedByTheirEnds) {
    const ZtDgnCone cylinder = {Circle({10, 10, 0}, 4), Circle({10, 10, 8}, 4)};
    const ViewPicture plan = Draw({{}, {}, {cylinder}, {}});
    ASSERT_EQ(plan.strokes.size(), 3u); // the outline, then both ends
    for (std::uint32_t i = 0; i < plan.strokes[0].count; ++i) {
        const ZtLPos2f& p = plan.points[plan.strokes[0].first + i];
        EXPECT_NEAR(std::hypot(p.x - 100, p.y - 100), 40, 1e-9);
    }
    const ViewPicture side =
        Draw({{}, {}, {cylinder}, {}}, ViewProjection::Orthographic(0, 2, 10.0, 0, 200, 200, 200));
    double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
    for (std::uint32_t i = 0; i < side.strokes[0].count; ++i) {
        const ZtLPos2f& p = side.points[side.strokes[0].first + i];
        left = std::min(left, p.x), right = std::max(right, p.x);
        top = std::min(top, p.y), bottom = std::max(bottom, p.y);
    }
    // Within the pieces' quarter pixel of the circles' sides.
    EXPECT_NEAR(left, 60, 0.25);
    EXPECT_NEAR(right, 140, 0.25);
    EXPECT_NEAR(top, 120, 1e-9);
    EXPECT_NEAR(bottom, 200, 1e-9);
}

TEST(ViewPicture, TextKeepsItsLineAndTellsItsHeight) {
    ZtDgnGeometry g;
    g.texts.push_back({{1, 1, 0}, {0.5, 0, 0}, {0, 1, 0}, "V-\u00c4"});
    const ViewPicture plan = Draw(g);
    ASSERT_EQ(plan.texts.size(), 1u);
    const PictureText& t = plan.texts[0];
    EXPECT_EQ(t.origin, ZtLPos2f(10, 190));
    EXPECT_EQ(t.across, ZtLPos2f(15, 0)); // three characters, not four bytes
    EXPECT_EQ(t.up, ZtLPos2f(0, -10));
    EXPECT_DOUBLE_EQ(t.Height(), 10);
    // Seen edge on, it has no height.
    const ViewPicture side = Draw(g, ViewProjection::Orthographic(0, 2, 10.0, 0, 200, 200, 200));
    EXPECT_DOUBLE_EQ(side.texts[0].Height(), 0);
}

// Shapes under a pixel in a view, the leaves that are no shapes and the shapes past the
// view's share become marks; cells and complex headers never do.
TEST(ViewPicture, WhatIsNoShapeHereIsMarked) {
    ReportScene scene = LeafScene(5);
    scene.elements[1].components = 1; // element 2 is its component
    scene.elements[3].box = ZtLBox3f({2, 2, 0}, {4, 3, 0});
    std::vector<SceneShape> shapes = {{0, 0, Polyline({{0, 0, 0}, {0.05, 0, 0}})},
                                      {4, 4, Polyline({{10, 10, 0}, {15, 10, 0}})}};
    const std::vector<bool> isShape = {true, false, false, false, true};
    ViewPicture picture = DrawScene(scene, shapes, isShape, kPlan);
    EXPECT_EQ(picture.strokes.size(), 1u);
    ASSERT_EQ(picture.marks.size(), 3u);
    EXPECT_EQ(picture.marks[0].element, 0u); // the tiny shape, by what it drew
    EXPECT_FLOAT_EQ(picture.marks[0].x1, 0.5f);
    EXPECT_EQ(picture.marks[1].element, 2u);
    EXPECT_EQ(picture.marks[2].element, 3u);
    EXPECT_FLOAT_EQ(picture.marks[2].x0, 20);
    EXPECT_FLOAT_EQ(picture.marks[2].y0, 170);
    EXPECT_FLOAT_EQ(picture.marks[2].x1, 40);
    EXPECT_FLOAT_EQ(picture.marks[2].y1, 180);
    // With room for one shape, the bigger one (by its box) stays.
    scene.elements[4].box = ZtLBox3f({10, 10, 0}, {15, 10, 0});
    shapes[0].geometry = Polyline({{0, 0, 0}, {1, 1, 0}});
    picture = DrawScene(scene, shapes, isShape, kPlan, 1);
    ASSERT_EQ(picture.strokes.size(), 1u);
    EXPECT_EQ(picture.strokes[0].shape, 1u);
    EXPECT_EQ(picture.marks.front().element, 0u);
}

TEST(ViewPicture, PinsStandAtTheirPointsOrAsTheCameraMapsThem) {
    ReportScene scene;
    ReportTag placed;
    placed.id = 7;
    placed.placed = true;
    placed.position = {3, 4, 0};
    placed.window = {0.25, 0.5};
    placed.windowB = {0.75, 1};
    ReportTag behind = placed;
    behind.id = 8;
    behind.position = {-20, 0, 0};
    ReportTag loose;
    loose.id = 9;
    scene.views.push_back(
        {"v", LookingAt({-10, 0, 0}, {0, 0, 0}), {}, {placed, behind, loose}, {}});
    ViewPicture plan;
    AddScenePins(scene, kPlan, &plan);
    ASSERT_EQ(plan.pins.size(), 2u);
    EXPECT_EQ(plan.pins[0].anchor, ZtLPos2f(30, 160));
    EXPECT_EQ(plan.pins[0].head, plan.pins[0].anchor);

    const auto view = ViewProjection::Perspective(scene.views[0].camera, {}, 200);
    ViewPicture saved;
    AddSavedViewPins(scene.views[0], *view, &saved);
    ASSERT_EQ(saved.pins.size(), 1u); // the tag behind the eye has no pin
    EXPECT_EQ(saved.pins[0].tag, 7u);
    EXPECT_EQ(saved.pins[0].anchor, ZtLPos2f(50, 100));
    EXPECT_EQ(saved.pins[0].head, ZtLPos2f(150, 0));
}

} // namespace
