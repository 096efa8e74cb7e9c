#pragma once
#include <filesystem>
#include <string>

// Between a path as the host names files (UTF-8, see ZtUSysString::PathToWide) and the
// form the system takes: its bytes on POSIX, UTF-16 on Windows, where a narrow path would
// be read in the system's code page. Each platform's descriptor layer defines them.
std::filesystem::path ZtUSysNativePath(const std::string& path);
std::string ZtUSysHostPath(const std::filesystem::path& path);
