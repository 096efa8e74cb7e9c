#pragma once
#include <cstdint>
#include <string>
#include <vector>

// The outcome of running a program to its end.
struct ProgramRun {
    int exitStatus = -1;         // -1 if it did not exit normally
    std::string out;             // standard output
    std::string err;             // standard error
    std::uint64_t peakBytes = 0; // the child's peak resident memory
};

// The pdsreview of this build.
std::string PdsReviewProgram();

// Runs a shell command in `folder` with the built pdsreview first on the path.
ProgramRun RunShellWithPdsReview(const std::string& folder, const std::string& command);

// Runs `program` with `args` (no shell), with standard input closed, and collects both
// output streams.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& args);
