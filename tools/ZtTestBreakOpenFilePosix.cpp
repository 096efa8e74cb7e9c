#include "tools/ZtTestFiles.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

bool ZtTestBreakOpenFile(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    if (error)
        return false;
    const int directory = ::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY);
    if (directory < 0)
        return false;
    bool broken = false;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        std::error_code linkError;
        if (std::filesystem::read_symlink(entry.path(), linkError) != target)
            continue;
        const int descriptor = std::atoi(entry.path().filename().c_str());
        if (descriptor != directory && ::dup2(directory, descriptor) >= 0)
            broken = true;
    }
    ::close(directory);
    return broken;
}

bool ZtTestCanBreakOpenFiles() {
    return true;
}
