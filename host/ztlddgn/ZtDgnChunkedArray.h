#pragma once
#include <algorithm>
#include <bit>
#include <cstddef>
#include <new>
#include <type_traits>
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
        for (std::size_t k = 0; k < chunks_.size(); ++k) {
            if constexpr (!std::is_trivially_destructible_v<T>) {
                T* end = k + 1 == chunks_.size() ? next_ : chunks_[k] + ChunkItems(k);
                for (T* item = chunks_[k]; item != end; ++item)
                    item->~T();
            }
            ZtDgnFreeBlock(chunks_[k], ChunkItems(k) * sizeof(T));
        }
    }

    template <class... Args> T& Emplace(Args&&... args) {
        if (next_ == chunkEnd_)
            NewChunk();
        T* item = new (next_) T(std::forward<Args>(args)...);
        ++next_;
        ++size_;
        return *item;
    }

    // Appends `count` items (no more than one first chunk holds) side by side in one
    // chunk, left as the storage has them, and gives the first one and its index. Where
    // the present chunk has too little room, its rest is passed over: those indexes hold
    // no item. For plain data only.
    T* AppendRun(std::size_t count, std::size_t* first) {
        static_assert(std::is_trivial_v<T>, "runs hold plain data");
        if (static_cast<std::size_t>(chunkEnd_ - next_) < count) {
            const auto rest = static_cast<std::size_t>(chunkEnd_ - next_);
            NewChunk();
            size_ += rest;
        }
        T* run = next_;
        *first = size_;
        next_ += count;
        size_ += count;
        return run;
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

    // Hands items [first, first + count), all there, to `visit` in order, a chunk at a
    // time: no look-up of the chunk an item.
    template <class Visit>
    void ForRange(std::size_t first, std::size_t count, Visit&& visit) const {
        while (count > 0) {
            const std::size_t k = ChunkOf(first);
            const std::size_t at = first - ChunkStart(k);
            const std::size_t run = std::min(count, ChunkItems(k) - at);
            for (const T *item = chunks_[k] + at, *end = item + run; item != end; ++item)
                visit(*item);
            first += run;
            count -= run;
        }
    }

private:
    static std::size_t ChunkItems(std::size_t k) { return kFirstChunk << k; }
    static std::size_t ChunkStart(std::size_t k) {
        return kFirstChunk * ((std::size_t{1} << k) - 1);
    }
    static std::size_t ChunkOf(std::size_t index) {
        return static_cast<std::size_t>(std::bit_width(index / kFirstChunk + 1)) - 1;
    }

    void NewChunk() {
        const std::size_t k = chunks_.size();
        chunks_.reserve(k + 1);
        next_ = static_cast<T*>(ZtDgnAllocateBlock(ChunkItems(k) * sizeof(T)));
        chunks_.push_back(next_);
        chunkEnd_ = next_ + ChunkItems(k);
    }

    std::vector<T*> chunks_;
    std::size_t size_ = 0;
    // Where the next item goes, and the end of the last chunk: equal when it is full.
    T* next_ = nullptr;
    T* chunkEnd_ = nullptr;
};
