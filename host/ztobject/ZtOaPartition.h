#pragma once
#include "ztlinear/ZtLAffine3f.h"
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaNodeCache.h"
#include "ztutil/ZtUWideString.h"

#include <cstddef>
#include <memory>

// A group that stands for a whole file or document: the root of a loaded model, or the
// root of the scene. It has a name, the path of the file it came from, and a transform
// that places what lies below it in its parent's coordinates (the identity for a new
// partition): the host sets a model's when it places the model in the scene.
class ZtOaPartition : public ZtOaGroup {
public:
    explicit ZtOaPartition(const wchar_t* name, const wchar_t* sourceFilename = nullptr)
        : ZtOaPartition(name, sourceFilename, Ownership::kOwnsChildren) {}

    const ZtUWideString& GetName() const { return name_; }
    void SetName(const wchar_t* name) { name_.SetString(name); }
    // The path of the file the partition was loaded from; empty for one made in memory.
    const ZtUWideString& GetSourceFilename() const { return sourceFilename_; }
    void SetSourceFilename(const wchar_t* path) { sourceFilename_.SetString(path); }

    // Maps the coordinates of the nodes below the partition to those of its parent. A
    // walk composes the transforms on a node's path (ZtOaPathLink::GetTransform).
    const ZtLAffine3f& GetTransform() const { return transform_; }
    // Like adding a child, this counts as an edit of the tree: caches of the partition
    // and of those above it are stale.
    void SetTransform(const ZtLAffine3f& transform) {
        transform_ = transform;
        NoteEdit();
    }

    // A partition has no box of its own, only its children have: what lies below it is
    // in coordinates of its own, and it has none to be placed in.
    int GetBoundingBox(ZtLBox3f*) const final { return 0; }

    // For indexes over the tree below, which read boxes in bulk where they can: true if
    // every node below the partition is one of its children (none has children), and
    // FillChildBoxes gives their boxes, each as the child's GetBoundingBox gives it (every
    // child has one). A partition that keeps its nodes' boxes in arrays of its own may
    // say so, and saves the caller a call and a visit to every node.
    virtual bool HasFlatBoxes() const { return false; }
    // The boxes of children [first, first + count), all there, of a partition that
    // HasFlatBoxes.
    virtual void FillChildBoxes(std::size_t /*first*/, std::size_t /*count*/,
                                ZtLBox3f* /*boxes*/) const {}

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
    ZtLAffine3f transform_;
    mutable std::unique_ptr<ZtOaNodeCache> cache_;
};
