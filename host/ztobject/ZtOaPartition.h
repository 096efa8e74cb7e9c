#pragma once
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaNodeCache.h"
#include "ztutil/ZtUWideString.h"

#include <memory>

// A group that stands for a whole file or document: the root of a loaded model, or the
// root of the scene. It has a name and the path of the file it came from.
class ZtOaPartition : public ZtOaGroup {
public:
    explicit ZtOaPartition(const wchar_t* name, const wchar_t* sourceFilename = nullptr)
        : ZtOaPartition(name, sourceFilename, Ownership::kOwnsChildren) {}

    const ZtUWideString& GetName() const { return name_; }
    void SetName(const wchar_t* name) { name_.SetString(name); }
    // The path of the file the partition was loaded from; empty for one made in memory.
    const ZtUWideString& GetSourceFilename() const { return sourceFilename_; }
    void SetSourceFilename(const wchar_t* path) { sourceFilename_.SetString(path); }

    // What host code keeps for the tree below the partition (one cache per partition),
    // or null. Reading code may set it: a cache changes nothing the tree says.
    ZtOaNodeCache* GetCache() const { return cache_.get(); }
    void SetCache(std::unique_ptr<ZtOaNodeCache> cache) const { cache_ = std::move(cache); }

protected:
    ZtOaPartition(const wchar_t* name, const wchar_t* sourceFilename, Ownership ownership)
        : ZtOaGroup(kPartitionFlag, ownership), name_(name), sourceFilename_(sourceFilename) {}

private:
    ZtUWideString name_;
    ZtUWideString sourceFilename_;
    mutable std::unique_ptr<ZtOaNodeCache> cache_;
};
