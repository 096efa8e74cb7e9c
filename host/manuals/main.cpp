// Writes the manual page and the bash completion of each program named:
//   zt_manuals FOLDER PROGRAM...  ->  FOLDER/man1/PROGRAM.1, FOLDER/completions/PROGRAM
#include "app/Manual.h"
#include "checkapp/CheckManual.h"
#include "manual/BashCompletion.h"
#include "manual/ManPage.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

// Every installed program, by the name it is installed under.
struct Program {
    const char* name;
    ProgramManual (*manual)();
};
constexpr Program kPrograms[] = {
    {"pdsreview", PdsReviewManual},
    {"pdscheck", PdsCheckManual},
};

bool Write(const std::filesystem::path& path, const std::string& text) {
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out) {
        std::fprintf(stderr, "zt_manuals: can't write %s\n", path.string().c_str());
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: zt_manuals FOLDER PROGRAM...\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    for (int i = 2; i < argc; ++i) {
        const std::string_view name = argv[i];
        const Program* program = nullptr;
        for (const Program& known : kPrograms)
            if (name == known.name)
                program = &known;
        if (!program) {
            std::fprintf(stderr, "zt_manuals: no manual for a program '%s'\n", argv[i]);
            return 2;
        }
        const ProgramManual manual = program->manual();
        if (!Write(folder / "man1" / (manual.name + ".1"), ManPage(manual)) ||
            !Write(folder / "completions" / manual.name, BashCompletion(manual)))
            return 1;
    }
    return 0;
}
