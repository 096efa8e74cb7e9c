#include "report/SceneSetReport.h"

#include "report/JsonWriter.h"
#include "report/ModelReport.h"
#include "report/ReadableText.h"
#include "report/ReportStream.h"
#include "review/OpenRoad.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztutil/ZtUSysString.h"

namespace {

void WriteTransformJson(JsonWriter& json, const ZtLAffine3f& transform) {
    const ZtLMatrix3f& m = transform.GetMatrix();
    json.BeginObject();
    json.Key("matrix");
    json.BeginArray(true);
    for (int row = 0; row < 3; ++row)
        json.Doubles({m.Get(row, 0), m.Get(row, 1), m.Get(row, 2)});
    json.EndArray();
    json.Key("translation");
    const ZtLVec3f& t = transform.GetTranslation();
    json.Doubles({t.x, t.y, t.z});
    json.EndObject();
}

} // namespace

void WriteSceneSetJson(JsonWriter& json, const OpenedSceneSet* sceneSet) {
    if (!sceneSet) {
        json.Null();
        return;
    }
    json.BeginObject();
    json.Key("linearUnits");
    json.Int(sceneSet->set.GetLinearUnits());
    json.Key("refs");
    json.BeginArray();
    const ZtUOwnPtrVector<ZtOpSceneRef>& refs = sceneSet->set.GetSceneRefs();
    for (std::size_t i = 0; i < refs.Size(); ++i) {
        const ZtOpSceneRef& ref = *refs[i];
        const OpenedRef* outcome = i < sceneSet->refs.size() ? &sceneSet->refs[i] : nullptr;
        json.BeginObject();
        json.Key("sourceName");
        json.WideString(ref.GetSourceName().Str());
        json.Key("loadFile");
        json.WideString(ref.GetLoadFile().Str());
        json.Key("linearUnits");
        json.Int(ref.GetLinearUnits());
        json.Key("loadKind");
        json.Int(ref.GetLoadKind());
        json.Key("transform");
        WriteTransformJson(json, ref.GetTransform());
        json.Key("placement");
        if (outcome && outcome->model)
            json.String(PlacementWords(ref.GetTransform(), ref.GetLinearUnits(),
                                       sceneSet->set.GetLinearUnits()));
        else
            json.Null();
        json.Key("model");
        if (outcome && outcome->model) {
            json.BeginObject();
            WriteModelMembers(json, *outcome->model, ModelDetail::kReference);
            json.EndObject();
        } else {
            json.Null();
        }
        json.Key("notLoaded");
        if (outcome && !outcome->model)
            json.String(outcome->notLoaded);
        else
            json.Null();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

void AppendSceneSetSummary(ReportStream& out, const OpenedSceneSet& sceneSet) {
    const ZtUOwnPtrVector<ZtOpSceneRef>& refs = sceneSet.set.GetSceneRefs();
    out += "Scene set: " + std::to_string(refs.Size()) + (refs.Size() == 1 ? " model" : " models") +
           ", scene units " + UnitName(sceneSet.set.GetLinearUnits()) + "\n";
    for (std::size_t i = 0; i < refs.Size(); ++i) {
        const ZtOpSceneRef& ref = *refs[i];
        const OpenedRef* outcome = i < sceneSet.refs.size() ? &sceneSet.refs[i] : nullptr;
        out += "  " + std::to_string(i + 1) + ". ";
        out += ReadableText(ZtUSysString::WideToUtf8(ref.GetSourceName().Str()));
        if (!outcome || !outcome->model) {
            out += ": not loaded (" +
                   ReadableText(outcome ? outcome->notLoaded : std::string("not opened")) + ")\n";
            continue;
        }
        const ZtDgnModel& model = *outcome->model;
        const ZtDgnModelHeader& header = model.GetHeader();
        out += ": ";
        out += ReadableText(ZtUSysString::WideToPath(model.GetSourceFilename().Str()));
        out += '\n';
        out += "     model in " + header.masterUnitName + " / " + header.subUnitName + ", " +
               ReadableNumber(model.GetUorsPerMaster()) + " UORs per master unit, " +
               std::to_string(model.GetNumElements()) + " elements; reference units " +
               UnitName(ref.GetLinearUnits()) + "\n";
        out += "     placed: " +
               PlacementWords(ref.GetTransform(), ref.GetLinearUnits(),
                              sceneSet.set.GetLinearUnits()) +
               "\n";
    }
}
