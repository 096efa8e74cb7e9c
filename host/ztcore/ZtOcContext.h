#pragma once
#include <cstdint>

// What the traversals of one task share: whether they may answer from the geometry
// indexes kept with partitions, and a count of the boxes they tested, by which the cost
// of a pick can be measured without a clock.
class ZtOcContext {
public:
    // On by default. Off, a pick tests every node of the tree itself: the plain
    // definition that the indexes must agree with.
    void SetUseIndex(bool use) { useIndex_ = use; }
    bool GetUseIndex() const { return useIndex_; }

    std::uint64_t GetBoxTests() const { return boxTests_; }
    void AddBoxTests(std::uint64_t count) { boxTests_ += count; }

private:
    bool useIndex_ = true;
    std::uint64_t boxTests_ = 0;
};
