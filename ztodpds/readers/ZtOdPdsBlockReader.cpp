#include "readers/ZtOdPdsBlockReader.h"

#include "ztutil/ZtUMemory.h"

#include <cwchar>

namespace {

constexpr std::size_t kInitialCapacity = 512;

} // namespace

ZtOdPdsBlockReaderBase::Buffer ZtOdPdsBlockReaderBase::Allocate() {
    auto* text = static_cast<wchar_t*>(ZtUMemory::Alloc(kInitialCapacity * sizeof(wchar_t)));
    return {text, text ? kInitialCapacity : 0};
}

ZtOdPdsBlockReaderBase::Buffer ZtOdPdsBlockReaderBase::Grow(Buffer buffer) {
    const std::size_t capacity =
        buffer.capacity ? buffer.capacity + buffer.capacity / 2 : kInitialCapacity;
    void* grown = ZtUMemory::Realloc(buffer.text, capacity * sizeof(wchar_t));
    if (!grown)
        return buffer;
    return {static_cast<wchar_t*>(grown), capacity};
}

ZtOdPdsBlockReaderBase::Buffer ZtOdPdsBlockReaderBase::Copy(const wchar_t* text,
                                                            std::size_t length) {
    const std::size_t capacity = length + length / 2 + kInitialCapacity;
    auto* copy = static_cast<wchar_t*>(ZtUMemory::Alloc(capacity * sizeof(wchar_t)));
    if (!copy)
        return {nullptr, 0};
    std::wmemcpy(copy, text, length);
    return {copy, capacity};
}

void ZtOdPdsBlockReaderBase::Free(wchar_t* text) {
    ZtUMemory::Dealloc(text);
}
