#include "ztlddgn/ZtDgnChunkedArray.h"

#include "ztutil/ZtUHugePages.h"

#include <cstdint>
#include <sys/mman.h>

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

std::size_t RoundUp(std::size_t bytes) {
    return (bytes + kHugePage - 1) / kHugePage * kHugePage;
}

} // namespace

// Large blocks are mapped directly, so that freeing a model gives its memory back to the
// system, and placed on a huge-page boundary by trimming a slightly larger mapping.
void* ZtDgnAllocateBlock(std::size_t bytes) {
    if (bytes < kHugePage)
        return ::operator new(bytes);
    const std::size_t size = RoundUp(bytes);
    void* raw = ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED)
        throw std::bad_alloc();
    const auto address = reinterpret_cast<std::uintptr_t>(raw);
    const std::uintptr_t start = (address + kHugePage - 1) / kHugePage * kHugePage;
    if (start > address)
        ::munmap(raw, start - address);
    if (start + size < address + size + kHugePage)
        ::munmap(reinterpret_cast<void*>(start + size), address + kHugePage - start);
    ZtUAdviseHugePages(reinterpret_cast<void*>(start), size);
    return reinterpret_cast<void*>(start);
}

void ZtDgnFreeBlock(void* block, std::size_t bytes) {
    if (bytes < kHugePage)
        ::operator delete(block);
    else
        ::munmap(block, RoundUp(bytes));
}
