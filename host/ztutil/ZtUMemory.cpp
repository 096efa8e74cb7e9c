#include "ztutil/ZtUMemory.h"

#include <cstdlib>

namespace {

ZtUMemory::FailureHook failureHook = nullptr;

} // namespace

void* ZtUMemory::Alloc(std::size_t size) {
    if (failureHook && failureHook())
        return nullptr;
    return std::malloc(size ? size : 1);
}

void* ZtUMemory::Realloc(void* block, std::size_t size) {
    if (failureHook && failureHook())
        return nullptr;
    return std::realloc(block, size ? size : 1);
}

void ZtUMemory::Dealloc(void* block) {
    std::free(block);
}

void ZtUMemory::SetFailureHook(FailureHook hook) {
    failureHook = hook;
}
