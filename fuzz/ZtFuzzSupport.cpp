#include "ZtFuzzSupport.h"

#include "tools/ZtTestFiles.h"
#include "ztutil/ZtUSysString.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

// In memory where the system has a folder for it: every run writes and removes a file,
// which on a disk's file system costs more than the run itself.
const ZtTestTempDir& Folder() {
    static const ZtTestTempDir folder = [] {
        std::error_code ignored;
        return std::filesystem::is_directory("/dev/shm", ignored) ? ZtTestTempDir("/dev/shm")
                                                                  : ZtTestTempDir();
    }();
    return folder;
}

} // namespace

std::string ZtFuzzFile(const std::string& name) {
    return Folder().File(name);
}

std::string ZtFuzzNewFile(const std::string& name) {
    const std::string path = ZtFuzzFile(name);
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    return path;
}

std::wstring ZtFuzzWrite(const std::string& name, const std::uint8_t* data, std::size_t size) {
    const std::string path = ZtFuzzNewFile(name);
    ZtFuzzCheck(ZtTestWriteBytes(path, std::string(reinterpret_cast<const char*>(data), size)),
                "cannot write the input file");
    return ZtUSysString::Utf8ToWide(path);
}

void ZtFuzzCheck(bool condition, const char* what) {
    if (condition)
        return;
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}
