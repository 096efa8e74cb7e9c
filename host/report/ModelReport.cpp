#include "report/ModelReport.h"

#include "report/JsonWriter.h"
#include "report/ReadableText.h"
#include "report/ReportStream.h"
#include "review/ModelLoad.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
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

// A text of the attribute source: UTF-8 as a rule, which goes out as it stands (a value
// may be many megabytes); where a byte begins no valid sequence, the text is shown with
// such bytes as Latin-1 rather than passed on into the JSON.
void WriteSourceText(JsonWriter& json, std::string_view text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t at = 0; at < text.size();) {
        char32_t codePoint;
        const std::size_t length =
            ZtUSysString::DecodeUtf8(bytes + at, text.size() - at, &codePoint);
        if (length == 0) {
            json.WideString(ZtUSysString::Utf8ToWide(text));
            return;
        }
        at += length;
    }
    json.String(text);
}

// The element's attributes, in the source's order.
void WriteElementAttributes(JsonWriter& json, const ZtDgnModel& model, std::size_t slot) {
    json.Key("attributes");
    json.BeginArray();
    if (const ZtDgnAttributeStore* store = model.GetAttributeStore())
        for (const std::uint32_t pair : store->GetElementPairs(slot)) {
            json.BeginObject(true);
            json.Key("name");
            WriteSourceText(json, store->GetName(pair));
            json.Key("value");
            WriteSourceText(json, store->GetValue(pair));
            json.EndObject();
        }
    json.EndArray();
}

// The model's "attributes": where they came from, how many, and the linkages that found
// no rows; null when no source gave the model any.
void WriteAttributeSummaryJson(JsonWriter& json, const ZtDgnModel& model) {
    json.Key("attributes");
    const ZtDgnAttributeStore* store = model.GetAttributeStore();
    if (!store) {
        json.Null();
        return;
    }
    json.BeginObject();
    json.Key("source");
    json.String(store->GetSource());
    json.Key("rowsRead");
    json.UInt(store->GetRowsRead());
    json.Key("elements");
    json.UInt(store->GetElementsWithAttributes());
    json.Key("attributes");
    json.UInt(store->GetAttributeCount());
    json.Key("linkagesWithoutRows");
    json.BeginArray();
    for (const ZtDgnAttributeStore::UnmatchedKey& key : store->GetUnmatchedKeys()) {
        json.BeginObject(true);
        json.Key("entity");
        json.UInt(key.entity);
        json.Key("occurrence");
        json.UInt(key.occurrence);
        json.Key("elements");
        json.UInt(key.elements);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
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
    WriteElementAttributes(json, model, slot);
    json.EndObject();
}

} // namespace

void WriteModelMembers(JsonWriter& json, const ZtDgnModel& model, ModelDetail detail) {
    const bool scene = detail == ModelDetail::kScene;
    const ZtDgnModelHeader& header = model.GetHeader();
    json.Key("file");
    json.String(ZtUSysString::WideToPath(model.GetName().Str()));
    json.Key("path");
    json.String(ZtUSysString::WideToPath(model.GetSourceFilename().Str()));
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
    WriteAttributeSummaryJson(json, model);
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

namespace {

// "1 thing", "2 things".
std::string Counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

// The lines of a model's paragraph that tell its attributes: their source, how many
// elements carry how many, and the linkages that found no rows.
void AppendAttributesSummary(ReportStream& out, const ZtDgnAttributeStore& store) {
    // Enough of the linkages without rows to see what they are like.
    constexpr std::size_t kShown = 5;
    out += "  attributes from " + store.GetSource() + ": " +
           Counted(store.GetElementsWithAttributes(), "element carries ", "elements carry ") +
           Counted(store.GetAttributeCount(), "attribute", "attributes") + ", of " +
           Counted(store.GetRowsRead(), "row", "rows") + " read\n";
    const auto& unmatched = store.GetUnmatchedKeys();
    if (unmatched.empty())
        return;
    out += "  " + Counted(unmatched.size(), "linkage", "linkages") + " without rows:";
    for (std::size_t i = 0; i < unmatched.size() && i < kShown; ++i)
        out += (i ? ", " : " ") + std::string("entity ") + std::to_string(unmatched[i].entity) +
               " occurrence " + std::to_string(unmatched[i].occurrence) + " (" +
               Counted(unmatched[i].elements, "element", "elements") + ")";
    if (unmatched.size() > kShown)
        out += ", and " + std::to_string(unmatched.size() - kShown) + " more";
    out += "\n";
}

} // namespace

void AppendModelsSummary(ReportStream& out, const ZtOpState& state) {
    for (const ZtDgnModel* model : SceneModels(state)) {
        const ZtDgnModelHeader& header = model->GetHeader();
        out += "model ";
        out += ReadableText(ZtUSysString::WideToPath(model->GetName().Str()));
        out += ": " + std::to_string(header.dimension) + "D, master unit \"" +
               header.masterUnitName + "\", subunit \"" + header.subUnitName + "\", " +
               ReadableNumber(model->GetUorsPerMaster()) + " UORs per master unit, " +
               std::to_string(model->GetNumElements()) + " elements\n";
        for (const std::string& warning : model->GetWarnings())
            out += "  warning: " + ReadableText(warning) + "\n";
        if (const ZtDgnAttributeStore* store = model->GetAttributeStore())
            AppendAttributesSummary(out, *store);
    }
}
