#pragma once
#include <cstddef>
#include <cstdint>

class ZtOpState;

// The plug-in library drops, silently, a tag whose line ends would add more than
// 4,000,000 characters in all to the comments of its file, beyond the one CR that every
// LF gets: each text block of a tag widens the body's line ends once more. The host finds
// out from the file and from what came in, to warn the user.
class TagLineEndBudget {
public:
    static constexpr std::uint64_t kFileExtraLineEnds = 4000000;

    // Notes the document's redline tags before an import, and the budget it ran under.
    explicit TagLineEndBudget(const ZtOpState& state,
                              std::uint64_t extraLineEnds = kFileExtraLineEnds);
    // How many tags of the tag file at `path` the import just run dropped for the budget.
    // A tag, from a line that begins "tag{" to the next, widens its line ends by at most
    // its LFs times its "text{" less one. Only where that sum over the file passes the
    // budget can a tag have lacked room; there the tags of the file that did not come in
    // are put down to the budget, and elsewhere none are. A body whose own lines begin
    // "tag{" splits its tag in two for the sum, which can then hide a drop.
    std::size_t CountDropped(const ZtOpState& state, const wchar_t* path) const;

private:
    std::size_t tagsBefore_;
    std::uint64_t extraLineEnds_;
};
