#include "BenchSupport.h"

#include "tags/ZtOdPdsCameraMaps.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUSysFile.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

void ZtBenchResetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

double ZtBenchStatusMiB(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(key, 0) == 0)
            return std::stod(line.substr(std::string(key).size())) / 1024.0;
    return 0;
}

namespace {

double ThreadCpuMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double Median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void ZtBenchPairedRatio(benchmark::State& state, const std::function<void()>& base,
                        const std::function<void()>& work, const std::function<void()>& tidy) {
    std::vector<double> baseTimes;
    std::vector<double> workTimes;
    std::vector<double> ratios;
    for (auto _ : state) {
        // Once first, untimed: the timed one then finds the caches as a run of the base
        // alone leaves them, not as `tidy` did.
        base();
        const double start = ThreadCpuMilliseconds();
        base();
        const double middle = ThreadCpuMilliseconds();
        work();
        const double end = ThreadCpuMilliseconds();
        baseTimes.push_back(middle - start);
        workTimes.push_back(end - middle);
        ratios.push_back(middle > start ? (end - middle) / (middle - start) : 0);
        if (tidy) {
            state.PauseTiming();
            tidy();
            state.ResumeTiming();
        }
    }
    state.counters["ratio_median"] = Median(ratios);
    if (!ratios.empty()) {
        const double bestBase = *std::min_element(baseTimes.begin(), baseTimes.end());
        const double bestWork = *std::min_element(workTimes.begin(), workTimes.end());
        state.counters["ratio_of_best"] = bestBase > 0 ? bestWork / bestBase : 0;
    }
    state.counters["base_ms"] = Median(baseTimes);
    state.counters["work_ms"] = Median(workTimes);
}

unsigned ZtBenchDecodeFile(const wchar_t* path) {
    ZtUFile* file =
        ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 384);
    if (!file)
        return 0;
    unsigned sum = 0;
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;)
        sum += c;
    ZtUSysFile::fclose(file);
    return sum;
}

bool ZtBenchWriteTagFile(const std::string& path, int tags) {
    constexpr int kTagsPerView = 10;
    std::ofstream out(path, std::ios::binary);
    out << "file{0n{pipes.dgn}}\ntarget{1600000 1200000 240000}\nclip_far{9600000}\n"
           "persp_ang{40}\n";
    for (int i = 0; i < tags; ++i) {
        if (i % kTagsPerView == 0)
            out << "eye{" << 4800000 + i << " -2400000 2400000}\n";
        const std::string body = "Check the support of line " + std::to_string(i) +
                                 " against the {steel} drawing.\nSecond line of the note.";
        out << "tag{" << i + 1 << " 1 0 0.000000 " << 640000 + i << " 480000 120000\n"
            << "p{" << 700000 + i << " 430000 120000}\nl{0 13 " << i % 65536 << " 0}\n"
            << "text{" << body.size() << "\n"
            << body << "}}\n";
    }
    return static_cast<bool>(out);
}

void ZtBenchAddOneViewOfTags(ZtOpState& document, std::uint64_t tags) {
    auto* units = new ZtDgnModel(L"", document.EditNameDict());
    units->SetUorsPerMaster(1000);
    document.GetRootNode()->AddChild(units);
    auto* view = new ZtOpView;
    ZtNvCamera camera;
    camera.SetPosition({0, 0, 20});
    camera.PointAt({0, 0, 0});
    view->AnonView().EditViewPoint()->SetCamera(camera);
    for (std::uint64_t id = 1; id <= tags; ++id) {
        const ZtLPos3f at(static_cast<double>(id % 100) / 10, static_cast<double>(id / 100) / 10,
                          0);
        const ZtLPos2f a = ZtOdPdsModelToCameraSpace(at, camera);
        view->EditRedlines().PushBack(new ZtOpRedlineTag(id, id, a, a, 1, at, 0, ZtLBox3f()));
        auto* comment = new ZtOpComment(id);
        comment->SetBody(L"Check the support here.");
        view->EditComments().PushBack(comment);
    }
    ZtOpSavedViewsElement::Require(document.EditElementList())->Edit()->AddChild(view);
}
