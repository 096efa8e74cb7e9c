#include "ztutil/ZtUParallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>
#include <vector>

std::size_t ZtUThreadsFor(std::size_t asked) {
    return asked != 0 ? asked : std::max(1u, std::thread::hardware_concurrency());
}

void ZtUParallelFor(std::size_t count, std::size_t threads,
                    const std::function<void(std::size_t)>& work) {
    threads = std::min(threads, count);
    if (threads <= 1) {
        for (std::size_t i = 0; i < count; ++i)
            work(i);
        return;
    }
    std::atomic<std::size_t> next{0};
    std::vector<std::exception_ptr> failures(threads);
    auto take = [&](std::size_t thread) {
        try {
            for (std::size_t i; (i = next.fetch_add(1)) < count;)
                work(i);
        } catch (...) {
            failures[thread] = std::current_exception();
            next = count;
        }
    };
    {
        std::vector<std::jthread> workers;
        try {
            workers.reserve(threads - 1);
            for (std::size_t t = 1; t < threads; ++t)
                workers.emplace_back(take, t);
        } catch (...) {
            // Fewer threads than asked for: those started and this one do the work.
        }
        take(0);
    }
    for (const std::exception_ptr& failure : failures)
        if (failure)
            std::rethrow_exception(failure);
}
