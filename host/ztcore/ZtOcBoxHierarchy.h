#pragma once
#include "ztlinear/ZtLBox3f.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

// A bounding-volume hierarchy over many boxes in little memory: 4 bytes a box (its
// ordinal), and 32 a node above them; leaves of two to four boxes make about one node for
// two boxes.
//
// Boxes are sorted along a Morton curve through their centres (a radix sort), and the
// sorted run is split top down where the curve moves on to another block of space, down
// to leaves of two to four boxes. A node's box is kept in floats rounded outwards, so
// that it holds every box added below it: a test that rejects a node's box rejects all
// of them. The boxes themselves are not kept: a leaf names its boxes by their ordinals,
// and the exact box is the caller's to fetch; a leaf's box narrows the search to few.
//
// Each box carries an ordinal, the caller's name for it; nodes know the least ordinal
// below them, so that a search for the first of equals can pass over what comes later.
class ZtOcBoxHierarchy {
public:
    // Largest magnitude of a coordinate that the hierarchy holds: floats and their
    // differences stay finite far beyond it.
    static constexpr double kLargestCoordinate = 1e30;

    // True if the hierarchy can hold the box: not empty, every coordinate finite and
    // within the largest magnitude.
    static bool Holds(const ZtLBox3f& box) {
        const ZtLPos3f& low = box.GetMin();
        const ZtLPos3f& high = box.GetMax();
        for (int axis = 0; axis < 3; ++axis)
            if (!(low[axis] <= high[axis] && low[axis] >= -kLargestCoordinate &&
                  high[axis] <= kLargestCoordinate))
                return false;
        return true;
    }

    // Gathers the boxes, then builds the hierarchy in one pass over them in curve order.
    class Builder {
    public:
        // `capacity`: the boxes expected; more may be added.
        explicit Builder(std::size_t capacity);
        // Adds a box that Holds, ordinals rising from call to call.
        void Add(const ZtLBox3f& box, std::uint32_t ordinal);
        // Adds `count` boxes with the ordinals from `firstOrdinal` on, and extends
        // `bounds` by them, if every one Holds; otherwise adds none and gives false.
        bool AddRun(const ZtLBox3f* boxes, std::size_t count, std::uint32_t firstOrdinal,
                    ZtLBox3f& bounds);
        ZtOcBoxHierarchy Finish();

    private:
        friend class ZtOcBoxHierarchy;
        struct Entry {
            float low[3];
            float high[3];
            std::uint32_t ordinal;
        };
        std::vector<Entry> entries_;
        float low_[3];
        float high_[3];
    };

    static constexpr std::uint32_t kLeafSize = 4;
    // The most boxes one hierarchy holds.
    static constexpr std::size_t kMostItems = (std::size_t{1} << 29) - 1;
    static constexpr std::uint32_t kNoOrdinal = 0xFFFFFFFFu;

    bool IsEmpty() const { return nodeCount_ == 0; }
    std::size_t GetNumItems() const { return itemCount_; }
    // Bytes held, for measures.
    std::size_t GetMemoryBytes() const {
        return nodeCount_ * sizeof(Node) + itemCount_ * sizeof(items_[0]);
    }

    // Nodes are numbered depth first from the root, 0; an inner node's first child comes
    // right behind it.
    static constexpr std::uint32_t kRoot = 0;
    ZtLBox3f GetNodeBox(std::uint32_t node) const {
        const Node& n = nodes_[node];
        return ZtLBox3f(ZtLPos3f(n.low[0], n.low[1], n.low[2]),
                        ZtLPos3f(n.high[0], n.high[1], n.high[2]));
    }
    std::uint32_t GetMinOrdinal(std::uint32_t node) const { return nodes_[node].minOrdinal; }
    bool IsLeaf(std::uint32_t node) const { return (nodes_[node].link & kLeafBit) != 0; }
    std::uint32_t GetFirstChild(std::uint32_t node) const { return node + 1; }
    std::uint32_t GetSecondChild(std::uint32_t node) const { return nodes_[node].link; }

    // A leaf's boxes: items from GetFirstItem on, GetNumLeafItems of them.
    std::uint32_t GetFirstItem(std::uint32_t leaf) const {
        return nodes_[leaf].link & ((1u << kCountShift) - 1);
    }
    std::uint32_t GetNumLeafItems(std::uint32_t leaf) const {
        return ((nodes_[leaf].link & ~kLeafBit) >> kCountShift) + 1;
    }
    std::uint32_t GetOrdinal(std::uint32_t item) const { return items_[item]; }

private:
    static constexpr std::uint32_t kLeafBit = 0x80000000u;
    static constexpr int kCountShift = 29;

    // A leaf links to its items: the leaf bit, their number less one in the next two
    // bits and the first below. An inner node links to its second child.
    struct Node {
        float low[3];
        float high[3];
        std::uint32_t link;
        std::uint32_t minOrdinal;
    };
    static_assert(sizeof(Node) == 32, "the layout is the point");

    struct FreeNodes {
        void operator()(Node* nodes) const { std::free(nodes); }
    };

    // Makes the next node, and all below it, of the sorted entries [first, first + count),
    // whose ordinals become the items from `first` on.
    void Build(const Builder::Entry* entries, const std::uint64_t* keys, std::uint32_t first,
               std::uint32_t count);
    void MakeLeaf(Node& leaf, const Builder::Entry* entries, const std::uint64_t* keys,
                  std::uint32_t first, std::uint32_t count);

    // Nodes in memory of the C library's, so that the room made for the most nodes a
    // build can make is cut to those it made without a copy.
    std::unique_ptr<Node[], FreeNodes> nodes_;
    std::size_t nodeCount_ = 0;
    std::unique_ptr<std::uint32_t[]> items_; // ordinals, leaf by leaf
    std::size_t itemCount_ = 0;
};
