#include "bcf/BcfSteps.h"

#include "bcf/BcfExport.h"
#include "bcf/BcfImport.h"
#include "bcf/BcfRead.h"
#include "bcf/BcfWrite.h"
#include "report/ReportScene.h"
#include "review/FileProblems.h"
#include "review/ModelLoad.h"
#include "review/SavedItems.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysString.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

// SOURCE_DATE_EPOCH's seconds where it holds a whole number, else the present time.
std::time_t ExportTime() {
    if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH"); epoch && *epoch) {
        char* end = nullptr;
        errno = 0;
        const long long seconds = std::strtoll(epoch, &end, 10);
        if (errno == 0 && *end == '\0' && seconds >= 0)
            return static_cast<std::time_t>(seconds);
    }
    return std::time(nullptr);
}

std::string UserName() {
    if (const passwd* entry = getpwuid(getuid()); entry && entry->pw_name && *entry->pw_name)
        return entry->pw_name;
    for (const char* variable : {"USER", "LOGNAME"})
        if (const char* name = std::getenv(variable); name && *name)
            return name;
    return "pdsreview";
}

// A temporary file that goes with its holder.
class TemporaryFile {
public:
    TemporaryFile() {
        std::error_code error;
        std::string pattern =
            (std::filesystem::temp_directory_path(error) / "pdsreview-bcf-XXXXXX.tag").string();
        const int descriptor = mkstemps(pattern.data(), 4);
        if (descriptor >= 0) {
            close(descriptor);
            path_ = pattern;
        }
    }
    ~TemporaryFile() {
        if (!path_.empty())
            std::remove(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // False where the file could not be made or written.
    bool Write(const std::string& bytes) const {
        if (path_.empty())
            return false;
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        return static_cast<bool>(out);
    }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

void AddWarnings(ReviewRun& run, const Step& step, const std::vector<std::string>& warnings) {
    for (const std::string& warning : warnings)
        run.warnings.push_back(step.name + " " + step.argument + ": " + warning);
}

} // namespace

bool BcfAvailable() {
    return true;
}

StepOutcome ExportBcf(ReviewRun& run, const Step& step, const BcfExportOptions& options) {
    const ReportScene scene = GatherReportScene(run);
    BcfExportSettings settings;
    settings.version = options.version;
    settings.author = options.author.empty() ? UserName() : options.author;
    settings.time = ExportTime();
    std::vector<std::string> warnings;
    const BcfArchive archive = BcfArchiveOfScene(scene, settings, &warnings);
    std::string error;
    if (!WriteBcfArchive(archive, step.argument, settings.time, &error)) {
        // The run sees a failed write and says why.
        ZtUFileScope::RecordFailure(step.argument, error);
        return {};
    }
    if (archive.topics.empty())
        warnings.push_back("the document has no review tags: the archive holds no topics");
    AddWarnings(run, step, warnings);
    std::size_t comments = 0, snapshots = 0;
    for (const BcfTopic& topic : archive.topics) {
        comments += topic.comments.size();
        snapshots += std::count_if(topic.viewpoints.begin(), topic.viewpoints.end(),
                                   [](const BcfViewpoint& v) { return !v.snapshot.empty(); });
    }
    return {0,
            {},
            {{"topics", archive.topics.size()},
             {"comments", comments},
             {"viewpoints", archive.topics.size()},
             {"snapshots", snapshots}},
            {},
            {}};
}

StepOutcome ImportBcf(ReviewRun& run, const Step& step, ZtOpProgress* progress) {
    if (!ReadProblem(step.argument).empty())
        return {1, {}, {}, {}, {}};
    auto* plugin = dynamic_cast<ZtOpExportPlugin*>(run.FindPlugin("ZtOdPdsTagImportPlugin"));
    if (!plugin)
        return {0, "the plug-in ZtOdPdsTagImportPlugin is no menu plug-in", {}, {}, {}};
    const std::vector<const ZtDgnModel*> models = SceneModels(run.state);
    if (models.empty())
        return {6, {}, {}, {}, {}};
    BcfArchive archive;
    std::vector<std::string> problems;
    std::string error;
    if (!ReadBcfArchive(step.argument, &archive, &problems, &error))
        return {0, "import-bcf " + step.argument + ": " + error, {}, {}, {}};
    const std::uint64_t firstId =
        std::max(run.state.GetNextTagId(0), run.state.GetNextCommentId(0));
    BcfTagFile tags = BcfTagFileOfArchive(archive, GatherReportScene(run),
                                          models.front()->GetUorsPerMaster(), firstId);
    const TemporaryFile file;
    if (!file.Write(tags.text))
        return {0,
                "import-bcf " + step.argument +
                    ": no temporary file could be written for the tag import",
                {},
                {},
                {}};
    const SavedItemCounts before = CountSavedItems(run.state);
    const ZtUWideString path(ZtUSysString::PathToWide(file.Path()));
    const int status = plugin->IExport(0, &run.state, progress, &path);
    if (status != 0)
        return {status, {}, {}, {}, {}};
    AddWarnings(run, step, problems);
    AddWarnings(run, step, tags.warnings);
    const SavedItemCounts after = CountSavedItems(run.state);
    std::size_t comments = 0, viewpoints = 0;
    for (const BcfTopic& topic : archive.topics) {
        comments += topic.comments.size();
        viewpoints += topic.viewpoints.size();
    }
    return {0,
            {},
            {{"topics", archive.topics.size()},
             {"bcfComments", comments},
             {"bcfViewpoints", viewpoints},
             {"views", after.views - before.views},
             {"tags", after.tags - before.tags},
             {"comments", after.comments - before.comments}},
            {},
            {}};
}
