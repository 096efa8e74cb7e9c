#include "report/ReportHtml.h"
#include "report/ReportPageParts.h"
#include "report/ReportScene.h"

namespace {

// A legend of more keys than this starts folded.
constexpr int kOpenLegendKeys = 16;

std::string Count(std::size_t n, const char* noun) {
    return std::to_string(n) + " " + noun + (n == 1 ? "" : "s");
}

void Legend(std::string& out, const char* kind, const char* name, const char* plural,
            const bool* used, int count) {
    const int keys = static_cast<int>(std::count(used, used + count, true));
    out += std::string("<details class=\"legend ") + kind + "\"" +
           (keys <= kOpenLegendKeys ? " open" : "") + "><summary>" + plural + " (" +
           std::to_string(keys) + ")</summary><ul>";
    for (int key = 0; key < count; ++key)
        if (used[key])
            out += "<li><i style=\"background:" + Hex(KeyColour(key)) + "\"></i>" + name + " " +
                   std::to_string(key) + "</li>";
    out += "</ul></details>\n";
}

std::string Triple(const ZtLPos3f& p) {
    return Exact(p.x) + " " + Exact(p.y) + " " + Exact(p.z);
}

} // namespace

void AppendColouring(std::string& out, const PageKeys& keys) {
    out += "<fieldset id=\"colouring\"><legend>Colour by</legend><label><input type=\"radio\" "
           "name=\"key\" value=\"level\" checked> level</label> <label><input type=\"radio\" "
           "name=\"key\" value=\"colour\"> colour number</label>\n";
    Legend(out, "level", "Level", "Levels", keys.levels.data(), kPageLevels);
    Legend(out, "colour", "Colour", "Colours", keys.colours.data(), kPageColours);
    out += "</fieldset>\n";
}

void AppendTagList(std::string& out, const ReportScene& scene) {
    out += "<h2>Saved views and tags</h2>\n";
    if (scene.views.empty())
        out += "<p class=\"meta\">None.</p>\n";
    for (std::size_t v = 0; v < scene.views.size(); ++v) {
        const ReportView& view = scene.views[v];
        const std::string number = std::to_string(v);
        out += "<h3><button type=\"button\" class=\"open-view\" data-view=\"" + number +
               "\" aria-controls=\"saved-" + number + "\">";
        AppendIsolated(out, view.name);
        out += "</button></h3>\n<ul class=\"tags\" data-view=\"" + number + "\" data-eye=\"" +
               Triple(view.camera.GetPosition()) + "\">\n";
        for (const ReportTag& tag : view.tags) {
            out += "<li class=\"tag\" data-tag=\"" + std::to_string(tag.id) + "\"";
            if (tag.placed)
                out += " data-pos=\"" + Triple(tag.position) + "\"";
            if (tag.element >= 0)
                out += " data-e=\"" + std::to_string(tag.element) + "\"";
            out += "><button type=\"button\"><b>" + std::to_string(tag.id) +
                   "</b> <span class=\"text\">";
            AppendIsolated(out, tag.text);
            out += "</span><br><span class=\"meta\">";
            out += tag.modelFile.empty() ? "no element under the tag" : Isolated(tag.modelFile);
            if (!tag.dmrs.empty())
                out += ", DMRS " + tag.dmrs;
            if (!tag.placed)
                out += "; no 3D position";
            out += "</span></button></li>\n";
        }
        out += "</ul>\n";
    }
}

void AppendSetList(std::string& out, const ReportScene& scene) {
    out += "<h2>Selection sets</h2>\n";
    if (scene.sets.empty())
        out += "<p class=\"meta\">None.</p>\n";
    out += "<ul class=\"sets\">\n";
    for (std::size_t s = 0; s < scene.sets.size(); ++s) {
        const ReportSet& set = scene.sets[s];
        out += "<li><label><input type=\"checkbox\" class=\"set\" data-set=\"" + std::to_string(s) +
               "\"> <b>";
        AppendIsolated(out, set.name);
        out += "</b></label> <span class=\"count\">" + Count(set.elements.size(), "element") +
               "</span>";
        if (!set.comment.empty())
            out += "<br><span class=\"text meta\">" + Isolated(set.comment) + "</span>";
        for (std::size_t i = 0; i < set.rule.size(); ++i)
            out += std::string("<br><span class=\"rule\">") + (i ? "or " : "") +
                   Isolated(set.rule[i]) + "</span>";
        out += "</li>\n";
    }
    out += "</ul>\n";
}
