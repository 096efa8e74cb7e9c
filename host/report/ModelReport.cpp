#include "report/ModelReport.h"

#include "report/JsonWriter.h"
#include "report/ReadableText.h"
#include "report/ReportStream.h"
#include "review/ModelLoad.h"
#include "ztlddgn/ZtDgnLinkage.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztutil/ZtUSysString.h"

#include <vector>

namespace {

void WriteInts(JsonWriter& json, const std::int32_t* values, int count) {
    json.BeginArray(true);
    for (int i = 0; i < count; ++i)
        json.Int(values[i]);
    json.EndArray();
}

void WriteWords(JsonWriter& json, const std::uint16_t* words, std::size_t count) {
    json.BeginArray(true);
    for (std::size_t i = 0; i < count; ++i)
        json.UInt(words[i]);
    json.EndArray();
}

void WriteBox(JsonWriter& json, const char* key, const ZtLBox3f& box) {
    json.Key(key);
    json.BeginArray(true);
    json.Doubles({box.GetMin().x, box.GetMin().y, box.GetMin().z});
    json.Doubles({box.GetMax().x, box.GetMax().y, box.GetMax().z});
    json.EndArray();
}

void WriteElementJson(JsonWriter& json, const ZtDgnModel& model, std::size_t slot) {
    const ZtDgnElement& e = model.GetElement(slot);
    json.BeginObject();
    json.Key("index");
    json.UInt(e.index);
    json.Key("offset");
    json.UInt(e.offset);
    json.Key("type");
    json.Int(e.type);
    json.Key("level");
    json.Int(e.GetLevel());
    json.Key("colour");
    json.Int(e.colour);
    json.Key("weight");
    json.Int(e.GetWeight());
    json.Key("style");
    json.Int(e.GetStyle());
    json.Key("graphicGroup");
    json.Int(e.graphicGroup);
    json.Key("complex");
    json.Bool(e.IsComplex());
    json.Key("range");
    json.BeginArray(true);
    WriteInts(json, e.range, 3);
    WriteInts(json, e.range + 3, 3);
    json.EndArray();
    // In the model's master units, and where the model's placement puts it in the scene.
    const ZtLBox3f box = model.GetElementBox(slot);
    WriteBox(json, "box", box);
    WriteBox(json, "sceneBox", model.GetTransform().TransformBox(box));
    json.Key("dmrs");
    if (const std::uint64_t dmrs = model.GetDmrs(slot)) {
        const std::uint16_t words[4] = {
            static_cast<std::uint16_t>(dmrs >> 48), static_cast<std::uint16_t>(dmrs >> 32),
            static_cast<std::uint16_t>(dmrs >> 16), static_cast<std::uint16_t>(dmrs)};
        WriteWords(json, words, 4);
    } else {
        json.Null();
    }
    json.Key("linkages");
    json.BeginArray();
    const std::uint16_t* words = model.GetLinkageWords(e);
    for (std::size_t at = 0; at < e.linkageWords;) {
        // The model keeps whole linkages only, so each length fits.
        const std::size_t length = ZtDgnLinkageLength(words[at]);
        json.BeginObject(true);
        json.Key("kind");
        json.String(ZtDgnLinkageKindName(ZtDgnClassifyLinkage(words + at, length)));
        json.Key("raw");
        WriteWords(json, words + at, length);
        json.EndObject();
        at += length;
    }
    json.EndArray();
    json.EndObject();
}

} // namespace

void WriteModelMembers(JsonWriter& json, const ZtDgnModel& model, ModelDetail detail) {
    const bool scene = detail == ModelDetail::kScene;
    const ZtDgnModelHeader& header = model.GetHeader();
    json.Key("file");
    json.WideString(model.GetName().Str());
    json.Key("path");
    json.WideString(model.GetSourceFilename().Str());
    json.Key("uorsPerMaster");
    json.Double(model.GetUorsPerMaster());
    if (scene) {
        json.Key("subunitsPerMaster");
        json.UInt(header.subunitsPerMaster);
        json.Key("uorsPerSubunit");
        json.UInt(header.uorsPerSubunit);
        json.Key("dimension");
        json.Int(header.dimension);
        json.Key("masterUnit");
        json.WideString(ZtUSysString::Utf8ToWide(header.masterUnitName));
        json.Key("subUnit");
        json.WideString(ZtUSysString::Utf8ToWide(header.subUnitName));
        json.Key("globalOrigin");
        json.Doubles({header.globalOrigin.x, header.globalOrigin.y, header.globalOrigin.z});
    }
    json.Key("elements");
    json.UInt(model.GetNumElements());
    if (scene) {
        json.Key("fileElements");
        json.UInt(model.GetFileElementCount());
    }
    json.Key("dgnOption10AtLoad");
    json.Bool(model.GetOption10AtLoad());
    if (!scene)
        return;
    json.Key("warnings");
    json.BeginArray();
    for (const std::string& warning : model.GetWarnings())
        json.String(warning);
    json.EndArray();
}

void WriteModelsJson(JsonWriter& json, const ZtOpState& state, bool elements,
                     ZtOpProgress* progress) {
    const std::vector<const ZtDgnModel*> models = SceneModels(state);
    std::size_t total = 0, written = 0;
    for (const ZtDgnModel* model : models)
        total += model->GetNumElements();
    // Reports every few thousand elements: often enough for a bar, rare enough to cost nothing.
    constexpr std::size_t kReportEvery = 4096;
    json.BeginArray();
    for (const ZtDgnModel* model : models) {
        json.BeginObject();
        WriteModelMembers(json, *model, ModelDetail::kScene);
        if (elements) {
            json.Key("elementList");
            json.BeginArray();
            for (std::size_t slot = 0; slot < model->GetNumElements(); ++slot) {
                WriteElementJson(json, *model, slot);
                if (progress && ++written % kReportEvery == 0)
                    progress->SetProgress(static_cast<double>(written) /
                                          static_cast<double>(total));
            }
            json.EndArray();
        }
        json.EndObject();
    }
    json.EndArray();
}

void AppendModelsSummary(ReportStream& out, const ZtOpState& state) {
    for (const ZtDgnModel* model : SceneModels(state)) {
        const ZtDgnModelHeader& header = model->GetHeader();
        out += "model ";
        out += ZtUSysString::WideToUtf8(model->GetName().Str());
        out += ": " + std::to_string(header.dimension) + "D, master unit \"" +
               header.masterUnitName + "\", subunit \"" + header.subUnitName + "\", " +
               ReadableNumber(model->GetUorsPerMaster()) + " UORs per master unit, " +
               std::to_string(model->GetNumElements()) + " elements\n";
        for (const std::string& warning : model->GetWarnings())
            out += "  warning: " + warning + "\n";
    }
}
