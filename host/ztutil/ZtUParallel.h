#pragma once
#include <cstddef>
#include <functional>

// The threads to use for `asked`: as many, or one a core (at least one) for 0.
std::size_t ZtUThreadsFor(std::size_t asked);

// Calls `work(i)` for every i in [0, count), on at most `threads` threads, the caller's
// among them; each thread takes the next i not yet taken, so `work` must not depend on
// which thread runs it or in what order. When a call throws, no further i is handed out
// and, once all threads are done, the failure of the lowest-numbered thread is rethrown.
// Where fewer threads can be started than asked for, those started do the work.
void ZtUParallelFor(std::size_t count, std::size_t threads,
                    const std::function<void(std::size_t)>& work);
