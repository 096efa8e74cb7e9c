#include "ztlddgn/ZtDgnAttributeStore.h"

#include "ztobject/ZtOaNode.h"
#include "ztobject/ZtOaProperty.h"
#include "ztutil/ZtUName.h"
#include "ztutil/ZtUResource.h"
#include "ztutil/ZtUSysString.h"

namespace {

constexpr const char* kCategory = "ZtDgnPDSAttributes";
constexpr const char* kProperty = "ZtDgnPDSAttribute";

} // namespace

ZtDgnAttributeStore::~ZtDgnAttributeStore() = default;

std::span<const std::uint32_t> ZtDgnAttributeStore::GetElementPairs(std::size_t slot) const {
    if (slot >= keyOf_.size() || keyOf_[slot] == ZtDgnNumberPool::kNone)
        return {};
    const std::uint32_t key = keyOf_[slot];
    return {pairOf_.data() + first_[key], first_[key + 1] - first_[key]};
}

std::string_view ZtDgnAttributeStore::GetName(std::uint32_t pair) const {
    return names_.Get(static_cast<std::uint32_t>(pairs_.Get(pair) >> 32));
}

std::string_view ZtDgnAttributeStore::GetValue(std::uint32_t pair) const {
    return values_.Get(static_cast<std::uint32_t>(pairs_.Get(pair)));
}

void ZtDgnAttributeStore::Bind(ZtUNameDict* names) {
    category_ = names->Find(ZtUResource::FindString("ztlddgn_pds_compdata", L"PDS"), kCategory);
    nameObjects_.clear();
    nameObjects_.reserve(names_.Size());
    for (std::uint32_t i = 0; i < names_.Size(); ++i)
        nameObjects_.push_back(
            names->Find(ZtUSysString::Utf8ToWide(names_.Get(i)).c_str(), kProperty));
    properties_.clear();
}

const ZtOaProperty& ZtDgnAttributeStore::GetProperty(std::uint32_t pair) const {
    if (properties_.empty())
        properties_.resize(pairs_.Size());
    std::unique_ptr<ZtOaProperty>& property = properties_[pair];
    if (!property) {
        ZtUData value;
        value.TakeWideString(ZtUSysString::Utf8ToWide(GetValue(pair)));
        property = std::make_unique<ZtOaProperty>(
            nameObjects_[static_cast<std::uint32_t>(pairs_.Get(pair) >> 32)], value);
    }
    return *property;
}

void ZtDgnAttributeStore::VisitElement(std::size_t slot, ZtOaPropertyVisitor& visitor) const {
    for (const std::uint32_t pair : GetElementPairs(slot))
        visitor.Visit(category_, GetProperty(pair));
}

std::size_t ZtDgnAttributeStore::MemoryBytes() const {
    auto bytes = [](const auto& vector) { return vector.capacity() * sizeof vector[0]; };
    return sizeof *this + source_.capacity() + names_.TextBytes() + names_.OverheadBytes() +
           values_.TextBytes() + values_.OverheadBytes() + pairs_.MemoryBytes() + bytes(keyOf_) +
           bytes(first_) + bytes(pairOf_) + bytes(unmatched_) + bytes(nameObjects_);
}
