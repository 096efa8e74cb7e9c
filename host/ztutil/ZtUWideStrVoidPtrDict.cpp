#include "ztutil/ZtUWideStrVoidPtrDict.h"

int ZtUWideStrVoidPtrDict::Enter(const wchar_t* key, void* value) {
    auto [at, inserted] = entries_.insert_or_assign(key ? key : L"", value);
    (void)at;
    return inserted ? 1 : 0;
}

void* ZtUWideStrVoidPtrDict::Find(const wchar_t* key) const {
    auto at = entries_.find(key ? key : L"");
    return at == entries_.end() ? nullptr : at->second;
}

int ZtUWideStrVoidPtrDict::Remove(const wchar_t* key) {
    return entries_.erase(key ? key : L"") ? 1 : 0;
}
