#pragma once
#include "app/CommandLine.h"
#include "app/OpenStep.h"
#include "app/ProgressBar.h"
#include "app/SelectStep.h"
#include "ztplugin/ZtOpPluginLibrary.h"
#include "ztplugin/ZtOpState.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ZtOpPlugin;

// One figure of what a step did, under its JSON name ("views", "modelsLoaded", ...).
struct StepCount {
    std::string name;
    std::size_t value = 0;
};

// The outcome of one step, as the report shows it.
struct StepResult {
    std::string step;
    std::string file; // as given on the command line; empty for steps without a file
    int status = 0;
    std::vector<StepCount> counts;
    std::string message; // what went wrong, when status is not 0
};

// One run of pdsreview: the document, the loaded plug-in library and what the steps did.
// The document is destroyed before the library, whose code its objects may still call.
struct Session {
    explicit Session(const CommandLine& commandLine);
    // Tells the plug-ins that the document goes, before it goes.
    ~Session();

    // Loads the plug-in library and tells its plug-ins of the document, as the host does
    // when a document is created. False with the reason in `error`.
    bool LoadLibrary(const std::string& path, std::string* error);

    const CommandLine& options;
    ZtOpPluginLibrary library;
    ZtOpState state;
    ProgressBar progress;
    std::vector<StepResult> steps;
    // What a person should hear of although the run goes on, in the order found; any step
    // may add one. They go to standard error after their step, into the JSON's
    // "warnings", and fail the run under --strict.
    std::vector<std::string> warnings;
    bool listedPlugins = false;
    // The scene set of the last open step that read its control file.
    std::unique_ptr<OpenedSceneSet> sceneSet;
    // What the last select step found.
    std::optional<std::vector<SelectionResult>> selections;

    // The plug-in of the loaded library with this registered name, or null.
    ZtOpPlugin* FindPlugin(const char* registeredName) const;
};
