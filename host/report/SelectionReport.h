#pragma once
#include <vector>

class JsonWriter;
class ReportStream;
class ZtOpState;
struct SelectionResult;

// The value of the report's "selections" member.
void WriteSelectionsJson(JsonWriter& json, const std::vector<SelectionResult>& results);

// A readable table: each selection set with its count, and the selected elements model by
// model. Sets with Data criteria are marked, and a line tells how many of the document's
// elements carry attributes for them to select on.
void AppendSelectionsTable(ReportStream& out, const std::vector<SelectionResult>& results,
                           const ZtOpState& state);
