// Opening a design review, against checking it: the sample plant's control file and models
// with a side tag file of 20,000 tags and a display-set file of 2,000 sets. The open loads
// and places the models; the check reads only their control blocks, so it costs less than
// the open however large the models.
#include "check/FileCheck.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "review/OpenRoad.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include "BenchSupport.h"
#include "tools/ZtTestFiles.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

class ReviewBenchFolder {
public:
    ReviewBenchFolder() {
        std::error_code error;
        for (const char* name : {"plant.dri", "pipes.dgn", "equipment.dgn", "steel.dgn"})
            std::filesystem::copy_file(std::string(ZT_SOURCE_DIR "/examples/plant/") + name,
                                       dir_.File(name), error);
        std::ofstream sets(dir_.File("sets.dst"), std::ios::binary);
        sets << "[DEFINITION SECTION]\n";
        for (int i = 0; i < 2000; ++i)
            sets << "<Display Set>\n"
                 << i << " Set " << i << "\n<Definition>\nFIND Level " << i % 60 << ", "
                 << i % 60 + 1 << "\nKEEP ONLY Color " << i % 15 << "\n";
        if (!error && sets && ZtBenchWriteTagFile(dir_.File("notes.tag"), 20000))
            path_ = ZtUSysString::Utf8ToWide(dir_.File("plant.dri"));
    }

    const std::wstring& Path() const { return path_; }

private:
    ZtTestTempDir dir_;
    std::wstring path_;
};

const ReviewBenchFolder& Folder() {
    static const ReviewBenchFolder folder;
    return folder;
}

void BM_OpenReview(benchmark::State& state) {
    if (Folder().Path().empty())
        return state.SkipWithError("cannot write the review");
    for (auto _ : state) {
        ZtOpState document;
        ZtOdPdsDriLoaderPlugin loader;
        std::unique_ptr<OpenedSceneSet> opened;
        if (OpenControlFile(document, loader, Folder().Path(), {}, &opened) != 0)
            state.SkipWithError("the open failed");
        loader.IStateDestroyed(&document);
    }
}
BENCHMARK(BM_OpenReview)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_CheckReview(benchmark::State& state) {
    if (Folder().Path().empty())
        return state.SkipWithError("cannot write the review");
    for (auto _ : state) {
        const std::vector<Finding> findings = CheckFile(Folder().Path(), FileKind::kControl);
        state.counters["findings"] = static_cast<double>(findings.size());
    }
}
BENCHMARK(BM_CheckReview)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
