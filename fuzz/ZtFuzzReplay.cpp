// Runs a fuzz target without the fuzzing engine, once on each file named on the command
// line or lying in a folder named there, so that the corpus and every input that ever
// failed run in the normal test suite with any compiler.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Run(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::printf("%s (%zu bytes)\n", path.string().c_str(), bytes.size());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    std::size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path arg(argv[i]);
        // A target without failed inputs has no regressions folder.
        if (!std::filesystem::exists(arg))
            continue;
        if (!std::filesystem::is_directory(arg)) {
            Run(arg);
            ++inputs;
            continue;
        }
        // Sorted, so that a failure names the same input on every run.
        std::set<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(arg))
            if (entry.is_regular_file())
                files.insert(entry.path());
        for (const auto& file : files)
            Run(file);
        inputs += files.size();
    }
    std::printf("%zu inputs\n", inputs);
    return inputs ? 0 : 1;
}
