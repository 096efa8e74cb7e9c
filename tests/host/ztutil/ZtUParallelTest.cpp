// Work shared out on threads: each item once, whatever the threads, and a failure passed
// back to the caller.
#include "ztutil/ZtUParallel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

TEST(ZtUParallelFor, EachItemIsDoneOnce) {
    for (std::size_t threads : {1u, 2u, 3u, 16u})
        for (std::size_t count : {0u, 1u, 2u, 5u, 1000u}) {
            std::vector<std::atomic<int>> done(count);
            ZtUParallelFor(count, threads, [&](std::size_t i) { ++done[i]; });
            for (std::size_t i = 0; i < count; ++i)
                EXPECT_EQ(done[i], 1) << i << " of " << count << " on " << threads;
        }
}

TEST(ZtUParallelFor, AFailureReachesTheCallerAndStopsTheRest) {
    for (std::size_t threads : {1u, 4u}) {
        std::atomic<std::size_t> started{0};
        EXPECT_THROW(ZtUParallelFor(100000, threads,
                                    [&](std::size_t i) {
                                        ++started;
                                        if (i == 10)
                                            throw std::runtime_error("item 10");
                                    }),
                     std::runtime_error);
        // On one thread nothing follows the failure; on more, how many items the others
        // take before the failing one is seen depends on how they are scheduled.
        if (threads == 1) {
            EXPECT_EQ(started.load(), 11u);
        }
    }
}

TEST(ZtUThreadsFor, OneACoreIsAtLeastOneAndAskedForIsKept) {
    EXPECT_GE(ZtUThreadsFor(0), 1u);
    EXPECT_EQ(ZtUThreadsFor(3), 3u);
}
