#include "app/Application.h"
#include "app/ExitStatus.h"
#include "app/ProcessEnvironment.h"

int main(int argc, char** argv) {
    // Memory that runs out in the host (the library guards its own) ends the run with a
    // word, not an abort.
    return ProcessEnvironment::RunMain(argc, argv, "pdsreview", kExitHostFailure, RunPdsReview);
}
