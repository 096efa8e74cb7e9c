#include "report/ReportPage.h"

#include "report/ReportHtml.h"
#include "report/ReportPageLayout.h"
#include "report/ReportPageRaster.h"
#include "report/ReportScene.h"
#include "ztutil/ZtUFile.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

// The page's style sheet and script, compiled in from ReportPage.css and ReportPage.js.
extern const char kReportPageStyle[];
extern const char kReportPageScript[];

namespace {

// DGN levels run from 0 to 63, colour numbers from 0 to 255.
constexpr int kLevels = 64;
constexpr int kColours = 256;
// A pin's radius in pixels.
constexpr int kPinRadius = 10;
// The scale bar's distance from the view's left and bottom edges, and its text's above it.
constexpr int kScaleBarInset = 10;
constexpr int kScaleBarTextRaise = 5;
constexpr Rgba kHighlight = {255, 196, 0, 255};
// The permission argument of a new file: read and write, as the host's file layer takes it.
constexpr int kReadWrite = 0x180;

class PageWriter {
public:
    explicit PageWriter(const ReportScene& scene)
        : scene_(scene), layout_(MakePageLayout(scene)),
          shape_(ChooseShapes(scene, layout_.scale)) {
        for (const ReportElement& e : scene.elements) {
            levels_[e.level] = true;
            colours_[e.colour] = true;
        }
        for (std::size_t i = 0; i < shape_.size(); ++i)
            if (shape_[i])
                shapeOrdinal_.push_back(static_cast<std::uint32_t>(i));
    }

    std::string Html() {
        out_ += "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<title>";
        AppendEscaped(out_, Title());
        out_ += "</title>\n";
        Style();
        out_ += "</head>\n<body class=\"by-level\">\n";
        Header();
        out_ += "<main>\n<section id=\"views\">\n";
        Controls();
        for (const PageView& view : PageViews())
            View(view);
        out_ += "</section>\n<aside>\n";
        TagList();
        SetList();
        out_ += "</aside>\n</main>\n";
        Script();
        out_ += "</body></html>\n";
        return std::move(out_);
    }

private:
    std::string Title() const {
        return "Design review" + (scene_.controlFile.empty() ? "" : ": " + scene_.controlFile);
    }

    void Style() {
        out_ += "<style>\n";
        out_ += kReportPageStyle;
        // The colours of the keys this scene uses.
        for (int level = 0; level < kLevels; ++level)
            if (levels_[level])
                out_ += ".by-level .l" + std::to_string(level) + "{fill:" + Hex(KeyColour(level)) +
                        ";stroke:" + Hex(KeyColour(level)) + "}\n";
        for (int colour = 0; colour < kColours; ++colour)
            if (colours_[colour])
                out_ += ".by-colour .c" + std::to_string(colour) +
                        "{fill:" + Hex(KeyColour(colour)) + ";stroke:" + Hex(KeyColour(colour)) +
                        "}\n";
        out_ += "</style>\n";
    }

