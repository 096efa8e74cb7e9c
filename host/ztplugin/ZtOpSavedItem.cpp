#include "ztplugin/ZtOpSavedItem.h"

#include "ztutil/ZtUMemory.h"

#include <new>

void* ZtOpSavedItem::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpSavedItem::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}

ZtOpGroupItem::~ZtOpGroupItem() {
    for (std::size_t i = 0; i < children_.Size(); ++i)
        delete GetChild(i);
}

void ZtOpGroupItem::AddChild(ZtOpSavedItem* item) {
    if (!item)
        return;
    try {
        children_.PushBack(item);
    } catch (...) {
        // The group took the item with the call: a failed append frees it.
        delete item;
        throw;
    }
}

void ZtOpGroupItem::Append(ZtOpGroupItem* other) {
    if (!other || other == this)
        return;
    // All or nothing: with the room made first, no child can end up listed by both groups
    // when memory runs out, which would free it twice.
    children_.Reserve(children_.Size() + other->GetNumChildren());
    for (std::size_t i = 0; i < other->GetNumChildren(); ++i)
        children_.PushBack(other->GetChild(i));
}
