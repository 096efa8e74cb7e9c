#pragma once

class JsonWriter;
class ReportStream;
class ZtNvViewPoint;
class ZtOpProgress;
class ReviewRun;

// The JSON document of a run (every member present, arrays possibly empty), with the list
// of every model's elements if `elements` is set; a progress hears how much of that list
// is written.
void WriteJsonReport(ReportStream& out, const ReviewRun& run, bool elements,
                     ZtOpProgress* progress = nullptr);
// The readable summary of a run.
void WriteSummaryReport(ReportStream& out, const ReviewRun& run);

// VIEWPOINT of the JSON document.
void WriteViewPointJson(JsonWriter& json, const ZtNvViewPoint& viewPoint);
