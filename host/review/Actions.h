#pragma once
#include "review/OpenRoad.h"
#include "review/ReviewRun.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class ZtOpProgress;

// What an action came to: the plug-in's status code, or a failure of the host itself
// (`hostError` set: the host can't do what was asked); and what the action did.
struct StepOutcome {
    int status = 0;
    std::string hostError;
    std::vector<StepCount> counts;
    // For an open, the files beside the control file that it read.
    std::optional<std::vector<std::string>> sideFiles;
    std::string attributeSource; // see StepResult
};

// The host's actions on a run's document, one for each thing a user can ask of it. Each
// finds the plug-in it needs among the run's, counts what it did, and adds to the run's
// warnings what the user should hear of though the action succeeded, each beginning with
// the step's name and file. What the plug-in ignored, dropped or read otherwise than
// written in the files it read comes from the checker, which runs the library's readers
// over the same files: a warning a finding, at its file and line.

// Lists the plug-ins of the loaded library.
StepOutcome ListPlugins(ReviewRun& run);
// Opens a design review: the control file's road, its models placed, its side files
// imported.
StepOutcome OpenReview(ReviewRun& run, const Step& step, const OpenParameters& parameters,
                       ZtOpProgress* progress);
// The menu imports of review tags and display sets.
StepOutcome ImportTags(ReviewRun& run, const Step& step, ZtOpProgress* progress);
StepOutcome ImportDisplaySets(ReviewRun& run, const Step& step, ZtOpProgress* progress);
// The menu export of the document's review tags. The counts come from what the export
// wrote (see TagExportTally), and so do the warnings of what the tag format can't carry
// back; with `keepOldFileOnWarning` such a warning keeps the old file as it was.
StepOutcome ExportTags(ReviewRun& run, const Step& step, bool keepOldFileOnWarning,
                       std::size_t threads, ZtOpProgress* progress);
// Loads one model into the document's scene, unplaced.
StepOutcome LoadModel(ReviewRun& run, const Step& step, ZtOpProgress* progress);
// Evaluates every selection set of the document over the loaded models.
StepOutcome SelectAll(ReviewRun& run, ZtOpProgress* progress);
