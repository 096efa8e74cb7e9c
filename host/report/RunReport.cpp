#include "report/RunReport.h"
#include "report/ReadableText.h"

#include "report/JsonWriter.h"
#include "report/ModelReport.h"
#include "report/ReportStream.h"
#include "report/SavedItemReport.h"
#include "report/SceneSetReport.h"
#include "report/SelectionReport.h"
#include "review/PluginDescription.h"
#include "review/ReviewRun.h"
#include "ztnav/ZtNvViewPoint.h"
#include "ztutil/ZtUSysString.h"

#include <cstdio>

namespace {

void WriteVec(JsonWriter& json, const ZtLVec3f& v) {
    json.Doubles({v.x, v.y, v.z});
}

void WriteOptionalWide(JsonWriter& json, const char* key, const std::optional<std::wstring>& text) {
    if (!text)
        return;
    json.Key(key);
    json.WideString(*text);
}

void WritePluginsJson(JsonWriter& json, const ReviewRun& run) {
    json.BeginArray();
    for (ZtOpPlugin* plugin : run.library.GetPlugins()) {
        const PluginDescription d = DescribePlugin(*plugin);
        json.BeginObject();
        json.Key("registeredName");
        json.String(d.registeredName);
        json.Key("typeNumber");
        json.UInt(d.typeNumber);
        json.Key("resourceName");
        json.String(d.resourceName);
        WriteOptionalWide(json, "menuName", d.menuName);
        WriteOptionalWide(json, "fileTypeName", d.fileTypeName);
        WriteOptionalWide(json, "fileExtension", d.fileExtension);
        if (d.helpId) {
            json.Key("helpId");
            json.Int(*d.helpId);
        }
        WriteOptionalWide(json, "formatName", d.formatName);
        WriteOptionalWide(json, "formatExtension", d.formatExtension);
        json.EndObject();
    }
    json.EndArray();
}

void WriteDocumentJson(JsonWriter& json, const ZtOpState& state) {
    json.BeginObject();
    json.Key("currentView");
    json.BeginObject();
    json.Key("viewpoint");
    WriteViewPointJson(json, state.GetCurrentViewPoint());
    json.EndObject();
    json.Key("savedViews");
    WriteSavedItemsJson(json, state, SavedItemTree::kSavedViews);
    json.Key("selectionSets");
    WriteSavedItemsJson(json, state, SavedItemTree::kSelectionSets);
    json.Key("nextIds");
    json.BeginObject(true);
    json.Key("tag");
    json.UInt(state.GetNextTagId());
    json.Key("comment");
    json.UInt(state.GetNextCommentId());
    json.EndObject();
    json.EndObject();
}

// "3 views": the count's JSON name as words.
std::string CountText(const StepCount& count) {
    std::string words;
    for (char c : count.name) {
        if (c >= 'A' && c <= 'Z') {
            words += ' ';
            c = static_cast<char>(c - 'A' + 'a');
        }
        words += c;
    }
    return std::to_string(count.value) + " " + words;
}

} // namespace

void WriteViewPointJson(JsonWriter& json, const ZtNvViewPoint& viewPoint) {
    const ZtNvCamera& camera = viewPoint.GetCamera();
    json.BeginObject();
    json.Key("position");
    WriteVec(json, camera.GetPosition());
    json.Key("viewDir");
    WriteVec(json, camera.ViewDir());
    json.Key("up");
    WriteVec(json, camera.GetUp());
    json.Key("heightField");
    json.Double(camera.GetHeightField());
    json.Key("focalDistance");
    if (viewPoint.GetFocalDistance())
        json.Double(*viewPoint.GetFocalDistance());
    else
        json.Null();
    json.Key("worldUp");
    if (viewPoint.GetWorldUp())
        WriteVec(json, *viewPoint.GetWorldUp());
    else
        json.Null();
    json.Key("parts");
    json.UInt(viewPoint.GetParts());
    json.EndObject();
}

