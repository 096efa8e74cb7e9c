#pragma once
#include <cstddef>

// The host's raw memory. Every block from Alloc goes back through Dealloc; the plug-in
// library uses these where it hands memory across the host boundary.
class ZtUMemory {
public:
    // Returns null when the memory is not to be had; a size of 0 gives a valid block.
    static void* Alloc(std::size_t size);
    static void* Realloc(void* block, std::size_t size);
    static void Dealloc(void* block);

    // A test that fails allocations on purpose, to prove that each failure is survived,
    // installs a hook that is asked before every Alloc and Realloc and makes it fail by
    // answering true. Programs leave it null.
    using FailureHook = bool (*)();
    static void SetFailureHook(FailureHook hook);
};
