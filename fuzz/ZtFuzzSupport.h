#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

// What the fuzz targets share. The readers open files by name, so each input is written
// to a file in a folder of this process, which goes at exit.

// The path of `name` in the process's folder.
std::string ZtFuzzFile(const std::string& name);
// The same with no file there: a file written anew each time, rather than truncated and
// rewritten, is not flushed to the disk on close by file systems that guard against the
// loss of replaced data, which would make the fuzzers wait on the disk.
std::string ZtFuzzNewFile(const std::string& name);
// Writes the input as `name` in the process's folder; the file's wide path.
std::wstring ZtFuzzWrite(const std::string& name, const std::uint8_t* data, std::size_t size);
// Ends the run with `what` on standard error unless `condition` holds: a broken promise
// of a reader is a finding as much as a sanitizer's report.
void ZtFuzzCheck(bool condition, const char* what);
