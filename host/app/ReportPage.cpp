#include "app/ReportPage.h"

#include "app/PngEncoder.h"
#include "app/ReportScene.h"
#include "ztutil/ZtUFile.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

// The largest drawing of a view, in pixels, and the margin around the scene in it.
constexpr double kMaxWidth = 760;
constexpr double kMaxHeight = 440;
constexpr double kMargin = 28;
// Elements drawn as shapes at most; the smallest of the rest join the raster, so that a
// page of a big scene stays small enough to load quickly.
constexpr std::size_t kMaxShapes = 20000;
constexpr std::array<std::uint8_t, 4> kHighlight = {255, 196, 0, 255};

struct ViewAxes {
    const char* id;
    const char* title;
    int u, v;
};

constexpr ViewAxes kViews[] = {
    {"plan", "Plan (looking down)", 0, 1},
    {"south", "South elevation (looking north)", 0, 2},
    {"east", "East elevation (looking west)", 1, 2},
};

double Axis(const ZtLPos3f& p, int axis) {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

// Shortest exact form, for what a reader computes with.
std::string Exact(double value) {
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

// Two decimals: a hundredth of a pixel is more than a browser shows.
std::string Px(double value) {
    char text[32];
    const double rounded = std::round(value * 100) / 100;
    return std::string(text, std::to_chars(text, text + sizeof text, rounded == 0 ? 0.0 : rounded,
                                           std::chars_format::fixed, 2)
                                 .ptr);
}

void AppendEscaped(std::string& out, const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\r':
            // A line end is LF, CR or a pair of them: one line break each.
            out += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
            break;
        case '\n':
            out += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\r')
                ++i;
            break;
        default:
            out += c;
        }
    }
}

std::string Escaped(const std::string& text) {
    std::string out;
    AppendEscaped(out, text);
    return out;
}

// A colour for each key (a level or a colour number), spread round the hue circle.
std::array<std::uint8_t, 4> KeyColour(int key) {
    const double hue = std::fmod(key * 137.508, 360.0) / 60.0;
    const double s = 0.65, l = key % 2 ? 0.42 : 0.55;
    const double c = (1 - std::abs(2 * l - 1)) * s;
    const double x = c * (1 - std::abs(std::fmod(hue, 2.0) - 1));
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(hue)) {
    case 0:
        r = c, g = x;
        break;
    case 1:
        r = x, g = c;
        break;
    case 2:
        g = c, b = x;
        break;
    case 3:
        g = x, b = c;
        break;
    case 4:
        r = x, b = c;
        break;
    default:
        r = c, b = x;
    }
    const double m = l - c / 2;
    auto byte = [m](double v) { return static_cast<std::uint8_t>(std::lround((v + m) * 255)); };
    return {byte(r), byte(g), byte(b), 255};
}

std::string Hex(const std::array<std::uint8_t, 4>& colour) {
    static const char kDigits[] = "0123456789abcdef";
    std::string out = "#";
    for (int i = 0; i < 3; ++i) {
        out += kDigits[colour[i] >> 4];
        out += kDigits[colour[i] & 15];
    }
    return out;
}

// How the scene maps to the views: one scale for all three, so that one scale bar holds.
struct Layout {
    ZtLBox3f extent;
    double scale = 1;

    double X(const ViewAxes& view, const ZtLPos3f& p) const {
        return OriginX(view) + scale * Axis(p, view.u);
    }
    double Y(const ViewAxes& view, const ZtLPos3f& p) const {
        return OriginY(view) - scale * Axis(p, view.v);
    }
    double OriginX(const ViewAxes& view) const {
        return kMargin - scale * Axis(extent.GetMin(), view.u);
    }
    double OriginY(const ViewAxes& view) const {
        return kMargin + scale * Axis(extent.GetMax(), view.v);
    }
    int Width(const ViewAxes& view) const {
        return static_cast<int>(std::ceil(Axis(extent.GetSize(), view.u) * scale + 2 * kMargin));
    }
    int Height(const ViewAxes& view) const {
        return static_cast<int>(std::ceil(Axis(extent.GetSize(), view.v) * scale + 2 * kMargin));
    }
};

