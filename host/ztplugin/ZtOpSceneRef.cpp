#include "ztplugin/ZtOpSceneRef.h"

#include "ztutil/ZtUMemory.h"

#include <new>

ZtOpSceneRef::~ZtOpSceneRef() = default;

void* ZtOpSceneRef::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpSceneRef::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}
