#pragma once
#include "ztutil/ZtUFileScope.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// What the tag export writes, as the host's write stream hands it over: the export
// prints each form of the tag format with one call, so each piece of text is one block's
// opening (a file group, a viewpoint key, a tag's head, its second point, its linkage or
// its text). The host counts from it what was written, never from reading the file back,
// and finds what the format can't carry back:
//
// - a text whose last two characters hold a brace, which a reader takes for markup, or
//   of fewer than two characters, whose count a reader can't use: the tag and those
//   behind it are lost;
// - a text with a NUL, at which the export cuts it while its count covers it all, a CR
//   before a line end, which a reader's stream takes for the line end, or U+FFFF, which
//   ends a reader's input: the tags behind it are lost;
// - a text with a lone surrogate, which the file holds as U+FFFD;
// - a tag that shares its identifier with an earlier tag that a reader puts into the same
//   view (no viewpoint key between them), but not its text: a reader gives it the earlier
//   one's;
// - a tag seen with a field of view of no whole degree from 1 to 179, of which a reader
//   makes no view;
// - a file group's name (a model's file name) with braces or line ends, which the export
//   writes as '_'.
class TagExportTally : public ZtUWriteWatcher {
public:
    // Tag problems named one by one, beyond which they are only counted.
    static constexpr std::size_t kNamedProblems = 20;

    // `documentTags`: the tags of the document, of which those not written are dropped.
    // `modelNames`: the file names (without folder) of the scene's models, for the group
    // names. With `keepOldFile` a problem keeps the old file: the text is not put in
    // place.
    TagExportTally(std::size_t documentTags, std::vector<std::wstring> modelNames,
                   bool keepOldFile);

    void Wrote(std::wstring_view text) override;
    bool MayReplace(const Replacement& replacement) override;

    // What becomes of a tag's record when the file is read.
    enum class Fate {
        kReadsBack,
        // It reads back with its text changed (a lone surrogate as U+FFFD).
        kChanged,
        // It is lost, and the tags behind it read on.
        kLost,
        // It is lost, and the tags behind it may be too.
        kLosesTheRest,
    };
    struct Record {
        std::uint64_t id;
        Fate fate;
    };

    // The records written, in the file's order.
    const std::vector<Record>& GetRecords() const { return records_; }
    // Records in the group of tags on no model file.
    std::size_t GetUnfiled() const { return unfiled_; }
    std::size_t GetFileGroups() const { return fileGroups_; }
    // What the user should hear of, in the order found, for the warnings of the step.
    const std::vector<std::string>& GetProblems() const { return problems_; }
    // Whether the export's text was kept from its file, and then the old file stands.
    bool KeptOldFile() const { return keptOldFile_; }

private:
    void Group(std::wstring_view name);
    void Text(std::wstring_view value);
    // A tag that would not read back as it is: named while few, else counted.
    void TagProblem(Fate fate, const std::string& problem);

    std::size_t documentTags_;
    // Each model name that the export can't write as it is, with what it writes instead.
    std::vector<std::pair<std::wstring, std::wstring>> unsafeNames_;
    bool keepOldFile_;
    std::vector<Record> records_;
    std::size_t unfiled_ = 0;
    std::size_t fileGroups_ = 0;
    bool inUnfiledGroup_ = false;
    bool firstGroup_ = true;
    // The field of view in force for the tag being written, in whole degrees.
    long long degrees_ = 0;
    // The tags that a reader puts into the view being written: the hash of each
    // identifier's first text.
    std::unordered_map<std::uint64_t, std::size_t> viewTexts_;
    std::vector<std::string> problems_;
    std::size_t tagProblems_ = 0;
    bool keptOldFile_ = false;
};
