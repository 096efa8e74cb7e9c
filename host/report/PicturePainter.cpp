#include "report/PicturePainter.h"

#include "report/ReportScene.h"

namespace {

constexpr int kLevels = 64;
// A pin's radius in an image, in pixels.
constexpr double kPinRadius = 6;
constexpr Rgba kWhite = {255, 255, 255, 255};
constexpr Rgba kPinRed = {204, 0, 0, 255};

} // namespace

void PaintMarks(const ViewPicture& picture, const ElementIndex& indexOf, PaletteRaster* raster) {
    for (const PictureMark& mark : picture.marks)
        if (const std::uint8_t index = indexOf(mark.element))
            raster->Fill(mark.x0, mark.y0, mark.x1, mark.y1, index);
}

void PaintPicture(const ViewPicture& picture, const std::vector<SceneShape>& shapes,
                  const ElementIndex& indexOf, std::uint8_t pinIndex, PaletteRaster* raster) {
    PaintMarks(picture, indexOf, raster);
    for (const PictureStroke& stroke : picture.strokes) {
        const std::uint8_t index = indexOf(shapes[stroke.shape].element);
        const ZtLPos2f* p = picture.points.data() + stroke.first;
        for (std::uint32_t i = 0; index && i + 1 < stroke.count + (stroke.closed ? 1 : 0); ++i) {
            const ZtLPos2f& a = p[i];
            const ZtLPos2f& b = p[(i + 1) % stroke.count];
            raster->Line(a.x, a.y, b.x, b.y, index);
        }
    }
    for (const PictureText& text : picture.texts) {
        const std::uint8_t index = indexOf(shapes[text.shape].element);
        const ZtLPos2f o = text.origin;
        const ZtLPos2f c[4] = {o,
                               {o.x + text.across.x, o.y + text.across.y},
                               {o.x + text.across.x + text.up.x, o.y + text.across.y + text.up.y},
                               {o.x + text.up.x, o.y + text.up.y}};
        for (int i = 0; index && i < 4; ++i)
            raster->Line(c[i].x, c[i].y, c[(i + 1) % 4].x, c[(i + 1) % 4].y, index);
    }
    for (const PicturePin& pin : picture.pins) {
        raster->Line(pin.anchor.x, pin.anchor.y, pin.head.x, pin.head.y, pinIndex);
        raster->Disc(pin.anchor.x, pin.anchor.y, 2, pinIndex);
        raster->Disc(pin.head.x, pin.head.y, kPinRadius, pinIndex);
    }
}

std::string SavedViewPng(const ReportScene& scene, const ReportView& view, int width) {
    const std::optional<ViewProjection> projection =
        ViewProjection::Perspective(view.camera, view.clipPlanes, width);
    if (!projection)
        return {};
    const std::vector<std::uint32_t> chosen = ChooseShapes(scene, 0);
    const std::vector<SceneShape> shapes = ReadSceneShapes(scene, chosen);
    std::vector<bool> isShape(scene.elements.size(), false);
    for (std::uint32_t element : chosen)
        isShape[element] = true;
    ViewPicture picture = DrawScene(scene, shapes, isShape, *projection);
    AddSavedViewPins(view, *projection, &picture);
    // Index 0 is the white ground, 1 + level a level's colour, and the last the pins.
    std::vector<Rgba> palette = {kWhite};
    for (int level = 0; level < kLevels; ++level)
        palette.push_back(KeyColour(level));
    palette.push_back(kPinRed);
    PaletteRaster raster(picture.width, picture.height);
    PaintPicture(
        picture, shapes,
        [&](std::uint32_t e) { return static_cast<std::uint8_t>(1 + scene.elements[e].level); },
        static_cast<std::uint8_t>(kLevels + 1), &raster);
    return raster.Png(palette);
}
