#pragma once
#include "report/SceneMarkIndex.h"
#include "report/SceneShapes.h"
#include "report/ViewProjection.h"

#include <cstdint>
#include <string>
#include <vector>

struct ReportScene;
struct ReportView;

// A stroke of a shape: points[first, first + count) of its picture, joined in order and
// back to the first where it is closed.
struct PictureStroke {
    std::uint32_t shape; // its place in the shapes drawn
    std::uint32_t first, count;
    bool closed;
};

// A line of text in pixels: the lower left corner of the line, the line's extent along
// its baseline and its characters' height across it.
struct PictureText {
    std::uint32_t shape;
    ZtLPos2f origin, across, up;
    std::string text;
    // The height of its characters on the screen.
    double Height() const;
};

// An element drawn as the pixels of its box: too small to show as a shape, or one too many.
struct PictureMark : MarkCorners {
    std::uint32_t element;
};

// A tag's pin: the point it stands for, and where its head goes before pins that would
// overlap are moved apart (the redline's second point in a saved view; the point itself
// in a drawing along an axis).
struct PicturePin {
    std::uint64_t tag;
    ZtLPos2f anchor, head;
};

// What a view shows, in its pixels.
struct ViewPicture {
    int width = 0, height = 0;
    std::vector<ZtLPos2f> points;
    std::vector<PictureStroke> strokes;
    std::vector<PictureText> texts;
    std::vector<PictureMark> marks;
    std::vector<PicturePin> pins;
};

// Draws the scene in the view. Each shape is projected and cut to what the view keeps:
// arcs in pieces fine enough for their size in the view, a cone as its two end circles
// and the outline of both, text as its line (and its box where the view cuts it). A shape
// under a pixel here, and every other element without components, becomes the mark of
// its box. `isShape` tells, by element, which are among `shapes`. Of more than
// `maxShapes` shapes, those that look biggest in the view are drawn, and the rest marked.
// With `index` (made of the same scene and `isShape`), the marks that could not reach the
// picture are left out without a look at their elements.
ViewPicture DrawScene(const ReportScene& scene, const std::vector<SceneShape>& shapes,
                      const std::vector<bool>& isShape, const ViewProjection& view,
                      std::size_t maxShapes = kMaxSceneShapes,
                      const SceneMarkIndex* index = nullptr);

// DrawScene in two parts, for a painter that takes the elements' marks straight from the
// scene: the shapes alone (with the marks of those under a pixel or one too many), and the
// ranges of elements whose marks may reach the picture, of which those IsMarkedElement
// are marked.
ViewPicture DrawShapes(const ReportScene& scene, const std::vector<SceneShape>& shapes,
                       const ViewProjection& view, std::size_t maxShapes = kMaxSceneShapes);
std::vector<SceneMarkIndex::Range>
MarkedRanges(const ReportScene& scene, const ViewProjection& view, const SceneMarkIndex* index);

// The pins of every placed tag of the scene where the view shows its point.
void AddScenePins(const ReportScene& scene, const ViewProjection& view, ViewPicture* picture);
// The pins of the saved view's own tags, where its camera maps them: the point and the
// redline's second point.
void AddSavedViewPins(const ReportView& saved, const ViewProjection& view, ViewPicture* picture);
