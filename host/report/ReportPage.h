#pragma once
#include <cstddef>
#include <string>

struct ReportScene;

// The review report: one self-contained HTML page (inline style, SVG and script; nothing
// fetched) with the header, each saved view drawn as its camera saw it, a plan and two
// elevations of the placed scene with the tags as pins, the saved views and their tags,
// and the selection sets as toggles. The same scene gives the same bytes.
//
// Each drawing along an axis carries on its <svg> how it maps the scene to its pixels:
// data-u and data-v are the axes (0 x, 1 y, 2 z) drawn to the right and upwards, and a
// point p lands at (data-ox + data-scale p[u], data-oy - data-scale p[v]) from the SVG's
// top left corner, before the page's zoom and pan. A saved view's drawing carries
// data-perspective. Paths carry the element they draw (data-e its outermost element,
// data-c the component where that differs); the script element "page-data" holds, as
// JSON, what the page tells of the elements.
//
// The saved views are drawn on `threads` threads (0: one a core); the page is the same
// whatever their number.
std::string ReportPageHtml(const ReportScene& scene, std::size_t threads = 1);

// Writes the page to `path` through the host's write stream, which leaves an old file as
// it was and records why when the write fails; false then.
bool WriteReportPage(const ReportScene& scene, const std::string& path, std::size_t threads = 1);
