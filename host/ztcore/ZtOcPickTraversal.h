#pragma once
#include "ztobject/ZtOaTraversal.h"

#include <optional>

class ZtOcContext;

// A walk that picks one shape of the tree it is run over. A run begins when the walk
// visits its first node (the one whose link has no parent) and forgets what the run
// before it picked.
class ZtOcPickTraversal : public ZtOaTraversal {
public:
    // `context` is not owned and must outlive the traversal.
    explicit ZtOcPickTraversal(ZtOcContext* context) : context_(context) {}

    // The shape that the last run picked, with the path from it up to the node where the
    // run began; null if it picked nothing.
    const ZtOaFragment* GetPickedShape() const { return picked_ ? &*picked_ : nullptr; }

protected:
    ZtOcContext* GetContext() const { return context_; }
    // The path from `leaf` up becomes the picked shape.
    void SetPicked(const ZtOaPathLink& leaf) {
        if (picked_)
            picked_->Assign(leaf);
        else
            picked_.emplace(leaf);
    }
    void ClearPicked() { picked_.reset(); }

private:
    ZtOcContext* context_;
    std::optional<ZtOaFragment> picked_;
};
