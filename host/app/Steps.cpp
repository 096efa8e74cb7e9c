#include "app/Steps.h"

#include "app/CommandLine.h"
#include "app/Session.h"

#include <cstring>

namespace {

StepOutcome ListPlugins(Session& session, const Step&) {
    session.listedPlugins = true;
    return {};
}

struct StepEntry {
    const char* name;
    StepHandler handler;
};

constexpr StepEntry kHandlers[] = {
    {"plugins", ListPlugins},
};

} // namespace

StepHandler FindStepHandler(const std::string& name) {
    for (const StepEntry& entry : kHandlers)
        if (name == entry.name)
            return entry.handler;
    return nullptr;
}
