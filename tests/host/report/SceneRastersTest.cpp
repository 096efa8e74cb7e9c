// A picture's rasters painted last first straight from the scene are those of DrawScene's
// marks painted in order over one another, byte for byte, palette length included.
#include "report/SceneRasters.h"
#include "ReportTestScenes.h"
#include "report/ViewPicture.h"

#include <gtest/gtest.h>

namespace {

// A grid of boxes that overlap their neighbours, twice over at the same places in other
// keys, so that later marks hide earlier ones; a cell, a box too big for any picture, and
// two elements drawn as shapes. Nine sets (two bytes of bits): one of the cell, which
// takes its component, one by level, the rest by number. Level 12 is the highest index,
// held only by an element that a later one hides; colour 3 is past the palette.
struct Fixture {
    ReportScene scene;
    std::vector<bool> isShape;
    std::vector<SceneShape> shapes;
    SceneRasterKeys::Indexes level{}, colour{};

    Fixture() {
        for (std::uint32_t copy = 0; copy < 2; ++copy)
            for (std::uint32_t k = 0; k < 160; ++k) {
                const double size = 0.1 + (k % 5) * 0.12;
                const ZtLPos3f low{(k % 16) * 0.5, (k / 16) * 0.5, (k % 3) * 0.2};
                scene.elements.push_back({ZtLBox3f(low, low + ZtLVec3f(size, size, size / 2)),
                                          static_cast<std::uint8_t>(1 + (k + 3 * copy) % 9),
                                          static_cast<std::uint8_t>((k + copy) % 4)});
            }
        scene.elements[73].level = 12; // hidden by element 233, at the same place
        scene.elements[200].components = 1;
        scene.elements[150].box = ZtLBox3f({-1e30, -1e30, -1e30}, {1e30, 1e30, 1e30});
        isShape.assign(scene.elements.size(), false);
        for (std::uint32_t element : {5u, 260u}) {
            isShape[element] = true;
            const ZtLPos3f& low = scene.elements[element].box.GetMin();
            shapes.push_back({element, element, Polyline({low, low + ZtLVec3f(0.3, 0.2, 0)})});
        }
        for (int s = 0; s < 9; ++s) {
            ReportSet set;
            for (std::uint32_t i = 0; i < scene.elements.size(); ++i)
                if ((s == 0 && i == 200) || (s == 1 && scene.elements[i].level == 2) ||
                    (s >= 2 && (i + s) % 4 == 0))
                    set.elements.push_back(i);
            scene.sets.push_back(set);
        }
        for (int i = 1; i < 10; ++i)
            level[i] = static_cast<std::uint8_t>(40 - 3 * i);
        level[12] = 90;
        colour[1] = 11, colour[2] = 12;
    }

    // DrawScene's marks painted in order with Fill, as the page painted them before.
    std::vector<PaletteRaster> InOrder(const ViewPicture& picture) const {
        std::vector<PaletteRaster> rasters(2 + scene.sets.size(),
                                           PaletteRaster(picture.width, picture.height));
        for (const PictureMark& mark : picture.marks) {
            const auto span = rasters[0].Cover(mark.x0, mark.y0, mark.x1, mark.y1);
            if (!span)
                continue;
            const ReportElement& e = scene.elements[mark.element];
            if (level[e.level])
                rasters[0].Fill(*span, level[e.level]);
            if (colour[e.colour])
                rasters[1].Fill(*span, colour[e.colour]);
            for (std::size_t s = 0; s < scene.sets.size(); ++s)
                for (std::uint32_t first : scene.sets[s].elements)
                    if (mark.element >= first &&
                        mark.element <= first + scene.elements[first].components) {
                        rasters[2 + s].Fill(*span, 1);
                        break;
                    }
        }
        return rasters;
    }
};

TEST(SceneRasters, LastFirstFromTheScenePaintsWhatMarksInOrderDo) {
    const Fixture f;
    const SceneRasterKeys keys(f.scene, f.isShape, f.level, f.colour);
    const SceneMarkIndex index(f.scene, f.isShape);
    const ZtLPlane3f cut(ZtLUnitVec3f(1, 0, 0), 3);
    const struct {
        const char* what;
        std::optional<ViewProjection> view;
        const SceneMarkIndex* index;
        std::size_t maxShapes;
    } cases[] = {
        {"along z", ViewProjection::Orthographic(0, 1, 25, 10, 230, 240, 240), nullptr, 10},
        {"along x, one shape marked", ViewProjection::Orthographic(1, 2, 30, 5, 60, 260, 70),
         nullptr, 1},
        {"from above", ViewProjection::Perspective(LookingAt({4, 4, 6}, {4, 4.001, 0}), {}, 200),
         &index, 10},
        {"oblique, clipped",
         ViewProjection::Perspective(LookingAt({-2, -3, 3}, {5, 5, 0}), {cut}, 150), &index, 10},
        {"from far above, a pixel a mark",
         ViewProjection::Perspective(LookingAt({4, 4, 60}, {4, 4.001, 0}), {}, 100), &index, 10},
        {"away from everything",
         ViewProjection::Perspective(LookingAt({4, 4, 6}, {4, 4.001, 20}), {}, 100), &index, 10},
    };
    std::vector<Rgba> palette(256, Rgba{1, 2, 3, 255});
    for (const auto& c : cases) {
        ASSERT_TRUE(c.view) << c.what;
        const ViewPicture whole =
            DrawScene(f.scene, f.shapes, f.isShape, *c.view, c.maxShapes, c.index);
        const std::vector<PaletteRaster> expected = f.InOrder(whole);
        const ViewPicture shapes = DrawShapes(f.scene, f.shapes, *c.view, c.maxShapes);
        const std::vector<PaletteRaster> painted =
            keys.Paint(shapes, MarkedRanges(f.scene, *c.view, c.index), *c.view);
        ASSERT_EQ(painted.size(), expected.size()) << c.what;
        for (std::size_t r = 0; r < painted.size(); ++r) {
            EXPECT_EQ(painted[r].IsUsed(), expected[r].IsUsed()) << c.what << ", raster " << r;
            // The PNG holds every pixel and a palette entry for each index up to the highest.
            EXPECT_EQ(painted[r].Png(palette), expected[r].Png(palette))
                << c.what << ", raster " << r;
        }
    }
    // What the cases must reach to mean anything: the second byte of sets, a cell's
    // component.
    EXPECT_TRUE(
        f.InOrder(DrawScene(f.scene, f.shapes, f.isShape, *cases[0].view, 10))[2 + 8].IsUsed());
    EXPECT_TRUE(keys.InSet(0, 201));
}

} // namespace
