#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtOpState, ANewDocumentsElementsAndTools) {
    ZtOpState state;
    EXPECT_NE(ZtOpSavedViewsElement::Get(&state), nullptr);
    EXPECT_EQ(ZtOpSavedViewsElement::Get(&state)->Get()->GetNumChildren(), 0u);
    EXPECT_NE(ZtOpSelectionSetsElement::Get(&state), nullptr);
    EXPECT_EQ(state.GetNextTagId(0), 1u);
    EXPECT_EQ(state.GetNextCommentId(0), 1u);
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineColor(), ZtLColor3f(1, 0, 0));
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineThickness(), 1);
}

TEST(ZtOpState, TheNextIdsLiveInTheirElement) {
    ZtOpState state;
    state.SetNextTagId(7);
    state.SetNextCommentId(12);
    const ZtOpNextCommentIdElement* element = ZtOpNextCommentIdElement::Get(state.GetElementList());
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->GetTagId(), 7u);
    EXPECT_EQ(element->GetCommentId(), 12u);
    {
        ZtOpAutoLock lock(ZtOpNextCommentIdElement::GetClass(), &state, 0);
        ZtOpNextCommentIdElement* edit = ZtOpNextCommentIdElement::Edit(&state, lock);
        ASSERT_NE(edit, nullptr);
        edit->EditTagId() = 40;
        edit->EditCommentId() = 41;
        // A lock of another class does not cover it.
        ZtOpAutoLock other(ZtOpSavedViewsElement::GetClass(), &state, 0);
        EXPECT_EQ(ZtOpNextCommentIdElement::Edit(&state, other), nullptr);
        EXPECT_EQ(ZtOpSavedViewsElement::Edit(&state, lock), nullptr);
        EXPECT_NE(ZtOpSavedViewsElement::Edit(&state, other), nullptr);
    }
    EXPECT_EQ(state.GetNextTagId(), 40u);
    EXPECT_EQ(state.GetNextCommentId(), 41u);
    EXPECT_EQ(ZtOpNextCommentIdElement::Edit(&state, nullptr), nullptr);
    EXPECT_EQ(ZtOpSavedViewsElement::Get(nullptr), nullptr);
}

} // namespace
