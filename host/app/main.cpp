#include "app/Application.h"

#include <cstdio>
#include <new>

int main(int argc, char** argv) {
    // Memory that runs out in the host (the library guards its own) ends the run with a
    // word, not an abort.
    try {
        return RunPdsReview(argc, argv);
    } catch (const std::bad_alloc&) {
        std::fputs("pdsreview: out of memory\n", stderr);
        return 2;
    }
}
