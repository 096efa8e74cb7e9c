#include "rules/ZtOdPdsModifier.h"

#include "rules/ZtOdPdsNode.h"
#include "rules/ZtOdPdsOperation.h"

#include <vector>

ZtOdPdsNode* ZtOdPdsFindClause::Evaluate(ZtOdPdsDstContext* context) {
    ZtOdPdsNode* node = criterion_ ? criterion_->Evaluate(context) : nullptr;
    if (node && negate_ == 1)
        node->ToggleNegated();
    return node;
}

ZtOdPdsModifier::~ZtOdPdsModifier() = default;

ZtOdPdsNode* ZtOdPdsModifier::Evaluate(ZtOdPdsDstContext* context) {
    return criterion_ ? criterion_->Evaluate(context) : nullptr;
}

ZtOdPdsNode* ZtOdPdsModifier::Apply(ZtOdPdsNode* tree, ZtOdPdsDstContext* context) {
    if (!tree)
        return nullptr;
    ZtOdPdsNode* step = Evaluate(context);
    if (!step)
        return nullptr;
    return Join(tree, step);
}

ZtOdPdsNode* ZtOdPdsModifier::Join(ZtOdPdsNode* tree, ZtOdPdsNode* step) const {
    if (kind_ == kAddAllBut || kind_ == kThrowAway)
        step->ToggleNegated();
    const bool widens = kind_ == kAdd || kind_ == kAddAllBut;
    return new ZtOdPdsOperation(tree, widens ? ZtOdPdsOperation::kOr : ZtOdPdsOperation::kAnd,
                                step);
}

ZtOdPdsCompModifier::~ZtOdPdsCompModifier() {
    find_.reset();
    // Nested scopes hand their own steps to this list before they die, so that no
    // destructor goes deeper than one scope.
    std::vector<ZtOdPdsModifier*> doomed;
    auto takeSteps = [&doomed](ZtUOwnPtrVector<ZtOdPdsModifier>& steps) {
        for (std::size_t i = steps.Size(); i-- > 0;)
            doomed.push_back(steps.Release(i));
    };
    takeSteps(modifiers_);
    while (!doomed.empty()) {
        ZtOdPdsModifier* modifier = doomed.back();
        doomed.pop_back();
        if (auto* scope = dynamic_cast<ZtOdPdsCompModifier*>(modifier)) {
            scope->find_.reset();
            takeSteps(scope->modifiers_);
        }
        delete modifier;
    }
}

ZtOdPdsNode* ZtOdPdsCompModifier::Evaluate(ZtOdPdsDstContext* context) {
    // One frame per scope being evaluated: the next step to take and the tree so far. A
    // nested scope opens a frame of its own; its result, null included, is then applied
    // as the step of the frame below.
    struct Frame {
        ZtOdPdsCompModifier* scope;
        std::size_t next;
        ZtOdPdsNode* running;
    };
    std::vector<Frame> frames;
    auto open = [&](ZtOdPdsCompModifier* scope) {
        ZtOdPdsNode* found = scope->find_ ? scope->find_->Evaluate(context) : nullptr;
        if (found)
            frames.push_back({scope, 0, found});
        return found != nullptr;
    };
    // Ends the step at `next` of the top frame with `result`, which is null if the step
    // failed. The running tree was pinned when the step began; its pin goes now.
    auto finishStep = [&](ZtOdPdsNode* result) {
        Frame& frame = frames.back();
        frame.running->Release();
        frame.running = result;
        ++frame.next;
    };
    if (!open(this))
        return nullptr;
    for (;;) {
        Frame& frame = frames.back();
        if (!frame.running || frame.next == frame.scope->modifiers_.Size()) {
            ZtOdPdsNode* result = frame.running;
            frames.pop_back();
            if (frames.empty())
                return result;
            ZtOdPdsModifier* step = frames.back().scope->modifiers_[frames.back().next];
            finishStep(result ? step->Join(frames.back().running, result) : nullptr);
            continue;
        }
        ZtOdPdsModifier* step = frame.scope->modifiers_[frame.next];
        frame.running->AddRef();
        if (auto* nested = dynamic_cast<ZtOdPdsCompModifier*>(step)) {
            if (!open(nested))
                finishStep(nullptr);
            continue;
        }
        finishStep(step->Apply(frame.running, context));
    }
}
