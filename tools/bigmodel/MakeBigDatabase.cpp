// Writes the project database of the big generated scene into the file given as the first
// argument, for the scene of the number of elements given as the second (1,000,000
// without one).
#include "tools/ZtTestBigAttributes.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    const long elements = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 1000000;
    if ((argc != 2 && argc != 3) || elements <= 0 || elements > 10000000) {
        std::fprintf(stderr, "usage: zt_make_big_database FILE [ELEMENTS]\n");
        return 2;
    }
    std::string error;
    if (!ZtTestWriteBigAttributes(argv[1], static_cast<int>(elements), &error)) {
        std::fprintf(stderr, "zt_make_big_database: cannot write %s: %s\n", argv[1], error.c_str());
        return 1;
    }
    return 0;
}
