#pragma once
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

// A growing array that never moves its items: storage comes in fixed chunks, so that
// pointers to items stay valid and growth copies nothing. Items are destroyed with it.
template <class T, std::size_t kChunkSize = 4096> class ZtDgnChunkedArray {
public:
    ZtDgnChunkedArray() = default;
    ZtDgnChunkedArray(const ZtDgnChunkedArray&) = delete;
    ZtDgnChunkedArray& operator=(const ZtDgnChunkedArray&) = delete;
    ~ZtDgnChunkedArray() {
        for (std::size_t i = 0; i < size_; ++i)
            At(i).~T();
        for (T* chunk : chunks_)
            ::operator delete (static_cast<void*>(chunk), std::align_val_t{alignof(T)});
    }

    template <class... Args> T& Emplace(Args&&... args) {
        if (size_ == chunks_.size() * kChunkSize)
            chunks_.push_back(static_cast<T*>(
                ::operator new (sizeof(T) * kChunkSize, std::align_val_t{alignof(T)})));
        T* item = new (&At(size_)) T(std::forward<Args>(args)...);
        ++size_;
        return *item;
    }

    std::size_t Size() const { return size_; }
    T& operator[](std::size_t index) { return At(index); }
    const T& operator[](std::size_t index) const {
        return chunks_[index / kChunkSize][index % kChunkSize];
    }

private:
    T& At(std::size_t index) { return chunks_[index / kChunkSize][index % kChunkSize]; }

    std::vector<T*> chunks_;
    std::size_t size_ = 0;
};
