#include "report/JsonWriter.h"
#include "report/ReportPageParts.h"
#include "report/ReportScene.h"
#include "ztlddgn/ZtDgnElement.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

// The model that holds the element: the last whose first element is not past it.
std::size_t ModelOf(const ReportScene& scene, std::size_t element) {
    const auto after = std::upper_bound(
        scene.models.begin(), scene.models.end(), element,
        [](std::size_t e, const ReportModel& model) { return e < model.firstElement; });
    return after == scene.models.begin()
               ? 0
               : static_cast<std::size_t>(after - scene.models.begin() - 1);
}

} // namespace

void AppendPageData(std::string& out, const ReportScene& scene,
                    const std::vector<SceneShape>& shapes,
                    const std::vector<std::vector<std::uint32_t>>& setShapes) {
    std::set<std::uint32_t> described;
    std::set<int> types;
    for (const SceneShape& shape : shapes) {
        described.insert(shape.element);
        described.insert(shape.top);
    }
    for (const ReportView& view : scene.views)
        for (const ReportTag& tag : view.tags)
            if (tag.element >= 0 && static_cast<std::size_t>(tag.element) < scene.elements.size())
                described.insert(static_cast<std::uint32_t>(tag.element));
    for (std::uint32_t element : described)
        types.insert(scene.elements[element].type);

    std::string json;
    JsonWriter writer(json);
    writer.BeginObject(true);
    writer.Key("models");
    writer.BeginArray(true);
    for (const ReportModel& model : scene.models)
        writer.String(model.file);
    writer.EndArray();
    writer.Key("types");
    writer.BeginObject(true);
    for (int type : types) {
        writer.Key(std::to_string(type));
        const char* name = ZtDgnTypeName(type);
        writer.String(name ? name : "type " + std::to_string(type));
    }
    writer.EndObject();
    writer.Key("sets");
    writer.BeginArray(true);
    for (const std::vector<std::uint32_t>& set : setShapes) {
        writer.BeginArray(true);
        for (std::uint32_t element : set)
            writer.UInt(element);
        writer.EndArray();
    }
    writer.EndArray();
    // Attribute lists, each written once and named by its place among them.
    std::map<std::vector<ReportAttribute>, std::size_t> lists;
    std::vector<const std::vector<ReportAttribute>*> order;
    writer.Key("elements");
    writer.BeginObject(true);
    for (std::uint32_t element : described) {
        const ReportElement& e = scene.elements[element];
        ReportElementFacts facts;
        if (scene.source)
            facts = scene.source->Facts(element);
        std::int64_t list = -1;
        if (!facts.attributes.empty()) {
            const auto [at, added] = lists.emplace(std::move(facts.attributes), lists.size());
            if (added)
                order.push_back(&at->first);
            list = static_cast<std::int64_t>(at->second);
        }
        writer.Key(std::to_string(element));
        writer.BeginArray(true);
        writer.UInt(ModelOf(scene, element));
        writer.Int(facts.index);
        writer.Int(e.level);
        writer.Int(e.colour);
        writer.Int(e.type);
        writer.UInt(e.components);
        writer.String(facts.dmrs);
        writer.Int(list);
        writer.EndArray();
    }
    writer.EndObject();
    writer.Key("attributes");
    writer.BeginArray(true);
    for (const std::vector<ReportAttribute>* attributes : order) {
        writer.BeginArray(true);
        for (const auto& [name, value] : *attributes) {
            writer.BeginArray(true);
            writer.String(name);
            writer.String(value);
            writer.EndArray();
        }
        writer.EndArray();
    }
    writer.EndArray();
    writer.EndObject();
    // Inside a script element, "</" would end it early.
    out += "<script type=\"application/json\" id=\"page-data\">";
    for (std::size_t i = 0; i < json.size(); ++i) {
        out += json[i];
        if (json[i] == '<' && i + 1 < json.size() && json[i + 1] == '/')
            out += '\\';
    }
    out += "</script>\n";
}
