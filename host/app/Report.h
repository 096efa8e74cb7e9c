#pragma once

class JsonWriter;
class ReportStream;
class ZtNvViewPoint;
struct Session;

// The JSON document of a run (every member present, arrays possibly empty).
void WriteJsonReport(ReportStream& out, Session& session);
// The readable summary of a run.
void WriteSummaryReport(ReportStream& out, Session& session);

// VIEWPOINT of the JSON document.
void WriteViewPointJson(JsonWriter& json, const ZtNvViewPoint& viewPoint);
