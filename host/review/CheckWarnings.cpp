#include "review/CheckWarnings.h"

#include "review/ReviewRun.h"
#include "ztutil/ZtUSysString.h"

void AddCheckWarnings(ReviewRun& run, const Step& step, FileKind kind, const SideFiles& sideFiles) {
    const std::wstring path = ZtUSysString::PathToWide(step.argument);
    for (const Finding& finding : CheckFile(path, kind, sideFiles)) {
        if (finding.severity == Severity::kNote || finding.name == "model-file")
            continue;
        std::string place = ZtUSysString::WideToUtf8(finding.at.file);
        if (finding.at.line != 0)
            place +=
                ":" + std::to_string(finding.at.line) + ":" + std::to_string(finding.at.column);
        std::string warning =
            step.name + " " + step.argument + ": " + place + ": " + finding.message;
        if (!finding.note.empty())
            warning += "; " + finding.note;
        run.warnings.push_back(warning + " [-W" + finding.name + "]");
    }
}
