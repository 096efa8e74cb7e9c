#pragma once
#include "ztplugin/ZtOpFindCondition.h"

#include <cstddef>
#include <memory>
#include <vector>

// A flat list of find conditions, read as alternatives: a condition with the flag
// kNewAlternative opens a new one, any other belongs to the alternative before it. An
// object matches if it meets every condition of at least one alternative.
class ZtOpFindSpec {
public:
    // Find queries live on the host's heap, so that one made by a plug-in is freed by the host.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    // Appends a copy of `condition`; while it repeats the followed spec (see Follow), the
    // followed spec's copy is shared instead.
    void AddCondition(const ZtOpFindCondition& condition);
    std::size_t GetNumConditions() const { return size_; }
    // `index` is below GetNumConditions().
    const ZtOpFindCondition& GetCondition(std::size_t index) const;

    // On an empty spec: the conditions added next share the storage of `other`'s for as long
    // as they repeat them from its start. Specs built on others may repeat them by the
    // million, and copies would take memory out of all proportion.
    void Follow(const ZtOpFindSpec& other);

    // Puts the find query into its select-all mode: every matching object is selected, not only
    // the first.
    void SelectAll() { selectAll_ = true; }
    bool IsSelectAll() const { return selectAll_; }

private:
    // A stretch of a block of conditions. Specs share blocks, and blocks only grow: a spec
    // appends to a block only where its last run ends the block, so no other spec's
    // conditions change.
    struct Run {
        std::shared_ptr<std::vector<ZtOpFindCondition>> block;
        std::size_t begin;
        std::size_t end;
    };
    // Sharing stops at this many runs, so that finding a condition stays cheap.
    static constexpr std::size_t kMaxRuns = 16;

    std::vector<Run> runs_;
    std::size_t size_ = 0;
    // The runs of the followed spec; the next condition to compare is at offset
    // followedOffset_ of run followedRun_. Empty once a condition differs.
    std::vector<Run> followed_;
    std::size_t followedRun_ = 0;
    std::size_t followedOffset_ = 0;
    bool selectAll_ = false;
};
