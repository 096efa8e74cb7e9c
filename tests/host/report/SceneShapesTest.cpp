// Which elements are drawn as shapes, and what they draw.
#include "report/SceneShapes.h"
#include "ReportTestScenes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// The biggest leaves of at least the smallest size, in their order; cells and complex
// headers are drawn by their components.
TEST(SceneShapes, TheBiggestLeavesAreChosen) {
    ReportScene scene;
    for (std::size_t i = 0; i < kMaxSceneShapes + 2; ++i)
        scene.elements.push_back({ZtLBox3f({0, 0, 0}, {1.0 + i, 1, 1}), 0, 0});
    scene.elements.push_back({ZtLBox3f({0, 0, 0}, {0.5, 0.5, 0.5}), 0, 0});
    scene.elements.push_back({ZtLBox3f({0, 0, 0}, {1e6, 1, 1}), 0, 0, 2, 1}); // a cell
    scene.elements.push_back({ZtLBox3f(), 0, 0});                             // no range
    const std::vector<std::uint32_t> chosen = ChooseShapes(scene, 1.0);
    ASSERT_EQ(chosen.size(), kMaxSceneShapes);
    EXPECT_EQ(chosen.front(), 2u);
    EXPECT_EQ(chosen.back(), kMaxSceneShapes + 1);
    EXPECT_TRUE(std::is_sorted(chosen.begin(), chosen.end()));
    EXPECT_EQ(ChooseShapes(scene, 1e5).size(), 0u);
}

TEST(SceneShapes, TopElementsHoldTheirComponents) {
    ReportScene scene;
    const std::uint32_t components[] = {0, 3, 1, 0, 0, 0, 5};
    for (std::uint32_t count : components)
        scene.elements.push_back({ZtLBox3f(), 0, 0, 0, count});
    // The last cell claims more components than the scene has.
    EXPECT_EQ(TopElements(scene), (std::vector<std::uint32_t>{0, 1, 1, 1, 1, 5, 6}));
}

// A shape draws what the source gives; where it gives nothing, the edges of its box.
TEST(SceneShapes, ReadShapesFallBackOnTheBox) {
    ReportScene scene;
    for (int i = 0; i < 3; ++i)
        scene.elements.push_back({ZtLBox3f({0, 0, 0}, {1, 2, 3}), 0, 0});
    auto source = std::make_shared<FakeElementSource>();
    source->geometry[0] = Polyline({{0, 0, 0}, {1, 2, 3}});
    source->geometry[1] = ZtDgnGeometry();
    scene.source = source;
    const std::vector<SceneShape> shapes = ReadSceneShapes(scene, {0, 1, 2});
    ASSERT_EQ(shapes.size(), 3u);
    EXPECT_EQ(shapes[0].geometry.polylines.size(), 1u);
    for (int i : {1, 2}) {
        const ZtDgnGeometry& box = shapes[static_cast<std::size_t>(i)].geometry;
        ASSERT_EQ(box.polylines.size(), 6u) << i;
        ZtLBox3f covered;
        for (const ZtDgnPolyline& line : box.polylines)
            for (const ZtLPos3f& p : line.points)
                covered.Extend(p);
        EXPECT_EQ(covered.GetMax(), ZtLPos3f(1, 2, 3));
    }
    scene.source.reset();
    EXPECT_EQ(ReadSceneShapes(scene, {0})[0].geometry.polylines.size(), 6u);
}

} // namespace
