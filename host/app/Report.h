#pragma once
#include <string>

class JsonWriter;
class ZtNvViewPoint;
struct Session;

// The JSON document of a run (every member present, arrays possibly empty).
std::string JsonReport(Session& session);
// The readable summary of a run.
std::string SummaryReport(Session& session);

// VIEWPOINT of the JSON document.
void WriteViewPointJson(JsonWriter& json, const ZtNvViewPoint& viewPoint);
