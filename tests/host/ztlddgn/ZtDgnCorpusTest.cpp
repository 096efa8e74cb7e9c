// The shared corpus: files written by an independent implementation. check_corpus.py
// compares pdsreview's reading of each with the independent one; the groups of a file,
// which its JSON does not show, are checked here.
#include "app/ModelStep.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <vector>

namespace {

const std::string kCorpus = std::string(ZT_SHARED_DIR) + "/data/dgn";

// complex2d's cells state a total length 16 words short of their last component, and
// its complex chain and shape headers carry the complex bit themselves.
TEST(ZtDgnCorpus, GroupsOfComplex2dHoldTheirComponents) {
    if (!std::filesystem::exists(kCorpus))
        GTEST_SKIP() << "the shared corpus " << kCorpus << " is absent";
    ZtOpState state;
    std::string error;
    ASSERT_EQ(RunModelStep(state, ZtUSysString::Utf8ToWide(kCorpus + "/complex2d.dgn"), &error), 0)
        << error;
    // Each node's index under its parent's; the model's own children are the top.
    struct Collect : ZtOaTraversal {
        std::vector<std::int64_t> top;
        std::map<std::int64_t, std::vector<std::int64_t>> groups;
        Result VisitNode(const ZtOaPathLink& link) override {
            const ZtOaPathLink* parent = link.GetParent();
            const std::int64_t index = link.GetNode()->GetElementIndex();
            if (parent && !parent->GetParent())
                top.push_back(index);
            else if (parent)
                groups[parent->GetNode()->GetElementIndex()].push_back(index);
            return kContinue;
        }
    } walk;
    state.GetRootNode()->GetChild(0)->ApplyTraversal(&walk);
    EXPECT_EQ(walk.top,
              (std::vector<std::int64_t>{3, 4, 7, 11, 14, 17, 23, 24, 25, 26, 27, 28, 29}));
    const std::map<std::int64_t, std::vector<std::int64_t>> expected = {
        {4, {5, 6}},    {7, {8, 9, 10}},    {11, {12, 13}},
        {14, {15, 16}}, {17, {18, 21, 22}}, {18, {19, 20}},
    };
    EXPECT_EQ(walk.groups, expected);
}

} // namespace
