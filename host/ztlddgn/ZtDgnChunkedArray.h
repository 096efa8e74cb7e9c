#pragma once
#include <bit>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

// Storage for the large arrays of a model: blocks of 2 MiB and more are aligned so that the
// system can back them with huge pages, which makes first touching them much cheaper.
void* ZtDgnAllocateBlock(std::size_t bytes);
void ZtDgnFreeBlock(void* block, std::size_t bytes);

// A growing array that never moves its items: storage comes in chunks that double in size
// (chunk k holds kFirstChunk << k items), so that pointers to items stay valid, growth
// copies nothing and a small array stays small. Items are destroyed with it.
template <class T, std::size_t kFirstChunk = 1024> class ZtDgnChunkedArray {
    static_assert(std::has_single_bit(kFirstChunk), "chunk sizes must be powers of two");

public:
    ZtDgnChunkedArray() = default;
    ZtDgnChunkedArray(const ZtDgnChunkedArray&) = delete;
    ZtDgnChunkedArray& operator=(const ZtDgnChunkedArray&) = delete;
    ~ZtDgnChunkedArray() {
        for (std::size_t i = 0; i < size_; ++i)
            (*this)[i].~T();
        for (std::size_t k = 0; k < chunks_.size(); ++k)
            ZtDgnFreeBlock(chunks_[k], ChunkItems(k) * sizeof(T));
    }

    template <class... Args> T& Emplace(Args&&... args) {
        const std::size_t k = ChunkOf(size_);
        if (k == chunks_.size()) {
            // Room in the list first, so that a block is never left out of it.
            chunks_.reserve(k + 1);
            chunks_.push_back(static_cast<T*>(ZtDgnAllocateBlock(ChunkItems(k) * sizeof(T))));
        }
        T* item = new (&chunks_[k][size_ - ChunkStart(k)]) T(std::forward<Args>(args)...);
        ++size_;
        return *item;
    }

    std::size_t Size() const { return size_; }
    T& operator[](std::size_t index) {
        const std::size_t k = ChunkOf(index);
        return chunks_[k][index - ChunkStart(k)];
    }
    const T& operator[](std::size_t index) const {
        const std::size_t k = ChunkOf(index);
        return chunks_[k][index - ChunkStart(k)];
    }

private:
    static std::size_t ChunkItems(std::size_t k) { return kFirstChunk << k; }
    static std::size_t ChunkStart(std::size_t k) {
        return kFirstChunk * ((std::size_t{1} << k) - 1);
    }
    static std::size_t ChunkOf(std::size_t index) {
        return static_cast<std::size_t>(std::bit_width(index / kFirstChunk + 1)) - 1;
    }

    std::vector<T*> chunks_;
    std::size_t size_ = 0;
};
