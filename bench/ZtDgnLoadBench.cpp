// Loading a model of 1,000,000 elements, against reading the same file and decoding the
// element headers alone. Each benchmark reports the process's resident memory at its
// start ("start_MiB") and its peak during the run ("peak_MiB"; the kernel's high-water
// mark is reset first).
#include "tools/ZtTestBigModel.h"
#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnElementStream.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztutil/ZtUName.h"

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

constexpr int kElements = 1000000;

// The generated file, removed when the program ends.
struct BenchFile {
    std::string path;
    ~BenchFile() { std::filesystem::remove(path); }
};

const std::string& ModelFile() {
    static const BenchFile file{[] {
        const std::string file = (std::filesystem::temp_directory_path() /
                                  ("ztlddgn-bench-" + std::to_string(::getpid()) + ".dgn"))
                                     .string();
        ZtTestBigModel(kElements).Save(file);
        return file;
    }()};
    return file.path;
}

// Decodes every element header of the file and the words the loader reads of it; gives
// the number of elements, or -1 with `reason` if the file can't be read.
std::int64_t ReadHeaders(const std::string& path, std::string* reason) {
    ZtDgnElementStream stream;
    if (!stream.Open(path, reason))
        return -1;
    ZtDgnRawElement raw;
    std::int64_t sum = 0;
    std::int64_t count = 0;
    while (stream.Next(&raw) == ZtDgnElementStream::kElement) {
        const unsigned char* p = raw.bytes;
        sum += (p[0] & 0x3F) + (p[1] & 0x7F);
        if (raw.size >= 36) {
            for (int i = 0; i < 6; ++i)
                sum += ZtDgnRangeValue(p + 4 + 4 * i);
            sum += ZtDgnWord(p + 28) + p[34] + p[35];
        }
        ++count;
    }
    benchmark::DoNotOptimize(sum);
    return count;
}

std::unique_ptr<ZtDgnModel> Load(const std::wstring& path, ZtUNameDict& names,
                                 std::string* reason) {
    return ZtDgnReadModel(path.c_str(), &names, true, nullptr, reason);
}

void BM_DgnReadHeaders(benchmark::State& state) {
    const std::string& path = ModelFile();
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    for (auto _ : state) {
        std::string reason;
        const std::int64_t count = ReadHeaders(path, &reason);
        if (count < 0)
            return state.SkipWithError(reason.c_str());
        state.counters["elements"] = static_cast<double>(count);
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_DgnReadHeaders)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_DgnLoadModel(benchmark::State& state) {
    const std::string& path = ModelFile();
    const std::wstring widePath(path.begin(), path.end());
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    ZtUNameDict names;
    for (auto _ : state) {
        std::string reason;
        auto model = Load(widePath, names, &reason);
        if (!model)
            return state.SkipWithError(reason.c_str());
        state.counters["elements"] = static_cast<double>(model->GetNumElements());
        // Freeing the model is not part of loading it.
        state.PauseTiming();
        model.reset();
        state.ResumeTiming();
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_DgnLoadModel)->Unit(benchmark::kMillisecond)->Iterations(5);

// The load against the header scan, the two run in turn (see ZtBenchPairedRatio).
void BM_DgnLoadOverHeaders(benchmark::State& state) {
    const std::string& path = ModelFile();
    const std::wstring widePath(path.begin(), path.end());
    ZtUNameDict names;
    std::unique_ptr<ZtDgnModel> model;
    std::string reason;
    ZtBenchPairedRatio(
        state, [&] { ReadHeaders(path, &reason); }, [&] { model = Load(widePath, names, &reason); },
        [&] { model.reset(); });
    if (!reason.empty())
        state.SkipWithError(reason.c_str());
}
BENCHMARK(BM_DgnLoadOverHeaders)->Unit(benchmark::kMillisecond)->Iterations(15);

} // namespace
