// The saved views' marks found through the index: the same pixels as testing every
// element, with far fewer elements looked at.
#include "report/SceneMarkIndex.h"
#include "ReportTestScenes.h"
#include "report/PicturePainter.h"
#include "report/ViewPicture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

// A grid of leaves of many sizes (some long along z, some far bigger than their pitch),
// cells with components, empty and unbounded boxes, and a stretch in scrambled order.
ReportScene GridScene() {
    ReportScene scene;
    std::uint32_t seed = 12345;
    auto next = [&] { return seed = seed * 1103515245u + 12345u, (seed >> 8) % 1000; };
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 80; ++x) {
            const double size = next() < 20 ? 6.0 : 0.02 + next() / 4000.0;
            const double tall = next() < 100 ? 3.0 : size;
            const ZtLPos3f low{x * 0.5, y * 0.5, 0};
            scene.elements.push_back({ZtLBox3f(low, low + ZtLVec3f(size, size, tall)),
                                      static_cast<std::uint8_t>(1 + (x + y) % 5),
                                      static_cast<std::uint8_t>(x % 7)});
        }
    for (std::size_t i = 3000; i < 3800; ++i)
        std::swap(scene.elements[i], scene.elements[3000 + next() % 800]);
    scene.elements[10].components = 2;
    scene.elements[200].box = ZtLBox3f();
    const double inf = std::numeric_limits<double>::infinity();
    scene.elements[300].box = ZtLBox3f({1, 1, 0}, {inf, 2, 1});
    scene.elements[400].box = ZtLBox3f({1e31, 0, 0}, {1e31, 1, 1});
    return scene;
}

// The marks' pixels, in each element's level.
PaletteRaster Paint(const ReportScene& scene, const ViewPicture& picture) {
    PaletteRaster raster(picture.width, picture.height);
    PaintMarks(
        picture, [&](std::uint32_t e) { return scene.elements[e].level; }, &raster);
    return raster;
}

TEST(SceneMarkIndex, LeavesOutOnlyMarksThatMissThePicture) {
    const ReportScene scene = GridScene();
    std::vector<bool> isShape(scene.elements.size(), false);
    isShape[5] = isShape[2500] = true;
    const SceneMarkIndex index(scene, isShape);
    struct Case {
        const char* what;
        ZtNvCamera camera;
        std::vector<ZtLPlane3f> clips;
        double heightField;
        bool fewer; // the index passes over most of what lies ahead
    };
    const ZtLPlane3f cutX(ZtLUnitVec3f(1, 0, 0), 20.0);
    const Case cases[] = {
        {"from above, narrow", LookingAt({10, 10, 4}, {10, 10.001, 0}), {}, 0.5, true},
        {"at the corner", LookingAt({0.2, 0.1, 2}, {0.2, 0.101, 0}), {}, 0.7, true},
        {"low and oblique", LookingAt({5, -2, 0.5}, {20, 20, 0}), {}, 0.9, false},
        {"from inside, clipped", LookingAt({25, 25, 1}, {30, 25, 0}), {cutX}, 0.7, true},
        {"the whole grid", LookingAt({20, 20, 200}, {20, 20.001, 0}), {}, 0.7, false},
    };
    for (const Case& c : cases) {
        ZtNvCamera camera = c.camera;
        camera.SetHeightField(c.heightField);
        for (int width : {120, 301}) {
            const auto view = ViewProjection::Perspective(camera, c.clips, width);
            ASSERT_TRUE(view) << c.what;
            const ViewPicture all = DrawScene(scene, {}, isShape, *view);
            const ViewPicture found = DrawScene(scene, {}, isShape, *view, 0, &index);
            const PaletteRaster a = Paint(scene, all), b = Paint(scene, found);
            std::size_t differ = 0, drawn = 0;
            for (int y = 0; y < a.Height(); ++y)
                for (int x = 0; x < a.Width(); ++x) {
                    differ += a.At(x, y) != b.At(x, y);
                    drawn += a.At(x, y) != 0;
                }
            EXPECT_EQ(differ, 0u) << c.what << " at " << width;
            EXPECT_GT(drawn, 0u) << c.what;
            EXPECT_EQ(a.IsUsed(), b.IsUsed()) << c.what;
            if (c.fewer) {
                EXPECT_LT(found.marks.size() * 2, all.marks.size()) << c.what;
            }
        }
    }
}

TEST(SceneMarkIndex, GivesNoRangesWhereTheViewCantBoundItsMarks) {
    const ReportScene scene = GridScene();
    const SceneMarkIndex index(scene, {});
    EXPECT_FALSE(index.RangesInView(ViewProjection::Orthographic(0, 1, 10, 0, 200, 200, 200)));
    const ReportScene empty;
    EXPECT_EQ(SceneMarkIndex(empty, {}).RangesInView(
                  *ViewProjection::Perspective(LookingAt({0, 0, 1}, {0, 0.001, 0}), {}, 100)),
              std::vector<SceneMarkIndex::Range>{});
}

} // namespace
