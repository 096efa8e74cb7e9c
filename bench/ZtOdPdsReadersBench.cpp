// Throughput of the two text readers against the bare decoding of the stream under them,
// all over one large file of tag-like blocks.

#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "readers/ZtOdPdsInputConsumer.h"
#include "readers/ZtOdPdsTextFile.h"
#include "ztutil/ZtUSysString.h"

#include "BenchSupport.h"
#include "tools/ZtTestFiles.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

namespace {

constexpr std::size_t kFileSize = 64 * 1024 * 1024;

// The benchmark file, written once into a private temporary folder and removed at exit.
class BenchFile {
public:
    BenchFile() {
        const std::string path = dir_.File("bench.tag");
        std::ofstream out(path, std::ios::binary);
        std::string block;
        for (std::size_t i = 0; size_ < kFileSize; ++i) {
            const std::string body =
                "Check the support of line " + std::to_string(i) + " against the {steel} drawing.";
            block = "tag{\nid{" + std::to_string(i) +
                    "}\nview{1200 -3400 5600 0 0 1 30}\nposition{1200 -3400 5600}\n"
                    "text{" +
                    std::to_string(body.size() + 2) + "\n" + body + "}\n}\n";
            out << block;
            size_ += block.size();
        }
        if (out)
            path_ = ZtUSysString::Utf8ToWide(path);
    }

    const wchar_t* Path() const { return path_.c_str(); }
    std::size_t Size() const { return size_; }
    bool Ready() const { return !path_.empty(); }

private:
    ZtTestTempDir dir_;
    std::wstring path_;
    std::size_t size_ = 0;
};

const BenchFile& File() {
    static const BenchFile file;
    return file;
}

class NullConsumer : public ZtOdPdsInputConsumer {
public:
    int Begin() override { return 1; }
    int End() override { return 1; }
    int Line(ZtUWideStringBuffer& line) override {
        benchmark::DoNotOptimize(&line);
        return 1;
    }
};

void Finish(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * File().Size()));
}

void Decode() {
    benchmark::DoNotOptimize(ZtBenchDecodeFile(File().Path()));
}

void BM_StreamDecode(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    for (auto _ : state)
        Decode();
    Finish(state);
}

void PumpLines() {
    ZtOdPdsTextFile file;
    file.Open(File().Path());
    NullConsumer consumer;
    benchmark::DoNotOptimize(file.ReadLines(consumer));
}

std::size_t ReadBlocks() {
    ZtOdPdsBlockFileSource source(ZtOdPdsCountedText);
    source.Open(File().Path());
    ZtOdPdsBlock block;
    std::size_t blocks = 0;
    while (source.NextBlock(&block))
        ++blocks;
    benchmark::DoNotOptimize(blocks);
    return blocks;
}

void BM_LinePump(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    for (auto _ : state)
        PumpLines();
    Finish(state);
}

void BM_BlockReader(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    for (auto _ : state)
        state.counters["blocks"] = static_cast<double>(ReadBlocks());
    Finish(state);
}

// Each reader against the decode, the two run in turn (see ZtBenchPairedRatio).
void BM_LinePumpOverDecode(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ZtBenchPairedRatio(state, Decode, PumpLines);
}

void BM_BlockReaderOverDecode(benchmark::State& state) {
    if (!File().Ready())
        return state.SkipWithError("cannot write the benchmark file");
    ZtBenchPairedRatio(state, Decode, [] { ReadBlocks(); });
}

} // namespace

BENCHMARK(BM_StreamDecode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LinePump)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BlockReader)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LinePumpOverDecode)->Unit(benchmark::kMillisecond)->Iterations(15);
BENCHMARK(BM_BlockReaderOverDecode)->Unit(benchmark::kMillisecond)->Iterations(15);
