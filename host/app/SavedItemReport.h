#pragma once
#include <cstddef>
#include <string>
#include <vector>

class JsonWriter;
class ReportStream;
class ZtOpFindSpec;
class ZtOpSavedItem;
class ZtOpState;

// ITEM of the report: a saved item with its kind, name and GUID, and what its kind
// carries: a folder its children, a selection set its comments and find spec, a view its
// comments, viewpoint, enabled clip planes and redlines.
void WriteSavedItemJson(JsonWriter& json, const ZtOpSavedItem& item);

// The value of the report's "selectionSets" member: the children of the root folder of
// the document's selection sets, as ITEMs.
void WriteSelectionSetsJson(JsonWriter& json, const ZtOpState& state);

// The document's selection sets, readably: each with its comment and its rule, one
// alternative a line.
void AppendSelectionSetsSummary(ReportStream& out, const ZtOpState& state);

// The value of the report's "savedViews" member: the children of the root folder of the
// document's saved views, as ITEMs.
void WriteSavedViewsJson(JsonWriter& json, const ZtOpState& state);

// The document's saved views, readably: each with its camera, and each of its tags with
// its position and the text of its comment.
void AppendSavedViewsSummary(ReportStream& out, const ZtOpState& state);

// How many items of each kind the document's saved views and selection sets hold, through
// their folders.
struct SavedItemCounts {
    std::size_t views = 0;
    std::size_t tags = 0;
    std::size_t comments = 0;
    std::size_t selectionSets = 0;
};
SavedItemCounts CountSavedItems(const ZtOpState& state);

// A find spec's rule, readably: one line per alternative, its conditions joined by "and"
// (such as `Level = "Level 10"`). None for a spec without conditions or no spec.
std::vector<std::string> FindSpecRuleLines(const ZtOpFindSpec* spec);
