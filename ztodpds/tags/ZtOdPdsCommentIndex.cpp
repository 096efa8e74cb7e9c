#include "tags/ZtOdPdsCommentIndex.h"

#include "ztplugin/ZtOpComment.h"
#include "ztplugin/ZtOpView.h"

ZtOdPdsCommentIndex::ZtOdPdsCommentIndex(const ZtOpView& view) {
    const ZtUOwnPtrVector<ZtOpComment>& comments = view.GetComments();
    comments_.reserve(comments.Size());
    for (std::size_t i = 0; i < comments.Size(); ++i)
        if (const ZtOpComment* comment = comments.Get(i))
            comments_.try_emplace(comment->GetId(), comment);
}

const ZtOpComment* ZtOdPdsCommentIndex::Find(std::uint64_t id) const {
    const auto found = comments_.find(id);
    return found == comments_.end() ? nullptr : found->second;
}
