#include "ztlddgn/ZtDgnAttributeBuilder.h"

#include "ztlddgn/ZtDgnModel.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kNone = ZtDgnNumberPool::kNone;

std::string_view BeforeNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

} // namespace

ZtDgnAttributeBuilder::ZtDgnAttributeBuilder(const ZtDgnModel& model)
    : store_(new ZtDgnAttributeStore) {
    const std::size_t count = model.GetNumElements();
    std::vector<std::pair<std::uint64_t, std::uint32_t>> linked; // key, slot
    for (std::size_t slot = 0; slot < count; ++slot)
        if (const std::uint64_t dmrs = model.GetDmrs(slot))
            linked.emplace_back(ZtDgnAttributeKey(dmrs), static_cast<std::uint32_t>(slot));
    std::sort(linked.begin(), linked.end());
    store_->keyOf_.assign(count, kNone);
    for (const auto& [key, slot] : linked) {
        if (keys_.empty() || keys_.back() != key)
            keys_.push_back(key);
        store_->keyOf_[slot] = static_cast<std::uint32_t>(keys_.size() - 1);
    }
}

std::uint32_t ZtDgnAttributeBuilder::KeyNumber(std::uint64_t key) {
    const std::size_t last = lastKeyNumber_;
    if (last < keys_.size() && keys_[last] == key)
        return lastKeyNumber_;
    if (last + 1 < keys_.size() && keys_[last + 1] == key)
        return ++lastKeyNumber_;
    const auto found = std::lower_bound(keys_.begin(), keys_.end(), key);
    if (found == keys_.end() || *found != key)
        return kNone;
    lastKeyNumber_ = static_cast<std::uint32_t>(found - keys_.begin());
    return lastKeyNumber_;
}

std::uint32_t ZtDgnAttributeBuilder::Pair(std::uint32_t name, std::uint32_t value) {
    if (value >= pairOfValue_.size())
        pairOfValue_.resize(value + 1, kNone);
    const std::uint64_t wanted = std::uint64_t{name} << 32 | value;
    std::uint32_t& known = pairOfValue_[value];
    if (known != kNone && store_->pairs_.Get(known) == wanted)
        return known;
    known = store_->pairs_.Intern(wanted);
    return known;
}

bool ZtDgnAttributeBuilder::AddRow(std::int64_t entity, std::int64_t occurrence,
                                   std::string_view name, std::string_view value,
                                   std::string* why) {
    ++store_->rowsRead_;
    if (entity < 0 || entity > 0xFFFF || occurrence < 0 || occurrence > 0xFFFFFF)
        return true;
    const std::uint32_t key = KeyNumber(static_cast<std::uint64_t>(entity) << 24 |
                                        static_cast<std::uint64_t>(occurrence));
    if (key == kNone)
        return true;
    const std::uint32_t nameNumber = store_->names_.Intern(BeforeNul(name));
    const std::uint32_t valueNumber = store_->values_.Intern(BeforeNul(value));
    if (nameNumber == ZtDgnTextPool::kFull || valueNumber == ZtDgnTextPool::kFull) {
        *why = "the distinct texts of the model's attributes would pass 4 GiB";
        return false;
    }
    const std::uint32_t pair = Pair(nameNumber, valueNumber);
    if (pair == kNone || rows_.size() >= kNone - 1) {
        *why = "the model's elements would carry more than 4294967294 attributes";
        return false;
    }
    rows_.push_back(std::uint64_t{key} << 32 | pair);
    return true;
}

std::unique_ptr<ZtDgnAttributeStore> ZtDgnAttributeBuilder::Finish(std::string source) {
    ZtDgnAttributeStore& store = *store_;
    store.source_ = std::move(source);
    // A counting sort by key keeps each key's rows in the order they came.
    const std::size_t keyCount = keys_.size();
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
            const std::uint64_t value = keys_[key];
            store.unmatched_.push_back({static_cast<std::uint32_t>(value >> 24),
                                        static_cast<std::uint32_t>(value & 0xFFFFFF),
                                        elementsOfKey[key]});
        }
    store.names_.Seal();
    store.values_.Seal();
    store.pairs_.Seal();
    return std::move(store_);
}
