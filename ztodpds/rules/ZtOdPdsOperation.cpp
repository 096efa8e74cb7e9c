#include "rules/ZtOdPdsOperation.h"

#include "rules/ZtOdPdsFindSpecBuilder.h"
#include "rules/ZtOdPdsLimits.h"

#include <cassert>
#include <memory>
#include <unordered_set>
#include <vector>

namespace {

bool IsOperationOfKind(const ZtOdPdsNode* node, std::uint32_t kind) {
    return node->IsOperation() && static_cast<const ZtOdPdsOperation*>(node)->GetKind() == kind;
}

// True if `target` can be reached from `from` along operands.
bool Reaches(ZtOdPdsNode* from, const ZtOdPdsNode* target) {
    std::vector<ZtOdPdsNode*> pending{from};
    std::unordered_set<const ZtOdPdsNode*> seen{from};
    while (!pending.empty()) {
        ZtOdPdsNode* node = pending.back();
        pending.pop_back();
        if (node == target)
            return true;
        if (!node->IsOperation())
            continue;
        auto* operation = static_cast<ZtOdPdsOperation*>(node);
        for (ZtOdPdsNode* operand : {operation->GetLeft(), operation->GetRight()})
            if (operand && seen.insert(operand).second)
                pending.push_back(operand);
    }
    return false;
}

} // namespace

ZtOdPdsOperation::ZtOdPdsOperation(ZtOdPdsNode* left, std::uint32_t kind, ZtOdPdsNode* right)
    : kind_(kind) {
    SetLeft(left);
    SetRight(right);
}

ZtOdPdsOperation* ZtOdPdsOperation::Make(ZtOdPdsNode* left, std::uint32_t kind,
                                         ZtOdPdsNode* right) {
    ZtOdPdsUnheldNode heldLeft(left), heldRight(right);
    auto* operation = new ZtOdPdsOperation(left, kind, right);
    heldLeft.Take();
    heldRight.Take();
    return operation;
}

ZtOdPdsOperation::~ZtOdPdsOperation() {
    SetLeft(nullptr);
    SetRight(nullptr);
}

void ZtOdPdsOperation::Attach(ZtOdPdsNode*& slot, ZtOdPdsNode* node) {
    // An operation never holds itself: the expression is acyclic.
    assert(node != this);
    // The new node is counted before the old one is released, so that storing the node
    // the slot holds already can't destroy it.
    if (node) {
        node->AddRef();
        node->SetParent(this);
    }
    ZtOdPdsNode* old = slot;
    slot = node;
    if (old) {
        if (old != node)
            old->SetParent(nullptr);
        old->Release();
    }
}

int ZtOdPdsOperation::IsComplete() {
    // A shared operation is complete or not whichever way it is reached: each is looked
    // at once.
    std::vector<ZtOdPdsOperation*> pending{this};
    std::unordered_set<const ZtOdPdsNode*> seen{this};
    while (!pending.empty()) {
        ZtOdPdsOperation* operation = pending.back();
        pending.pop_back();
        if (!operation->left_ || !operation->right_)
            return 0;
        for (ZtOdPdsNode* operand : {operation->right_, operation->left_})
            if (operand->IsOperation() && seen.insert(operand).second)
                pending.push_back(static_cast<ZtOdPdsOperation*>(operand));
    }
    return 1;
}

void ZtOdPdsOperation::PushNegation() {
    // Pre-order, left before right, through every path: a shared operation is reached
    // once through each holder, as a recursive walk would reach it.
    std::vector<ZtOdPdsOperation*> pending{this};
    while (!pending.empty()) {
        ZtOdPdsOperation* operation = pending.back();
        pending.pop_back();
        // Negations are pushed only through a complete tree.
        assert(operation->left_ && operation->right_);
        if (operation->IsNegated()) {
            operation->ToggleKind();
            operation->SetNegated(0);
            operation->left_->ToggleNegated();
            operation->right_->ToggleNegated();
        }
        if (operation->right_->IsOperation())
            pending.push_back(static_cast<ZtOdPdsOperation*>(operation->right_));
        if (operation->left_->IsOperation())
            pending.push_back(static_cast<ZtOdPdsOperation*>(operation->left_));
    }
}

