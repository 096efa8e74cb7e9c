#pragma once
#include <cstdint>

class ZtOaNode;
class ZtOaPropertyVisitor;

// A partition whose element nodes hold few distinct lists of properties (a model's millions
// of elements repeat a few levels, colours and styles): each list is a tuple, and a node's
// tuple number stands for its properties. A find query's result on a node is then its result
// on the tuple, worked out once a tuple rather than once a node.
class ZtOpFindTupleSource {
public:
    static constexpr std::uint32_t kNoTuple = 0xFFFFFFFFu;

    // The number of tuples; made on first demand, and not to be asked from two threads at
    // once.
    virtual std::uint32_t GetNumFindTuples() const = 0;
    // The tuple of `node`, or kNoTuple for a node that is not one of the partition's
    // elements or whose properties no tuple holds (it is then looked at on its own).
    virtual std::uint32_t GetFindTuple(const ZtOaNode& node) const = 0;
    // The properties of `tuple` (below GetNumFindTuples), the very ones that each node of
    // that tuple visits, in the same order.
    virtual void VisitFindTuple(std::uint32_t tuple, ZtOaPropertyVisitor& visitor) const = 0;

protected:
    ~ZtOpFindTupleSource() = default;
};
