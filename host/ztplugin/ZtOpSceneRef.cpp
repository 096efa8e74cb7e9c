#include "ztplugin/ZtOpSceneRef.h"

#include "ztutil/ZtUMemory.h"

#include <new>

ZtOpSceneRef::~ZtOpSceneRef() = default;

void ZtOpSceneRef::SetSourceName(const wchar_t* name) {
    sourceIsLoadFile_ = !loadFile_.IsEmpty() && loadFile_ == name;
    sourceName_.SetString(sourceIsLoadFile_ ? L"" : name);
}

void ZtOpSceneRef::SetLoadFile(const wchar_t* path) {
    if (sourceIsLoadFile_) {
        sourceName_ = loadFile_;
        sourceIsLoadFile_ = false;
    }
    loadFile_.SetString(path);
}

void* ZtOpSceneRef::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpSceneRef::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}