void WriteJsonReport(ReportStream& out, const ReviewRun& run, bool elements,
                     ZtOpProgress* progress) {
    JsonWriter json(out);
    json.BeginObject();
    json.Key("steps");
    json.BeginArray();
    for (const StepResult& step : run.steps) {
        json.BeginObject(true);
        json.Key("step");
        json.String(step.step);
        if (!step.file.empty()) {
            json.Key("file");
            json.String(step.file);
        }
        json.Key("status");
        json.Int(step.status);
        if (!step.message.empty()) {
            json.Key("message");
            json.String(step.message);
        }
        if (!step.attributeSource.empty()) {
            json.Key("attributeSource");
            json.String(step.attributeSource);
        }
        if (!step.counts.empty()) {
            json.Key("counts");
            json.BeginObject(true);
            for (const StepCount& count : step.counts) {
                json.Key(count.name);
                json.UInt(count.value);
            }
            json.EndObject();
        }
        if (step.sideFiles) {
            json.Key("sideFiles");
            json.BeginArray(true);
            for (const std::string& file : *step.sideFiles)
                json.String(file);
            json.EndArray();
        }
        json.EndObject();
    }
    json.EndArray();
    json.Key("warnings");
    json.BeginArray();
    for (const std::string& warning : run.warnings)
        json.String(warning);
    json.EndArray();
    if (run.listedPlugins) {
        json.Key("plugins");
        WritePluginsJson(json, run);
    }
    json.Key("sceneSet");
    WriteSceneSetJson(json, run.sceneSet.get());
    json.Key("models");
    WriteModelsJson(json, run.state, elements, progress);
    json.Key("document");
    WriteDocumentJson(json, run.state);
    if (run.selections) {
        json.Key("selections");
        WriteSelectionsJson(json, *run.selections);
    }
    json.EndObject();
}

void WriteSummaryReport(ReportStream& out, const ReviewRun& run) {
    char line[256];
    if (run.listedPlugins) {
        const auto& plugins = run.library.GetPlugins();
        std::snprintf(line, sizeof line, "Plug-ins: %zu\n", plugins.size());
        out += line;
        int place = 0;
        for (ZtOpPlugin* plugin : plugins) {
            const PluginDescription d = DescribePlugin(*plugin);
            std::snprintf(line, sizeof line, "  %d. %s (type %u, resources \"%s\")\n", ++place,
                          d.registeredName.c_str(), d.typeNumber, d.resourceName.c_str());
            out += line;
            if (d.menuName)
                out += "     menu \"" + ZtUSysString::WideToUtf8(*d.menuName) + "\", file type \"" +
                       ZtUSysString::WideToUtf8(*d.fileTypeName) + "\" (" +
                       ZtUSysString::WideToUtf8(*d.fileExtension) + "), help topic " +
                       std::to_string(*d.helpId) + "\n";
            if (d.formatName)
                out += "     format \"" + ZtUSysString::WideToUtf8(*d.formatName) + "\" (" +
                       ZtUSysString::WideToUtf8(*d.formatExtension) + ")\n";
        }
    }
    const ZtOpState& state = run.state;
    if (run.sceneSet)
        AppendSceneSetSummary(out, *run.sceneSet);
    AppendModelsSummary(out, state);
    AppendSavedItemsSummary(out, state, SavedItemTree::kSavedViews);
    AppendSavedItemsSummary(out, state, SavedItemTree::kSelectionSets);
    if (run.selections)
        AppendSelectionsTable(out, *run.selections, state);
    std::snprintf(line, sizeof line, "Document: next tag id %llu, next comment id %llu\n",
                  static_cast<unsigned long long>(state.GetNextTagId()),
                  static_cast<unsigned long long>(state.GetNextCommentId()));
    out += line;
    out += "Steps:\n";
    for (const StepResult& step : run.steps) {
        out += "  " + step.step;
        if (!step.file.empty())
            out += " " + ReadableText(step.file);
        out += ": ";
        if (step.status != 0) {
            out +=
                "status " + std::to_string(step.status) + ", " + ReadableText(step.message) + "\n";
            continue;
        }
        out += "done";
        for (std::size_t i = 0; i < step.counts.size(); ++i)
            out += (i ? ", " : "; ") + CountText(step.counts[i]);
        if (!step.attributeSource.empty())
            out += "; attributes from " + step.attributeSource;
        out += "\n";
        if (step.sideFiles) {
            out += "    side files read:";
            for (std::size_t i = 0; i < step.sideFiles->size(); ++i)
                out += (i ? ", " : " ") + (*step.sideFiles)[i];
            out += step.sideFiles->empty() ? " none\n" : "\n";
        }
    }
    if (!run.warnings.empty()) {
        out += "Warnings: " + std::to_string(run.warnings.size()) + "\n";
        for (const std::string& warning : run.warnings)
            out += "  " + ReadableText(warning) + "\n";
    }
}
