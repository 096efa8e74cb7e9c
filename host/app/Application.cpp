#include "app/Application.h"

#include "app/CommandLine.h"
#include "app/RedlineOptions.h"
#include "app/Report.h"
#include "app/Session.h"
#include "app/Steps.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpDB.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kHostFailure = 2;

int Fail(const std::string& message) {
    std::fprintf(stderr, "pdsreview: %s\n", message.c_str());
    return kHostFailure;
}

// The plug-in library beside this program, as the build tree has it, or else in the
// installed tree's lib folder beside bin.
std::string DefaultPluginPath() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path folder = error ? std::filesystem::path(".") : self.parent_path();
    const std::filesystem::path beside = folder / "ztodpds.so";
    const std::filesystem::path installed = folder / ".." / "lib" / "ztodpds.so";
    if (!std::filesystem::exists(beside, error) && std::filesystem::exists(installed, error))
        return installed.lexically_normal();
    return beside;
}

} // namespace

int RunPdsReview(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    CommandLine commandLine;
    std::string error;
    if (!ParseCommandLine(args, &commandLine, &error)) {
        std::fprintf(stderr, "pdsreview: %s\n%s", error.c_str(), UsageText());
        return kHostFailure;
    }
    if (commandLine.help) {
        std::fputs(UsageText(), stdout);
        return 0;
    }
    Session session(commandLine);
    // The host's own model loader is there before any plug-in library.
    ZtDgnRegisterLoaderPlugin();
    ZtOpDB::SetControlMode(static_cast<ZtOpDB::EMode>(commandLine.controlMode));
    const std::string pluginPath =
        commandLine.pluginPath.empty() ? DefaultPluginPath() : commandLine.pluginPath;
    if (!session.LoadLibrary(pluginPath, &error))
        return Fail(error);
    // Refuse a run that can't be done before any step changes anything.
    std::vector<StepHandler> handlers;
    for (const Step& step : commandLine.steps) {
        StepHandler handler = FindStepHandler(session, step.name, &error);
        if (!handler)
            return Fail(error);
        handlers.push_back(handler);
    }
    if (commandLine.nextIds) {
        session.state.SetNextTagId(commandLine.nextIds->first);
        session.state.SetNextCommentId(commandLine.nextIds->second);
    }
    ApplyRedlineOptions(session.state, commandLine.redlineColor, commandLine.redlineThickness);
    if (commandLine.uorsPerMaster) {
        auto* model = new ZtDgnModel(L"", session.state.EditNameDict());
        model->SetUorsPerMaster(*commandLine.uorsPerMaster);
        session.state.GetRootNode()->AddChild(model);
    }

    int status = 0;
    for (std::size_t i = 0; i < commandLine.steps.size() && status == 0; ++i) {
        const Step& step = commandLine.steps[i];
        session.progress.Start(step.name);
        const StepOutcome outcome = handlers[i](session, step);
        session.progress.Finish();
        if (!outcome.hostError.empty())
            return Fail(outcome.hostError);
        session.steps.push_back({step.name, step.argument, outcome.status});
        status = outcome.status;
        if (status != 0)
            std::fprintf(stderr, "pdsreview: %s %s: status %d, %s\n", step.name.c_str(),
                         step.argument.c_str(), status, StatusMeaning(status));
    }

    const std::string report = commandLine.json ? JsonReport(session) : SummaryReport(session);
    std::fwrite(report.data(), 1, report.size(), stdout);
    return status;
}
