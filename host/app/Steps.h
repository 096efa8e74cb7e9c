#pragma once
#include <string>

struct Session;
struct Step;

// What a step came to: the plug-in's status code, or a failure of the host itself
// (`hostError` set), which ends the run with exit status 2.
struct StepOutcome {
    int status = 0;
    std::string hostError;
};

using StepHandler = StepOutcome (*)(Session& session, const Step& step);

// What a plug-in's status code says went wrong, for the user.
const char* StatusMeaning(int status);

// The handler of a step, or null with the reason in `why` for a step that can't run with
// the loaded plug-in library (its plug-in is missing, as outside control mode 0).
StepHandler FindStepHandler(const Session& session, const std::string& name, std::string* why);
