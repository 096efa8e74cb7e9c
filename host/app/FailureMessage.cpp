#include "app/FailureMessage.h"

#include "app/CommandLine.h"
#include "app/Steps.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysNativePath.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

constexpr const char* kNoModel =
    "no model is loaded to give the tags their units: load one first with 'open FILE.dri' "
    "or 'model FILE.dgn', or give --uors-per-master F";

bool HasModel(const ZtOpState& state) {
    const ZtOaPartition* root = state.GetRootNode();
    return root && root->GetNumChildren() > 0;
}

// Why a file can't be written at `path`, found from its folder; empty if nothing shows.
std::string WriteProblem(const std::string& path) {
    const std::filesystem::path target = ZtUSysNativePath(path);
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return "the folder " + ZtUSysHostPath(folder) + " does not exist";
    if (std::filesystem::is_directory(target, error))
        return "it is a folder";
    return "";
}

// Why `path` can't be read as a file, or empty if nothing is wrong with it.
std::string ReadProblem(const std::string& path) {
    if (path.empty())
        return "no file name";
    const int descriptor = ZtUSysDescriptor::OpenForReading(path);
    if (descriptor < 0)
        return errno == EISDIR ? path + " is a folder"
                               : "cannot read " + path + ": " + std::strerror(errno);
    const bool regular = ZtUSysDescriptor::RegularFileSize(descriptor) >= 0;
    ZtUSysDescriptor::Close(descriptor);
    return regular ? "" : path + " is not a regular file";
}

} // namespace

std::string ExplainFailure(const Step& step, int status,
                           const std::vector<ZtUFileScope::Failure>& writes,
                           const ZtOpState& state) {
    if (step.name == "export-tags") {
        const std::string problem = WriteProblem(step.argument);
        if (!problem.empty())
            return "cannot write " + step.argument + ": " + problem;
        if (!writes.empty())
            return "cannot write " + writes.front().path + ": " + writes.front().reason;
        if (status == 6)
            return HasModel(state) ? "the document has no saved views to export" : kNoModel;
    } else if (step.name == "import-tags" || step.name == "import-dst" || step.name == "open") {
        const std::string problem = ReadProblem(step.argument);
        if (!problem.empty())
            return problem;
        if (status == 6)
            return kNoModel;
        if (status == 64)
            return "no block begins in " + step.argument;
    }
    if (!writes.empty())
        return "cannot write " + writes.front().path + ": " + writes.front().reason;
    return StatusMeaning(status);
}
