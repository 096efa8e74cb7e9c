#include "tools/ZtTestFiles.h"

#include "ztutil/ZtUSysNativePath.h"
#include "ztutil/ZtUSysString.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

ZtTestTempDir::ZtTestTempDir()
    : ZtTestTempDir([] {
          std::error_code error;
          // With forward slashes and no separator at the end, as the tests join paths.
          std::u8string base = std::filesystem::temp_directory_path(error).generic_u8string();
          while (base.size() > 1 && base.back() == u8'/')
              base.pop_back();
          return error ? std::string(".") : std::string(base.begin(), base.end());
      }()) {}

// A new folder of a random name; creating it fails if another test took the name.
ZtTestTempDir::ZtTestTempDir(const std::string& base) {
    std::random_device seed;
    std::mt19937_64 random(seed());
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string candidate = base + "/zttest-" + std::to_string(random() % 1000000000);
        std::error_code error;
        if (std::filesystem::create_directory(candidate, error)) {
            path_ = candidate;
            return;
        }
    }
}

ZtTestTempDir::~ZtTestTempDir() {
    if (path_.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(ZtUSysNativePath(path_), ignored);
}

std::wstring ZtTestTempDir::WideFile(const std::string& name) const {
    return ZtTestWide(File(name));
}

std::wstring ZtTestWide(const std::string& utf8) {
    return ZtUSysString::Utf8ToWide(utf8);
}

// Paths are UTF-8, as the host's are; Windows would read a narrow one in its code page.
bool ZtTestWriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(ZtUSysNativePath(path), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

std::string ZtTestReadBytes(const std::string& path) {
    std::ifstream in(ZtUSysNativePath(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}
