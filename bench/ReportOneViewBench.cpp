// The readable summary and the review page of a document whose tags all stand in one
// view: each tag finds its comment in an index of the view's comments, so that the time
// grows in proportion to the tags (from 20,000 to 80,000 about four times), not with
// their square.
#include "report/ReportPage.h"
#include "report/ReportScene.h"
#include "report/ReportStream.h"
#include "report/RunReport.h"
#include "review/ReviewRun.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpView.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void AddOneViewOfTags(ReviewRun& run, std::uint64_t tags) {
    auto* units = new ZtDgnModel(L"", run.state.EditNameDict());
    units->SetUorsPerMaster(1000);
    run.state.GetRootNode()->AddChild(units);
    auto* view = new ZtOpView;
    ZtNvCamera camera;
    camera.SetPosition({0, 0, 20});
    camera.PointAt({0, 0, 0});
    view->AnonView().EditViewPoint()->SetCamera(camera);
    for (std::uint64_t id = 1; id <= tags; ++id) {
        const ZtLPos3f at(static_cast<double>(id % 100) / 10, static_cast<double>(id / 100) / 10,
                          0);
        view->EditRedlines().PushBack(
            new ZtOpRedlineTag(id, id, {0, 0}, {0, 0}, 1, at, 0, ZtLBox3f()));
        auto* comment = new ZtOpComment(id);
        comment->SetBody(L"Check the support here.");
        view->EditComments().PushBack(comment);
    }
    ZtOpSavedViewsElement::Require(run.state.EditElementList())->Edit()->AddChild(view);
}

void BM_SummaryOfOneView(benchmark::State& state) {
    ReviewRun run;
    AddOneViewOfTags(run, static_cast<std::uint64_t>(state.range(0)));
    for (auto _ : state) {
        std::string text;
        ReportStream out(text, ReportStream::Text::kReadable);
        WriteSummaryReport(out, run);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_SummaryOfOneView)->Unit(benchmark::kMillisecond)->Arg(20000)->Arg(80000);

void BM_PageOfOneView(benchmark::State& state) {
    ReviewRun run;
    AddOneViewOfTags(run, static_cast<std::uint64_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ReportPageHtml(GatherReportScene(run)));
}
BENCHMARK(BM_PageOfOneView)->Unit(benchmark::kMillisecond)->Arg(20000)->Arg(80000);

} // namespace
