#pragma once
#include <cstddef>
#include <cstdint>

class ZtOpState;

// The plug-in library drops, silently, a tag whose line ends would take the CRs that line
// ends add to the comments of its file past 4,000,000: each text block of a tag puts one
// more CR before every LF of the body. The host finds out from the file and from what came
// in, to warn the user.
class TagLineEndBudget {
public:
    static constexpr std::uint64_t kFileAddedLineEnds = 4000000;

    // Notes the document's redline tags before an import, and the budget it ran under.
    explicit TagLineEndBudget(const ZtOpState& state,
                              std::uint64_t addedLineEnds = kFileAddedLineEnds);
    // How many tags of the tag file at `path` the import just run dropped for the budget.
    // A tag, from a line that begins "tag{" to the next, adds at most its LFs times its
    // "text{". Only where that sum over the file passes the budget can a tag have lacked
    // room; there the tags of the file that did not come in are put down to the budget,
    // and elsewhere none are. A body whose own lines begin "tag{" splits its tag in two
    // for the sum, which can then hide a drop.
    std::size_t CountDropped(const ZtOpState& state, const wchar_t* path) const;

private:
    std::size_t tagsBefore_;
    std::uint64_t addedLineEnds_;
};
