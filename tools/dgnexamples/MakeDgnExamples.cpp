// Writes the sample plant's design files into the folder given as the one argument.
#include "tools/ZtTestPlantModels.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: zt_make_dgn_examples FOLDER\n");
        return 2;
    }
    for (const ZtTestPlantModel& model : ZtTestPlantModels()) {
        const std::string path = std::string(argv[1]) + "/" + model.fileName;
        if (!model.writer.Save(path)) {
            std::fprintf(stderr, "zt_make_dgn_examples: cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
