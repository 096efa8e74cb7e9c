#pragma once
#include <string>
#include <vector>

// Exit statuses of pdscheck.
constexpr int kCheckClean = 0;       // nothing found
constexpr int kCheckWarnings = 1;    // warnings, and nothing lost
constexpr int kCheckDataDropped = 2; // data would be dropped, or errors
constexpr int kCheckFailure = 3;     // a usage error, or the output could not be written

// The whole of `pdscheck ARGS...` (without the program name); gives the exit status.
int RunPdsCheck(const std::vector<std::string>& args);
