#pragma once
#include "ztplugin/ZtOpComment.h"
#include "ztplugin/ZtOpGuid.h"
#include "ztutil/ZtUVector.h"
#include "ztutil/ZtUWideString.h"

#include <cstddef>

// Something the user keeps in the document: a view, a selection set, or a group of such
// items. Every item has a name, a GUID and comments, which it owns.
class ZtOpSavedItem {
public:
    enum Type { kTypeView = 0, kTypeSelectionSet = 1, kTypeFolder = 2 };

    // Saved items live on the host's heap, so that one made by a plug-in is freed by the host.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    ZtOpSavedItem() : guid_(ZtOpGuid::Create()) {}
    ZtOpSavedItem(const ZtOpSavedItem&) = delete;
    ZtOpSavedItem& operator=(const ZtOpSavedItem&) = delete;
    virtual ~ZtOpSavedItem() = default;

    virtual int IsGroup() const { return 0; }
    virtual Type GetType() const = 0;

    const ZtUWideString& GetName() const { return name_; }
    void SetName(const wchar_t* name) { name_.SetString(name); }
    const ZtOpGuid& GetGuid() const { return guid_; }
    void SetGuid(const ZtOpGuid& guid) { guid_ = guid; }

    // The comments, in their order; the item owns every comment in the list.
    const ZtUOwnPtrVector<ZtOpComment>& GetComments() const { return comments_; }
    ZtUOwnPtrVector<ZtOpComment>& EditComments() { return comments_; }

private:
    ZtUWideString name_;
    ZtOpGuid guid_;
    ZtUOwnPtrVector<ZtOpComment> comments_;
};

// A saved item that holds other saved items, in order, and owns them.
class ZtOpGroupItem : public ZtOpSavedItem {
public:
    ~ZtOpGroupItem() override;

    int IsGroup() const override { return 1; }

    // Appends `item`; the group owns it from the call on, and frees it if the append
    // fails.
    void AddChild(ZtOpSavedItem* item);
    // Appends the children of `other`, which still lists them too: the caller empties it
    // with RemoveAllChildren, so that exactly one group owns them. Appends all of them or,
    // when memory runs out, none.
    void Append(ZtOpGroupItem* other);
    // Forgets every child without destroying it.
    void RemoveAllChildren() { children_.Clear(); }

    const ZtUVoidPtrVector& GetChildren() const { return children_; }
    std::size_t GetNumChildren() const { return children_.Size(); }
    ZtOpSavedItem* GetChild(std::size_t index) const {
        return static_cast<ZtOpSavedItem*>(children_.Get(index));
    }

private:
    ZtUVoidPtrVector children_;
};

// The group that users see as a folder.
class ZtOpFolderItem : public ZtOpGroupItem {
public:
    Type GetType() const override { return kTypeFolder; }
};
