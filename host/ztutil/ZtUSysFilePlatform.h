#pragma once
#include "ztutil/ZtUFileReader.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What each platform's file layer (ZtUSysFilePosix.cpp, ZtUSysFileWindows.cpp) gives the
// shared one: the system calls behind ZtUSysFile's opening, walking and paths.

// The length of the root that begins `path` ("/" on POSIX; also "C:/" or "C:\" on
// Windows), 0 for a relative path.
std::size_t ZtUSysPathRootLength(std::wstring_view path);
// A read stream on an existing regular file; null for anything else.
ZtUFileReader* ZtUSysOpenExistingFile(const wchar_t* path);
// The names of the regular files of `folder` (the working folder when empty), in any
// order; false if the folder can't be read.
bool ZtUSysRegularFileNames(const wchar_t* folder, std::vector<std::string>& names);
