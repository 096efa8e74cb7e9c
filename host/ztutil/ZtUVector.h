#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

// The host's vectors. Indices past the end are a caller's error; the accessors that
// take an index check it and give a null or zero value instead of reading out of bounds.

class ZtUVoidPtrVector {
public:
    void PushBack(void* item) { items_.push_back(item); }
    // Makes room for `count` items in all, so that pushing up to that many cannot fail.
    void Reserve(std::size_t count) { items_.reserve(count); }
    void PopBack() {
        if (!items_.empty())
            items_.pop_back();
    }
    void* Back() const { return items_.empty() ? nullptr : items_.back(); }
    void* Get(std::size_t index) const { return index < items_.size() ? items_[index] : nullptr; }
    void* operator[](std::size_t index) const { return Get(index); }
    // Removes the item at `index`, keeping the order of the rest.
    void Erase(std::size_t index) {
        if (index < items_.size())
            items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    }
    void Clear() { items_.clear(); }
    std::size_t Size() const { return items_.size(); }
    bool IsEmpty() const { return items_.empty(); }

private:
    std::vector<void*> items_;
};

// A vector that owns its items and deletes them with itself.
template <class T> class ZtUOwnPtrVector {
public:
    // Takes `item` with the call: a push that fails frees it.
    void PushBack(T* item) {
        std::unique_ptr<T> owned(item);
        // Room for a few at the first push rather than one, two, four: a saved view takes
        // its tags one by one.
        if (items_.capacity() == 0)
            items_.reserve(kFirstRoom);
        items_.push_back(std::move(owned));
    }
    T* Get(std::size_t index) const {
        return index < items_.size() ? items_[index].get() : nullptr;
    }
    T* operator[](std::size_t index) const { return Get(index); }
    T* Back() const { return items_.empty() ? nullptr : items_.back().get(); }
    // Deletes the item at `index`.
    void Erase(std::size_t index) {
        if (index < items_.size())
            items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    }
    // Hands the item at `index` to the caller and takes it out of the vector.
    T* Release(std::size_t index) {
        if (index >= items_.size())
            return nullptr;
        T* item = items_[index].release();
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
        return item;
    }
    void Clear() { items_.clear(); }
    std::size_t Size() const { return items_.size(); }
    bool IsEmpty() const { return items_.empty(); }

private:
    static constexpr std::size_t kFirstRoom = 8;
    std::vector<std::unique_ptr<T>> items_;
};

class ZtUInt32Vector {
public:
    void PushBack(std::int32_t value) { items_.push_back(value); }
    std::int32_t Get(std::size_t index) const { return index < items_.size() ? items_[index] : 0; }
    std::int32_t operator[](std::size_t index) const { return Get(index); }
    void Clear() { items_.clear(); }
    std::size_t Size() const { return items_.size(); }
    bool IsEmpty() const { return items_.empty(); }

private:
    std::vector<std::int32_t> items_;
};
