#pragma once
#include "ztplugin/ZtOpFindCondition.h"

#include <cstddef>
#include <vector>

// A flat list of find conditions, read as alternatives: a condition with the flag
// kNewAlternative opens a new one, any other belongs to the alternative before it. An
// object matches if it meets every condition of at least one alternative.
class ZtOpFindSpec {
public:
    // Find specs live on the host's heap, so that one made by a plug-in is freed by the host.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    // Appends a copy of `condition`.
    void AddCondition(const ZtOpFindCondition& condition) { conditions_.push_back(condition); }
    std::size_t GetNumConditions() const { return conditions_.size(); }
    const ZtOpFindCondition& GetCondition(std::size_t index) const { return conditions_[index]; }

    // Puts the find spec into its select-all mode: every matching object is selected, not only
    // the first.
    void SelectAll() { selectAll_ = true; }
    bool IsSelectAll() const { return selectAll_; }

private:
    std::vector<ZtOpFindCondition> conditions_;
    bool selectAll_ = false;
};
