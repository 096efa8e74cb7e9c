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
    return ZtOdPdsOperation::Make(tree, widens ? ZtOdPdsOperation::kOr : ZtOdPdsOperation::kAnd,
                                  step);
}

ZtOdPdsCompModifier::~ZtOdPdsCompModifier() {
    find_.reset();
    // Nested scopes are emptied here before they die, so that no destructor goes deeper
    // than one scope; the scopes still to empty are chained through their own links, so
    // that taking a set apart allocates nothing and cannot fail.
    ZtOdPdsCompModifier* scope = this;
    ZtOdPdsCompModifier* waiting = nullptr;
    while (scope) {
        ZtUOwnPtrVector<ZtOdPdsModifier>& steps = scope->modifiers_;
        for (std::size_t i = steps.Size(); i-- > 0;) {
            ZtOdPdsModifier* step = steps.Release(i);
            if (auto* nested = dynamic_cast<ZtOdPdsCompModifier*>(step)) {
                nested->find_.reset();
                nested->nextDying_ = waiting;
                waiting = nested;
            } else {
                delete step;
            }
        }
        if (scope != this)
            delete scope;
        scope = waiting;
        if (waiting)
            waiting = waiting->nextDying_;
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
        ZtOdPdsUnheldNode found(scope->find_ ? scope->find_->Evaluate(context) : nullptr);
        if (!found.Get())
            return false;
        frames.push_back({scope, 0, found.Get()});
        found.Take();
        return true;
    };
    // Ends the step at `next` of the top frame with `result`, which is null if the step
    // failed. The running tree was pinned when the step began; its pin goes now.
    auto finishStep = [&](ZtOdPdsNode* result) {
        Frame& frame = frames.back();
        frame.running->Release();
        frame.running = result;
        ++frame.next;
    };
    // Memory that runs out on the way leaves each frame's tree pinned by the step it was
    // taking: the pins go with the exception, and what they alone kept is freed.
    struct Unpin {
        std::vector<Frame>& frames;
        ~Unpin() {
            for (const Frame& frame : frames)
                if (frame.running)
                    frame.running->Release();
        }
    } unpin{frames};
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
