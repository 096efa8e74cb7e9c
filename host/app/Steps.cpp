#include "app/Steps.h"

#include "app/ExitStatus.h"
#include "app/ProcessEnvironment.h"
#include "bcf/BcfSteps.h"
#include "report/ReportPage.h"
#include "report/ReportScene.h"
#include "review/FileProblems.h"
#include "review/OpenRoad.h"
#include "review/RunFiles.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

namespace {

constexpr const char* kNoModel =
    "no model is loaded to give the tags their units: load one first with 'open FILE.dri' "
    "or 'model FILE.dgn', or give --uors-per-master F";

std::string CannotWrite(const ZtUFileScope::Failure& write) {
    return "cannot write " + write.path + ": " + write.reason;
}

// A step that reads its file: what is wrong with the file, else what the status means
// for that file.
std::string ExplainRead(const Step& step, const StepFailure& failure) {
    const std::string problem = ReadProblem(step.argument);
    if (!problem.empty())
        return problem;
    if (failure.status == 6)
        return kNoModel;
    if (failure.status == 64)
        return "no block begins in " + step.argument;
    return {};
}

std::string ExplainExport(const Step& step, const StepFailure& failure) {
    const std::string problem = WriteProblem(step.argument);
    if (!problem.empty())
        return "cannot write " + step.argument + ": " + problem;
    if (!failure.writes.empty())
        return CannotWrite(failure.writes.front());
    if (failure.status == 6)
        return HasModel(failure.state) ? "the document has no saved views to export" : kNoModel;
    return {};
}

std::string ExplainNothing(const Step&, const StepFailure&) {
    return {};
}

StepOutcome Plugins(Session& session, const Step&) {
    return ListPlugins(session.run);
}

StepOutcome Open(Session& session, const Step& step) {
    OpenParameters parameters = session.options.open;
    parameters.threads = session.options.threads;
    return OpenReview(session.run, step, parameters, &session.progress);
}

StepOutcome ImportTagFile(Session& session, const Step& step) {
    return ImportTags(session.run, step, &session.progress);
}

StepOutcome ImportDstFile(Session& session, const Step& step) {
    return ImportDisplaySets(session.run, step, &session.progress);
}

StepOutcome ExportTagFile(Session& session, const Step& step) {
    return ExportTags(session.run, step, session.options.strict, session.options.threads,
                      &session.progress);
}

StepOutcome Select(Session& session, const Step&) {
    return SelectAll(session.run, &session.progress);
}

StepOutcome Model(Session& session, const Step& step) {
    return LoadModel(session.run, step, &session.progress);
}

// The review page. The host's file layer records why a page could not be written.
StepOutcome Report(Session& session, const Step& step) {
    if (!WriteReportPage(GatherReportScene(session.run, session.options.threads), step.argument,
                         session.options.threads))
        return {kExitWriteFailed, {}, {}, {}, {}};
    return {};
}

StepOutcome ExportBcfFile(Session& session, const Step& step) {
    return ExportBcf(session.run, step, session.options.bcf);
}

StepOutcome ImportBcfFile(Session& session, const Step& step) {
    return ImportBcf(session.run, step, &session.progress);
}

constexpr StepKind kStepKinds[] = {
    {"plugins",
     nullptr,
     FileUse::kNone,
     "list the plug-ins that the library's entry function gives",
     nullptr,
     {},
     Plugins,
     ExplainNothing},
    {"open",
     "FILE.dri",
     FileUse::kReadsControlFile,
     "open a design review: its models, placed, and the tag and\ndisplay-set files and the "
     "project database beside it",
     "ZtOdPdsDriLoaderPlugin",
     {2, 64, 128},
     Open,
     ExplainRead},
    {"import-tags",
     "FILE.tag",
     FileUse::kReads,
     "import review tags",
     "ZtOdPdsTagImportPlugin",
     {1, 3, 6},
     ImportTagFile,
     ExplainRead},
    {"import-dst",
     "FILE.dst",
     FileUse::kReads,
     "import display sets as saved selection sets",
     "ZtOdPdsDstImportPlugin",
     {1, 3},
     ImportDstFile,
     ExplainRead},
    {"export-tags",
     "FILE.tag",
     FileUse::kWrites,
     "write the document's review tags",
     "ZtOdPdsTagExportPlugin",
     {1, 3, 4, 6},
     ExportTagFile,
     ExplainExport},
    {"export-bcf",
     "FILE.bcfzip",
     FileUse::kWrites,
     "write the document's review tags as BCF topics, a topic a tag",
     nullptr,
     {4},
     ExportBcfFile,
     ExplainExport},
    {"import-bcf",
     "FILE.bcfzip",
     FileUse::kReads,
     "import the topics of a BCF file as saved views with their tags",
     "ZtOdPdsTagImportPlugin",
     {1, 2, 6},
     ImportBcfFile,
     ExplainRead},
    {"select",
     nullptr,
     FileUse::kNone,
     "evaluate every selection set over the loaded models",
     nullptr,
     {},
     Select,
     ExplainNothing},
    {"model",
     "FILE.dgn",
     FileUse::kReads,
     "load one model into the document's scene, unplaced",
     nullptr,
     {2},
     Model,
     ExplainNothing},
    {"report",
     "FILE.html",
     FileUse::kWrites,
     "write a page that shows the review as the document stands",
     nullptr,
     {4},
     Report,
     ExplainNothing},
};

} // namespace

Session::Session(const CommandLine& commandLine)
    : options(commandLine),
      progress(stderr, !commandLine.quiet && ProcessEnvironment::IsTerminal(2)) {}

std::span<const StepKind> StepKinds() {
    return kStepKinds;
}

const StepKind* FindStepKind(std::string_view name) {
    for (const StepKind& kind : kStepKinds)
        if (name == kind.name)
            return &kind;
    return nullptr;
}

StepHandler FindStepHandler(const Session& session, const std::string& name, std::string* why) {
    const StepKind* kind = FindStepKind(name);
    if (!kind) {
        *why = "unknown step '" + name + "'";
        return nullptr;
    }
    if (kind->plugin && !session.run.FindPlugin(kind->plugin)) {
        *why = "step " + name + " needs the plug-in " + kind->plugin +
               ", which the plug-in library does not offer";
        return nullptr;
    }
    return kind->handler;
}

std::string RefusedOutputOfSteps(const CommandLine& commandLine) {
    std::vector<NamedFile> inputs;
    std::vector<NamedFile> outputs;
    for (const Step& step : commandLine.steps) {
        const StepKind* kind = FindStepKind(step.name);
        const std::string label = step.name + " " + step.argument;
        if (kind->use == FileUse::kWrites)
            outputs.push_back({step.argument, label});
        if (kind->use == FileUse::kReads || kind->use == FileUse::kReadsControlFile)
            inputs.push_back({step.argument, label});
        if (kind->use == FileUse::kReadsControlFile)
            for (const std::wstring& side :
                 SideFilesOf(ZtUSysString::PathToWide(step.argument), commandLine.open))
                inputs.push_back({ZtUSysString::WideToPath(side), label});
    }
    return RefusedOutput(inputs, outputs);
}

std::string ExplainFailure(const Step& step, const StepFailure& failure) {
    if (const StepKind* kind = FindStepKind(step.name)) {
        std::string message = kind->explain(step, failure);
        if (!message.empty())
            return message;
    }
    if (!failure.writes.empty())
        return CannotWrite(failure.writes.front());
    return StatusMeaning(failure.status);
}
