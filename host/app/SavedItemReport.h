#pragma once
#include <string>

class JsonWriter;
class ZtOpSavedItem;
class ZtOpState;

// ITEM of the report: a saved item with its kind, name and GUID, and what its kind
// carries: a folder its children, a selection set its comments and find spec.
void WriteSavedItemJson(JsonWriter& json, const ZtOpSavedItem& item);

// The value of the report's "selectionSets" member: the children of the root folder of
// the document's selection sets, as ITEMs.
void WriteSelectionSetsJson(JsonWriter& json, const ZtOpState& state);

// The document's selection sets, readably: each with its comment and its rule, one
// alternative a line.
void AppendSelectionSetsSummary(std::string& out, const ZtOpState& state);
