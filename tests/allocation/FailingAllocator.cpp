#include "FailingAllocator.h"

#include "ztutil/ZtUMemory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// A road may read files on threads of its own: which of its allocations is the Nth then
// varies from run to run, but every one is counted and any one may fail.
std::atomic<bool> gArmed{false};
std::atomic<std::uint64_t> gCount{0};
std::atomic<std::uint64_t> gFailAt{0};
std::atomic<bool> gFailed{false};
std::atomic<std::int64_t> gLive{0};

void* Allocate(std::size_t size, std::size_t alignment) {
    if (gArmed && ++gCount == gFailAt) {
        gFailed = true;
        throw std::bad_alloc();
    }
    if (size == 0)
        size = 1;
    void* p = alignment <= alignof(std::max_align_t)
                  ? std::malloc(size)
                  : std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (!p)
        throw std::bad_alloc();
    ++gLive;
    return p;
}

void Free(void* p) noexcept {
    if (!p)
        return;
    --gLive;
    std::free(p);
}

} // namespace

namespace FailingAllocator {

void Arm(std::uint64_t failAt) {
    // The host's raw memory is counted and failed with the rest.
    ZtUMemory::SetFailureHook([] {
        if (gArmed && ++gCount == gFailAt) {
            gFailed = true;
            return true;
        }
        return false;
    });
    gArmed = true;
    gCount = 0;
    gFailAt = failAt;
    gFailed = false;
}

std::uint64_t Disarm() {
    gArmed = false;
    return gCount;
}

bool Failed() {
    return gFailed;
}

std::int64_t Live() {
    return gLive;
}

} // namespace FailingAllocator

void* operator new(std::size_t size) {
    return Allocate(size, 0);
}
void* operator new[](std::size_t size) {
    return Allocate(size, 0);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size, 0);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size, 0);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* p) noexcept {
    Free(p);
}
void operator delete[](void* p) noexcept {
    Free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    Free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    Free(p);
}
void operator delete(void* p, std::align_val_t) noexcept {
    Free(p);
}
void operator delete[](void* p, std::align_val_t) noexcept {
    Free(p);
}
void operator delete(void* p, std::size_t, std::align_val_t) noexcept {
    Free(p);
}
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept {
    Free(p);
}
