#pragma once
#include "ztlinear/ZtLBox3f.h"
#include "ztlinear/ZtLPlane3f.h"
#include "ztnav/ZtNvCamera.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class ReviewRun;
struct ZtDgnGeometry;

// An element of the scene as the report draws it: its box placed into the scene, the
// level, colour number and type it shows, and how many elements after it are its
// components (a cell's or complex element's, nested ones included; they follow it).
struct ReportElement {
    ZtLBox3f box;
    std::uint8_t level;
    std::uint8_t colour;
    std::uint8_t type = 0;
    std::uint32_t components = 0;
};

struct ReportModel {
    std::string file;
    std::string units;            // "m / mm, 80000 UORs per m"
    std::string placement;        // "turned 90° about Z, moved by (10, 5, 0) m"
    std::size_t firstElement = 0; // its first element's number in ReportScene::elements
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
    // as four words, and the element's number in ReportScene::elements; empty and -1
    // where it found none.
    std::string modelFile;
    std::string dmrs;
    std::int64_t element = -1;
    // Where the view's camera shows the tag's point and its second point, in window space
    // (0 to 1 across the view, upwards), as the redline holds them.
    ZtLPos2f window, windowB;
};

struct ReportView {
    std::string name;
    ZtNvCamera camera;
    // The enabled clip planes: the view keeps what lies on the side of each normal.
    std::vector<ZtLPlane3f> clipPlanes;
    std::vector<ReportTag> tags;
    // How far ahead of the camera the view looks, where it says.
    std::optional<double> focalDistance;
};

struct ReportSet {
    std::string name;
    std::string comment;
    std::vector<std::string> rule; // one line per alternative
    // The selected elements, as places in ReportScene::elements, ascending.
    std::vector<std::uint32_t> elements;
};

// A name and a value of an element's attributes from the project database.
using ReportAttribute = std::pair<std::string, std::string>;

// What the report tells of an element when asked for it.
struct ReportElementFacts {
    std::int64_t index = -1; // its position in its model's file
    std::string dmrs;        // its DMRS value as four words; empty without one
    std::vector<ReportAttribute> attributes;
};

// What the scene's list keeps no room for, asked for element by element (by number in
// ReportScene::elements) when the report draws or describes one.
class ReportElementSource {
public:
    virtual ~ReportElementSource() = default;
    // What the element draws, placed in the scene; false where it can't be had.
    virtual bool Geometry(std::size_t element, ZtDgnGeometry* out) = 0;
    // Its place in its file, its DMRS value and its attributes from the project
    // database, in their order.
    virtual ReportElementFacts Facts(std::size_t element) = 0;
};

// What the report page shows of a run's document, gathered once: the control file, the
// models and their placement, the references whose models did not load (with the
// reason), every element where the scene places it, the saved views with their cameras
// and tags, and the selection sets with what they select (the last `select` step's
// results, or a fresh evaluation without one).
struct ReportScene {
    std::string producer; // "pdsreview 0.1"
    std::string controlFile;
    std::string sceneUnits;
    // The length of the scene's unit; a metre where no control file gave it one.
    double metresPerUnit = 1;
    std::vector<ReportModel> models;
    std::vector<ReportFailedModel> failed;
    std::vector<ReportElement> elements;
    std::vector<ReportView> views;
    std::vector<ReportSet> sets;
    // The models' files and attributes; a scene made without them draws boxes.
    std::shared_ptr<ReportElementSource> source;
};

// Gathers the scene of the run's document, on `threads` threads (0: one a core); the scene
// is the same on any number. Its source reads the models' files while the run lives.
ReportScene GatherReportScene(const ReviewRun& run, std::size_t threads = 1);
