#include "app/Steps.h"

#include "app/CommandLine.h"
#include "app/DisplaySetBudget.h"
#include "app/ExportedTagFile.h"
#include "app/ModelStep.h"
#include "app/ReportPage.h"
#include "app/ReportScene.h"
#include "app/SavedItems.h"
#include "app/TagLineEndBudget.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"
#include "ztutil/ZtUSysNativePath.h"
#include "ztutil/ZtUSysString.h"

#include <filesystem>

namespace {

// A warning when an import of a file that is not empty brought nothing in.
void WarnIfNothingCameIn(Session& session, const Step& step, const std::vector<StepCount>& counts) {
    for (const StepCount& count : counts)
        if (count.value != 0)
            return;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(ZtUSysNativePath(step.argument), error);
    if (!error && size > 0)
        session.warnings.push_back(step.name + " " + step.argument + ": nothing came in from " +
                                   std::to_string(size) + " bytes");
}

StepOutcome ListPlugins(Session& session, const Step&) {
    session.listedPlugins = true;
    return {};
}

// A menu entry of the plug-in library: the host hands the plug-in the document, the
// progress bar and the chosen file.
StepOutcome RunExport(Session& session, const Step& step, const char* registeredName) {
    auto* plugin = dynamic_cast<ZtOpExportPlugin*>(session.FindPlugin(registeredName));
    if (!plugin)
        return {0, std::string("the plug-in ") + registeredName + " is no menu plug-in", {}};
    const ZtUWideString path(ZtUSysString::PathToWide(step.argument));
    return {plugin->IExport(0, &session.state, &session.progress, &path), {}, {}};
}

// What came into the document between two counts of its saved items.
std::vector<StepCount> Imported(const SavedItemCounts& before, const SavedItemCounts& after,
                                bool views, bool sets) {
    std::vector<StepCount> counts;
    if (views) {
        counts.push_back({"views", after.views - before.views});
        counts.push_back({"tags", after.tags - before.tags});
    }
    counts.push_back({"comments", after.comments - before.comments});
    if (sets)
        counts.push_back({"selectionSets", after.selectionSets - before.selectionSets});
    return counts;
}

StepOutcome Import(Session& session, const Step& step, const char* registeredName, bool views) {
    const SavedItemCounts before = CountSavedItems(session.state);
    StepOutcome outcome = RunExport(session, step, registeredName);
    if (outcome.status != 0 || !outcome.hostError.empty())
        return outcome;
    outcome.counts = Imported(before, CountSavedItems(session.state), views, !views);
    WarnIfNothingCameIn(session, step, outcome.counts);
    return outcome;
}

StepOutcome ImportTags(Session& session, const Step& step) {
    const TagLineEndBudget budget(session.state);
    StepOutcome outcome = Import(session, step, "ZtOdPdsTagImportPlugin", true);
    if (outcome.status != 0 || !outcome.hostError.empty())
        return outcome;
    const std::wstring path = ZtUSysString::PathToWide(step.argument);
    if (const std::size_t dropped = budget.CountDropped(session.state, path.c_str()))
        session.warnings.push_back("import-tags " + step.argument + ": " + std::to_string(dropped) +
                                   " tags were dropped: their line ends would add more than " +
                                   std::to_string(TagLineEndBudget::kFileAddedLineEnds) +
                                   " characters in all");
    return outcome;
}

StepOutcome ImportDisplaySets(Session& session, const Step& step) {
    const DisplaySetBudget budget(session.state);
    StepOutcome outcome = Import(session, step, "ZtOdPdsDstImportPlugin", false);
    if (outcome.status != 0 || !outcome.hostError.empty())
        return outcome;
    const std::wstring path = ZtUSysString::PathToWide(step.argument);
    if (const std::size_t abandoned = budget.CountAbandoned(session.state, path.c_str()))
        session.warnings.push_back(
            "import-dst " + step.argument + ": " + std::to_string(abandoned) +
            " display sets were abandoned: the file's sets would hold "
            "more than " +
            std::to_string(DisplaySetBudget::kFileConditions) + " conditions in all");
    return outcome;
}

StepOutcome ExportTags(Session& session, const Step& step) {
    StepOutcome outcome = RunExport(session, step, "ZtOdPdsTagExportPlugin");
    if (outcome.status != 0 || !outcome.hostError.empty())
        return outcome;
    const std::optional<ExportedTagCounts> written =
        CountExportedTags(ZtUSysString::PathToWide(step.argument));
    if (!written)
        return outcome;
    const std::size_t tags = CountSavedItems(session.state).tags;
    const std::size_t dropped = tags > written->records ? tags - written->records : 0;
    outcome.counts = {{"records", written->records},
                      {"unfiled", written->unfiled},
                      {"fileGroups", written->fileGroups},
                      {"tagsDropped", dropped}};
    if (dropped > 0)
        session.warnings.push_back("export-tags " + step.argument + ": " + std::to_string(dropped) +
                                   " of " + std::to_string(tags) + " tags were not written");
    return outcome;
}

StepOutcome Open(Session& session, const Step& step) {
    auto* loader = dynamic_cast<ZtOpSceneSetPlugin*>(session.FindPlugin("ZtOdPdsDriLoaderPlugin"));
    if (!loader)
        return {0, "the plug-in ZtOdPdsDriLoaderPlugin is no scene-set plug-in", {}};
    const SavedItemCounts before = CountSavedItems(session.state);
    StepOutcome outcome;
    outcome.status = RunOpenStep(session.state, *loader, ZtUSysString::PathToWide(step.argument),
                                 session.options.open, &session.sceneSet, &session.progress);
    if (outcome.status != 0)
        return outcome;
    std::size_t loaded = 0;
    const ZtUOwnPtrVector<ZtOpSceneRef>& refs = session.sceneSet->set.GetSceneRefs();
    for (std::size_t i = 0; i < session.sceneSet->refs.size(); ++i) {
        const OpenedRef& ref = session.sceneSet->refs[i];
        if (ref.model) {
            ++loaded;
            continue;
        }
        const std::string name =
            i < refs.Size() ? ZtUSysString::WideToUtf8(refs[i]->GetSourceName().Str()) : "";
        session.warnings.push_back("open " + step.argument + ": model " + name +
                                   " not loaded: " + ref.notLoaded);
    }
    outcome.counts = {{"modelsLoaded", loaded},
                      {"modelsNotLoaded", session.sceneSet->refs.size() - loaded}};
    for (const StepCount& count : Imported(before, CountSavedItems(session.state), true, true))
        outcome.counts.push_back(count);
    return outcome;
}

StepOutcome LoadModel(Session& session, const Step& step) {
    std::string reason;
    const int status = RunModelStep(session.state, ZtUSysString::PathToWide(step.argument), &reason,
                                    &session.progress);
    if (status != 0)
        return {status, reason, {}};
    const ZtOaPartition* root = session.state.GetRootNode();
    const auto* model = dynamic_cast<const ZtDgnModel*>(root->GetChild(root->GetNumChildren() - 1));
    return {0, {}, {{"elements", model ? model->GetNumElements() : std::size_t{0}}}};
}

StepOutcome Select(Session& session, const Step&) {
    session.selections = ComputeSelections(session.state, &session.progress);
    std::size_t selected = 0;
    for (const SelectionResult& result : *session.selections)
        selected += result.elements.size();
    return {0, {}, {{"sets", session.selections->size()}, {"elementsSelected", selected}}};
}

// The review report page. The host's file layer records why a page could not be written.
StepOutcome WriteReport(Session& session, const Step& step) {
    if (!WriteReportPage(GatherReportScene(session), step.argument))
        return {kExitWriteFailed, {}, {}};
    return {};
}

constexpr StepKind kStepKinds[] = {
    {"plugins", nullptr, "list the plug-ins of the plug-in library", nullptr, ListPlugins},
    {"open", "FILE.dri", "open a design review with its models and side files",
     "ZtOdPdsDriLoaderPlugin", Open},
    {"import-tags", "FILE.tag", "import review tags", "ZtOdPdsTagImportPlugin", ImportTags},
    {"import-dst", "FILE.dst", "import display sets", "ZtOdPdsDstImportPlugin", ImportDisplaySets},
    {"export-tags", "FILE.tag", "export the document's review tags", "ZtOdPdsTagExportPlugin",
     ExportTags},
    {"select", nullptr, "evaluate every selection set over the loaded models", nullptr, Select},
    {"model", "FILE.dgn", "load one model into the document's scene", nullptr, LoadModel},
    {"report", "FILE.html", "write a page that shows the review", nullptr, WriteReport},
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
    if (kind->plugin && !session.FindPlugin(kind->plugin)) {
        *why = "step " + name + " needs the plug-in " + kind->plugin +
               ", which the plug-in library does not offer";
        return nullptr;
    }
    return kind->handler;
}
