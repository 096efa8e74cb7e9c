#pragma once
#include "rules/ZtOdPdsNode.h"

// An AND or OR of two nodes. It holds one count on each operand.
class ZtOdPdsOperation : public ZtOdPdsNode {
public:
    enum Kind : std::uint32_t { kAnd = 0, kOr = 1 };
    // The side of an AND on which Distribute finds the OR.
    enum Side { kLeftSide, kRightSide };

    // Both operands null.
    explicit ZtOdPdsOperation(std::uint32_t kind) : kind_(kind) {}
    // Attaches `left`, then `right`; either may be null.
    ZtOdPdsOperation(ZtOdPdsNode* left, std::uint32_t kind, ZtOdPdsNode* right);
    // A new operation over `left` and `right`. If it can't be made, the operands that
    // nothing holds are freed before the exception goes on.
    static ZtOdPdsOperation* Make(ZtOdPdsNode* left, std::uint32_t kind, ZtOdPdsNode* right);
    // Releases left, then right.
    ~ZtOdPdsOperation() override;

    int IsComplete() override;
    void PushNegation() override;
    int Flatten(ZtOdPdsRewriteBudget& budget) override;
    int Walk() override { return 0; }
    void ToggleKind() override { kind_ ^= 1; }
    void Emit(ZtOdPdsFindSpecBuilder& builder) override;
    int IsOperation() const override { return 1; }
    int IsStatement() const override { return 0; }

    ZtOdPdsNode* GetLeft() const { return left_; }
    ZtOdPdsNode* GetRight() const { return right_; }
    std::uint32_t GetKind() const { return kind_; }
    // Detaches and releases the operand in the slot, then attaches `node` (may be null).
    void SetLeft(ZtOdPdsNode* node) { Attach(left_, node); }
    void SetRight(ZtOdPdsNode* node) { Attach(right_, node); }

    // This AND over the OR on `side` becomes an OR of two new ANDs that share the other
    // operand: T AND (B OR C) gives (T AND B) OR (T AND C), and (B OR C) AND T gives
    // (C AND T) OR (B AND T). This node becomes the OR. Both new nodes are allocated before
    // anything changes.
    void Distribute(Side side);
    // A AND (B AND C) becomes (A AND B) AND C, reusing the inner AND. Allocates nothing.
    void Rotate();

private:
    friend class ZtOdPdsNode;

    void Attach(ZtOdPdsNode*& slot, ZtOdPdsNode* node);

    std::uint32_t kind_;
    ZtOdPdsNode* left_ = nullptr;
    ZtOdPdsNode* right_ = nullptr;
};
