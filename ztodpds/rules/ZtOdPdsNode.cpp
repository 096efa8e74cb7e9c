#include "rules/ZtOdPdsNode.h"

#include "rules/ZtOdPdsOperation.h"

#include <cassert>

void ZtOdPdsNode::Release() {
    // A release without a count of its own would free a node that others still hold.
    assert(refCount_ > 0);
    if (--refCount_ != 0)
        return;
    if (!IsOperation()) {
        delete this;
        return;
    }
    // Operations are taken apart here, not by their destructors releasing their operands,
    // so that a deep tree can't exhaust the stack: an operand is detached before its holder
    // dies, and it goes on the list of the dying if that was its last count. The list runs
    // through the dying nodes' own parent links, which nothing reads any more, so that
    // taking a tree apart allocates nothing and cannot fail.
    ZtOdPdsNode* dying = this;
    parent_ = nullptr;
    while (dying) {
        ZtOdPdsNode* node = dying;
        dying = node->parent_;
        if (node->IsOperation()) {
            auto* operation = static_cast<ZtOdPdsOperation*>(node);
            ZtOdPdsNode* operands[] = {operation->right_, operation->left_};
            operation->left_ = nullptr;
            operation->right_ = nullptr;
            for (ZtOdPdsNode* operand : operands) {
                if (!operand)
                    continue;
                assert(operand->refCount_ > 0);
                if (--operand->refCount_ == 0) {
                    operand->parent_ = dying;
                    dying = operand;
                } else {
                    operand->parent_ = nullptr;
                }
            }
        }
        delete node;
    }
}

void ZtOdPdsDiscardUnheld(ZtOdPdsNode* node) noexcept {
    if (node && node->GetRefCount() == 0) {
        node->AddRef();
        node->Release();
    }
}