Layout MakeLayout(const ReportScene& scene) {
    Layout layout;
    for (const ReportElement& e : scene.elements)
        layout.extent.Extend(e.box);
    for (const ReportView& view : scene.views) {
        layout.extent.Extend(view.eye);
        for (const ReportTag& tag : view.tags)
            if (tag.placed)
                layout.extent.Extend(tag.position);
    }
    if (layout.extent.IsEmpty())
        layout.extent.SetBounds({-1, -1, -1}, {1, 1, 1});
    // A flat scene still gets some room across.
    const ZtLVec3f size = layout.extent.GetSize();
    const double room = std::max({size.x, size.y, size.z, 1e-6}) * 0.05;
    layout.extent.Extend(layout.extent.GetMin() - ZtLVec3f(room, room, room));
    layout.extent.Extend(layout.extent.GetMax() + ZtLVec3f(room, room, room));
    layout.scale = std::numeric_limits<double>::max();
    for (const ViewAxes& view : kViews) {
        const ZtLVec3f s = layout.extent.GetSize();
        layout.scale = std::min({layout.scale, (kMaxWidth - 2 * kMargin) / Axis(s, view.u),
                                 (kMaxHeight - 2 * kMargin) / Axis(s, view.v)});
    }
    return layout;
}

// Which elements are drawn as shapes: those at least a pixel across, the biggest first
// up to the limit. The rest are drawn into the raster.
std::vector<bool> ChooseShapes(const ReportScene& scene, double scale) {
    std::vector<std::uint32_t> big;
    std::vector<double> sizes(scene.elements.size());
    for (std::size_t i = 0; i < scene.elements.size(); ++i) {
        const ZtLVec3f size = scene.elements[i].box.GetSize();
        sizes[i] = std::max({size.x, size.y, size.z}) * scale;
        if (sizes[i] >= 1)
            big.push_back(static_cast<std::uint32_t>(i));
    }
    if (big.size() > kMaxShapes) {
        std::stable_sort(big.begin(), big.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return sizes[a] > sizes[b]; });
        big.resize(kMaxShapes);
    }
    std::vector<bool> shape(scene.elements.size(), false);
    for (std::uint32_t i : big)
        shape[i] = true;
    return shape;
}

// A view's pixel raster: each pixel that elements cover, with a palette index.
struct Raster {
    int width, height;
    std::vector<std::uint8_t> pixels;
    bool used = false;

    Raster(int w, int h) : width(w), height(h), pixels(static_cast<std::size_t>(w) * h, 0) {}

    void Fill(double x0, double y0, double x1, double y1, std::uint8_t index) {
        const int left = std::clamp(static_cast<int>(std::floor(x0)), 0, width - 1);
        const int right = std::clamp(static_cast<int>(std::floor(x1)), 0, width - 1);
        const int top = std::clamp(static_cast<int>(std::floor(y0)), 0, height - 1);
        const int bottom = std::clamp(static_cast<int>(std::floor(y1)), 0, height - 1);
        for (int y = top; y <= bottom; ++y)
            std::fill_n(pixels.begin() + static_cast<std::ptrdiff_t>(y) * width + left,
                        right - left + 1, index);
        used = true;
    }
};

