#pragma once
#include "app/Session.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

struct Step;

// The exit statuses of pdsreview's own: beside the plug-in's status codes (0, 1, 3, 6, 64,
// 128), none of which they share.
constexpr int kExitHostFailure = 2;   // a usage error, or the host can't do what was asked
constexpr int kExitWriteFailed = 4;   // a file or standard output could not be written
constexpr int kExitStrictWarning = 5; // --strict, and a step gave a warning

// What a step came to: the plug-in's status code, or a failure of the host itself
// (`hostError` set), which ends the run with exit status 2; and what the step did.
struct StepOutcome {
    int status = 0;
    std::string hostError;
    std::vector<StepCount> counts;
};

using StepHandler = StepOutcome (*)(Session& session, const Step& step);

// What a plug-in's status code says went wrong, for the user.
const char* StatusMeaning(int status);

// A step of the command line, as parsing, the usage text and the run all know it.
struct StepKind {
    const char* name;
    const char* file;    // the usage's name for the step's file; null: the step takes none
    const char* summary; // the step's line of the usage
    const char* plugin;  // the plug-in the step needs, if any
    StepHandler handler;
};

// Every step, in the order of the usage.
std::span<const StepKind> StepKinds();
// The step of that name, or null.
const StepKind* FindStepKind(std::string_view name);

// The handler of a step, or null with the reason in `why` for a step that can't run with
// the loaded plug-in library (its plug-in is missing, as outside control mode 0).
StepHandler FindStepHandler(const Session& session, const std::string& name, std::string* why);
