#include "app/Steps.h"

#include "app/CommandLine.h"
#include "app/DisplaySetBudget.h"
#include "app/ModelStep.h"
#include "app/Session.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"
#include "ztutil/ZtUSysString.h"

#include <cstdio>

namespace {

StepOutcome ListPlugins(Session& session, const Step&) {
    session.listedPlugins = true;
    return {};
}

// A menu entry of the plug-in library: the host hands the plug-in the document, the
// progress bar and the chosen file.
StepOutcome RunExport(Session& session, const Step& step, const char* registeredName) {
    auto* plugin = dynamic_cast<ZtOpExportPlugin*>(session.FindPlugin(registeredName));
    if (!plugin)
        return {0, std::string("the plug-in ") + registeredName + " is no menu plug-in"};
    const ZtUWideString path(ZtUSysString::PathToWide(step.argument));
    return {plugin->IExport(0, &session.state, &session.progress, &path), {}};
}

StepOutcome ImportTags(Session& session, const Step& step) {
    return RunExport(session, step, "ZtOdPdsTagImportPlugin");
}

StepOutcome ExportTags(Session& session, const Step& step) {
    return RunExport(session, step, "ZtOdPdsTagExportPlugin");
}

StepOutcome ImportDisplaySets(Session& session, const Step& step) {
    const DisplaySetBudget budget(session.state);
    StepOutcome outcome = RunExport(session, step, "ZtOdPdsDstImportPlugin");
    const std::wstring path = ZtUSysString::PathToWide(step.argument);
    if (const std::size_t abandoned = budget.CountAbandoned(session.state, path.c_str()))
        std::fprintf(stderr,
                     "pdsreview: warning: %zu display sets of %s were abandoned: the file's "
                     "sets would hold more than %llu conditions in all\n",
                     abandoned, step.argument.c_str(),
                     static_cast<unsigned long long>(DisplaySetBudget::kFileConditions));
    return outcome;
}

StepOutcome Open(Session& session, const Step& step) {
    auto* loader = dynamic_cast<ZtOpSceneSetPlugin*>(session.FindPlugin("ZtOdPdsDriLoaderPlugin"));
    if (!loader)
        return {0, "the plug-in ZtOdPdsDriLoaderPlugin is no scene-set plug-in"};
    return {RunOpenStep(session.state, *loader, ZtUSysString::PathToWide(step.argument),
                        session.options.open, &session.sceneSet, &session.progress),
            {}};
}

StepOutcome LoadModel(Session& session, const Step& step) {
    std::string reason;
    const int status = RunModelStep(session.state, ZtUSysString::PathToWide(step.argument), &reason,
                                    &session.progress);
    if (status != 0)
        return {status, reason};
    return {};
}

StepOutcome Select(Session& session, const Step&) {
    session.selections = ComputeSelections(session.state);
    return {};
}

struct StepEntry {
    const char* name;
    StepHandler handler;
    // The plug-in the step needs, if any.
    const char* plugin;
};

constexpr StepEntry kHandlers[] = {
    {"plugins", ListPlugins, nullptr},
    {"open", Open, "ZtOdPdsDriLoaderPlugin"},
    {"import-tags", ImportTags, "ZtOdPdsTagImportPlugin"},
    {"export-tags", ExportTags, "ZtOdPdsTagExportPlugin"},
    {"import-dst", ImportDisplaySets, "ZtOdPdsDstImportPlugin"},
    {"model", LoadModel, nullptr},
    {"select", Select, nullptr},
};

} // namespace

const char* StatusMeaning(int status) {
    switch (status) {
    case 0:
        return "done";
    case 1:
        return "no file name, or the file can't be opened or created";
    case 3:
        return "no document, or a pass over the file failed";
    case 6:
        return "the models give no units-of-resolution factor, or the document has no saved views";
    case 64:
        return "the control file can't be opened, or no block begins in it";
    case 128:
        return "the control file's first block is not DesignReview_Control";
    default:
        return "failed";
    }
}

StepHandler FindStepHandler(const Session& session, const std::string& name, std::string* why) {
    for (const StepEntry& entry : kHandlers) {
        if (name != entry.name)
            continue;
        if (entry.plugin && !session.FindPlugin(entry.plugin)) {
            *why = "step " + name + " needs the plug-in " + entry.plugin +
                   ", which the plug-in library does not offer";
            return nullptr;
        }
        return entry.handler;
    }
    *why = "unknown step '" + name + "'";
    return nullptr;
}
