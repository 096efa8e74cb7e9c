#include "review/CheckWarnings.h"

#include "review/ReviewRun.h"
#include "ztutil/ZtUSysString.h"

namespace {} // namespace

void AddCheckWarnings(ReviewRun& run, const Step& step, FileKind kind, const SideFiles& sideFiles) {
    const std::wstring path = ZtUSysString::PathToWide(step.argument);
    for (const Finding& finding : CheckFile(path, kind, sideFiles)) {
        if (finding.severity == Severity::kNote || finding.name == "model-file")
            continue;
        std::string warning = step.name + " " + step.argument + ": " + LocationText(finding.at) +
                              ": " + finding.message;
        if (!finding.note.empty())
            warning += "; " + finding.note;
        if (finding.related)
            warning += " (" + LocationText(*finding.related) + ": " + finding.relatedMessage + ")";
        run.warnings.push_back(warning + " [-W" + finding.name + "]");
    }
}
