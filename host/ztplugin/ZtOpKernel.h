#pragma once
#include "ztplugin/ZtOpRedlineTool.h"

#include <cstdint>

class ZtOpElementList;

// The core of a document as plug-ins see it: its elements and what they say.
class ZtOpKernel {
public:
    virtual ~ZtOpKernel() = default;

    virtual const ZtOpElementList& GetElementList() const = 0;

    // The identifiers that the next new redline tag and the next new comment get, from
    // the document's next-comment-id element; 0 without one. `flags` is reserved: 0.
    std::uint64_t GetNextTagId(int flags = 0) const;
    std::uint64_t GetNextCommentId(int flags = 0) const;
};

// A document with its tools.
class ZtOpKernelEx : public ZtOpKernel {
public:
    ZtOpRedlineTool* GetRedlineTool() { return &redlineTool_; }
    const ZtOpRedlineTool* GetRedlineTool() const { return &redlineTool_; }

private:
    ZtOpRedlineTool redlineTool_;
};
