#pragma once
#include "ztplugin/ZtOpElement.h"

#include <cstdint>

class ZtOpLock;
class ZtOpState;

// The document's next identifiers: the one that the next new redline tag gets, and the
// one that the next new comment gets. Both start at 1.
class ZtOpNextCommentIdElement : public ZtOpElement {
public:
    static const ZtOpElementClass* GetClass();
    const ZtOpElementClass* GetElementClass() const override { return GetClass(); }

    std::uint64_t GetTagId() const { return tagId_; }
    std::uint64_t& EditTagId() { return tagId_; }
    std::uint64_t GetCommentId() const { return commentId_; }
    std::uint64_t& EditCommentId() { return commentId_; }

    // The element in `list`, made there if it is missing.
    static ZtOpNextCommentIdElement* Require(ZtOpElementList& list);
    // The element in `list` for reading, or null.
    static const ZtOpNextCommentIdElement* Get(const ZtOpElementList& list);
    // The document's element for writing, or null if there is none or `lock` does not
    // cover it.
    static ZtOpNextCommentIdElement* Edit(ZtOpState* state, ZtOpLock* lock);

private:
    std::uint64_t tagId_ = 1;
    std::uint64_t commentId_ = 1;
};
