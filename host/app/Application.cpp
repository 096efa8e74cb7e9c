#include "app/Application.h"

#include "app/CommandLine.h"
#include "app/ExitStatus.h"
#include "app/ProcessEnvironment.h"
#include "app/RedlineOptions.h"
#include "app/Steps.h"
#include "app/Usage.h"
#include "report/ReadableText.h"
#include "report/ReportStream.h"
#include "report/RunReport.h"
#include "review/RunFiles.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpDB.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysNativePath.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

int Fail(const std::string& message, int status = kExitHostFailure) {
    std::fprintf(stderr, "pdsreview: %s\n", ReadableText(message).c_str());
    return status;
}

// The plug-in library beside this program, as the build tree has it, or else in the
// installed tree's private library folder.
std::string DefaultPluginPath() {
    std::error_code error;
    const std::filesystem::path folder = ProcessEnvironment::ProgramFolder();
    const char* name = ProcessEnvironment::PluginFileName();
    const std::filesystem::path beside = folder / name;
    const std::filesystem::path installed = folder / ZTODPDS_INSTALLED_PLUGIN_DIR / name;
    if (!std::filesystem::exists(beside, error) && std::filesystem::exists(installed, error))
        return ZtUSysHostPath(installed.lexically_normal());
    return ZtUSysHostPath(beside);
}

// The library to load for --plugin: a name without a folder that exists in the working
// directory is that file, not a name for the dynamic linker's search.
std::string PluginPath(const std::string& given) {
    if (given.empty())
        return DefaultPluginPath();
    std::error_code error;
    if (given.find('/') == std::string::npos &&
        std::filesystem::exists(ZtUSysNativePath(given), error))
        return "./" + given;
    return given;
}

// Runs one step, and makes a failed write of the host's a failure of the step. A failure
// of the host itself goes to `hostError`.
StepResult RunStep(Session& session, const Step& step, StepHandler handler,
                   std::string* hostError) {
    ReviewRun& run = session.run;
    const std::size_t warnings = run.warnings.size();
    StepOutcome outcome;
    std::vector<ZtUFileScope::Failure> writes;
    {
        StepFiles files(run, step);
        session.progress.Start(step.name);
        outcome = handler(session, step);
        session.progress.Finish();
        files.AddWarnings();
        writes = files.GetFailures();
    }
    StepResult result{step.name,
                      step.argument,
                      outcome.status,
                      std::move(outcome.counts),
                      {},
                      std::move(outcome.sideFiles),
                      std::move(outcome.attributeSource)};
    if (!outcome.hostError.empty()) {
        *hostError = outcome.hostError;
        return result;
    }
    if (result.status == 0 && !writes.empty())
        result.status = kExitWriteFailed;
    if (result.status != 0) {
        // What a failed step counted or warned of is not so: its message says what happened.
        result.counts.clear();
        result.sideFiles.reset();
        run.warnings.resize(warnings);
        result.message = ExplainFailure(step, {result.status, writes, run.state});
        std::error_code error;
        if (!writes.empty() &&
            std::filesystem::is_regular_file(ZtUSysNativePath(writes.front().path), error))
            result.message += "; the old file is left as it was";
    }
    return result;
}

// Flushes what is left of a report; false with the reason if standard output did not
// take all of it.
bool FinishOutput(ReportStream& out, std::string* why) {
    if (out.Flush())
        return true;
    *why = std::string("cannot write standard output: ") +
           (out.Error() ? std::strerror(out.Error()) : "write error");
    return false;
}

} // namespace

int RunPdsReview(const std::vector<std::string>& args) {
    CommandLine commandLine;
    std::string error;
    if (!ParseCommandLine(args, &commandLine, &error)) {
        std::fprintf(stderr, "pdsreview: %s\nTry 'pdsreview --help' for more.\n",
                     ReadableText(error).c_str());
        return kExitHostFailure;
    }
    if (commandLine.help || commandLine.version) {
        ReportStream out(stdout);
        out += commandLine.help ? UsageText() : std::string("pdsreview ") + ZTODPDS_VERSION + "\n";
        return FinishOutput(out, &error) ? 0 : Fail(error, kExitWriteFailed);
    }
    Session session(commandLine);
    // The host's own model loader is there before any plug-in library.
    ZtDgnRegisterLoaderPlugin();
    ZtOpDB::SetControlMode(static_cast<ZtOpDB::EMode>(commandLine.controlMode));
    ReviewRun& run = session.run;
    if (!run.LoadLibrary(PluginPath(commandLine.pluginPath), &error))
        return Fail(error);
    // Refuse a run that can't be done before any step changes anything.
    std::vector<StepHandler> handlers;
    for (const Step& step : commandLine.steps) {
        StepHandler handler = FindStepHandler(session, step.name, &error);
        if (!handler)
            return Fail(error);
        handlers.push_back(handler);
    }
    const std::string refused = RefusedOutputOfSteps(commandLine);
    if (!refused.empty())
        return Fail(refused);
    // A source that can't be read ends the run before any step, so that no model is left
    // half given its attributes.
    if (!commandLine.attributes.empty()) {
        run.attributes = AttributeSource::Open(commandLine.attributes, &error);
        if (!run.attributes)
            return Fail(error);
    }
    if (commandLine.nextIds) {
        run.state.SetNextTagId(commandLine.nextIds->first);
        run.state.SetNextCommentId(commandLine.nextIds->second);
    }
    ApplyRedlineOptions(run.state, commandLine.redlineColor, commandLine.redlineThickness);
    if (commandLine.uorsPerMaster) {
        auto* model = new ZtDgnModel(L"", run.state.EditNameDict());
        model->SetUorsPerMaster(*commandLine.uorsPerMaster);
        run.state.GetRootNode()->AddChild(model);
    }

    int status = 0;
    std::size_t warned = 0;
    for (std::size_t i = 0; i < commandLine.steps.size() && status == 0; ++i) {
        const Step& step = commandLine.steps[i];
        run.steps.push_back(RunStep(session, step, handlers[i], &error));
        if (!error.empty())
            return Fail(error);
        const StepResult& result = run.steps.back();
        for (; warned < run.warnings.size(); ++warned)
            std::fprintf(stderr, "pdsreview: warning: %s\n",
                         ReadableText(run.warnings[warned]).c_str());
        status = result.status;
        if (status != 0)
            std::fprintf(stderr, "pdsreview: %s: status %d: %s\n",
                         ReadableText(step.name + " " + step.argument).c_str(), status,
                         ReadableText(result.message).c_str());
        else if (commandLine.strict && !run.warnings.empty())
            status = kExitStrictWarning;
    }
    if (status == kExitStrictWarning)
        std::fprintf(stderr, "pdsreview: stopped after %s: a warning under --strict\n",
                     run.steps.back().step.c_str());

    // Written as it is made: the report may be many times the size of what came in.
    session.progress.Start("report");
    std::function<void()> clearBar;
    if (ProcessEnvironment::IsTerminal(1))
        clearBar = [&session] { session.progress.Finish(); };
    ReportStream out(stdout, std::move(clearBar),
                     commandLine.json ? ReportStream::Text::kAsWritten
                                      : ReportStream::Text::kReadable);
    if (commandLine.json)
        WriteJsonReport(out, run, commandLine.elements, &session.progress);
    else
        WriteSummaryReport(out, run);
    session.progress.Finish();
    if (!FinishOutput(out, &error))
        return Fail(error, kExitWriteFailed);
    return status;
}
