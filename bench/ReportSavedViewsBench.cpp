// The review page of a grid of small elements seen by many saved views from above, each
// seeing a few thousand of them: the time follows the views and what each sees, not the
// views times the scene (from 200,000 elements to 1,000,000 it should hardly grow), and
// the images' encoding is most of it.
#include "report/ReportPage.h"
#include "report/ReportScene.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

// Pieces a row, a tenth of a unit apart, each a box a third of that across; cameras 20
// units above pieces spread over the grid, as the ten-million-element review's tags are.
// With more than one model, each is the same grid over the others, as the review's ten.
ReportScene GridSeenFromAbove(std::size_t elements, std::size_t views, std::size_t models = 1) {
    constexpr std::size_t kSide = 1000;
    constexpr double kPitch = 0.1;
    ReportScene scene;
    scene.sceneUnits = "m";
    for (std::size_t m = 0; m < models; ++m) {
        scene.models.push_back({"grid.dgn", "m", "", m * elements, elements, {}});
        for (std::size_t i = 0; i < elements; ++i) {
            const ZtLPos3f low{static_cast<double>(i % kSide) * kPitch,
                               static_cast<double>(i / kSide) * kPitch, 0};
            scene.elements.push_back({ZtLBox3f(low, low + ZtLVec3f(0.03, 0.03, 0.03)),
                                      static_cast<std::uint8_t>(i % 7),
                                      static_cast<std::uint8_t>(i % 5)});
            scene.models[m].extent.Extend(scene.elements.back().box);
        }
    }
    const std::size_t rows = elements / kSide;
    for (std::size_t v = 0; v < views; ++v) {
        const std::size_t piece = (v * 7919) % elements;
        const ZtLPos3f at{static_cast<double>(piece % kSide) * kPitch,
                          static_cast<double>(piece / kSide % rows) * kPitch, 0};
        ReportView view;
        view.name = "View " + std::to_string(v);
        view.camera.SetPosition(at + ZtLVec3f(0, 0, 20));
        view.camera.PointAt(at + ZtLVec3f(0, 1e-6, 0));
        view.camera.SetHeightField(40 * std::acos(-1.0) / 180);
        scene.views.push_back(std::move(view));
    }
    return scene;
}

void BM_PageOfManySavedViews(benchmark::State& state) {
    const ReportScene scene = GridSeenFromAbove(static_cast<std::size_t>(state.range(0)),
                                                static_cast<std::size_t>(state.range(1)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string page = ReportPageHtml(scene);
        bytes = page.size();
        benchmark::DoNotOptimize(page.data());
    }
    state.counters["page_MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(BM_PageOfManySavedViews)
    ->Unit(benchmark::kMillisecond)
    ->Args({200000, 100})
    ->Args({1000000, 100});

// Models of 200,000 elements each over one another, as the ten-million-element review's
// ten, with a selection set by level across all of them and one of the second model's
// colour 3. Every model's marks are painted, hidden or not: the page costs in proportion.
void BM_PageOfStackedModels(benchmark::State& state) {
    constexpr std::size_t kElements = 200000;
    const std::size_t models = static_cast<std::size_t>(state.range(0));
    ReportScene scene = GridSeenFromAbove(kElements, 100, models);
    scene.sets.resize(2);
    for (std::uint32_t i = 0; i < scene.elements.size(); ++i) {
        if (scene.elements[i].level == 1)
            scene.sets[0].elements.push_back(i);
        if (i / kElements == 1 && scene.elements[i].colour == 3)
            scene.sets[1].elements.push_back(i);
    }
    for (auto _ : state) {
        const std::string page = ReportPageHtml(scene);
        benchmark::DoNotOptimize(page.data());
    }
}
BENCHMARK(BM_PageOfStackedModels)->Unit(benchmark::kMillisecond)->Arg(1)->Arg(5);

} // namespace