class PageWriter {
public:
    explicit PageWriter(const ReportScene& scene)
        : scene_(scene), layout_(MakeLayout(scene)), shape_(ChooseShapes(scene, layout_.scale)) {
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
        for (const ViewAxes& view : kViews)
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
        out_ += "<style>\n"
                "body{font:14px/1.4 sans-serif;margin:16px;color:#222}\n"
                "h1{font-size:20px;margin:0 0 8px}h2{font-size:16px;margin:12px 0 6px}"
                "h3{font-size:14px;margin:10px 0 4px}\n"
                "table{border-collapse:collapse}td,th{padding:2px 8px;text-align:left;"
                "border-bottom:1px solid #ddd}\n"
                "main{display:flex;gap:16px;align-items:flex-start}aside{max-width:420px}\n"
                "svg.view{display:block;background:#fafafa;border:1px solid #ccc;margin:0 0 "
                "12px}\n"
                ".shapes rect{fill-opacity:.45;stroke-width:.6}\n"
                ".shapes rect.hit{fill:#ffc400!important;stroke:#a07000!important;"
                "fill-opacity:.9}\n"
                ".by-level .raster.colour,.by-colour .raster.level,.by-level .legend.colour,"
                ".by-colour .legend.level{display:none}\n"
                ".pin circle{fill:#fff;stroke:#c00;stroke-width:2}.pin text{font-size:9px;"
                "text-anchor:middle;dominant-baseline:central;fill:#c00}\n"
                ".pin{cursor:pointer}.pin.sel circle{fill:#c00}.pin.sel text{fill:#fff}\n"
                ".sight line{stroke:#06c;stroke-width:1.5;stroke-dasharray:5 3}"
                ".sight circle{fill:#06c}\n"
                "li.tag{cursor:pointer;padding:3px;border-radius:3px}li.tag.sel{background:"
                "#fde2e2}\n"
                ".text{white-space:pre-wrap}.meta{color:#666;font-size:12px}\n"
                ".legend span{display:inline-block;margin:0 8px 2px 0}.legend i{display:"
                "inline-block;width:10px;height:10px;margin-right:3px}\n"
                ".rule{font-family:monospace;font-size:12px}ul{padding-left:18px}\n"
                ".models rect{fill:none;stroke:#888;stroke-dasharray:2 2}.models text{"
                "font-size:10px;fill:#555}\n";
        for (int level = 0; level < 64; ++level)
            if (levels_[level])
                out_ += ".by-level .l" + std::to_string(level) + "{fill:" + Hex(KeyColour(level)) +
                        ";stroke:" + Hex(KeyColour(level)) + "}\n";
        for (int colour = 0; colour < 256; ++colour)
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
        AppendEscaped(out_, Title());
        out_ += "</h1>\n<p id=\"counts\">" + Count(scene_.views.size(), "saved view") + ", " +
                Count(tags, "tag") + ", " + Count(scene_.sets.size(), "selection set") +
                "; scene in " + Escaped(scene_.sceneUnits) + "</p>\n";
        out_ += "<table id=\"models\"><tr><th>Model</th><th>Units</th><th>Elements</th>"
                "<th>Placement</th></tr>\n";
        for (const ReportModel& model : scene_.models)
            out_ += "<tr><td>" + Escaped(model.file) + "</td><td>" + Escaped(model.units) +
                    "</td><td>" + std::to_string(model.elements) + "</td><td>" +
                    Escaped(model.placement) + "</td></tr>\n";
        out_ += "</table>\n</header>\n";
    }

    static std::string Count(std::size_t n, const char* noun) {
        return std::to_string(n) + " " + noun + (n == 1 ? "" : "s");
    }

    void Controls() {
        out_ += "<p>Colour by: <label><input type=\"radio\" name=\"key\" value=\"level\" "
                "checked> level</label> <label><input type=\"radio\" name=\"key\" "
                "value=\"colour\"> colour number</label></p>\n";
        Legend("level", "Level", levels_.data(), 64);
        Legend("colour", "Colour", colours_.data(), 256);
    }

    void Legend(const char* kind, const char* name, const bool* used, int count) {
        out_ += std::string("<p class=\"legend ") + kind + "\">";
        for (int key = 0; key < count; ++key)
            if (used[key])
                out_ += "<span><i style=\"background:" + Hex(KeyColour(key)) + "\"></i>" + name +
                        " " + std::to_string(key) + "</span>";
        out_ += "</p>\n";
    }

