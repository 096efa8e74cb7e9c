#pragma once

#include <string>
#include <vector>

// Runs pdsreview with the arguments of its command line (without the program's name), as
// UTF-8; returns the exit status.
int RunPdsReview(const std::vector<std::string>& args);
