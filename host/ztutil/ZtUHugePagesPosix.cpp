#include "ztutil/ZtUHugePages.h"

#include <cstdint>
#include <sys/mman.h>

void ZtUAdviseHugePages(void* block, std::size_t bytes) {
    constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t start = (address + kHugePage - 1) / kHugePage * kHugePage;
    const std::uintptr_t end = (address + bytes) / kHugePage * kHugePage;
    if (start < end)
        ::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}
