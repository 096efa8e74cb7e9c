#pragma once

class JsonWriter;
class ReportStream;
struct OpenedSceneSet;

// The report's "sceneSet" member: null without a scene set.
void WriteSceneSetJson(JsonWriter& json, const OpenedSceneSet* sceneSet);

// A readable paragraph on the scene set: its units, and for each reference the model's
// file, units and element count and the placement, or why it was not loaded.
void AppendSceneSetSummary(ReportStream& out, const OpenedSceneSet& sceneSet);
