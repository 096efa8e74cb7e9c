#pragma once
#include <cstdint>
#include <functional>
#include <string>

namespace benchmark {
class State;
}

class ZtOpState;

// What several benchmarks share: memory figures of this process from Linux's /proc, the
// bare decode of a text file that the readers are measured against, a tag file as the
// export writes it, and a document of many tags.

// Starts a new measure of the peak: VmHWM falls back to the present resident size.
void ZtBenchResetPeakMemory();
// A figure of /proc/self/status, such as "VmHWM:" (peak) or "VmRSS:" (now), in MiB; 0 if
// the system gives none.
double ZtBenchStatusMiB(const char* key);

// Takes every character of the file at `path` through the host's text stream, and gives
// their sum (so that the loop can't be optimised away); 0 if the file can't be opened.
unsigned ZtBenchDecodeFile(const wchar_t* path);

// Runs `base` (after one untimed run of it) and `work` in turn once an iteration, then
// `tidy` untimed, and reports the ratio of their CPU times (this thread's): the median of
// the pairs' ratios ("ratio_median") and the ratio of each side's best time
// ("ratio_of_best"), with the sides' medians in milliseconds. Taken in pairs a moment
// apart, the two see the same machine, whose speed on a shared host drifts by a third from
// one minute to the next: a ratio of two benchmarks run apart moves with that drift, a
// paired one much less.
void ZtBenchPairedRatio(benchmark::State& state, const std::function<void()>& base,
                        const std::function<void()>& work, const std::function<void()>& tidy = {});

// Writes a tag file of `tags` tags at `path`, as the export writes them: a new eye every
// ten tags, so that views hold several, each tag with a point, a DMRS value and a body of
// two lines with braces. False if it can't be written.
bool ZtBenchWriteTagFile(const std::string& path, int tags);

// Gives `document` a model of no elements in units of 1000 UORs a master unit and one
// saved view of `tags` tags, each with its own comment, seen from above.
void ZtBenchAddOneViewOfTags(ZtOpState& document, std::uint64_t tags);
