#include "report/ReportPage.h"

#include "report/PaletteRaster.h"
#include "report/PicturePainter.h"
#include "report/ReportHtml.h"
#include "report/ReportPageLayout.h"
#include "report/ReportPageParts.h"
#include "report/ReportScene.h"
#include "report/SceneMarkIndex.h"
#include "report/SceneRasters.h"
#include "report/ViewPictureSvg.h"
#include "ztutil/ZtUFile.h"
#include "ztutil/ZtUParallel.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

// The page's style sheet and scripts, compiled in from ReportPage.css and the .js files.
extern const char kReportPageStyle[];
extern const char kReportPageOverlayScript[];
extern const char kReportPageNavigationScript[];
extern const char kReportPageScript[];

namespace {

// The width of a saved view's drawing, and the most it may be high.
constexpr int kSavedViewWidth = 560;
constexpr int kSavedViewMaxHeight = 460;
// The shapes of all saved views' drawings together, at most, and of one at least: a
// review of many views keeps its page small enough to load.
constexpr std::size_t kSavedViewShapes = 30000;
constexpr std::size_t kSavedViewMinShapes = 1000;
constexpr Rgba kHighlight = {255, 196, 0, 255};
// Saved views' figures drawn at once for each thread before they join the page.
constexpr std::size_t kFiguresAThread = 8;
// Bytes of the page converted and written at a time.
constexpr std::size_t kWritePiece = std::size_t{1} << 20;
// The permission argument of a new file: read and write, as the host's file layer takes it.
constexpr int kReadWrite = 0x180;

class PageWriter {
public:
    PageWriter(const ReportScene& scene, std::size_t threads)
        : scene_(scene), threads_(threads), layout_(MakePageLayout(scene)),
          chosen_(ChooseShapes(scene, 1 / layout_.scale)), shapes_(ReadSceneShapes(scene, chosen_)),
          isShape_(scene.elements.size(), false) {
        for (std::uint32_t element : chosen_)
            isShape_[element] = true;
        for (const ReportElement& e : scene.elements) {
            keys_.levels[e.level] = true;
            keys_.colours[e.colour] = true;
        }
        for (int byColour = 0; byColour < 2; ++byColour) {
            palette_[byColour] = {{0, 0, 0, 0}};
            for (int key = 0; key < (byColour ? kPageColours : kPageLevels); ++key)
                if ((byColour ? keys_.colours.data() : keys_.levels.data())[key] &&
                    palette_[byColour].size() < kPageColours) {
                    index_[byColour][key] = static_cast<std::uint8_t>(palette_[byColour].size());
                    palette_[byColour].push_back(KeyColour(key));
                }
        }
        rasterKeys_.emplace(scene, isShape_, index_[0], index_[1]);
        GatherSets();
    }

    std::string Html() {
        out_ += "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
                "<meta name=\"generator\" content=\"" +
                Escaped(scene_.producer) + "\">\n<title>";
        AppendEscaped(out_, Title());
        out_ += "</title>\n<style>\n";
        out_ += kReportPageStyle;
        KeyStyles();
        out_ += "</style>\n</head>\n<body class=\"by-level\">\n";
        Header();
        out_ += "<main>\n<section id=\"drawings\" aria-label=\"Drawings\">\n";
        AppendColouring(out_, keys_);
        out_ += "<p id=\"nav-help\" class=\"meta\">Drag a drawing or use the arrow keys to move "
                "it; the wheel, the + and − keys or the buttons zoom; 0 or Fit shows it all. "
                "Click an element to see its data.</p>\n";
        SavedViews();
        // Each drawing marks every element of the scene: drawn at once, added in order.
        const std::span<const PageView> views = PageViews();
        std::vector<std::string> drawings(views.size());
        ZtUParallelFor(views.size(), threads_,
                       [&](std::size_t i) { OrthographicView(drawings[i], views[i]); });
        for (const std::string& drawing : drawings)
            out_ += drawing;
        out_ += "</section>\n<aside>\n<section id=\"details\" aria-live=\"polite\">"
                "<h2>Selected element</h2><p class=\"meta\">Click a tag, or an element in a "
                "drawing, to see its data.</p></section>\n";
        AppendTagList(out_, scene_);
        AppendSetList(out_, scene_);
        out_ += "</aside>\n</main>\n";
        AppendPageData(out_, scene_, shapes_, setShapes_);
        out_ += "<script>\n";
        for (const char* script :
             {kReportPageOverlayScript, kReportPageNavigationScript, kReportPageScript})
            out_ += script;
        out_ += "</script>\n</body></html>\n";
        return std::move(out_);
    }

private:
    std::string Title() const {
        return "Design review" + (scene_.controlFile.empty() ? "" : ": " + scene_.controlFile);
    }

