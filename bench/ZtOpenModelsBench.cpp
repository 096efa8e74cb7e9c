// Opening a control file of four models of 1,000,000 elements each, with their files read
// on one thread and on two: the wall time ("real_time") and the CPU time of the whole
// process, every thread's included, and the resident memory at the start ("start_MiB")
// and at the peak ("peak_MiB"), whose difference reading ahead must leave as it is.
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "review/OpenRoad.h"
#include "tools/ZtTestBigModel.h"
#include "tools/ZtTestFiles.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

constexpr int kModels = 4;
constexpr int kElements = 1000000;

class ModelsFolder {
public:
    ModelsFolder() {
        std::string control = "DesignReview_Control{master_unit{m}\n";
        for (int m = 0; m < kModels; ++m) {
            const std::string name = "m" + std::to_string(m) + ".dgn";
            if (!ZtTestBigModel(kElements).Save(dir_.File(name)))
                return;
            control += "dgn{name{" + name + "}}\n";
        }
        if (ZtTestWriteBytes(dir_.File("models.dri"), control + "}\n"))
            path_ = ZtUSysString::Utf8ToWide(dir_.File("models.dri"));
    }
    const std::wstring& Path() const { return path_; }

private:
    ZtTestTempDir dir_;
    std::wstring path_;
};

void BM_OpenModels(benchmark::State& state) {
    static const ModelsFolder folder;
    if (folder.Path().empty())
        return state.SkipWithError("cannot write the models");
    OpenParameters parameters;
    parameters.importTags = false;
    parameters.importDisplaySets = false;
    parameters.readAttributeDatabase = false;
    parameters.threads = static_cast<std::size_t>(state.range(0));
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    for (auto _ : state) {
        ZtOpState document;
        ZtOdPdsDriLoaderPlugin loader;
        std::unique_ptr<OpenedSceneSet> opened;
        if (OpenControlFile(document, loader, folder.Path(), parameters, &opened) != 0)
            state.SkipWithError("the open failed");
        // Freeing the models is not part of opening them.
        state.PauseTiming();
        opened.reset();
        loader.IStateDestroyed(&document);
        state.ResumeTiming();
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_OpenModels)
    ->ArgName("threads")
    ->Arg(1)
    ->Arg(2)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

} // namespace
