#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// The diagnostics sink of a check: words what the library reports into findings, in the
// order reported, and keeps the facts it reports of each file, by which the check judges
// whether a file is of its kind at all.
class FindingCollector : public ZtOdPdsDiagnostics {
public:
    // What the facts say of one file read.
    struct FileFacts {
        bool readAsTags = false;      // a tag import read it to its end
        std::int64_t knownBlocks = 0; // its top-level blocks of a tag file's keys
        std::int64_t sections = 0;    // its section lines
        std::int64_t setsOutside = 0; // its "<Display Set>" lines outside any section
        std::wstring firstOutside;    // its first line with text outside any section
        std::wstring braceOutside;    // its first such line with a brace
        std::wstring firstKey;        // the first unknown key of its top level
        std::wstring firstStray;      // its first text outside any block
        bool displaySetLines = false; // text outside blocks that begins as a display set's
    };
    // A model that a control file names, where its name stands.
    struct NamedModel {
        std::wstring file;
        ZtOdPdsSourcePosition at;
        std::wstring name; // empty for a name longer than any path a system opens
        std::size_t length = 0;
    };
    // Longer than any path a system opens: Windows' longest is 32,767 units, POSIX's 4,096
    // bytes.
    static constexpr std::size_t kLongestPath = 32767;

    void Report(const ZtOdPdsDiagnostic& diagnostic) override;
    // A finding of the checker's own.
    void Add(Finding finding);

    bool HasFindings() const { return !findings_.empty(); }
    std::vector<Finding>& Findings() { return findings_; }
    const std::vector<NamedModel>& Models() const { return models_; }
    // The facts of `file`, or null if nothing was reported of it.
    const FileFacts* FactsOf(const std::wstring& file) const;
    // The files reported of, in the order first reported.
    const std::vector<std::wstring>& Files() const { return files_; }

private:
    FileFacts& Facts(const std::wstring& file);

    std::vector<Finding> findings_;
    std::vector<NamedModel> models_;
    std::map<std::wstring, FileFacts> facts_;
    std::vector<std::wstring> files_;
};
