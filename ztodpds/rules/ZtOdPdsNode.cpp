#include "rules/ZtOdPdsNode.h"

#include "rules/ZtOdPdsOperation.h"

#include <vector>

void ZtOdPdsNode::Release() {
    if (--refCount_ != 0)
        return;
    if (!IsOperation()) {
        delete this;
        return;
    }
    // Operations are taken apart here, not by their destructors releasing their operands,
    // so that a deep tree can't exhaust the stack: an operand is detached before its holder
    // dies, and it goes on the list if that was its last count.
    std::vector<ZtOdPdsNode*> dying{this};
    while (!dying.empty()) {
        ZtOdPdsNode* node = dying.back();
        dying.pop_back();
        if (node->IsOperation()) {
            auto* operation = static_cast<ZtOdPdsOperation*>(node);
            ZtOdPdsNode* operands[] = {operation->right_, operation->left_};
            operation->left_ = nullptr;
            operation->right_ = nullptr;
            for (ZtOdPdsNode* operand : operands)
                if (operand) {
                    operand->parent_ = nullptr;
                    if (--operand->refCount_ == 0)
                        dying.push_back(operand);
                }
        }
        delete node;
    }
}
