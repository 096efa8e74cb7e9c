#include "ztplugin/ZtOpComment.h"

#include "ztutil/ZtUMemory.h"

#include <new>

void* ZtOpComment::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpComment::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}