    // The colours of the keys this scene uses: elements take theirs as currentColor.
    void KeyStyles() {
        for (int level = 0; level < kPageLevels; ++level)
            if (keys_.levels[level])
                out_ += ".by-level .l" + std::to_string(level) + "{color:" + Hex(KeyColour(level)) +
                        "}\n";
        for (int colour = 0; colour < kPageColours; ++colour)
            if (keys_.colours[colour])
                out_ += ".by-colour .c" + std::to_string(colour) +
                        "{color:" + Hex(KeyColour(colour)) + "}\n";
    }

    void Header() {
        std::size_t tags = 0;
        for (const ReportView& view : scene_.views)
            tags += view.tags.size();
        out_ += "<header>\n<h1>";
        AppendIsolated(out_, Title());
        out_ += "</h1>\n<p id=\"counts\">" + Count(scene_.views.size(), "saved view") + ", " +
                Count(tags, "tag") + ", " + Count(scene_.sets.size(), "selection set") +
                "; scene in " + Escaped(scene_.sceneUnits) + "; written by " +
                Escaped(scene_.producer) + "</p>\n";
        out_ += "<table id=\"models\"><tr><th>Model</th><th>Units</th><th>Elements</th>"
                "<th>Placement</th></tr>\n";
        for (const ReportModel& model : scene_.models)
            out_ += "<tr><td>" + Isolated(model.file) + "</td><td>" + Isolated(model.units) +
                    "</td><td>" + std::to_string(model.elements) + "</td><td>" +
                    Escaped(model.placement) + "</td></tr>\n";
        out_ += "</table>\n";
        if (!scene_.failed.empty()) {
            out_ += "<ul id=\"failed\">\n";
            for (const ReportFailedModel& failed : scene_.failed)
                out_ += "<li><b>" + Escaped(failed.name) +
                        "</b> not loaded: " + Escaped(failed.reason) + "</li>\n";
            out_ += "</ul>\n";
        }
        out_ += "</header>\n";
    }

    static std::string Count(std::size_t n, const char* noun) {
        return std::to_string(n) + " " + noun + (n == 1 ? "" : "s");
    }

    // For each set, its elements among the shapes, for the script.
    void GatherSets() {
        for (std::size_t s = 0; s < scene_.sets.size(); ++s) {
            std::vector<std::uint32_t> shapes;
            for (std::uint32_t element : chosen_)
                if (rasterKeys_->InSet(s, element))
                    shapes.push_back(element);
            setShapes_.push_back(std::move(shapes));
        }
    }

    // A view's figure: its title and zoom buttons over its drawing, which holds the scene
    // (rasters, shapes, texts, and what `scene` adds) under one transform for zoom and
    // pan, and above it what keeps its size on the screen: pins and what `overlay` adds.
    template <class Scene, class Overlay>
    void Figure(std::string& out, const std::string& id, const std::string& title,
                const std::string& attributes, const ViewPicture& picture,
                const std::vector<PaletteRaster>& rasters, bool hidden, Scene scene,
                Overlay overlay) const {
        const std::string width = std::to_string(picture.width);
        const std::string height = std::to_string(picture.height);
        out += "<figure class=\"viewer\" id=\"" + id + "\"" + (hidden ? " hidden" : "") +
               "><figcaption><h2 id=\"title-" + id + "\">" + title +
               "</h2><span class=\"zoom\"><button type=\"button\" data-act=\"in\" "
               "aria-label=\"Zoom in\">+</button><button type=\"button\" data-act=\"out\" "
               "aria-label=\"Zoom out\">−</button><button type=\"button\" data-act=\"fit\">"
               "Fit</button></span></figcaption>\n<svg class=\"view\" id=\"view-" +
               id + "\" xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" +
               height + "\" viewBox=\"0 0 " + width + " " + height +
               "\" tabindex=\"0\" role=\"img\" aria-labelledby=\"title-" + id +
               "\" aria-describedby=\"nav-help\"" + attributes + ">\n<g class=\"scene\">\n";
        Rasters(out, rasters);
        AppendShapesSvg(out, scene_, shapes_, picture);
        AppendTextsSvg(out, scene_, shapes_, picture);
        scene();
        out += "</g>\n<g class=\"overlay\">\n<g class=\"sight\"></g>\n";
        overlay();
        AppendPinsSvg(out, picture);
        out += "</g>\n</svg>\n</figure>\n";
    }

