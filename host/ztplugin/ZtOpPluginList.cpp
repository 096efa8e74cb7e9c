#include "ztplugin/ZtOpPluginList.h"

#include "ztutil/ZtUMemory.h"

#include <new>

void* ZtOpPluginList::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpPluginList::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}
