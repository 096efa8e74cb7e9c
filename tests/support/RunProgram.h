#pragma once
#include <string>
#include <vector>

// The outcome of running a program to its end.
struct ProgramRun {
    int exitStatus = -1; // -1 if it did not exit normally
    std::string out;     // standard output
    std::string err;     // standard error
};

// Runs `program` with `args` (no shell), with standard input closed, and collects both
// output streams.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& args);