    void OrthographicView(std::string& out, const PageView& view) const {
        const ViewProjection projection = layout_.Projection(view);
        ViewPicture picture = DrawShapes(scene_, shapes_, projection);
        const std::vector<PaletteRaster> rasters =
            rasterKeys_->Paint(picture, MarkedRanges(scene_, projection, nullptr), projection);
        AddScenePins(scene_, projection, &picture);
        const std::string attributes =
            " data-u=\"" + std::to_string(view.u) + "\" data-v=\"" + std::to_string(view.v) +
            "\" data-scale=\"" + Exact(layout_.scale) + "\" data-ox=\"" +
            Exact(layout_.OriginX(view)) + "\" data-oy=\"" + Exact(layout_.OriginY(view)) +
            "\" data-units=\"" + Escaped(scene_.sceneUnits) + "\"";
        Figure(
            out, view.id, view.title, attributes, picture, rasters, false,
            [&] { ModelOutlines(out, projection); },
            [&] {
                out += "<g class=\"labels\">\n";
                for (const ReportModel& model : scene_.models)
                    if (!model.extent.IsEmpty()) {
                        const ZtLPos2f low = projection.Pixel(model.extent.GetMin());
                        const ZtLPos2f high = projection.Pixel(model.extent.GetMax());
                        out += "<text data-x=\"" + Px(low.x) + "\" data-y=\"" + Px(high.y) + "\">" +
                               Escaped(model.file) + "</text>\n";
                    }
                out += "</g>\n<g class=\"scalebar\"><path/><text></text></g>\n";
            });
    }

    // Each model's extent as a dashed outline that tells its name on hover.
    void ModelOutlines(std::string& out, const ViewProjection& projection) const {
        out += "<g class=\"models\">\n";
        for (const ReportModel& model : scene_.models) {
            if (model.extent.IsEmpty())
                continue;
            const ZtLPos2f low = projection.Pixel(model.extent.GetMin());
            const ZtLPos2f high = projection.Pixel(model.extent.GetMax());
            out += "<rect x=\"" + Px(low.x) + "\" y=\"" + Px(high.y) + "\" width=\"" +
                   Px(high.x - low.x) + "\" height=\"" + Px(low.y - high.y) + "\"><title>" +
                   Escaped(model.file) + "</title></rect>\n";
        }
        out += "</g>\n";
    }

    // Each saved view as its camera saw it; the first shown, the others when their tag or
    // name is chosen. The views share out the shapes they may draw. With more than one
    // thread, the figures of a run of views are drawn at once and added in their order.
    void SavedViews() {
        if (scene_.views.empty())
            return;
        const std::size_t budget =
            std::max(kSavedViewMinShapes, kSavedViewShapes / scene_.views.size());
        marks_.emplace(scene_, isShape_);
        out_ += "<section id=\"saved\" aria-label=\"Saved views\">\n";
        const std::size_t views = scene_.views.size();
        const std::size_t threads = std::min(threads_, views);
        if (threads <= 1) {
            for (std::size_t v = 0; v < views; ++v)
                SavedViewFigure(out_, v, budget);
        } else {
            // A run of figures held at once: enough to keep the threads busy, few enough
            // that the page is not held twice.
            const std::size_t run = kFiguresAThread * threads;
            std::vector<std::string> figures(run);
            for (std::size_t first = 0; first < views; first += run) {
                const std::size_t count = std::min(run, views - first);
                ZtUParallelFor(count, threads, [&](std::size_t i) {
                    figures[i].clear();
                    SavedViewFigure(figures[i], first + i, budget);
                });
                for (std::size_t i = 0; i < count; ++i)
                    out_ += figures[i];
            }
        }
        out_ += "</section>\n";
    }

