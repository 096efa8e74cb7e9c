#pragma once
#include <string>

struct ReportScene;

// The review report: one self-contained HTML page (inline style, SVG and script; nothing
// fetched) with the header, a plan and two elevations of the placed scene with the tags
// as pins, the saved views and their tags, and the selection sets as toggles. The same
// scene gives the same bytes.
//
// Each view's <svg> carries how it maps the scene to its pixels: data-u and data-v are
// the axes (0 x, 1 y, 2 z) drawn to the right and upwards, and a point p lands at
// (data-ox + data-scale p[u], data-oy - data-scale p[v]) from the SVG's top left corner.
std::string ReportPageHtml(const ReportScene& scene);

// Writes the page to `path` through the host's write stream, which leaves an old file as
// it was and records why when the write fails; false then.
bool WriteReportPage(const ReportScene& scene, const std::string& path);
