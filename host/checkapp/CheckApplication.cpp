#include "checkapp/CheckApplication.h"

#include "checkapp/CheckCommandLine.h"
#include "report/FindingReport.h"
#include "report/FindingSarif.h"
#include "report/ReportStream.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>
#include <tuple>

namespace {

int Fail(const std::string& message) {
    std::fprintf(stderr, "pdscheck: %s\n", message.c_str());
    return kCheckFailure;
}

// The findings of one file given on the command line.
std::vector<Finding> Check(const std::wstring& path, const CheckCommandLine& line) {
    const std::optional<FileKind> kind = line.readAs ? line.readAs : FileKindOf(path);
    if (kind)
        return CheckFile(path, *kind, line.sideFiles);
    return {FileKindError(path, "cannot tell what kind of file this is",
                          "control files end in .dri, display-set files in .dst and tag files "
                          "in .tag; --as reads a file as one of them")};
}

// The findings as the command line asks for them: the silenced left out, and warnings made
// errors under -Werror. A file that two of the files given bring in (a side file named
// beside its control file) is reported once.
void Select(std::vector<Finding>& findings, const CheckCommandLine& line) {
    std::set<std::tuple<std::wstring, std::uint32_t, std::uint32_t, std::string, std::string>> seen;
    std::erase_if(findings, [&](const Finding& f) {
        return (f.severity != Severity::kError && line.silenced.count(f.name) > 0) ||
               !seen.emplace(f.at.file, f.at.line, f.at.column, f.name, f.message).second;
    });
    if (line.warningsAreErrors)
        for (Finding& finding : findings)
            if (finding.severity == Severity::kWarning) {
                finding.severity = Severity::kError;
                finding.promoted = true;
            }
}

int ExitStatus(const std::vector<Finding>& findings) {
    int status = kCheckClean;
    for (const Finding& finding : findings) {
        if (finding.severity == Severity::kError ||
            (finding.severity == Severity::kWarning && finding.dropsData))
            return kCheckDataDropped;
        if (finding.severity == Severity::kWarning)
            status = kCheckWarnings;
    }
    return status;
}

} // namespace

int RunPdsCheck(const std::vector<std::string>& args) {
    CheckCommandLine line;
    std::string error;
    if (!ParseCheckCommandLine(args, &line, &error))
        return Fail(error + "; see pdscheck --help");
    if (line.help) {
        std::fputs(CheckUsageText().c_str(), stdout);
        return std::fflush(stdout) == 0 ? kCheckClean : Fail("cannot write the usage");
    }
    if (line.version) {
        std::printf("pdscheck %s\n", ZTODPDS_VERSION);
        return std::fflush(stdout) == 0 ? kCheckClean : Fail("cannot write the version");
    }

    std::vector<std::wstring> files;
    std::vector<Finding> findings;
    for (const std::string& file : line.files) {
        files.push_back(ZtUSysString::PathToWide(file));
        std::vector<Finding> found = Check(files.back(), line);
        findings.insert(findings.end(), std::make_move_iterator(found.begin()),
                        std::make_move_iterator(found.end()));
    }
    Select(findings, line);
    const int status = ExitStatus(findings);

    ReportStream out(stdout);
    switch (line.format) {
    case CheckFormat::kText:
        WriteFindingsText(out, findings);
        break;
    case CheckFormat::kJson:
        WriteFindingsJson(out, findings, files, status);
        break;
    case CheckFormat::kSarif:
        WriteFindingsSarif(out, findings, files, "pdscheck", ZTODPDS_VERSION, status);
        break;
    }
    if (!out.Flush())
        return Fail(std::string("cannot write the findings: ") + std::strerror(out.Error()));
    return status;
}
