#include "ztlddgn/ZtDgnChunkedArray.h"

#include <windows.h>

namespace {

constexpr std::size_t kLargeBlock = std::size_t{2} << 20;

} // namespace

// Large blocks are reserved and committed from the system directly, so that freeing a
// model gives its memory back at once rather than to the C library's heap.
void* ZtDgnAllocateBlock(std::size_t bytes) {
    if (bytes < kLargeBlock)
        return ::operator new(bytes);
    void* block = ::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void ZtDgnFreeBlock(void* block, std::size_t bytes) {
    if (bytes < kLargeBlock)
        ::operator delete(block);
    else
        ::VirtualFree(block, 0, MEM_RELEASE);
}
