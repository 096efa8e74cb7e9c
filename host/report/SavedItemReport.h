#pragma once
#include "review/SavedItems.h"

#include <string>
#include <vector>

class JsonWriter;
class ReportStream;
class ZtOpFindSpec;
class ZtOpState;

// The value of the report's "savedViews" or "selectionSets" member: the children of the
// tree's root folder as ITEMs, each with its kind, name and GUID, and what its kind carries:
// a folder its children, a selection set its comments and find query, a view its comments,
// viewpoint, enabled clip planes and redlines.
void WriteSavedItemsJson(JsonWriter& json, const ZtOpState& state, SavedItemTree tree);

// The tree readably, under a heading with its count: a view with its camera and each of its
// tags with its position and the text of its comment; a selection set with its comments and
// its rule, one alternative a line.
void AppendSavedItemsSummary(ReportStream& out, const ZtOpState& state, SavedItemTree tree);

// A find query's rule, readably: one line per alternative, its conditions joined by "and"
// (such as `Level = "Level 10"`). None for a spec without conditions or no spec.
std::vector<std::string> FindSpecRuleLines(const ZtOpFindSpec* spec);
