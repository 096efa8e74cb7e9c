// The checker over one input read as each kind of file, with its findings written in each
// format: a control file brings in the tag and display-set files of the same input beside
// it. And what reporting must never do: change what the imports make of the input.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "check/FileCheck.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "report/FindingReport.h"
#include "report/FindingSarif.h"
#include "report/ReportStream.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "ztplugin/ZtOpState.h"

namespace {

// A sink that hears everything and keeps nothing.
class Deaf : public ZtOdPdsDiagnostics {
public:
    void Report(const ZtOdPdsDiagnostic&) override {}
};

// What a tag import, or a display-set import, makes of `path`, with a sink or without.
std::size_t Imported(const std::wstring& path, FileKind kind, ZtOdPdsDiagnostics* sink) {
    ZtOpState state;
    ZtFuzzAddSampleModel(state);
    if (kind == FileKind::kTags) {
        ZtOdPdsTagImportAction action(&state, state.GetRootNode());
        action.SetDiagnostics(sink);
        action.Perform(path.c_str(), nullptr);
        action.FinishReport();
        return action.GetFolder().GetNumChildren() * 1000003 + action.GetHighestId();
    }
    ZtOdPdsDstImportAction action(&state);
    action.SetDiagnostics(sink);
    return action.Perform(path.c_str(), nullptr) * 1000003 + action.GetFolder().GetNumChildren();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring tags = ZtFuzzWrite("input.tag", data, size);
    const std::wstring sets = ZtFuzzWrite("input.dst", data, size);
    const std::wstring control = ZtFuzzWrite("input.dri", data, size);
    Deaf deaf;
    ZtFuzzCheck(Imported(tags, FileKind::kTags, &deaf) == Imported(tags, FileKind::kTags, nullptr),
                "reporting changed what the tag import made");
    ZtFuzzCheck(Imported(sets, FileKind::kDisplaySets, &deaf) ==
                    Imported(sets, FileKind::kDisplaySets, nullptr),
                "reporting changed what the display-set import made");
    for (const auto& [path, kind] : {std::pair{tags, FileKind::kTags},
                                     {sets, FileKind::kDisplaySets},
                                     {control, FileKind::kControl}}) {
        const std::vector<Finding> findings = CheckFile(path, kind);
        std::string written;
        ReportStream out(written);
        WriteFindingsText(out, findings);
        WriteFindingsJson(out, findings, {path}, 0);
        WriteFindingsSarif(out, findings, {path}, "pdscheck", "0", 0);
    }
    return 0;
}
