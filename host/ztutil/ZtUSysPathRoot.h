#pragma once
#include <cstddef>
#include <string_view>

// The length of the root that begins `path` ("/" on POSIX; also "C:/" or "C:\" on
// Windows), 0 for a relative path. Each platform's file layer defines it.
std::size_t ZtUSysPathRootLength(std::wstring_view path);
