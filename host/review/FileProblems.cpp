#include "review/FileProblems.h"

#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysNativePath.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

bool HasModel(const ZtOpState& state) {
    const ZtOaPartition* root = state.GetRootNode();
    return root && root->GetNumChildren() > 0;
}

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
