#pragma once
#include "ztlinear/ZtLBox3f.h"

#include <cstdint>
#include <string>
#include <vector>

class ReviewRun;

// An element of the scene as the report draws it: its box placed into the scene, and
// the level and colour number it is coloured by.
struct ReportElement {
    ZtLBox3f box;
    std::uint8_t level;
    std::uint8_t colour;
};

struct ReportModel {
    std::string file;
    std::string units;     // "m / mm, 80000 UORs per m"
    std::string placement; // "turned 90° about Z, moved by (10, 5, 0) m"
    std::size_t elements = 0;
    ZtLBox3f extent; // of its placed elements
};

// A reference of the control file whose model did not load.
struct ReportFailedModel {
    std::string name; // as the control file gives it
    std::string reason;
};

struct ReportTag {
    std::uint64_t id = 0;
    bool placed = false; // has a 3D position
    ZtLPos3f position;
    std::string text;
    // What the pick through the tag found: the model's file and the element's DMRS value
    // as four words; empty where it found none.
    std::string modelFile;
    std::string dmrs;
};

struct ReportView {
    std::string name;
    ZtLPos3f eye;
    ZtLVec3f viewDir;
    std::vector<ReportTag> tags;
};

struct ReportSet {
    std::string name;
    std::string comment;
    std::vector<std::string> rule; // one line per alternative
    // The selected elements, as places in ReportScene::elements, ascending.
    std::vector<std::uint32_t> elements;
};

// What the report page shows of a run's document, gathered once: the control file, the
// models and their placement, the references whose models did not load (with the
// reason), every element where the scene places it, the saved views with their tags, and
// the selection sets with what they select (the last `select` step's results, or a fresh
// evaluation without one).
struct ReportScene {
    std::string controlFile;
    std::string sceneUnits;
    std::vector<ReportModel> models;
    std::vector<ReportFailedModel> failed;
    std::vector<ReportElement> elements;
    std::vector<ReportView> views;
    std::vector<ReportSet> sets;
};

ReportScene GatherReportScene(const ReviewRun& run);
