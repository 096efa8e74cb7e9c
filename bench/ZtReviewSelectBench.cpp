// The select step over a model of 1,000,000 elements: the five display sets of the
// ten-million-element review (bench/review_10m.py) evaluated over one of its models, to be
// read against loading that model (BM_DgnLoadModel). Reports the selected elements and
// the process's peak memory during the run ("peak_MiB").
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "review/ModelLoad.h"
#include "review/SelectionEvaluation.h"
#include "tools/ZtTestBigModel.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUWideString.h"

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

constexpr int kElements = 1000000;

// A folder of the model, named as the review's third, and the display sets; removed
// when the program ends.
struct SelectFolder {
    std::filesystem::path path;
    SelectFolder()
        : path(std::filesystem::temp_directory_path() /
               ("ztselect-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(path);
        ZtTestBigModel(kElements).Save((path / "m02.dgn").string());
        std::ofstream(path / "plant.dst")
            << "[DEFINITION SECTION]\n"
               "<Display Set>\n1 Level one\n<Definition>\nFIND Level 1\nEND FIND\n"
               "<Display Set>\n2 Odd levels up to 9\n<Definition>\n"
               "FIND Level 3\nADD Level 5\nADD Level 7\nADD Level 9\nEND FIND\n"
               "<Display Set>\n3 Model 2 in colour 3\n<Definition>\n"
               "FIND File m02.dgn\nKEEP ONLY Color 3\nEND FIND\n"
               "<Display Set>\n4 Model 4 without level 2\n<Definition>\n"
               "FIND File m04.dgn\nTHROW AWAY Level 2\nEND FIND\n"
               "<Display Set>\n5 The first two sets\n<Definition>\n"
               "FIND Display Set Level one\nADD Display Set Odd levels up to 9\nEND FIND\n";
    }
    ~SelectFolder() { std::filesystem::remove_all(path); }
};

void BM_SelectFiveSets(benchmark::State& state) {
    static const SelectFolder folder;
    ZtOpState document;
    std::string reason;
    if (LoadModelIntoScene(document, (folder.path / "m02.dgn").wstring(), &reason) != 0) {
        state.SkipWithError(reason.c_str());
        return;
    }
    ZtOdPdsDstImportPlugin plugin;
    const ZtUWideString rules((folder.path / "plant.dst").wstring().c_str());
    if (plugin.IExport(0, &document, nullptr, &rules) != 0) {
        state.SkipWithError("the display sets were not imported");
        return;
    }
    ZtBenchResetPeakMemory();
    for (auto _ : state) {
        const std::vector<SelectionResult> results = ComputeSelections(document);
        std::size_t selected = 0;
        for (const SelectionResult& result : results)
            selected += result.indices.size();
        state.counters["selected"] = static_cast<double>(selected);
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_SelectFiveSets)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
