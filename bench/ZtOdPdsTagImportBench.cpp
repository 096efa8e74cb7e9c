// Importing a tag file of 100,000 tags, against the bare decoding of the same file's
// stream, and against checking it (the same import, telling where each block stands and
// what becomes of it, at most 1.5 times the import's time). Each benchmark reports the process's
// resident memory at its start
// ("start_MiB") and its peak during the run ("peak_MiB"; the kernel's high-water mark is
// reset first).
#include "check/FileCheck.h"
#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include "BenchSupport.h"
#include "tools/ZtTestFiles.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

constexpr int kTags = 100000;

// The tag file as the export writes it, in a private temporary folder removed at exit.
class TagBenchFile {
public:
    TagBenchFile() {
        const std::string path = dir_.File("bench.tag");
        if (ZtBenchWriteTagFile(path, kTags))
            path_ = ZtUSysString::Utf8ToWide(path);
    }

    const wchar_t* Path() const { return path_.c_str(); }
    bool Ready() const { return !path_.empty(); }

private:
    ZtTestTempDir dir_;
    std::wstring path_;
};

const TagBenchFile& File() {
    static const TagBenchFile file;
    return file;
}

void BM_TagFileStreamDecode(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    for (auto _ : state) {
        benchmark::DoNotOptimize(ZtBenchDecodeFile(File().Path()));
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_TagFileStreamDecode)->Unit(benchmark::kMillisecond)->Iterations(5);

// The import's two readings alone: the first pass, and the second pass's top-level blocks
// with the nested blocks of each tag, without anything made from them.
void BM_TagImportPasses(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ZtOdPdsTagImportAction action(nullptr, nullptr);
    for (auto _ : state) {
        benchmark::DoNotOptimize(action.CountTags(File().Path()));
        ZtOdPdsBlockFileSource source(ZtOdPdsCountedText);
        source.Open(File().Path());
        ZtOdPdsBlock block;
        ZtOdPdsBlock child;
        std::size_t blocks = 0;
        while (source.NextBlock(&block))
            while (block.NextChild(&child))
                ++blocks;
        benchmark::DoNotOptimize(blocks);
    }
}
BENCHMARK(BM_TagImportPasses)->Unit(benchmark::kMillisecond)->Iterations(5);

// A document to import into: one model, in the units of the tags' coordinates.
struct ImportDocument : ZtOpState {
    ImportDocument() {
        auto* model = new ZtDgnModel(L"", EditNameDict());
        model->SetUorsPerMaster(80000);
        GetRootNode()->AddChild(model);
    }
};

void BM_TagImport(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ImportDocument document;
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    for (auto _ : state) {
        auto* action = new ZtOdPdsTagImportAction(&document, document.GetRootNode());
        if (action->Perform(File().Path(), nullptr) != 0)
            state.SkipWithError("the import failed");
        state.counters["views"] = static_cast<double>(action->GetFolder().GetNumChildren());
        state.counters["highestId"] = static_cast<double>(action->GetHighestId());
        // Freeing the views is not part of the import.
        state.PauseTiming();
        delete action;
        state.ResumeTiming();
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_TagImport)->Unit(benchmark::kMillisecond)->Iterations(5);

// The import against the decoding of its file, the two run in turn: the ratio that the
// two benchmarks above give when run apart, without the machine's drift between them.
void BM_TagImportOverDecode(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ImportDocument document;
    std::unique_ptr<ZtOdPdsTagImportAction> action;
    ZtBenchPairedRatio(
        state, [] { benchmark::DoNotOptimize(ZtBenchDecodeFile(File().Path())); },
        [&] {
            action = std::make_unique<ZtOdPdsTagImportAction>(&document, document.GetRootNode());
            if (action->Perform(File().Path(), nullptr) != 0)
                state.SkipWithError("the import failed");
        },
        [&] { action.reset(); });
}
BENCHMARK(BM_TagImportOverDecode)->Unit(benchmark::kMillisecond)->Iterations(15);

void BM_TagCheck(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    for (auto _ : state) {
        const std::vector<Finding> findings = CheckFile(File().Path(), FileKind::kTags);
        state.counters["findings"] = static_cast<double>(findings.size());
    }
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
}
BENCHMARK(BM_TagCheck)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
