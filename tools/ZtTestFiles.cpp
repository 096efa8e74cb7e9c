#include "tools/ZtTestFiles.h"

#include "ztutil/ZtUSysString.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

ZtTestTempDir::ZtTestTempDir()
    : ZtTestTempDir([] {
          const char* base = std::getenv("TMPDIR");
          return std::string(base && *base ? base : "/tmp");
      }()) {}

ZtTestTempDir::ZtTestTempDir(const std::string& base) {
    std::string pattern = base + "/zttest-XXXXXX";
    if (::mkdtemp(pattern.data()))
        path_ = pattern;
}

ZtTestTempDir::~ZtTestTempDir() {
    if (path_.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::wstring ZtTestTempDir::WideFile(const std::string& name) const {
    return ZtTestWide(File(name));
}

std::wstring ZtTestWide(const std::string& utf8) {
    return ZtUSysString::Utf8ToWide(utf8);
}

bool ZtTestWriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

std::string ZtTestReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

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
