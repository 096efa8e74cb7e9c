#pragma once
#include <cstdint>

class ZtOdPdsFindSpecBuilder;

// What Flatten has spent on one display set so far, against the limits of ZtOdPdsLimits.h.
struct ZtOdPdsRewriteBudget {
    std::uint64_t newNodes = 0;
    std::uint64_t rotations = 0;
};

// A node of a display set's boolean expression: an AND or OR operation, or a statement
// that carries a find condition. Nodes are counted by hand: a new node has no holder, each
// holder adds one, and the release that takes the count to 0 destroys the node. Nodes are
// shared, never copied, and rewritten in place, so the expression is a directed acyclic
// graph. Every walk over it keeps its own stack, so that depth can't exhaust the thread's.
class ZtOdPdsNode {
public:
    ZtOdPdsNode() = default;
    ZtOdPdsNode(const ZtOdPdsNode&) = delete;
    ZtOdPdsNode& operator=(const ZtOdPdsNode&) = delete;
    virtual ~ZtOdPdsNode() = default;

    // 1 if no operation below has a null operand.
    virtual int IsComplete() = 0;
    // Moves negations down to the statements (de Morgan); afterwards no operation is negated.
    virtual void PushNegation() = 0;
    // Rewrites into an OR of left-deep AND chains. 0 if a limit of `budget` stopped it, in
    // which case the expression is valid but not flat.
    virtual int Flatten(ZtOdPdsRewriteBudget& budget) = 0;
    // A traversal that changes nothing; 0.
    virtual int Walk() = 0;
    // AND becomes OR and OR becomes AND; statements stay.
    virtual void ToggleKind() = 0;
    // Hands the conditions, in order, to `builder`, marking where alternatives begin.
    virtual void Emit(ZtOdPdsFindSpecBuilder& builder) = 0;
    virtual int IsOperation() const = 0;
    virtual int IsStatement() const = 0;

    int IsNegated() const { return negated_; }
    void ToggleNegated() { negated_ ^= 1; }
    void SetNegated(int negated) { negated_ = negated ? 1 : 0; }
    // The operation this node was last attached to; not reliable once nodes are shared.
    ZtOdPdsNode* GetParent() const { return parent_; }
    void SetParent(ZtOdPdsNode* parent) { parent_ = parent; }

    std::uint32_t GetRefCount() const { return refCount_; }
    void AddRef() { ++refCount_; }
    // Takes one count off; at 0 destroys the node and releases what it held.
    void Release();

private:
    int negated_ = 0;
    ZtOdPdsNode* parent_ = nullptr;
    std::uint32_t refCount_ = 0;
};

// Frees `node` if nothing holds it: a tree made for a holder that it never reached
// because memory ran out on the way. A node that is held stays.
void ZtOdPdsDiscardUnheld(ZtOdPdsNode* node) noexcept;

// Keeps a new node that nothing holds yet on its way to a holder: if the way ends in an
// exception, the node is discarded. Take hands it on.
class ZtOdPdsUnheldNode {
public:
    explicit ZtOdPdsUnheldNode(ZtOdPdsNode* node) : node_(node) {}
    ~ZtOdPdsUnheldNode() { ZtOdPdsDiscardUnheld(node_); }
    ZtOdPdsUnheldNode(const ZtOdPdsUnheldNode&) = delete;
    ZtOdPdsUnheldNode& operator=(const ZtOdPdsUnheldNode&) = delete;

    ZtOdPdsNode* Get() const { return node_; }
    // Keeps `node` instead, discarding the one kept so far.
    void Reset(ZtOdPdsNode* node) {
        ZtOdPdsDiscardUnheld(node_);
        node_ = node;
    }
    ZtOdPdsNode* Take() {
        ZtOdPdsNode* node = node_;
        node_ = nullptr;
        return node;
    }

private:
    ZtOdPdsNode* node_;
};
