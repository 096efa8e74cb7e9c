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
        json.UInt(result.indices.size());
        json.Key("usesAttributes");
        json.Bool(result.usesAttributes);
        json.Key("elements");
        json.BeginArray();
        std::size_t at = 0;
        for (const SelectedRun& run : result.runs) {
            const std::string model = ZtUSysString::WideToPath(run.model);
            for (; at < run.end; ++at) {
                json.BeginObject(true);
                json.Key("model");
                json.String(model);
                json.Key("index");
                json.Int(result.indices[at]);
                json.EndObject();
            }
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
        const std::size_t count = result.indices.size();
        out += "  ";
        out += ReadableText(ZtUSysString::WideToUtf8(result.name));
        if (result.usesAttributes) {
            out += " (Data criteria)";
            ++usingAttributes;
        }
        out += ": " + std::to_string(count) + (count == 1 ? " element\n" : " elements\n");
        // Runs of elements of one model share a line, placements of one file after
        // another too.
        std::size_t at = 0;
        for (std::size_t r = 0; r < result.runs.size(); ++r) {
            const SelectedRun& run = result.runs[r];
            if (r == 0 || run.model != result.runs[r - 1].model)
                out += (r == 0 ? "" : "\n") + std::string("    ") +
                       ReadableText(ZtUSysString::WideToPath(run.model)) + ":";
            for (; at < run.end; ++at)
                out += " " + std::to_string(result.indices[at]);
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
