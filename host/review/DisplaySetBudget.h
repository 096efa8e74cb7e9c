#pragma once
#include <cstddef>
#include <cstdint>

class ZtOpState;

// The plug-in library abandons, silently, the display sets of a file once their find
// specs would hold more than 4,000,000 conditions in all (each set by itself holds at most
// 1,000,000). The host finds out from what it got, to warn the user.
class DisplaySetBudget {
public:
    static constexpr std::uint64_t kFileConditions = 4000000;
    static constexpr std::uint64_t kSetConditions = 1000000;

    // Notes the document's selection sets before an import, and the limits it ran under.
    explicit DisplaySetBudget(const ZtOpState& state,
                              std::uint64_t fileConditions = kFileConditions,
                              std::uint64_t setConditions = kSetConditions);
    // How many sets of the display-set file at `path` the import just run left out for the
    // budget. Only above the budget less one set's limit can a set have lacked room, and
    // once one lacks it no later set is made; so there the sets of the file that did not
    // become selection sets are put down to the budget, and below it none are.
    std::size_t CountAbandoned(const ZtOpState& state, const wchar_t* path) const;

private:
    std::size_t setsBefore_;
    std::uint64_t fileConditions_;
    std::uint64_t setConditions_;
};
