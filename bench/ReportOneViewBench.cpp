// The readable summary and the review page of a document whose tags all stand in one
// view: each tag finds its comment in an index of the view's comments, so that the time
// grows in proportion to the tags (from 20,000 to 80,000 about four times), not with
// their square.
#include "report/ReportPage.h"
#include "report/ReportScene.h"
#include "report/ReportStream.h"
#include "report/RunReport.h"
#include "review/ReviewRun.h"

#include "BenchSupport.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void BM_SummaryOfOneView(benchmark::State& state) {
    ReviewRun run;
    ZtBenchAddOneViewOfTags(run.state, static_cast<std::uint64_t>(state.range(0)));
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
    ZtBenchAddOneViewOfTags(run.state, static_cast<std::uint64_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ReportPageHtml(GatherReportScene(run)));
}
BENCHMARK(BM_PageOfOneView)->Unit(benchmark::kMillisecond)->Arg(20000)->Arg(80000);

} // namespace
