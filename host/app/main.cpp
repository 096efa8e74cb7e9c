#include "app/Application.h"
#include "app/ProcessEnvironment.h"

#include <cstdio>
#include <new>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    // Memory that runs out in the host (the library guards its own) ends the run with a
    // word, not an abort.
    try {
        ProcessEnvironment::UseBinaryStandardStreams();
        ProcessEnvironment::FailWritesInsteadOfSignals();
        std::vector<std::string> arguments = ProcessEnvironment::Utf8Arguments(argc, argv);
        if (!arguments.empty())
            arguments.erase(arguments.begin());
        return RunPdsReview(arguments);
    } catch (const std::bad_alloc&) {
        std::fputs("pdsreview: out of memory\n", stderr);
        return 2;
    }
}
