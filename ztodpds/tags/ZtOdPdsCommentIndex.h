#pragma once
#include <cstdint>
#include <unordered_map>

class ZtOpComment;
class ZtOpView;

// The comments of one view by identifier, made once per view so that finding each tag's
// comment takes no pass over the view's list: a view of many tags exports in time in
// proportion to them. An identifier that several comments share stands for the first of
// them in the list, as a search from the front would find.
class ZtOdPdsCommentIndex {
public:
    explicit ZtOdPdsCommentIndex(const ZtOpView& view);

    // The first comment of the view with `id`, or null.
    const ZtOpComment* Find(std::uint64_t id) const;

private:
    std::unordered_map<std::uint64_t, const ZtOpComment*> comments_;
};
