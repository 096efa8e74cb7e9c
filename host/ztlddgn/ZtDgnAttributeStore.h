#pragma once
#include "ztlddgn/ZtDgnNumberPool.h"
#include "ztlddgn/ZtDgnTextPool.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class ZtOaProperty;
class ZtOaPropertyVisitor;
class ZtUName;
class ZtUNameDict;

// The key of an element's row in the project database, from its DMRS value (first word in
// the top bits): the entity number (word 1) in bits 24-39, the occurrence (word 2, and the
// low byte of word 3 above it) in bits 0-23.
constexpr std::uint64_t ZtDgnAttributeKey(std::uint64_t dmrs) {
    const std::uint64_t entity = (dmrs >> 32) & 0xFFFF;
    const std::uint64_t occurrence = ((dmrs >> 16) & 0xFFFF) | ((dmrs & 0xFF) << 16);
    return entity << 24 | occurrence;
}

// The attributes that a model's elements carry from an attribute source, kept compact: a
// model may hold millions. Texts are kept once each (names and values apart), an attribute
// is the number of a distinct (name, value) pair, and the attributes of one key lie side by
// side, shared by every element that carries the key. The properties that find queries and
// reports see are made from a pair when first asked for, and live as long as the store.
class ZtDgnAttributeStore {
public:
    // A key of the model's elements for which the source had no rows.
    struct UnmatchedKey {
        std::uint32_t entity;
        std::uint32_t occurrence;
        std::uint32_t elements; // how many elements carry it
    };

    ZtDgnAttributeStore(const ZtDgnAttributeStore&) = delete;
    ZtDgnAttributeStore& operator=(const ZtDgnAttributeStore&) = delete;
    ~ZtDgnAttributeStore();

    // The source, as a user would name it ("plant.db").
    const std::string& GetSource() const { return source_; }
    // Rows the source gave, whether or not an element carries their key.
    std::size_t GetRowsRead() const { return rowsRead_; }
    // Elements with at least one attribute, and the attributes they carry together.
    std::size_t GetElementsWithAttributes() const { return elementsWithAttributes_; }
    std::size_t GetAttributeCount() const { return attributeCount_; }
    // The keys that found no rows, by entity and occurrence.
    const std::vector<UnmatchedKey>& GetUnmatchedKeys() const { return unmatched_; }

    // The attributes of the element in `slot`, as pair numbers in the source's order.
    std::span<const std::uint32_t> GetElementPairs(std::size_t slot) const;
    // A pair's name and value, as the source's UTF-8 bytes.
    std::string_view GetName(std::uint32_t pair) const;
    std::string_view GetValue(std::uint32_t pair) const;

    // Names the category and the attributes' names in `names`, which must outlive the store.
    void Bind(ZtUNameDict* names);
    // The category "ZtDgnPDSAttributes"; null before Bind.
    ZtUName* GetCategory() const { return category_; }
    // The property of a pair: internal name "ZtDgnPDSAttribute", display name the
    // attribute's name, the value its text. Only after Bind.
    const ZtOaProperty& GetProperty(std::uint32_t pair) const;
    // Hands the element's properties to `visitor`, with the category. Only after Bind.
    void VisitElement(std::size_t slot, ZtOaPropertyVisitor& visitor) const;

    // Memory the store holds, and of it the bytes of the distinct texts themselves; the
    // properties made on demand are not counted.
    std::size_t MemoryBytes() const;
    std::size_t TextBytes() const { return names_.TextBytes() + values_.TextBytes(); }

private:
    friend class ZtDgnAttributeBuilder;
    ZtDgnAttributeStore() = default;

    std::string source_;
    std::size_t rowsRead_ = 0;
    std::size_t elementsWithAttributes_ = 0;
    std::size_t attributeCount_ = 0;
    std::vector<UnmatchedKey> unmatched_;

    ZtDgnTextPool names_;
    ZtDgnTextPool values_;
    ZtDgnNumberPool pairs_;             // name number in the top 32 bits, value number below
    std::vector<std::uint32_t> keyOf_;  // by element slot: its key's number, or kNone
    std::vector<std::uint32_t> first_;  // by key number: where its pairs begin in pairOf_
    std::vector<std::uint32_t> pairOf_; // the pairs of every key, key after key

    ZtUName* category_ = nullptr;
    std::vector<ZtUName*> nameObjects_;                             // by name number
    mutable std::vector<std::unique_ptr<ZtOaProperty>> properties_; // by pair, made on demand
};
