#pragma once
#include "ztlinear/ZtLBox3f.h"
#include "ztplugin/ZtOpRedline.h"

#include <cstdint>

// A review tag: the mark of a comment of the same view, tied to it by the comment's
// identifier. It points from a first 2D position to a second one, both in camera space,
// and may know the model position it marks.
class ZtOpRedlineTag : public ZtOpRedline {
public:
    // `flags` is kept for the host's drawing and has no meaning here; `box` holds the
    // extents of the tag's text where they are known, else it is empty.
    ZtOpRedlineTag(std::uint64_t tagId, std::uint64_t commentId, const ZtLPos2f& pos2dA,
                   const ZtLPos2f& pos2dB, int pos3dValid, const ZtLPos3f& pos3d, int flags,
                   const ZtLBox3f& box)
        : tagId_(tagId), commentId_(commentId), pos2dA_(pos2dA), pos2dB_(pos2dB),
          pos3dValid_(pos3dValid), pos3d_(pos3d), flags_(flags), box_(box) {}

    int GetRedlineType() const override { return kTypeTag; }

    std::uint64_t GetTagId() const { return tagId_; }
    std::uint64_t GetCommentId() const { return commentId_; }
    const ZtLPos2f& GetPos2dA() const { return pos2dA_; }
    const ZtLPos2f& GetPos2dB() const { return pos2dB_; }
    // Nonzero when GetPos3d holds the model position of the tag.
    int GetPos3dValid() const { return pos3dValid_; }
    const ZtLPos3f& GetPos3d() const { return pos3d_; }
    int GetFlags() const { return flags_; }
    const ZtLBox3f& GetBox() const { return box_; }

private:
    std::uint64_t tagId_;
    std::uint64_t commentId_;
    ZtLPos2f pos2dA_;
    ZtLPos2f pos2dB_;
    int pos3dValid_;
    ZtLPos3f pos3d_;
    int flags_;
    ZtLBox3f box_;
};
