#include "readers/ZtOdPdsBlockReader.h"

#include "ztutil/ZtUMemory.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
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

ZtOdPdsBlockReaderBase::Held ZtOdPdsBlockReaderBase::HoldFullName(wchar_t c) {
    if (c == L'\0')
        return Held::kToNul;
    return ZtUIsWhiteSpace(c) ? Held::kToSpace : Held::kOverlong;
}

ZtOdPdsBlockReaderBase::Holding ZtOdPdsBlockReaderBase::StartHolding(Held held, const wchar_t* text,
                                                                     std::size_t length,
                                                                     wchar_t c) {
    Holding holding{Held::kAll, 0};
    for (std::size_t i = length < 4 ? 0 : length - 4; i < length; ++i)
        holding = Hold(holding, text[i]);
    holding.held = held;
    return Hold(holding, c);
}

ZtOdPdsBlockReaderBase::Gathering ZtOdPdsBlockReaderBase::AppendSlowly(Gathering gathering,
                                                                       wchar_t c, Limits limits) {
    Held held = gathering.holding.held;
    if (held != Held::kAll) {
        gathering.holding = Hold(gathering.holding, c);
        return gathering;
    }
    const bool name = limits == Limits::kFileName;
    if (limits != Limits::kNone && gathering.length != 0 &&
        std::wmemchr(gathering.buffer, L'\0', gathering.length)) {
        held = Held::kToNul;
    } else if (name && gathering.length == kMaxNameLength) {
        held = HoldFullName(c);
    } else if (gathering.length == gathering.capacity) {
        const Buffer grown = Grow({gathering.buffer, gathering.capacity});
        if (grown.capacity == gathering.capacity)
            held = Held::kStarved;
        gathering.buffer = grown.text;
        gathering.capacity = grown.capacity;
    }
    if (held != Held::kAll) {
        gathering.holding = StartHolding(held, gathering.buffer, gathering.length, c);
        gathering.end = 0;
        return gathering;
    }
    gathering.buffer[gathering.length++] = c;
    gathering.end = EndOf(held, gathering.capacity, limits);
    return gathering;
}