    void Header() {
        std::size_t tags = 0;
        for (const ReportView& view : scene_.views)
            tags += view.tags.size();
        out_ += "<header>\n<h1>";
        AppendIsolated(out_, Title());
        out_ += "</h1>\n<p id=\"counts\">" + Count(scene_.views.size(), "saved view") + ", " +
                Count(tags, "tag") + ", " + Count(scene_.sets.size(), "selection set") +
                "; scene in " + Escaped(scene_.sceneUnits) + "</p>\n";
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

    void Controls() {
        out_ += "<p>Colour by: <label><input type=\"radio\" name=\"key\" value=\"level\" "
                "checked> level</label> <label><input type=\"radio\" name=\"key\" "
                "value=\"colour\"> colour number</label></p>\n";
        Legend("level", "Level", levels_.data(), kLevels);
        Legend("colour", "Colour", colours_.data(), kColours);
    }

    void Legend(const char* kind, const char* name, const bool* used, int count) {
        out_ += std::string("<p class=\"legend ") + kind + "\">";
        for (int key = 0; key < count; ++key)
            if (used[key])
                out_ += "<span><i style=\"background:" + Hex(KeyColour(key)) + "\"></i>" + name +
                        " " + std::to_string(key) + "</span>";
        out_ += "</p>\n";
    }

    // The scale bar in the view's bottom left corner, its length written above it.
    void ScaleBar(const PageView& view) {
        const double length = layout_.ScaleBarLength();
        const double y = layout_.Height(view) - kScaleBarInset;
        const std::string left = std::to_string(kScaleBarInset);
        out_ += "<g class=\"scalebar\"><line x1=\"" + left + "\" y1=\"" + Px(y) + "\" x2=\"" +
                Px(kScaleBarInset + length * layout_.scale) + "\" y2=\"" + Px(y) +
                "\" stroke=\"#222\" stroke-width=\"2\"/><text x=\"" + left + "\" y=\"" +
                Px(y - kScaleBarTextRaise) + "\" font-size=\"11\">" + Exact(length) + " " +
                Escaped(scene_.sceneUnits) + "</text></g>\n";
    }

    void View(const PageView& view) {
        const int width = layout_.Width(view), height = layout_.Height(view);
        out_ += std::string("<h2>") + view.title + "</h2>\n<svg class=\"view\" id=\"view-" +
                view.id + "\" xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
                std::to_string(width) + "\" height=\"" + std::to_string(height) +
                "\" viewBox=\"0 0 " + std::to_string(width) + " " + std::to_string(height) +
                "\" data-u=\"" + std::to_string(view.u) + "\" data-v=\"" + std::to_string(view.v) +
                "\" data-scale=\"" + Exact(layout_.scale) + "\" data-ox=\"" +
                Exact(layout_.OriginX(view)) + "\" data-oy=\"" + Exact(layout_.OriginY(view)) +
                "\">\n";
        Rasters(view, width, height);
        out_ += "<g class=\"shapes\">\n";
        for (std::uint32_t i : shapeOrdinal_) {
            const ReportElement& e = scene_.elements[i];
            const double x0 = layout_.X(view, e.box.GetMin()), x1 = layout_.X(view, e.box.GetMax());
            const double y0 = layout_.Y(view, e.box.GetMax()), y1 = layout_.Y(view, e.box.GetMin());
            // Something flat across this view still shows as a hairline.
            const double w = std::max(x1 - x0, 0.5), h = std::max(y1 - y0, 0.5);
            out_ += "<rect class=\"l" + std::to_string(e.level) + " c" + std::to_string(e.colour) +
                    "\" x=\"" + Px(x0) + "\" y=\"" + Px(y0) + "\" width=\"" + Px(w) +
                    "\" height=\"" + Px(h) + "\"/>\n";
        }
        out_ += "</g>\n";
        ModelOutlines(view);
        out_ += "<g class=\"sight\"></g>\n<g class=\"pins\">\n";
        for (const ReportView& saved : scene_.views)
            for (const ReportTag& tag : saved.tags)
                if (tag.placed)
                    out_ += "<g class=\"pin\" data-tag=\"" + std::to_string(tag.id) +
                            "\" transform=\"translate(" + Px(layout_.X(view, tag.position)) + " " +
                            Px(layout_.Y(view, tag.position)) + ")\"><circle r=\"10\"/><text>" +
                            std::to_string(tag.id) + "</text></g>\n";
        out_ += "</g>\n";
        ScaleBar(view);
        out_ += "</svg>\n";
    }

    // Each model's extent as a dashed outline, named at its top left corner.
    void ModelOutlines(const PageView& view) {
        out_ += "<g class=\"models\">\n";
        for (const ReportModel& model : scene_.models) {
            if (model.extent.IsEmpty())
                continue;
            const double x = layout_.X(view, model.extent.GetMin());
            const double y = layout_.Y(view, model.extent.GetMax());
            out_ += "<rect x=\"" + Px(x) + "\" y=\"" + Px(y) + "\" width=\"" +
                    Px(layout_.X(view, model.extent.GetMax()) - x) + "\" height=\"" +
                    Px(layout_.Y(view, model.extent.GetMin()) - y) + "\"/><text x=\"" + Px(x) +
                    "\" y=\"" + Px(y - 3) + "\">";
            AppendEscaped(out_, model.file);
            out_ += "</text>\n";
        }
        out_ += "</g>\n";
    }

    // The raster of the elements too small to draw, once coloured by level and once by
    // colour number, and for each selection set the pixels of its raster elements.
    void Rasters(const PageView& view, int width, int height) {
        for (int byColour = 0; byColour < 2; ++byColour) {
            std::vector<Rgba> palette = {{0, 0, 0, 0}};
            std::array<std::uint8_t, kColours> index{};
            for (int key = 0; key < (byColour ? kColours : kLevels); ++key)
                if ((byColour ? colours_.data() : levels_.data())[key] &&
                    palette.size() < kColours) {
                    index[key] = static_cast<std::uint8_t>(palette.size());
                    palette.push_back(KeyColour(key));
                }
            PageRaster raster(width, height);
            for (std::size_t i = 0; i < scene_.elements.size(); ++i)
                if (!shape_[i])
                    FillElement(
                        raster, view, scene_.elements[i],
                        index[byColour ? scene_.elements[i].colour : scene_.elements[i].level]);
            Image(raster, palette, byColour ? "raster colour" : "raster level", "");
        }
        for (std::size_t s = 0; s < scene_.sets.size(); ++s) {
            PageRaster raster(width, height);
            for (std::uint32_t i : scene_.sets[s].elements)
                if (!shape_[i])
                    FillElement(raster, view, scene_.elements[i], 1);
            Image(raster, {{0, 0, 0, 0}, kHighlight}, "overlay",
                  " data-set=\"" + std::to_string(s) + "\" visibility=\"hidden\"");
        }
    }

    void FillElement(PageRaster& raster, const PageView& view, const ReportElement& e,
                     std::uint8_t index) {
        raster.Fill(layout_.X(view, e.box.GetMin()), layout_.Y(view, e.box.GetMax()),
                    layout_.X(view, e.box.GetMax()), layout_.Y(view, e.box.GetMin()), index);
    }

    void Image(const PageRaster& raster, const std::vector<Rgba>& palette, const char* cls,
               const std::string& extra) {
        if (!raster.IsUsed())
            return;
        out_ += std::string("<image class=\"") + cls + "\"" + extra + " x=\"0\" y=\"0\" width=\"" +
                std::to_string(raster.Width()) + "\" height=\"" + std::to_string(raster.Height()) +
                "\" image-rendering=\"pixelated\" href=\"" + raster.DataUri(palette) + "\"/>\n";
    }

    void TagList() {
        out_ += "<h2>Saved views and tags</h2>\n";
        for (const ReportView& view : scene_.views) {
            out_ += "<h3>";
            AppendIsolated(out_, view.name);
            out_ += "</h3>\n<ul class=\"tags\" data-eye=\"" + Exact(view.eye.x) + " " +
                    Exact(view.eye.y) + " " + Exact(view.eye.z) + "\">\n";
            for (const ReportTag& tag : view.tags) {
                out_ += "<li class=\"tag\" data-tag=\"" + std::to_string(tag.id) + "\"";
                if (tag.placed)
                    out_ += " data-pos=\"" + Exact(tag.position.x) + " " + Exact(tag.position.y) +
                            " " + Exact(tag.position.z) + "\"";
                out_ += "><b>" + std::to_string(tag.id) + "</b> <span class=\"text\">";
                AppendIsolated(out_, tag.text);
                out_ += "</span><br><span class=\"meta\">";
                out_ +=
                    tag.modelFile.empty() ? "no element under the tag" : Isolated(tag.modelFile);
                if (!tag.dmrs.empty())
                    out_ += ", DMRS " + tag.dmrs;
                if (!tag.placed)
                    out_ += "; no 3D position";
                out_ += "</span></li>\n";
            }
            out_ += "</ul>\n";
        }
    }

    void SetList() {
        out_ += "<h2>Selection sets</h2>\n<ul class=\"sets\">\n";
        for (std::size_t s = 0; s < scene_.sets.size(); ++s) {
            const ReportSet& set = scene_.sets[s];
            out_ += "<li><label><input type=\"checkbox\" class=\"set\" data-set=\"" +
                    std::to_string(s) + "\"> <b>";
            AppendIsolated(out_, set.name);
            out_ += "</b></label> <span class=\"count\">" + Count(set.elements.size(), "element") +
                    "</span>";
            if (!set.comment.empty())
                out_ += "<br><span class=\"text meta\">" + Isolated(set.comment) + "</span>";
            for (std::size_t i = 0; i < set.rule.size(); ++i)
                out_ += std::string("<br><span class=\"rule\">") + (i ? "or " : "") +
                        Isolated(set.rule[i]) + "</span>";
            out_ += "</li>\n";
        }
        out_ += "</ul>\n";
    }

    void Script() {
        // For each set, the places of its elements among the drawn shapes.
        out_ += "<script>\nconst SETS=[";
        for (std::size_t s = 0; s < scene_.sets.size(); ++s) {
            out_ += s ? ",[" : "[";
            bool first = true;
            for (std::uint32_t i : scene_.sets[s].elements) {
                if (!shape_[i])
                    continue;
                const auto at = std::lower_bound(shapeOrdinal_.begin(), shapeOrdinal_.end(), i);
                out_ += (first ? "" : ",") + std::to_string(at - shapeOrdinal_.begin());
                first = false;
            }
            out_ += "]";
        }
        out_ += "];\n";
        out_ += kReportPageScript;
        out_ += "</script>\n";
    }

    const ReportScene& scene_;
    const PageLayout layout_;
    const std::vector<bool> shape_;
    std::vector<std::uint32_t> shapeOrdinal_;
    std::array<bool, kLevels> levels_{};
    std::array<bool, kColours> colours_{};
    std::string out_;
};

} // namespace

std::string ReportPageHtml(const ReportScene& scene) {
    return PageWriter(scene).Html();
}

bool WriteReportPage(const ReportScene& scene, const std::string& path) {
    const std::wstring widePath = ZtUSysString::Utf8ToWide(path);
    ZtUFile* file =
        ZtUSysFile::fopenW(widePath.c_str(), ZtUSysFile::kAccessWrite, ZtUSysFile::kCreateAlways,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, kReadWrite);
    if (!file)
        return false;
    const std::wstring page = ZtUSysString::Utf8ToWide(ReportPageHtml(scene));
    const bool written = file->Write(page.data(), page.size());
    return ZtUSysFile::fclose(file) == 0 && written;
}
