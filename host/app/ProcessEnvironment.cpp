#include "app/ProcessEnvironment.h"

#include <cstdio>
#include <new>

int ProcessEnvironment::RunMain(int argc, char** argv, const char* program, int outOfMemory,
                                int (*run)(const std::vector<std::string>& arguments)) {
    try {
        UseBinaryStandardStreams();
        FailWritesInsteadOfSignals();
        std::vector<std::string> arguments = Utf8Arguments(argc, argv);
        if (!arguments.empty())
            arguments.erase(arguments.begin());
        return run(arguments);
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "%s: out of memory\n", program);
        return outOfMemory;
    }
}
