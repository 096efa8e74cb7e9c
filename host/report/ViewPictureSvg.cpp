#include "report/ViewPictureSvg.h"

#include "report/ReportHtml.h"
#include "report/ReportScene.h"

namespace {

// A pin's radius in pixels.
constexpr int kPinRadius = 10;

void Point(std::string& out, char command, const ZtLPos2f& p) {
    out += command;
    AppendCoord(out, p.x);
    out += ' ';
    AppendCoord(out, p.y);
}

std::string Pair(const ZtLPos2f& p) {
    std::string out;
    AppendCoord(out, p.x);
    out += ' ';
    AppendCoord(out, p.y);
    return out;
}

// The attributes that a shape's path and text share: class and element numbers.
void ElementAttributes(std::string& out, const ReportScene& scene, const SceneShape& shape,
                       const char* kind) {
    const ReportElement& e = scene.elements[shape.element];
    out += " class=\"";
    out += kind;
    out += "l" + std::to_string(e.level) + " c" + std::to_string(e.colour) + "\" data-e=\"" +
           std::to_string(shape.top) + "\"";
    if (shape.top != shape.element)
        out += " data-c=\"" + std::to_string(shape.element) + "\"";
}

} // namespace

void AppendShapesSvg(std::string& out, const ReportScene& scene,
                     const std::vector<SceneShape>& shapes, const ViewPicture& picture) {
    out += "<g class=\"shapes\">\n";
    for (std::size_t i = 0; i < picture.strokes.size();) {
        const std::uint32_t shape = picture.strokes[i].shape;
        out += "<path";
        ElementAttributes(out, scene, shapes[shape], "");
        out += " d=\"";
        for (; i < picture.strokes.size() && picture.strokes[i].shape == shape; ++i) {
            const PictureStroke& stroke = picture.strokes[i];
            for (std::uint32_t k = 0; k < stroke.count; ++k)
                Point(out, k ? 'L' : 'M', picture.points[stroke.first + k]);
            if (stroke.closed)
                out += 'Z';
        }
        out += "\"/>\n";
    }
    out += "</g>\n";
}

void AppendTextsSvg(std::string& out, const ReportScene& scene,
                    const std::vector<SceneShape>& shapes, const ViewPicture& picture) {
    out += "<g class=\"texts\">\n";
    for (const PictureText& text : picture.texts) {
        const double height = text.Height();
        out += "<g";
        ElementAttributes(out, scene, shapes[text.shape],
                          height >= kLegiblePixels ? "dt legible " : "dt ");
        out += " data-h=\"" + Px(height) + "\"><path d=\"";
        const ZtLPos2f& o = text.origin;
        Point(out, 'M', o);
        Point(out, 'L', {o.x + text.across.x, o.y + text.across.y});
        Point(out, 'L', {o.x + text.across.x + text.up.x, o.y + text.across.y + text.up.y});
        Point(out, 'L', {o.x + text.up.x, o.y + text.up.y});
        // The text's own units: one character along the baseline, one height upwards.
        std::size_t characters = 0;
        for (char c : text.text)
            characters += (c & 0xC0) != 0x80;
        const double n = static_cast<double>(characters);
        out += "Z\"/><text textLength=\"" + std::to_string(characters) +
               "\" lengthAdjust=\"spacingAndGlyphs\" transform=\"matrix(";
        for (double v : {text.across.x / n, text.across.y / n, -text.up.x, -text.up.y, o.x, o.y}) {
            AppendCoord(out, v);
            out += ' ';
        }
        out.back() = ')';
        out += "\">";
        AppendEscaped(out, text.text);
        out += "</text></g>\n";
    }
    out += "</g>\n";
}

void AppendPinsSvg(std::string& out, const ViewPicture& picture) {
    out += "<g class=\"pins\">\n";
    for (const PicturePin& pin : picture.pins) {
        const std::string id = std::to_string(pin.tag);
        const std::string anchor = Pair(pin.anchor), head = Pair(pin.head);
        out += "<g class=\"pin\" data-tag=\"" + id + "\" data-anchor=\"" + anchor +
               "\" data-head=\"" + head + "\"><path class=\"leader\" d=\"M" + anchor + "L" + head +
               "\"/><circle class=\"anchor\" r=\"2.5\" transform=\"translate(" + anchor +
               ")\"/><g class=\"head\" transform=\"translate(" + head + ")\"><circle r=\"" +
               std::to_string(kPinRadius) + "\"/><text>" + id + "</text></g></g>\n";
    }
    out += "</g>\n";
}
