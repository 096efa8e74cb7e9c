#pragma once
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpElement.h"
#include "ztplugin/ZtOpKernel.h"
#include "ztutil/ZtUName.h"

#include <cstdint>
#include <memory>

// The host's document: what the user has open. It owns everything that belongs to it.
class ZtOpState : public ZtOpKernelEx {
public:
    // A new document: a current view whose viewpoint has world-up +Z, empty saved-views
    // and selection-sets elements, and a next-comment-id element with next ids 1.
    ZtOpState();
    ZtOpState(const ZtOpState&) = delete;
    ZtOpState& operator=(const ZtOpState&) = delete;
    ~ZtOpState() override;

    // The root of the scene: a partition named after the document, with each loaded
    // model a partition below it, in load order.
    virtual ZtOaPartition* GetRootNode() { return root_.get(); }
    const ZtOaPartition* GetRootNode() const { return root_.get(); }

    ZtUNameDict* EditNameDict() { return &names_; }
    const ZtUNameDict& GetNameDict() const { return names_; }

    const ZtNvViewPoint& GetCurrentViewPoint() const { return currentView_; }
    ZtNvViewPoint& EditCurrentViewPoint() { return currentView_; }

    // The next ids live in the next-comment-id element (GetNextTagId and GetNextCommentId
    // of ZtOpKernel read them); these set them, making the element if it is missing.
    void SetNextTagId(std::uint64_t id);
    void SetNextCommentId(std::uint64_t id);

    // The document's elements (its saved selection sets among them) and their locks.
    ZtOpElementList& EditElementList() { return elements_; }
    const ZtOpElementList& GetElementList() const override { return elements_; }

private:
    ZtUNameDict names_;
    // Declared after the names, which the models' properties use, so that it goes first.
    std::unique_ptr<ZtOaPartition> root_;
    ZtNvViewPoint currentView_;
    ZtOpElementList elements_;
};
