// Attaching the attributes of the big scene's project database (four rows for each of
// 1,000,000 linked pieces) to its model, against SQLite's own stepping through the same
// rows. ZT_BENCH_MODEL and ZT_BENCH_DATABASE name the files to use, as
// bench/attach_attributes.py makes them; without them the files are made here. The attach
// reports the memory its store holds beyond the distinct texts, per attribute, as the store
// counts it ("store_B_per_attribute") and as the heap grew ("heap_B_per_attribute").
#include "tools/ZtTestBigAttributes.h"
#include "tools/ZtTestBigModel.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztpdsdb/ZtPdsDbAttach.h"
#include "ztpdsdb/ZtPdsDbSource.h"
#include "ztutil/ZtUName.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace {

constexpr int kElements = 1020000; // 1,000,000 pieces: every 100th a cell of 3 elements

struct BenchFiles {
    std::string model;
    std::string database;
    bool made = false;
    ~BenchFiles() {
        if (made) {
            std::filesystem::remove(model);
            std::filesystem::remove(database);
        }
    }
};

const BenchFiles& Files() {
    static const BenchFiles files = [] {
        BenchFiles f;
        const char* model = std::getenv("ZT_BENCH_MODEL");
        const char* database = std::getenv("ZT_BENCH_DATABASE");
        if (model && database) {
            f.model = model;
            f.database = database;
            return f;
        }
        const auto base = std::filesystem::temp_directory_path() /
                          ("ztpdsdb-bench-" + std::to_string(::getpid()));
        f.model = base.string() + ".dgn";
        f.database = base.string() + ".db";
        f.made = true;
        std::string error;
        if (!ZtTestBigModel(kElements).Save(f.model) ||
            !ZtTestWriteBigAttributes(f.database, kElements, &error))
            f.model.clear();
        return f;
    }();
    return files;
}

// Bytes the allocator hands out now, mapped blocks included.
double HeapBytes() {
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void BM_SqliteStepRows(benchmark::State& state) {
    const BenchFiles& files = Files();
    sqlite3* db = nullptr;
    if (files.model.empty() ||
        sqlite3_open_v2(files.database.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(db);
        state.SkipWithError("no database");
        return;
    }
    for (auto _ : state) {
        sqlite3_stmt* s = nullptr;
        sqlite3_prepare_v2(db, "SELECT entity, occurrence, name, value FROM element_attributes", -1,
                           &s, nullptr);
        std::size_t rows = 0, bytes = 0;
        while (sqlite3_step(s) == SQLITE_ROW) {
            bytes +=
                static_cast<std::size_t>(sqlite3_column_int64(s, 0) + sqlite3_column_int64(s, 1));
            sqlite3_column_text(s, 2);
            sqlite3_column_text(s, 3);
            bytes +=
                static_cast<std::size_t>(sqlite3_column_bytes(s, 2) + sqlite3_column_bytes(s, 3));
            ++rows;
        }
        sqlite3_finalize(s);
        benchmark::DoNotOptimize(bytes);
        state.counters["rows"] = static_cast<double>(rows);
    }
    sqlite3_close(db);
}
BENCHMARK(BM_SqliteStepRows)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_AttachAttributes(benchmark::State& state) {
    const BenchFiles& files = Files();
    ZtUNameDict names;
    std::string error;
    const std::wstring path(files.model.begin(), files.model.end());
    std::unique_ptr<ZtDgnModel> model =
        files.model.empty() ? nullptr : ZtDgnReadModel(path.c_str(), &names, true, nullptr, &error);
    if (!model) {
        state.SkipWithError("no model");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        model->AttachAttributes(nullptr);
        const double before = HeapBytes();
        state.ResumeTiming();
        std::unique_ptr<ZtPdsDbSource> source = ZtPdsDbSource::Open(files.database, {}, &error);
        if (!source || !ZtPdsDbAttach(*source, *model, &error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        source.reset();
        state.PauseTiming();
        const ZtDgnAttributeStore& store = *model->GetAttributeStore();
        const double attributes = static_cast<double>(store.GetAttributeCount());
        const double texts = static_cast<double>(store.TextBytes());
        state.counters["attributes"] = attributes;
        state.counters["elements"] = static_cast<double>(store.GetElementsWithAttributes());
        state.counters["text_bytes"] = texts;
        state.counters["store_B_per_attribute"] =
            (static_cast<double>(store.MemoryBytes()) - texts) / attributes;
        state.counters["heap_B_per_attribute"] = (HeapBytes() - before - texts) / attributes;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_AttachAttributes)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
