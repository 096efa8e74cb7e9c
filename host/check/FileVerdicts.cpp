#include "check/FileVerdicts.h"

#include "check/FindingCollector.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

// What a file that is not of `kind` looks like, and how to check it; none for a file of
// its kind, or one that holds nothing at all.
struct Verdict {
    std::string looks;
    std::string hint;
};

std::optional<Verdict> WrongKind(FileKind kind, const FindingCollector::FileFacts& facts) {
    if (kind == FileKind::kTags) {
        if (!facts.readAsTags || facts.knownBlocks > 0 ||
            (facts.firstKey.empty() && facts.firstStray.empty()))
            return std::nullopt;
        if (facts.firstKey == L"DesignReview_Control")
            return Verdict{"it looks like a control file", "check it with --as dri"};
        if (facts.displaySetLines)
            return Verdict{"it looks like a display-set file", "check it with --as dst"};
        return Verdict{"it holds no block of a tag file", {}};
    }
    if (kind == FileKind::kDisplaySets) {
        if (facts.sections > 0 || facts.setsOutside > 0 || facts.firstOutside.empty())
            return std::nullopt;
        if (facts.braceOutside.find(L"DesignReview_Control{") != std::wstring::npos)
            return Verdict{"it looks like a control file", "check it with --as dri"};
        if (!facts.braceOutside.empty())
            return Verdict{"it looks like a tag file", "check it with --as tag"};
        return Verdict{"it has no section line, and no [DEFINITION SECTION]", {}};
    }
    return std::nullopt;
}

Finding WrongKindError(const std::wstring& file, FileKind kind, const Verdict& verdict) {
    return FileKindError(file,
                         std::string("this is not a ") + FileKindWords(kind) + ": " + verdict.looks,
                         verdict.hint.empty() ? "nothing comes in from it"
                                              : "nothing comes in from it; " + verdict.hint);
}

} // namespace

std::vector<Finding> JudgeFiles(const std::wstring& path, FileKind kind,
                                FindingCollector& collector) {
    std::vector<Finding>& findings = collector.Findings();
    const std::vector<std::wstring>& files = collector.Files();
    for (const std::wstring& file : files) {
        const FileKind kindOfFile = file == path ? kind : FileKindOf(file).value_or(kind);
        const std::optional<Verdict> verdict = WrongKind(kindOfFile, *collector.FactsOf(file));
        if (!verdict)
            continue;
        std::erase_if(findings, [&](const Finding& f) { return f.at.file == file; });
        findings.push_back(WrongKindError(file, kindOfFile, *verdict));
    }
    // The file checked first, then the others as they were read; by place within a file.
    auto order = [&](const std::wstring& file) {
        if (file == path)
            return std::ptrdiff_t{-1};
        return std::distance(files.begin(), std::find(files.begin(), files.end(), file));
    };
    std::stable_sort(findings.begin(), findings.end(), [&](const Finding& a, const Finding& b) {
        const auto fileA = order(a.at.file);
        const auto fileB = order(b.at.file);
        if (fileA != fileB)
            return fileA < fileB;
        if (a.at.line != b.at.line)
            return a.at.line < b.at.line;
        return a.at.column < b.at.column;
    });
    return std::move(findings);
}
