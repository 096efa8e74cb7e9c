#include "ztplugin/ZtOpFindSpec.h"

#include "ztutil/ZtUMemory.h"

#include <new>

void* ZtOpFindSpec::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpFindSpec::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}
