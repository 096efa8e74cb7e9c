#pragma once
#include "review/AttributeSource.h"
#include "review/OpenRoad.h"
#include "review/SelectionEvaluation.h"
#include "ztplugin/ZtOpPluginLibrary.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUFileIdentity.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ZtOpPlugin;

// One step of a run: what the user asked for, by its name ("open", "import-tags", ...),
// with its file, empty for steps without one.
struct Step {
    std::string name;
    std::string argument;
};

// One figure of what a step did, under its JSON name ("views", "modelsLoaded", ...).
struct StepCount {
    std::string name;
    std::size_t value = 0;
};

// The outcome of one step, as the reports show it.
struct StepResult {
    std::string step;
    std::string file; // as the user gave it; empty for steps without a file
    int status = 0;
    std::vector<StepCount> counts;
    std::string message; // what went wrong, when status is not 0
    // For a step that brings in the files beside its own (open), those it read.
    std::optional<std::vector<std::string>> sideFiles;
    // The attribute source the step's models took their attributes from; empty if none.
    std::string attributeSource;
};

// A file that a step of the run read: a model, a side file, the step's own file.
struct RunInput {
    ZtUFileIdentity file;
    std::string step; // "open plant.dri"
};

// One run of the host over one document: the loaded plug-in library, the document and
// what was done to it. The document is destroyed before the library, whose code its
// objects may still call.
class ReviewRun {
public:
    ReviewRun() = default;
    ReviewRun(const ReviewRun&) = delete;
    ReviewRun& operator=(const ReviewRun&) = delete;
    // Tells the plug-ins that the document goes, before it goes.
    ~ReviewRun();

    // Loads the plug-in library and tells its plug-ins of the document, as the host does
    // when a document is created. False with the reason in `error`.
    bool LoadLibrary(const std::string& path, std::string* error);
    // The plug-in of the loaded library with this registered name, or null.
    ZtOpPlugin* FindPlugin(const char* registeredName) const;

    ZtOpPluginLibrary library;
    ZtOpState state;
    std::vector<StepResult> steps;
    // What a person should hear of although the run goes on, in the order found; any step
    // may add one.
    std::vector<std::string> warnings;
    bool listedPlugins = false;
    // The project database that every model of the run takes its attributes from, as the
    // user named it for the whole run; null if none was.
    std::unique_ptr<AttributeSource> attributes;
    // The scene set of the last open that read its control file.
    std::unique_ptr<OpenedSceneSet> sceneSet;
    // What the last evaluation of every selection set found.
    std::optional<std::vector<SelectionResult>> selections;
    // The files the steps read so far, which no later step writes over.
    std::vector<RunInput> inputs;
};
