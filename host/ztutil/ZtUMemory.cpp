#include "ztutil/ZtUMemory.h"

#include <cstdlib>

void* ZtUMemory::Alloc(std::size_t size) {
    return std::malloc(size ? size : 1);
}

void* ZtUMemory::Realloc(void* block, std::size_t size) {
    return std::realloc(block, size ? size : 1);
}

void ZtUMemory::Dealloc(void* block) {
    std::free(block);
}