int ZtOdPdsOperation::Flatten(ZtOdPdsRewriteBudget& budget) {
    // The recursive rewriting with an explicit stack. A frame rewrites its node at the
    // top (kRewrite), descends into the left operand, looks again once that is flat
    // (kAfterLeft), descends into the right operand, and is done (kDone).
    enum Phase { kRewrite, kAfterLeft, kDone };
    struct Frame {
        ZtOdPdsOperation* node;
        Phase phase;
    };
    std::vector<Frame> frames{{this, kRewrite}};
    while (!frames.empty()) {
        ZtOdPdsOperation* node = frames.back().node;
        switch (frames.back().phase) {
        case kRewrite:
            while (node->kind_ == kAnd) {
                if (IsOperationOfKind(node->right_, kOr)) {
                    if (budget.newNodes + 2 > kZtOdPdsMaxNewNodes)
                        return 0;
                    budget.newNodes += 2;
                    node->Distribute(kRightSide);
                } else if (IsOperationOfKind(node->right_, kAnd)) {
                    // An inner AND with other holders may lie below the left operand, and
                    // the rotation would then close a cycle.
                    ZtOdPdsNode* inner = node->right_;
                    if (++budget.rotations > kZtOdPdsMaxRotations ||
                        (inner->GetRefCount() > 1 && Reaches(node->left_, inner)))
                        return 0;
                    node->Rotate();
                } else if (IsOperationOfKind(node->left_, kOr)) {
                    if (budget.newNodes + 2 > kZtOdPdsMaxNewNodes)
                        return 0;
                    budget.newNodes += 2;
                    node->Distribute(kLeftSide);
                } else {
                    break;
                }
            }
            frames.back().phase = kAfterLeft;
            if (node->left_->IsOperation())
                frames.push_back({static_cast<ZtOdPdsOperation*>(node->left_), kRewrite});
            break;
        case kAfterLeft:
            // Flattening the left operand of an AND may have turned it into an OR.
            if (node->kind_ == kAnd && IsOperationOfKind(node->left_, kOr)) {
                frames.back().phase = kRewrite;
                break;
            }
            frames.back().phase = kDone;
            if (node->right_->IsOperation())
                frames.push_back({static_cast<ZtOdPdsOperation*>(node->right_), kRewrite});
            break;
        case kDone:
            // A flat AND has no OR below it on either side.
            assert(node->kind_ == kOr ||
                   (!IsOperationOfKind(node->left_, kOr) && !IsOperationOfKind(node->right_, kOr)));
            frames.pop_back();
            break;
        }
    }
    return 1;
}

void ZtOdPdsOperation::Distribute(Side side) {
    // Both allocations come first: if the second fails, the first is freed and nothing
    // has changed.
    assert(kind_ == kAnd && !IsNegated());
    assert(IsOperationOfKind(side == kRightSide ? right_ : left_, kOr));
    auto first = std::make_unique<ZtOdPdsOperation>(kind_);
    auto second = std::make_unique<ZtOdPdsOperation>(kind_);
    ToggleKind();
    if (side == kRightSide) {
        auto* inner = static_cast<ZtOdPdsOperation*>(right_);
        first->SetLeft(left_);
        first->SetRight(inner->left_);
        second->SetLeft(left_);
        second->SetRight(inner->right_);
        SetLeft(first.release());
        SetRight(second.release());
    } else {
        auto* inner = static_cast<ZtOdPdsOperation*>(left_);
        first->SetLeft(inner->left_);
        first->SetRight(right_);
        second->SetLeft(inner->right_);
        second->SetRight(right_);
        SetRight(first.release());
        SetLeft(second.release());
    }
}

void ZtOdPdsOperation::Rotate() {
    assert(kind_ == kAnd && IsOperationOfKind(right_, kAnd));
    auto* inner = static_cast<ZtOdPdsOperation*>(right_);
    ZtOdPdsNode* a = left_;
    ZtOdPdsNode* b = inner->left_;
    ZtOdPdsNode* c = inner->right_;
    c->AddRef();
    inner->SetRight(b);
    inner->SetLeft(a);
    SetLeft(inner);
    SetRight(c);
    c->Release();
}

void ZtOdPdsOperation::Emit(ZtOdPdsFindSpecBuilder& builder) {
    // In order, left before right, with the mark of a new alternative between the
    // operands of an OR; a null node on the stack stands for that mark.
    std::vector<ZtOdPdsNode*> pending{this};
    while (!pending.empty() && !builder.HasOverflowed()) {
        ZtOdPdsNode* node = pending.back();
        pending.pop_back();
        if (!node) {
            builder.OpenAlternative();
        } else if (node->IsStatement()) {
            node->Emit(builder);
        } else {
            // Emitted trees are complete and their negations pushed down to the statements.
            assert(!node->IsNegated());
            auto* operation = static_cast<ZtOdPdsOperation*>(node);
            pending.push_back(operation->right_);
            if (operation->kind_ == kOr)
                pending.push_back(nullptr);
            pending.push_back(operation->left_);
        }
    }
}
