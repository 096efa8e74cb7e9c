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

ZtLAffine3f ZtOpSceneRef::GetPlacement(ZtOaUnit::Linear sceneUnits) const {
    const double scale = ZtOaUnit::ScaleFactor(linearUnits_, sceneUnits);
    if (scale == 1.0)
        return transform_;
    // Column by column, rather than as a product with a diagonal matrix, whose zeros
    // would turn an infinite entry of a hostile transform into NaN across its row.
    ZtLMatrix3f matrix = transform_.GetMatrix();
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            matrix.Set(row, column, matrix.Get(row, column) * scale);
    return ZtLAffine3f(matrix, transform_.GetTranslation());
}

void* ZtOpSceneRef::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpSceneRef::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}
