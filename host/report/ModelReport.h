#pragma once

class JsonWriter;
class ReportStream;
class ZtDgnModel;
class ZtOpProgress;
class ZtOpState;

// How much of a model its JSON object tells.
enum class ModelDetail {
    kReference, // a scene set's reference: which file, its factor, its size, option 10 at load
    kScene,     // an entry of "models": also its units, origin, file's count and warnings
};

// The members of a model's JSON object, into an object the caller has begun.
void WriteModelMembers(JsonWriter& json, const ZtDgnModel& model, ModelDetail detail);

// The value of the report's "models" member: every DGN model of the scene, in load
// order, with the list of its elements if `elements` is set; a progress hears how much of
// that list is written.
void WriteModelsJson(JsonWriter& json, const ZtOpState& state, bool elements,
                     ZtOpProgress* progress = nullptr);

// One readable paragraph per model: file, units, dimension, element count, warnings, and
// the attributes its elements took from a source.
void AppendModelsSummary(ReportStream& out, const ZtOpState& state);
