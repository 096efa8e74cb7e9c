#include "tags/ZtOdPdsFindUORsPerMaster.h"

#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaNode.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztutil/ZtUString.h"

#include <optional>

namespace {

// The node's own factor, if its scene properties name one: the first match counts.
std::optional<double> OwnFactor(const ZtOaNode& node) {
    const ZtOaAttribute* attribute = node.FindAttribute("ZtDgnSceneProps");
    if (!attribute || attribute->GetKind() != ZtOaAttribute::kPropertyAttribute)
        return std::nullopt;
    const ZtOaPropertyVector& properties =
        static_cast<const ZtOaPropertyAttribute*>(attribute)->GetPropertyVector();
    for (int i = 0; i < properties.Size(); ++i) {
        const ZtOaProperty* property = properties.Get(i);
        const char* name = property->GetInternalName();
        if (name && ZtUString(name).Equal("ZtDgnUORsPerMaster"))
            return property->GetValue().GetDouble();
    }
    return std::nullopt;
}

// The search as a walk rather than a recursion, so that no depth of tree can exhaust the
// stack: a node with a factor ends its own subtree, and ends the walk when the factor is
// above 0.0 or the node is where the walk began.
class FactorSearch : public ZtOaTraversal {
public:
    Result VisitNode(const ZtOaPathLink& link) override {
        const std::optional<double> own = OwnFactor(*link.GetNode());
        if (!own)
            return kContinue;
        if (*own > 0.0 || !link.GetParent()) {
            factor = *own;
            return kStop;
        }
        return kSkipChildren;
    }

    double factor = 0.0;
};

} // namespace

double ZtOdPdsFindUORsPerMaster(const ZtOaNode* node) {
    if (!node)
        return 0.0;
    FactorSearch search;
    node->ApplyTraversal(&search);
    return search.factor;
}
