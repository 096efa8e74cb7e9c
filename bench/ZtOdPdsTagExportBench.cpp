// Exporting 10,000 tags picked over a model of 1,000,000 elements: with the model's
// geometry index made in the run, and with it made already; and over the model placed in
// the scene (turned, scaled from feet to metres and moved), with the tags where the
// placement puts their elements. Each benchmark reports the
// process's resident memory at its start ("start_MiB") and its peak during the run
// ("peak_MiB"; the kernel's high-water mark is reset first), and the bytes the model's
// index holds an element ("index_B_per_element").
#include "tags/ZtOdPdsCameraMaps.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tools/ZtTestDgnWriter.h"
#include "ztcore/ZtOcGeometryIndex.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUWideString.h"

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

constexpr int kSide = 1000; // elements per row and rows
constexpr int kViews = 100;
constexpr int kTagsPerView = 100;
constexpr std::int32_t kPitch = 8000; // UORs between elements
constexpr double kFactor = 80000.0;   // 1000 mm a metre, 80 UORs a mm

// A design file of 1,000,000 line strings on a grid, each with a DMRS linkage, and a
// document with the model loaded and placed by `placement`, and 10,000 tags over it in
// 100 views.
struct Scene {
    explicit Scene(const ZtLAffine3f& placement) {
        const std::string file = (std::filesystem::temp_directory_path() /
                                  ("ztodpds-tags-bench-" + std::to_string(::getpid()) + ".dgn"))
                                     .string();
        path = std::wstring(file.begin(), file.end());
        output = path + L".tag";
        ZtTestDgnWriter writer(3, {1000, 80, "m", "mm", {0, 0, 0}});
        for (int i = 0; i < kSide * kSide; ++i) {
            ZtTestDgnSymbology s;
            s.level = 1 + i % 63;
            s.linkages = {ZtTestDmrsLinkage(12, static_cast<std::uint32_t>(i))};
            const std::int32_t x = (i % kSide) * kPitch, y = (i / kSide) * kPitch;
            writer.LineString(s, {{x, y, 0}, {x + 6000, y + 2000, 1600}});
        }
        writer.EndOfDesign();
        writer.Save(file);
        std::string reason;
        auto loaded = ZtDgnReadModel(path.c_str(), state.EditNameDict(), true, nullptr, &reason);
        if (!loaded)
            return;
        loaded->SetTransform(placement);
        model = loaded.get();
        state.GetRootNode()->AddChild(loaded.release());

        // Each view looks straight down on a patch of 10 by 10 elements from 20 m above,
        // with a tag on top of each element of the patch.
        auto* root = const_cast<ZtOpFolderItem*>(ZtOpSavedViewsElement::Get(&state)->Get());
        std::uint64_t id = 1;
        for (int v = 0; v < kViews; ++v) {
            const int row0 = (v / 10) * 97 + 3, column0 = (v % 10) * 97 + 3;
            const double cx = (column0 + 5) * kPitch / kFactor, cy = (row0 + 5) * kPitch / kFactor;
            auto* view = new ZtOpView;
            ZtNvCamera camera;
            camera.SetPosition(placement.Transform({cx, cy, 20}));
            camera.PointAt(placement.Transform({cx, cy, 0}));
            view->AnonView().EditViewPoint()->SetCamera(camera);
            for (int t = 0; t < kTagsPerView; ++t, ++id) {
                const int row = row0 + t / 10, column = column0 + t % 10;
                const ZtLPos3f at =
                    placement.Transform({(column * kPitch + 3000) / kFactor,
                                         (row * kPitch + 1000) / kFactor, 1600 / kFactor});
                const ZtLPos2f a = ZtOdPdsModelToCameraSpace(at, camera);
                view->EditRedlines().PushBack(
                    new ZtOpRedlineTag(id, id, a, a, 1, at, 0, ZtLBox3f()));
                auto* comment = new ZtOpComment(id);
                comment->SetBody(L"Check the support here.\r\nSee the line list.");
                view->EditComments().PushBack(comment);
            }
            root->AddChild(view);
        }
    }
    // Drops the model's and the scene's geometry indexes, so that the next pick makes them.
    void DropIndexes() {
        model->SetCache(nullptr);
        state.GetRootNode()->SetCache(nullptr);
    }

    ~Scene() {
        std::filesystem::remove(std::filesystem::path(path));
        std::filesystem::remove(std::filesystem::path(output));
    }

    // The design file, kept for the benchmark that loads it again.
    std::wstring path;
    std::wstring output;
    ZtOpState state;
    const ZtDgnModel* model = nullptr;
};