    void SavedViewFigure(std::string& out, std::size_t v, std::size_t budget) const {
        const ReportView& view = scene_.views[v];
        const std::string id = "saved-" + std::to_string(v);
        const std::string title = "Saved view: " + Escaped(view.name);
        const double aspect = view.camera.GetAspectRatio();
        const int width = aspect > 0 && kSavedViewWidth / aspect > kSavedViewMaxHeight
                              ? static_cast<int>(kSavedViewMaxHeight * aspect)
                              : kSavedViewWidth;
        const std::optional<ViewProjection> projection =
            ViewProjection::Perspective(view.camera, view.clipPlanes, width);
        if (!projection) {
            out += "<figure class=\"viewer\" id=\"" + id + "\"" + (v ? " hidden" : "") +
                   "><figcaption><h2>" + title +
                   "</h2></figcaption><p>Its camera gives no view.</p></figure>\n";
            return;
        }
        ViewPicture picture = DrawShapes(scene_, shapes_, *projection, budget);
        const std::vector<PaletteRaster> rasters =
            rasterKeys_->Paint(picture, MarkedRanges(scene_, *projection, &*marks_), *projection);
        AddSavedViewPins(view, *projection, &picture);
        Figure(
            out, id, title, " data-perspective=\"1\"", picture, rasters, v != 0, [] {}, [] {});
    }

    // What the picture marks as pixels, coloured by level and by colour number, and for
    // each selection set its marked elements in the highlight.
    void Rasters(std::string& out, const std::vector<PaletteRaster>& rasters) const {
        Image(out, rasters[0], palette_[0], "raster level", "");
        Image(out, rasters[1], palette_[1], "raster colour", "");
        for (std::size_t s = 0; s + 2 < rasters.size(); ++s)
            Image(out, rasters[2 + s], {{0, 0, 0, 0}, kHighlight}, "overlay",
                  " data-set=\"" + std::to_string(s) + "\" visibility=\"hidden\"");
    }

    static void Image(std::string& out, const PaletteRaster& raster,
                      const std::vector<Rgba>& palette, const char* cls, const std::string& extra) {
        if (!raster.IsUsed())
            return;
        out += std::string("<image class=\"") + cls + "\"" + extra + " x=\"0\" y=\"0\" width=\"" +
               std::to_string(raster.Width()) + "\" height=\"" + std::to_string(raster.Height()) +
               "\" image-rendering=\"pixelated\" href=\"" + raster.DataUri(palette) + "\"/>\n";
    }

    const ReportScene& scene_;
    const std::size_t threads_;
    const PageLayout layout_;
    const std::vector<std::uint32_t> chosen_;
    const std::vector<SceneShape> shapes_;
    std::vector<bool> isShape_;
    // Made for the saved views, for all of them.
    std::optional<SceneMarkIndex> marks_;
    PageKeys keys_;
    std::vector<Rgba> palette_[2];
    std::array<std::uint8_t, kPageColours> index_[2]{};
    std::optional<SceneRasterKeys> rasterKeys_;
    std::vector<std::vector<std::uint32_t>> setShapes_;
    std::string out_;
};

} // namespace

std::string ReportPageHtml(const ReportScene& scene, std::size_t threads) {
    return PageWriter(scene, ZtUThreadsFor(threads)).Html();
}

bool WriteReportPage(const ReportScene& scene, const std::string& path, std::size_t threads) {
    const std::wstring widePath = ZtUSysString::Utf8ToWide(path);
    ZtUFile* file =
        ZtUSysFile::fopenW(widePath.c_str(), ZtUSysFile::kAccessWrite, ZtUSysFile::kCreateAlways,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, kReadWrite);
    if (!file)
        return false;
    // In pieces, each ending before a character's first byte, so that the wide text is
    // never more than one piece of a page that may run to many megabytes.
    const std::string page = ReportPageHtml(scene, threads);
    bool written = true;
    for (std::size_t at = 0; at < page.size() && written;) {
        std::size_t end = std::min(page.size(), at + kWritePiece);
        while (end < page.size() && end > at + 1 &&
               (static_cast<unsigned char>(page[end]) & 0xC0) == 0x80)
            --end;
        const std::wstring piece =
            ZtUSysString::Utf8ToWide(std::string_view(page).substr(at, end - at));
        written = file->Write(piece.data(), piece.size());
        at = end;
    }
    return ZtUSysFile::fclose(file) == 0 && written;
}
