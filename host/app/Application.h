#pragma once

// Runs pdsreview with its command line; returns the exit status.
int RunPdsReview(int argc, char** argv);
