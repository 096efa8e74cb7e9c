#include "app/ProcessEnvironment.h"
#include "checkapp/CheckApplication.h"

#include <cstdio>
#include <new>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    // Memory that runs out in the checker ends the run with a word, not an abort.
    try {
        ProcessEnvironment::UseBinaryStandardStreams();
        std::vector<std::string> arguments = ProcessEnvironment::Utf8Arguments(argc, argv);
        if (!arguments.empty())
            arguments.erase(arguments.begin());
        return RunPdsCheck(arguments);
    } catch (const std::bad_alloc&) {
        std::fputs("pdscheck: out of memory\n", stderr);
        return kCheckFailure;
    }
}