// One scene at a time, made when first asked for: the benchmarks of each run in turn.
Scene& TheScene(bool placed) {
    static std::unique_ptr<Scene> scene;
    static bool scenePlaced = false;
    if (!scene || scenePlaced != placed) {
        scene.reset();
        ZtLMatrix3f turn;
        turn.SetValue(0, -0.3048, 0, 0.3048, 0, 0, 0, 0, 0.3048);
        scene = std::make_unique<Scene>(placed ? ZtLAffine3f(turn, {10, 5, 0}) : ZtLAffine3f());
        scenePlaced = placed;
    }
    return *scene;
}

void Export(benchmark::State& state, bool buildIndex, bool placed = false) {
    Scene& scene = TheScene(placed);
    if (!scene.model) {
        state.SkipWithError("the model did not load");
        return;
    }
    ZtOdPdsTagExportPlugin plugin;
    const ZtUWideString output(scene.output.c_str());
    if (!buildIndex)
        plugin.IExport(0, &scene.state, nullptr, &output);
    ZtBenchResetPeakMemory();
    state.counters["start_MiB"] = ZtBenchStatusMiB("VmRSS:");
    for (auto _ : state) {
        if (buildIndex) {
            state.PauseTiming();
            scene.DropIndexes();
            state.ResumeTiming();
        }
        if (plugin.IExport(0, &scene.state, nullptr, &output) != 0) {
            state.SkipWithError("the export failed");
            return;
        }
    }
    state.counters["tags"] = plugin.GetWrittenCount();
    state.counters["filed"] =
        plugin.GetWrittenCount() - static_cast<double>(plugin.GetUnfiledRecords()->Size());
    state.counters["peak_MiB"] = ZtBenchStatusMiB("VmHWM:");
    state.counters["index_B_per_element"] =
        static_cast<double>(ZtOcGeometryIndex::Of(*scene.model).GetMemoryBytes()) / (kSide * kSide);
}

void BM_TagExportWithIndexBuild(benchmark::State& state) {
    Export(state, true);
}
BENCHMARK(BM_TagExportWithIndexBuild)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_TagExportIndexMade(benchmark::State& state) {
    Export(state, false);
}
BENCHMARK(BM_TagExportIndexMade)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_TagExportPlacedIndexMade(benchmark::State& state) {
    Export(state, false, true);
}
BENCHMARK(BM_TagExportPlacedIndexMade)->Unit(benchmark::kMillisecond)->Iterations(5);

// The export with its index build against loading the same model, the two run in turn
// (see ZtBenchPairedRatio).
void BM_TagExportOverLoad(benchmark::State& state) {
    Scene& scene = TheScene(false);
    if (!scene.model)
        return state.SkipWithError("the model did not load");
    ZtOdPdsTagExportPlugin plugin;
    const ZtUWideString output(scene.output.c_str());
    ZtUNameDict names;
    std::unique_ptr<ZtDgnModel> loaded;
    scene.DropIndexes();
    ZtBenchPairedRatio(
        state,
        [&] {
            std::string reason;
            loaded = ZtDgnReadModel(scene.path.c_str(), &names, true, nullptr, &reason);
        },
        [&] {
            if (plugin.IExport(0, &scene.state, nullptr, &output) != 0)
                state.SkipWithError("the export failed");
        },
        [&] {
            loaded.reset();
            scene.DropIndexes();
        });
}
BENCHMARK(BM_TagExportOverLoad)->Unit(benchmark::kMillisecond)->Iterations(9);

// All tags in one view, over a model with no elements: the time goes into finding each
// tag's comment and writing its record, which must grow in proportion to the tags (from
// 20,000 to 80,000 about four times), not with their square.
void BM_TagExportOneView(benchmark::State& state) {
    const auto tags = static_cast<std::uint64_t>(state.range(0));
    ZtOpState document;
    ZtBenchAddOneViewOfTags(document, tags);
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       ("ztodpds-one-view-" + std::to_string(::getpid()) + ".tag");
    const ZtUWideString output(path.wstring().c_str());
    ZtOdPdsTagExportPlugin plugin;
    for (auto _ : state)
        if (plugin.IExport(0, &document, nullptr, &output) != 0)
            return state.SkipWithError("the export failed");
    std::filesystem::remove(path);
    state.counters["tags"] = plugin.GetWrittenCount();
}
BENCHMARK(BM_TagExportOneView)->Unit(benchmark::kMillisecond)->Arg(20000)->Arg(80000);

} // namespace
