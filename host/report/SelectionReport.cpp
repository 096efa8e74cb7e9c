#include "report/SelectionReport.h"

#include "report/JsonWriter.h"
#include "report/ReportStream.h"
#include "review/SelectionEvaluation.h"
#include "ztutil/ZtUSysString.h"

void WriteSelectionsJson(JsonWriter& json, const std::vector<SelectionResult>& results) {
    json.BeginArray();
    for (const SelectionResult& result : results) {
        json.BeginObject();
        json.Key("name");
        json.WideString(result.name);
        json.Key("count");
        json.UInt(result.elements.size());
        json.Key("elements");
        json.BeginArray();
        for (const SelectedElement& element : result.elements) {
            json.BeginObject(true);
            json.Key("model");
            json.WideString(element.model);
            json.Key("index");
            json.Int(element.index);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void AppendSelectionsTable(ReportStream& out, const std::vector<SelectionResult>& results) {
    out += "Selections:\n";
    for (const SelectionResult& result : results) {
        const std::size_t count = result.elements.size();
        out += "  ";
        out += ZtUSysString::WideToUtf8(result.name);
        out += ": " + std::to_string(count) + (count == 1 ? " element\n" : " elements\n");
        // Runs of elements of one model share a line.
        for (std::size_t i = 0; i < count; ++i) {
            const SelectedElement& element = result.elements[i];
            if (i == 0 || element.model != result.elements[i - 1].model)
                out += (i == 0 ? "" : "\n") + std::string("    ") +
                       ZtUSysString::WideToUtf8(element.model) + ":";
            out += " " + std::to_string(element.index);
        }
        if (count > 0)
            out += "\n";
    }
}
