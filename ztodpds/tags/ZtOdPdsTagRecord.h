#pragma once
#include "tags/ZtOdPdsLinkage.h"
#include "tags/ZtOdPdsUorVector.h"
#include "ztutil/ZtUWideString.h"

#include <cstdint>

class ZtOaNode;
class ZtOpComment;
class ZtOpRedlineTag;
class ZtOpView;
class ZtUFile;

// Everything a tag file says of one tag, already in the file's integer form, so that the
// writer only compares and prints. Lengths are UORs, the angle whole degrees; a clip
// distance of -1 stands for a view without that plane.
struct ZtOdPdsTagRecord {
    ZtOdPdsUorVector target;
    ZtOdPdsUorVector eye;
    std::int32_t perspAngle = 0;
    std::int64_t clipNear = -1;
    std::int64_t clipFar = -1;
    std::uint64_t id = 0;
    ZtOdPdsUorVector position;
    ZtOdPdsUorVector secondPoint;
    ZtOdPdsLinkage linkage;
    ZtUWideStringBuffer text;

    // Takes the tag's data, its comment's text, the view's camera and clip planes, and
    // the DMRS value of `node` (the element under the tag, or null). The second point is
    // where the line of sight through the tag's second 2D position meets the plane through
    // the tag square to the view; a camera without a frustum gives the tag's own position.
    void Fill(const ZtOaNode* node, const ZtOpRedlineTag* tag, const ZtOpComment* comment,
              const ZtOpView* view, double uorsPerMaster);

    // Writes the record: each viewpoint key only where it differs from `previous` (all of
    // them without one), never a clip distance of -1, then the tag with its second point,
    // its linkage unless that is null, and its text. The text's CR LF line ends become LF
    // in the record itself, before it is counted.
    void Write(ZtUFile* file, const ZtOdPdsTagRecord* previous);
};
