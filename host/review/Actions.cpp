#include "review/Actions.h"

#include "review/AttributeSource.h"
#include "review/CheckWarnings.h"
#include "review/ModelLoad.h"
#include "review/SavedItems.h"
#include "review/TagExportTally.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztplugin/ZtOpFilePlugin.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysNativePath.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <filesystem>

namespace {

// A menu entry of the plug-in library: the host hands the plug-in the document, the
// progress and the chosen file.
StepOutcome RunExport(ReviewRun& run, const Step& step, const char* registeredName,
                      ZtOpProgress* progress) {
    auto* plugin = dynamic_cast<ZtOpExportPlugin*>(run.FindPlugin(registeredName));
    if (!plugin)
        return {
            0, std::string("the plug-in ") + registeredName + " is no menu plug-in", {}, {}, {}};
    const ZtUWideString path(ZtUSysString::PathToWide(step.argument));
    return {plugin->IExport(0, &run.state, progress, &path), {}, {}, {}, {}};
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

StepOutcome Import(ReviewRun& run, const Step& step, const char* registeredName, bool views,
                   ZtOpProgress* progress) {
    // The check comes first and is gone before the import, so that the two never hold
    // what they read at once.
    AddCheckWarnings(run, step, views ? FileKind::kTags : FileKind::kDisplaySets);
    const SavedItemCounts before = CountSavedItems(run.state);
    StepOutcome outcome = RunExport(run, step, registeredName, progress);
    if (outcome.status != 0 || !outcome.hostError.empty())
        return outcome;
    outcome.counts = Imported(before, CountSavedItems(run.state), views, !views);
    return outcome;
}

// The database beside a control file: its name with the extension ".db".
std::string DatabaseBeside(const std::string& controlFile) {
    const std::size_t name = controlFile.find_last_of("/\\");
    const std::size_t dot = controlFile.rfind('.');
    const bool extension = dot != std::string::npos && (name == std::string::npos || dot > name);
    return (extension ? controlFile.substr(0, dot) : controlFile) + ".db";
}

// The source an open takes its models' attributes from: the run's own, else the database
// beside the control file, opened into `beside`. Null if there is none, or with the
// problem in `error` if it can't be read.
AttributeSource* OpenReviewSource(ReviewRun& run, const Step& step,
                                  const OpenParameters& parameters,
                                  std::unique_ptr<AttributeSource>& beside, std::string* error) {
    if (run.attributes || !parameters.readAttributeDatabase)
        return run.attributes.get();
    const std::string database = DatabaseBeside(step.argument);
    std::error_code ignored;
    if (!std::filesystem::exists(ZtUSysNativePath(database), ignored))
        return nullptr;
    if (!AttributeSource::Available()) {
        run.warnings.push_back("open " + step.argument + ": " + database +
                               " beside it is not read: this build reads no attribute "
                               "sources");
        return nullptr;
    }
    beside = AttributeSource::Open(database, error);
    return beside.get();
}

// What the models of a step took from `source`: the counts of elements with attributes
// and of their attributes, the source's name, and a warning of rows with a NULL.
void NoteAttributes(ReviewRun& run, const Step& step, const AttributeSource& source,
                    const std::vector<const ZtDgnModel*>& models, StepOutcome& outcome) {
    std::size_t elements = 0, attributes = 0;
    for (const ZtDgnModel* model : models)
        if (const ZtDgnAttributeStore* store = model->GetAttributeStore()) {
            elements += store->GetElementsWithAttributes();
            attributes += store->GetAttributeCount();
        }
    outcome.counts.push_back({"elementsWithAttributes", elements});
    outcome.counts.push_back({"attributes", attributes});
    outcome.attributeSource = source.GetName();
    if (const std::size_t rows = source.GetRowsWithNull())
        run.warnings.push_back(step.name + " " + step.argument + ": attribute source " +
                               source.GetName() + ": " + std::to_string(rows) +
                               (rows == 1 ? " row" : " rows") +
                               " with a NULL in a column passed over");
}

} // namespace

StepOutcome ListPlugins(ReviewRun& run) {
    run.listedPlugins = true;
    return {};
}

StepOutcome ImportTags(ReviewRun& run, const Step& step, ZtOpProgress* progress) {
    return Import(run, step, "ZtOdPdsTagImportPlugin", true, progress);
}

StepOutcome ImportDisplaySets(ReviewRun& run, const Step& step, ZtOpProgress* progress) {
    return Import(run, step, "ZtOdPdsDstImportPlugin", false, progress);
}

StepOutcome ExportTags(ReviewRun& run, const Step& step, bool keepOldFileOnWarning,
                       std::size_t threads, ZtOpProgress* progress) {
    std::vector<std::wstring> modelNames;
    const std::vector<const ZtDgnModel*> models = SceneModels(run.state);
    for (const ZtDgnModel* model : models) {
        ZtUWideStringBuffer name;
        ZtUSysFile::RemovePathnameW(model->GetSourceFilename().GetString(), &name);
        modelNames.push_back(name.Str());
    }
    const std::size_t savedTags = CountSavedItems(run.state).tags;
    MakeIndexesForTagPicks(run.state, threads);
    TagExportTally tally(savedTags, std::move(modelNames), keepOldFileOnWarning);
    StepOutcome outcome;
    {
        ZtUFileScope watched;
        watched.Watch(&tally);
        outcome = RunExport(run, step, "ZtOdPdsTagExportPlugin", progress);
    }
    if (outcome.status != 0 || !outcome.hostError.empty())
        return outcome;
    const std::size_t tags = CountSavedItems(run.state).tags;
    const std::size_t records = tally.GetRecords().size();
    outcome.counts = {{"records", records},
                      {"unfiled", tally.GetUnfiled()},
                      {"fileGroups", tally.GetFileGroups()},
                      {"tagsDropped", tags > records ? tags - records : 0}};
    const std::string prefix = "export-tags " + step.argument + ": ";
    for (const std::string& problem : tally.GetProblems())
        run.warnings.push_back(prefix + problem);
    if (tally.KeptOldFile())
        run.warnings.push_back(prefix + "under --strict the export is not put in place: " +
                               step.argument + " is as it was");
    return outcome;
}

StepOutcome OpenReview(ReviewRun& run, const Step& step, const OpenParameters& parameters,
                       ZtOpProgress* progress) {
    auto* loader = dynamic_cast<ZtOpSceneSetPlugin*>(run.FindPlugin("ZtOdPdsDriLoaderPlugin"));
    if (!loader)
        return {0, "the plug-in ZtOdPdsDriLoaderPlugin is no scene-set plug-in", {}, {}, {}};
    std::string error;
    std::unique_ptr<AttributeSource> beside;
    AttributeSource* attributes = OpenReviewSource(run, step, parameters, beside, &error);
    if (!error.empty())
        return {0, error, {}, {}, {}};
    AddCheckWarnings(run, step, FileKind::kControl,
                     {parameters.importTags, parameters.importDisplaySets});
    const SavedItemCounts before = CountSavedItems(run.state);
    StepOutcome outcome;
    outcome.status = OpenControlFile(run.state, *loader, ZtUSysString::PathToWide(step.argument),
                                     parameters, &run.sceneSet, progress, attributes, &error);
    if (outcome.status != 0)
        return outcome;
    if (!error.empty())
        return {0, error, {}, {}, {}};
    std::size_t loaded = 0;
    const ZtUOwnPtrVector<ZtOpSceneRef>& refs = run.sceneSet->set.GetSceneRefs();
    for (std::size_t i = 0; i < run.sceneSet->refs.size(); ++i) {
        const OpenedRef& ref = run.sceneSet->refs[i];
        if (ref.model) {
            ++loaded;
            continue;
        }
        const std::string name =
            i < refs.Size() ? ZtUSysString::WideToUtf8(refs[i]->GetSourceName().Str()) : "";
        // A model without a name is told by its place in the control file.
        const std::string shown = name.empty() ? "number " + std::to_string(i + 1) : name;
        run.warnings.push_back("open " + step.argument + ": model " + shown +
                               " not loaded: " + ref.notLoaded);
    }
    outcome.counts = {{"modelsLoaded", loaded},
                      {"modelsNotLoaded", run.sceneSet->refs.size() - loaded}};
    for (const StepCount& count : Imported(before, CountSavedItems(run.state), true, true))
        outcome.counts.push_back(count);
    outcome.sideFiles.emplace();
    for (const std::wstring& file : run.sceneSet->sideFiles)
        outcome.sideFiles->push_back(ZtUSysString::WideToUtf8(file));
    if (attributes) {
        std::vector<const ZtDgnModel*> models;
        for (const OpenedRef& ref : run.sceneSet->refs)
            if (ref.model && std::find(models.begin(), models.end(), ref.model) == models.end())
                models.push_back(ref.model);
        NoteAttributes(run, step, *attributes, models, outcome);
    }
    return outcome;
}

StepOutcome LoadModel(ReviewRun& run, const Step& step, ZtOpProgress* progress) {
    std::string reason;
    const int status = LoadModelIntoScene(run.state, ZtUSysString::PathToWide(step.argument),
                                          &reason, progress, run.attributes.get());
    if (status != 0)
        return {status, reason, {}, {}, {}};
    const ZtOaPartition* root = run.state.GetRootNode();
    const auto* model = dynamic_cast<const ZtDgnModel*>(root->GetChild(root->GetNumChildren() - 1));
    StepOutcome outcome{
        0, {}, {{"elements", model ? model->GetNumElements() : std::size_t{0}}}, {}, {}};
    if (run.attributes && model)
        NoteAttributes(run, step, *run.attributes, {model}, outcome);
    return outcome;
}

StepOutcome SelectAll(ReviewRun& run, ZtOpProgress* progress) {
    run.selections = ComputeSelections(run.state, progress);
    std::size_t selected = 0;
    for (const SelectionResult& result : *run.selections)
        selected += result.indices.size();
    return {0, {}, {{"sets", run.selections->size()}, {"elementsSelected", selected}}, {}, {}};
}
