#pragma once
#include <string>
#include <vector>

class JsonWriter;
class ReportStream;
class ZtDgnModel;
class ZtOpProgress;
class ZtOpState;

// The `model` step: loads `path` with the DGN loader plug-in (registering it if need be)
// and adds the model to the document's scene, unplaced. Returns 0, or 2 with the reason
// in `error` when the file can't be loaded as a model.
int RunModelStep(ZtOpState& state, const std::wstring& path, std::string* error,
                 ZtOpProgress* progress = nullptr);

// The DGN models of the document's scene, in load order.
std::vector<const ZtDgnModel*> SceneModels(const ZtOpState& state);

// The members of a model's JSON object: file, path, factor, element count and option 10
// at load, and unless `brief` (a reference of a scene set) the control block's units,
// dimension and origin, the file's element count and the load's warnings between them.
void WriteModelMembers(JsonWriter& json, const ZtDgnModel& model, bool brief);

// The value of the report's "models" member: every DGN model of the scene, in load
// order, with the list of its elements if `elements` is set; a progress hears how much of
// that list is written.
void WriteModelsJson(JsonWriter& json, const ZtOpState& state, bool elements,
                     ZtOpProgress* progress = nullptr);

// One readable paragraph per model: file, units, dimension, element count, warnings.
void AppendModelsSummary(ReportStream& out, const ZtOpState& state);
