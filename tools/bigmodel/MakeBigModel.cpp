// Writes the big generated scene into the file given as the first argument, with the
// number of elements given as the second (1,000,000 without one).
#include "tools/ZtTestBigModel.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    const long elements = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 1000000;
    if ((argc != 2 && argc != 3) || elements <= 0 || elements > 10000000) {
        std::fprintf(stderr, "usage: zt_make_big_model FILE [ELEMENTS]\n");
        return 2;
    }
    if (!ZtTestBigModel(static_cast<int>(elements)).Save(argv[1])) {
        std::fprintf(stderr, "zt_make_big_model: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
