#pragma once
#include <string>

// A fresh folder under the system's temporary folder (or under `base`), removed with all it
// holds when the object goes.
class ZtTestTempDir {
public:
    ZtTestTempDir();
    explicit ZtTestTempDir(const std::string& base);
    ~ZtTestTempDir();
    ZtTestTempDir(const ZtTestTempDir&) = delete;
    ZtTestTempDir& operator=(const ZtTestTempDir&) = delete;

    const std::string& Path() const { return path_; }
    // The path of `name` inside the folder.
    std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::wstring WideFile(const std::string& name) const;

private:
    std::string path_;
};

std::wstring ZtTestWide(const std::string& utf8);
// Writes `bytes` to `path` as they stand; false on failure.
bool ZtTestWriteBytes(const std::string& path, const std::string& bytes);
std::string ZtTestReadBytes(const std::string& path);

// Makes every further read or write of an open file fail with an I/O error: the
// descriptor that this process holds on `path` is replaced by one on a directory. Returns
// false if no descriptor of this process is open on `path`.
bool ZtTestBreakOpenFile(const std::string& path);
// Whether ZtTestBreakOpenFile can work on this platform.
bool ZtTestCanBreakOpenFiles();
