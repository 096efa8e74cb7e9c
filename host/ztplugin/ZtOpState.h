#pragma once
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpElement.h"
#include "ztplugin/ZtOpKernel.h"
#include "ztplugin/ZtOpSceneProps.h"
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

    const ZtNvViewPoint& GetCurrentViewPoint() const {
        return sceneProps_.GetCurrentView()->GetViewPoint();
    }
    ZtNvViewPoint& EditCurrentViewPoint() {
        return *sceneProps_.EditCurrentView()->EditViewPoint();
    }

    // The next ids live in the next-comment-id element (GetNextTagId and GetNextCommentId
    // of ZtOpKernel read them); these set them, making the element if it is missing.
    void SetNextTagId(std::uint64_t id);
    void SetNextCommentId(std::uint64_t id);

    // The properties of the document's scene: its current view, and its elements (saved
    // views, selection sets, next ids) with their locks. A scene-set plug-in that opens a
    // file into the document hands its results to these.
    ZtOpSceneProps& EditSceneProps() { return sceneProps_; }
    ZtOpElementList& EditElementList() { return sceneProps_; }
    const ZtOpElementList& GetElementList() const override { return sceneProps_; }

private:
    ZtUNameDict names_;
    // Declared after the names, which the models' properties use, so that it goes first.
    std::unique_ptr<ZtOaPartition> root_;
    ZtOpSceneProps sceneProps_;
};
