#pragma once
#include <map>
#include <string>

class ZtUWideStrVoidPtrDict;

// Walks a dictionary in ascending order of its keys (UTF-16 code unit order), so that
// whatever is built from a walk comes out the same on every run.
class ZtUWideStrVoidPtrDictIt {
public:
    bool IsValid() const { return at_ != end_; }
    void Next() {
        if (at_ != end_)
            ++at_;
    }
    const wchar_t* GetKey() const { return at_->first.c_str(); }
    void* GetValue() const { return at_->second; }

private:
    friend class ZtUWideStrVoidPtrDict;
    using Map = std::map<std::wstring, void*>;
    ZtUWideStrVoidPtrDictIt(Map::const_iterator at, Map::const_iterator end) : at_(at), end_(end) {}

    Map::const_iterator at_;
    Map::const_iterator end_;
};

// A dictionary from wide text to untyped pointers. It owns neither keys' targets nor values.
class ZtUWideStrVoidPtrDict {
public:
    // Lists `value` under `key`. A key that is listed already has its value replaced.
    // Returns 1 for a new key, 0 for a replaced one.
    int Enter(const wchar_t* key, void* value);
    // The value under `key`, or null.
    void* Find(const wchar_t* key) const;
    // Takes `key` out; returns 1 if it was listed.
    int Remove(const wchar_t* key);
    void RemoveAll() { entries_.clear(); }
    std::size_t Size() const { return entries_.size(); }
    ZtUWideStrVoidPtrDictIt Begin() const { return {entries_.begin(), entries_.end()}; }

private:
    std::map<std::wstring, void*> entries_;
};
