#pragma once
#include "app/CommandLine.h"
#include "app/ProgressBar.h"
#include "review/Actions.h"
#include "review/ReviewRun.h"
#include "ztutil/ZtUFileScope.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// One run of pdsreview: what it was asked, the review it runs and the bar that shows how
// far each step got.
struct Session {
    explicit Session(const CommandLine& commandLine);

    const CommandLine& options;
    ReviewRun run;
    ProgressBar progress;
};

using StepHandler = StepOutcome (*)(Session& session, const Step& step);

// What a failed step's message can draw on beside its status: the failures of the host's
// write streams during the step, and the document as the step left it.
struct StepFailure {
    int status;
    const std::vector<ZtUFileScope::Failure>& writes;
    const ZtOpState& state;
};

// What a step does with its file. A control file comes with the side files beside it.
enum class FileUse { kNone, kReads, kReadsControlFile, kWrites };

// A step of the command line: everything parsing, the usage, the run and the README know
// of it.
struct StepKind {
    const char* name;
    const char* file; // the usage's name for the step's file; null: the step takes none
    FileUse use;
    const char* summary; // the step's line of the usage
    const char* plugin;  // the plug-in the step needs, if any
    // The statuses other than 0 that the step itself can end with, ascending, 0 after the
    // last (any step can also end with 2 for a missing plug-in, and 5 under --strict).
    std::array<int, 4> statuses;
    StepHandler handler;
    // What went wrong, for the user: a status code covers several causes, so the step
    // looks at its file and the document to say which one applies. Empty when the step
    // knows no more than the status says.
    std::string (*explain)(const Step& step, const StepFailure& failure);
};

// Every step, in the order of the usage.
std::span<const StepKind> StepKinds();
// The step of that name, or null.
const StepKind* FindStepKind(std::string_view name);

// The handler of a step, or null with the reason in `why` for a step that can't run with
// the loaded plug-in library (its plug-in is missing, as outside control mode 0).
StepHandler FindStepHandler(const Session& session, const std::string& name, std::string* why);

// Why the run must not start because of what its steps write (see RefusedOutput): the
// inputs are the files of the steps that read and the side files of the control files
// that `open` steps read; empty if nothing is refused.
std::string RefusedOutputOfSteps(const CommandLine& commandLine);

// The message of a failed step: what its kind can say, else what the writes or the status
// say.
std::string ExplainFailure(const Step& step, const StepFailure& failure);
