#include "ztlddgn/ZtDgnAttributeBuilder.h"

#include "ztlddgn/ZtDgnModel.h"

namespace {

constexpr std::uint32_t kNone = ZtDgnNumberPool::kNone;

std::string_view BeforeNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

} // namespace

ZtDgnAttributeBuilder::ZtDgnAttributeBuilder(const ZtDgnModel& model)
    : store_(new ZtDgnAttributeStore) {
    const std::size_t count = model.GetNumElements();
    store_->keyOf_.assign(count, kNone);
    for (std::size_t slot = 0; slot < count; ++slot)
        if (const std::uint64_t dmrs = model.GetDmrs(slot))
            store_->keyOf_[slot] = keys_.Intern(ZtDgnAttributeKey(dmrs));
}

bool ZtDgnAttributeBuilder::AddRow(std::int64_t entity, std::int64_t occurrence,
                                   std::string_view name, std::string_view value,
                                   std::string* why) {
    ++store_->rowsRead_;
    if (entity < 0 || entity > 0xFFFF || occurrence < 0 || occurrence > 0xFFFFFF)
        return true;
    const std::uint64_t key =
        static_cast<std::uint64_t>(entity) << 24 | static_cast<std::uint64_t>(occurrence);
    if (key != lastKey_) {
        lastKey_ = key;
        lastKeyNumber_ = keys_.Find(key);
    }
    if (lastKeyNumber_ == kNone)
        return true;
    const std::uint32_t nameNumber = store_->names_.Intern(BeforeNul(name));
    const std::uint32_t valueNumber = store_->values_.Intern(BeforeNul(value));
    if (nameNumber == ZtDgnTextPool::kFull || valueNumber == ZtDgnTextPool::kFull) {
        *why = "the distinct texts of the model's attributes would pass 4 GiB";
        return false;
    }
    const std::uint32_t pair = store_->pairs_.Intern(std::uint64_t{nameNumber} << 32 | valueNumber);
    if (pair == kNone || rows_.size() >= kNone - 1) {
        *why = "the model's elements would carry more than 4294967294 attributes";
        return false;
    }
    rows_.push_back(std::uint64_t{lastKeyNumber_} << 32 | pair);
    return true;
}

std::unique_ptr<ZtDgnAttributeStore> ZtDgnAttributeBuilder::Finish(std::string source) {
    ZtDgnAttributeStore& store = *store_;
    store.source_ = std::move(source);
    // A counting sort by key keeps each key's rows in the order they came.
    const std::size_t keyCount = keys_.Size();
    store.first_.assign(keyCount + 1, 0);
    for (const std::uint64_t row : rows_)
        ++store.first_[(row >> 32) + 1];
    for (std::size_t k = 0; k < keyCount; ++k)
        store.first_[k + 1] += store.first_[k];
    store.pairOf_.resize(rows_.size());
    {
        std::vector<std::uint32_t> next(store.first_.begin(), store.first_.end() - 1);
        for (const std::uint64_t row : rows_)
            store.pairOf_[next[row >> 32]++] = static_cast<std::uint32_t>(row);
    }
    std::vector<std::uint64_t>().swap(rows_);

    std::vector<std::uint32_t> elementsOfKey(keyCount, 0);
    for (const std::uint32_t key : store.keyOf_) {
        if (key == kNone)
            continue;
        ++elementsOfKey[key];
        if (const std::uint32_t count = store.first_[key + 1] - store.first_[key]) {
            ++store.elementsWithAttributes_;
            store.attributeCount_ += count;
        }
    }
    for (std::uint32_t key = 0; key < keyCount; ++key)
        if (store.first_[key + 1] == store.first_[key]) {
            const std::uint64_t value = keys_.Get(key);
            store.unmatched_.push_back({static_cast<std::uint32_t>(value >> 24),
                                        static_cast<std::uint32_t>(value & 0xFFFFFF),
                                        elementsOfKey[key]});
        }
    store.names_.Seal();
    store.values_.Seal();
    store.pairs_.Seal();
    return std::move(store_);
}
