#include "ztplugin/ZtOpKernel.h"

#include "ztplugin/ZtOpNextCommentIdElement.h"

std::uint64_t ZtOpKernel::GetNextTagId(int) const {
    const ZtOpNextCommentIdElement* element = ZtOpNextCommentIdElement::Get(GetElementList());
    return element ? element->GetTagId() : 0;
}

std::uint64_t ZtOpKernel::GetNextCommentId(int) const {
    const ZtOpNextCommentIdElement* element = ZtOpNextCommentIdElement::Get(GetElementList());
    return element ? element->GetCommentId() : 0;
}
