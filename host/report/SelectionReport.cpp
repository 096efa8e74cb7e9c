#include "report/SelectionReport.h"
#include "report/ReadableText.h"

#include "report/JsonWriter.h"
#include "report/ReportStream.h"
#include "review/ModelLoad.h"
#include "review/SelectionEvaluation.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztutil/ZtUSysString.h"

void WriteSelectionsJson(JsonWriter& json, const std::vector<SelectionResult>& results) {
    json.BeginArray();
    for (const SelectionResult& result : results) {
        json.BeginObject();
        json.Key("name");
        json.WideString(result.name);
        json.Key("count");
        json.UInt(result.elements.size());
        json.Key("usesAttributes");
        json.Bool(result.usesAttributes);
        json.Key("elements");
        json.BeginArray();
        for (const SelectedElement& element : result.elements) {
            json.BeginObject(true);
            json.Key("model");
            json.String(ZtUSysString::WideToPath(element.model));
            json.Key("index");
            json.Int(element.index);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void AppendSelectionsTable(ReportStream& out, const std::vector<SelectionResult>& results,
                           const ZtOpState& state) {
    out += "Selections:\n";
    std::size_t usingAttributes = 0;
    for (const SelectionResult& result : results) {
        const std::size_t count = result.elements.size();
        out += "  ";
        out += ReadableText(ZtUSysString::WideToUtf8(result.name));
        if (result.usesAttributes) {
            out += " (Data criteria)";
            ++usingAttributes;
        }
        out += ": " + std::to_string(count) + (count == 1 ? " element\n" : " elements\n");
        // Runs of elements of one model share a line.
        for (std::size_t i = 0; i < count; ++i) {
            const SelectedElement& element = result.elements[i];
            if (i == 0 || element.model != result.elements[i - 1].model)
                out += (i == 0 ? "" : "\n") + std::string("    ") +
                       ReadableText(ZtUSysString::WideToPath(element.model)) + ":";
            out += " " + std::to_string(element.index);
        }
        if (count > 0)
            out += "\n";
    }
    if (usingAttributes == 0)
        return;
    std::size_t elements = 0, carrying = 0;
    for (const ZtDgnModel* model : SceneModels(state)) {
        elements += model->GetNumElements();
        if (const ZtDgnAttributeStore* store = model->GetAttributeStore())
            carrying += store->GetElementsWithAttributes();
    }
    out += "  " + std::to_string(usingAttributes) +
           (usingAttributes == 1 ? " set selects" : " sets select") + " on attributes; " +
           std::to_string(carrying) + " of " + std::to_string(elements) +
           (elements == 1 ? " element carries" : " elements carry") + " attributes\n";
}
