// Import of display-set files: many small sets, and few sets whose flat forms are large.
// Time should grow with the number of conditions emitted, and with nothing else. Checking
// a file of many sets costs at most 1.5 times its import.

#include "check/FileCheck.h"
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include "tools/ZtTestFiles.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <map>
#include <string>
#include <sys/resource.h>

namespace {

// The benchmark's files, written on first use into a private temporary folder, which goes
// at exit.
class BenchFiles {
public:
    // `sets` display sets of the kind a plant's file holds: lists of levels and colours,
    // files, a negated step, a nested scope, and references to earlier sets.
    const std::wstring& ManySets(int sets) {
        std::wstring& path = paths_[{0, sets}];
        if (path.empty())
            path = Write("many-" + std::to_string(sets) + ".dst", [&](std::ofstream& out) {
                out << "[DEFINITION SECTION]\n";
                for (int i = 0; i < sets; ++i) {
                    out << "<Display Set>\n"
                        << i << " Set " << i << "\nComment of set " << i << "\n<Definition>\n";
                    if (i % 10 == 9)
                        out << "FIND Display Set Set " << i - 1 << ", Set " << i - 9 << "\n";
                    else
                        out << "FIND Level " << i % 60 << ", " << i % 60 + 1 << ", " << i % 60 + 2
                            << "\n";
                    out << "KEEP ONLY Color " << i % 15 << ", " << i % 15 + 1 << "\n"
                        << "THROW AWAY Level 63\n"
                        << "ADD\nFIND File unit" << i % 7 << ".dgn\nKEEP ONLY Level 5\nEND FIND\n"
                        << "END FIND\n";
                }
            });
        return path;
    }

    // Sets whose flat forms hold `conditions` conditions in all: each is a product of
    // four lists, (25 levels) and (10 colours) and (10 files) and (10 levels), which gives
    // 25,000 groups of four conditions; a second kind with 2,500 groups fills up the rest.
    const std::wstring& LargeFlatForms(int conditions) {
        std::wstring& path = paths_[{1, conditions}];
        if (path.empty())
            path = Write("large-" + std::to_string(conditions) + ".dst", [&](std::ofstream& out) {
                out << "[DEFINITION SECTION]\n";
                auto list = [&](const char* word, int first, int count, const char* suffix) {
                    out << word;
                    for (int i = 0; i < count; ++i)
                        out << (i ? "," : " ") << first + i << suffix;
                    out << "\n";
                };
                int left = conditions;
                for (int set = 0; left > 0; ++set) {
                    const int levels = left >= 100000 ? 25 : 1;
                    left -= levels * 10 * 10 * 10 * 4;
                    out << "<Display Set>\n" << set << " Large " << set << "\n<Definition>\n";
                    list("FIND Level", 0, levels, "");
                    list("KEEP ONLY Color", 0, 10, "");
                    list("KEEP ONLY File", 0, 10, ".dgn");
                    list("KEEP ONLY Level", 40, 10, "");
                }
            });
        return path;
    }

private:
    template <class Fill> std::wstring Write(const std::string& name, Fill fill) {
        const std::string path = dir_.File(name);
        std::ofstream out(path, std::ios::binary);
        fill(out);
        return out ? ZtUSysString::Utf8ToWide(path) : std::wstring();
    }

    ZtTestTempDir dir_;
    std::map<std::pair<int, int>, std::wstring> paths_;
};

BenchFiles files;

double PeakResidentMegabytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// Imports `path` into a new document per iteration, as the menu import does, and counts
// the sets and conditions made.
void Import(benchmark::State& state, const std::wstring& path) {
    if (path.empty()) {
        state.SkipWithError("cannot write the display-set file");
        return;
    }
    std::size_t sets = 0;
    std::size_t conditions = 0;
    for (auto _ : state) {
        ZtOpState document;
        ZtOdPdsDstImportAction action(&document);
        if (action.Perform(path.c_str(), nullptr) != 0) {
            state.SkipWithError("import failed");
            return;
        }
        ZtOpSelectionSetsElement* element =
            ZtOpSelectionSetsElement::Require(document.EditElementList());
        action.AppendTo(element);
        const ZtOpFolderItem& root = *element->Get();
        sets = root.GetNumChildren();
        conditions = 0;
        for (std::size_t i = 0; i < sets; ++i)
            conditions += static_cast<const ZtOpSelectionSet*>(root.GetChild(i))
                              ->GetImplicitSelection()
                              .GetImplicitFindSpec()
                              ->GetNumConditions();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * conditions));
    state.counters["sets"] = static_cast<double>(sets);
    state.counters["conditions"] = static_cast<double>(conditions);
    state.counters["peakRssMB"] = PeakResidentMegabytes();
}

void BM_ImportManySets(benchmark::State& state) {
    Import(state, files.ManySets(static_cast<int>(state.range(0))));
}
BENCHMARK(BM_ImportManySets)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_CheckManySets(benchmark::State& state) {
    const std::wstring& path = files.ManySets(static_cast<int>(state.range(0)));
    if (path.empty())
        return state.SkipWithError("cannot write the display-set file");
    for (auto _ : state) {
        const std::vector<Finding> findings = CheckFile(path, FileKind::kDisplaySets);
        state.counters["findings"] = static_cast<double>(findings.size());
    }
}
BENCHMARK(BM_CheckManySets)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_ImportLargeFlatForms(benchmark::State& state) {
    Import(state, files.LargeFlatForms(static_cast<int>(state.range(0))));
}
BENCHMARK(BM_ImportLargeFlatForms)
    ->Arg(25000)
    ->Arg(50000)
    ->Arg(100000)
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond);

} // namespace
