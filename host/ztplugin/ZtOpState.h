#pragma once
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpElement.h"
#include "ztutil/ZtUName.h"

#include <cstdint>
#include <memory>

// The host's document: what the user has open. It owns everything that belongs to it.
class ZtOpState {
public:
    // A new document: next ids 1, a current view whose viewpoint has world-up +Z, and an
    // empty selection-sets element.
    ZtOpState();
    ZtOpState(const ZtOpState&) = delete;
    ZtOpState& operator=(const ZtOpState&) = delete;
    virtual ~ZtOpState();

    // The root of the scene: a partition named after the document, with each loaded
    // model a partition below it, in load order.
    virtual ZtOaPartition* GetRootNode() { return root_.get(); }
    const ZtOaPartition* GetRootNode() const { return root_.get(); }

    ZtUNameDict* EditNameDict() { return &names_; }
    const ZtUNameDict& GetNameDict() const { return names_; }

    const ZtNvViewPoint& GetCurrentViewPoint() const { return currentView_; }
    ZtNvViewPoint& EditCurrentViewPoint() { return currentView_; }

    std::uint64_t GetNextTagId() const { return nextTagId_; }
    void SetNextTagId(std::uint64_t id) { nextTagId_ = id; }
    std::uint64_t GetNextCommentId() const { return nextCommentId_; }
    void SetNextCommentId(std::uint64_t id) { nextCommentId_ = id; }

    // The document's elements (its saved selection sets among them) and their locks.
    ZtOpElementList& EditElementList() { return elements_; }
    const ZtOpElementList& GetElementList() const { return elements_; }

private:
    ZtUNameDict names_;
    // Declared after the names, which the models' properties use, so that it goes first.
    std::unique_ptr<ZtOaPartition> root_;
    ZtNvViewPoint currentView_;
    std::uint64_t nextTagId_ = 1;
    std::uint64_t nextCommentId_ = 1;
    ZtOpElementList elements_;
};
