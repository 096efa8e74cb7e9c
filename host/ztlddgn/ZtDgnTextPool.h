#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// Distinct texts, each kept once as its bytes, back to back, and numbered from 0 in the
// order they first came. A lookup table finds a text's number while texts come in; once
// no more will, it can be dropped, and what stays is the bytes and one end offset a text.
class ZtDgnTextPool {
public:
    // The number Intern gives when the pool can take no more: its bytes would pass 4 GiB.
    static constexpr std::uint32_t kFull = 0xFFFFFFFFu;

    // The number of `text`, added if it is new.
    std::uint32_t Intern(std::string_view text);
    std::string_view Get(std::uint32_t id) const {
        const std::uint32_t begin = id == 0 ? 0 : ends_[id - 1];
        return {bytes_.data() + begin, ends_[id] - begin};
    }
    std::size_t Size() const { return ends_.size(); }
    // The bytes of all its texts together.
    std::size_t TextBytes() const { return bytes_.size(); }
    // Memory the pool holds beyond its texts' bytes.
    std::size_t OverheadBytes() const;

    // Drops the lookup table and spare capacity: Intern must not be called again.
    void Seal();

private:
    std::size_t Find(std::string_view text, std::size_t hash) const;
    void Grow();

    std::vector<char> bytes_;
    std::vector<std::uint32_t> ends_; // text i is bytes_[ends_[i - 1], ends_[i])
    // Open addressing, never more than half full, so that a search ends soon at a free
    // slot. A slot holds a text's number plus 1 (0 when free) and the low bits of its hash,
    // which tell most other texts apart without reading them.
    struct Slot {
        std::uint32_t id;
        std::uint32_t hash;
    };
    std::vector<Slot> slots_;
};
