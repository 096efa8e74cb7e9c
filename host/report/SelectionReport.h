#pragma once
#include <vector>

class JsonWriter;
class ReportStream;
struct SelectionResult;

// The value of the report's "selections" member.
void WriteSelectionsJson(JsonWriter& json, const std::vector<SelectionResult>& results);

// A readable table: each selection set with its count, and the selected elements model by
// model.
void AppendSelectionsTable(ReportStream& out, const std::vector<SelectionResult>& results);