    // The scale bar: the longest length of 1, 2 or 5 times a power of ten that fits in
    // 150 pixels.
    void ScaleBar(const ViewAxes& view) {
        double length = std::pow(10.0, std::floor(std::log10(150 / layout_.scale)));
        for (double step : {5.0, 2.0})
            if (length * step * layout_.scale <= 150) {
                length *= step;
                break;
            }
        const double y = layout_.Height(view) - 10;
        out_ += "<g class=\"scalebar\"><line x1=\"10\" y1=\"" + Px(y) + "\" x2=\"" +
                Px(10 + length * layout_.scale) + "\" y2=\"" + Px(y) +
                "\" stroke=\"#222\" stroke-width=\"2\"/><text x=\"10\" y=\"" + Px(y - 5) +
                "\" font-size=\"11\">" + Exact(length) + " " + Escaped(scene_.sceneUnits) +
                "</text></g>\n";
    }

    void View(const ViewAxes& view) {
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
    void ModelOutlines(const ViewAxes& view) {
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
    void Rasters(const ViewAxes& view, int width, int height) {
        for (int byColour = 0; byColour < 2; ++byColour) {
            std::vector<std::array<std::uint8_t, 4>> palette = {{0, 0, 0, 0}};
            std::array<std::uint8_t, 256> index{};
            for (int key = 0; key < (byColour ? 256 : 64); ++key)
                if ((byColour ? colours_.data() : levels_.data())[key] && palette.size() < 256) {
                    index[key] = static_cast<std::uint8_t>(palette.size());
                    palette.push_back(KeyColour(key));
                }
            Raster raster(width, height);
            for (std::size_t i = 0; i < scene_.elements.size(); ++i)
                if (!shape_[i])
                    FillElement(
                        raster, view, scene_.elements[i],
                        index[byColour ? scene_.elements[i].colour : scene_.elements[i].level]);
            Image(raster, palette, byColour ? "raster colour" : "raster level", "");
        }
        for (std::size_t s = 0; s < scene_.sets.size(); ++s) {
            Raster raster(width, height);
            for (std::uint32_t i : scene_.sets[s].elements)
                if (!shape_[i])
                    FillElement(raster, view, scene_.elements[i], 1);
            Image(raster, {{0, 0, 0, 0}, kHighlight}, "overlay",
                  " data-set=\"" + std::to_string(s) + "\" visibility=\"hidden\"");
        }
    }

    void FillElement(Raster& raster, const ViewAxes& view, const ReportElement& e,
                     std::uint8_t index) {
        raster.Fill(layout_.X(view, e.box.GetMin()), layout_.Y(view, e.box.GetMax()),
                    layout_.X(view, e.box.GetMax()), layout_.Y(view, e.box.GetMin()), index);
    }

    void Image(const Raster& raster, const std::vector<std::array<std::uint8_t, 4>>& palette,
               const char* cls, const std::string& extra) {
        if (!raster.used)
            return;
        out_ += std::string("<image class=\"") + cls + "\"" + extra + " x=\"0\" y=\"0\" width=\"" +
                std::to_string(raster.width) + "\" height=\"" + std::to_string(raster.height) +
                "\" image-rendering=\"pixelated\" href=\"data:image/png;base64," +
                Base64(EncodePalettePng(raster.width, raster.height, raster.pixels, palette)) +
                "\"/>\n";
    }

    void TagList() {
        out_ += "<h2>Saved views and tags</h2>\n";
        for (const ReportView& view : scene_.views) {
            out_ += "<h3>";
            AppendEscaped(out_, view.name);
            out_ += "</h3>\n<ul class=\"tags\" data-eye=\"" + Exact(view.eye.x) + " " +
                    Exact(view.eye.y) + " " + Exact(view.eye.z) + "\">\n";
            for (const ReportTag& tag : view.tags) {
                out_ += "<li class=\"tag\" data-tag=\"" + std::to_string(tag.id) + "\"";
                if (tag.placed)
                    out_ += " data-pos=\"" + Exact(tag.position.x) + " " + Exact(tag.position.y) +
                            " " + Exact(tag.position.z) + "\"";
                out_ += "><b>" + std::to_string(tag.id) + "</b> <span class=\"text\">";
                AppendEscaped(out_, tag.text);
                out_ += "</span><br><span class=\"meta\">";
                out_ += tag.modelFile.empty() ? "no element under the tag" : Escaped(tag.modelFile);
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
            AppendEscaped(out_, set.name);
            out_ += "</b></label> <span class=\"count\">" + Count(set.elements.size(), "element") +
                    "</span>";
            if (!set.comment.empty())
                out_ += "<br><span class=\"text meta\">" + Escaped(set.comment) + "</span>";
            for (std::size_t i = 0; i < set.rule.size(); ++i)
                out_ += std::string("<br><span class=\"rule\">") + (i ? "or " : "") +
                        Escaped(set.rule[i]) + "</span>";
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
        out_ += R"JS(const views=[...document.querySelectorAll('svg.view')];
const NS='http://www.w3.org/2000/svg';
function toPx(svg,p){const d=svg.dataset;
return[+d.ox+ +d.scale*p[+d.u],+d.oy- +d.scale*p[+d.v]];}
function showSets(){for(const svg of views){
const shapes=svg.querySelector('.shapes').children;
for(const r of svg.querySelectorAll('.shapes .hit'))r.classList.remove('hit');
for(const box of document.querySelectorAll('input.set')){const s=+box.dataset.set;
for(const k of box.checked?SETS[s]:[])shapes[k].classList.add('hit');
for(const o of svg.querySelectorAll('image.overlay[data-set="'+s+'"]'))
o.setAttribute('visibility',box.checked?'visible':'hidden');}}}
function line(g,a,b){const l=document.createElementNS(NS,'line');
l.setAttribute('x1',a[0]);l.setAttribute('y1',a[1]);l.setAttribute('x2',b[0]);
l.setAttribute('y2',b[1]);g.appendChild(l);}
function selectTag(item){
for(const e of document.querySelectorAll('.sel'))e.classList.remove('sel');
item.classList.add('sel');const id=item.dataset.tag;
const eye=item.parentElement.dataset.eye.split(' ').map(Number);
const pos=item.dataset.pos?item.dataset.pos.split(' ').map(Number):null;
for(const svg of views){const g=svg.querySelector('.sight');g.replaceChildren();
const e=toPx(svg,eye);const c=document.createElementNS(NS,'circle');
c.setAttribute('cx',e[0]);c.setAttribute('cy',e[1]);c.setAttribute('r',5);g.appendChild(c);
if(pos)line(g,e,toPx(svg,pos));
for(const pin of svg.querySelectorAll('.pin[data-tag="'+id+'"]'))pin.classList.add('sel');}}
for(const item of document.querySelectorAll('li.tag'))
item.addEventListener('click',()=>selectTag(item));
for(const pin of document.querySelectorAll('.pin'))pin.addEventListener('click',()=>{
const item=document.querySelector('li.tag[data-tag="'+pin.dataset.tag+'"]');
if(item){selectTag(item);item.scrollIntoView({block:'nearest'});}});
for(const box of document.querySelectorAll('input.set'))box.addEventListener('change',showSets);
for(const radio of document.querySelectorAll('input[name=key]'))
radio.addEventListener('change',()=>{document.body.className='by-'+radio.value;});
</script>
)JS";
    }

    const ReportScene& scene_;
    const Layout layout_;
    const std::vector<bool> shape_;
    std::vector<std::uint32_t> shapeOrdinal_;
    std::array<bool, 64> levels_{};
    std::array<bool, 256> colours_{};
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
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 0x180);
    if (!file)
        return false;
    const std::wstring page = ZtUSysString::Utf8ToWide(ReportPageHtml(scene));
    const bool written = file->Write(page.data(), page.size());
    return ZtUSysFile::fclose(file) == 0 && written;
}
