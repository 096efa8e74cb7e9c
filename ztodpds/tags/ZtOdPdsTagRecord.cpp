#include "tags/ZtOdPdsTagRecord.h"

#include "tags/ZtOdPdsUnits.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLLine3f.h"
#include "ztlinear/ZtLPlane3f.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaClipPlaneSet.h"
#include "ztobject/ZtOaNode.h"
#include "ztplugin/ZtOpComment.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUSysFile.h"

#include <cmath>

namespace {

void WriteVector(ZtUFile* file, const wchar_t* format, const ZtOdPdsUorVector& v) {
    ZtUSysFile::fwprintf(file, format, static_cast<long long>(v.x), static_cast<long long>(v.y),
                         static_cast<long long>(v.z));
}

} // namespace

void ZtOdPdsTagRecord::Fill(const ZtOaNode* node, const ZtOpRedlineTag* tag,
                            const ZtOpComment* comment, const ZtOpView* view,
                            double uorsPerMaster) {
    if (node) {
        const ZtOaAttribute* attribute = node->FindAttribute(kZtOdPdsDmrsAttribute);
        if (attribute && attribute->GetKind() == ZtOaAttribute::kNat64Attribute)
            linkage.Set(static_cast<const ZtOaNat64Attribute*>(attribute)->GetValue());
    }
    id = comment->GetId();
    text.SetString(comment->GetBody().GetString());
    const ZtLPos3f& pos3d = tag->GetPos3d();
    position.FromMaster(pos3d, uorsPerMaster);

    const ZtNvViewPoint& viewPoint = view->AnonView().GetViewPoint();
    const ZtNvCamera camera = viewPoint.GetRenderCamera();
    const ZtLUnitVec3f u(camera.ViewDir());
    const ZtLPlane3f tagPlane(u, pos3d);
    ZtLFrustum3f frustum;
    if (camera.Frustum(&frustum, 0.0)) {
        const ZtLPos2f window = ZtOpRedline::CameraToWindowSpace(camera, false, tag->GetPos2dB());
        ZtLPos3f meeting(0.0, 0.0, 0.0);
        frustum.ProjectPointToLine(window).Intersect(tagPlane, &meeting);
        secondPoint.FromMaster(meeting, uorsPerMaster);
    } else {
        secondPoint = position;
    }

    double focalDistance = 1.0;
    if (viewPoint.HasPart(ZtNvViewPoint::kFocalDistancePart))
        focalDistance = viewPoint.GetFocalDistance().value_or(1.0);
    eye.FromMaster(camera.GetPosition(), uorsPerMaster);
    target.FromMaster(camera.GetPosition() + u * focalDistance, uorsPerMaster);
    perspAngle = ZtOdPdsRadiansToDegrees(camera.GetHeightField());

    clipNear = -1;
    clipFar = -1;
    const ZtOaClipPlaneSet& planes = view->AnonView().GetClipPlaneSet();
    for (int i = 0; i < planes.Size(); ++i) {
        const ZtOaClipPlane* plane = planes.Get(i);
        if (!plane || !plane->IsEnabled())
            continue;
        const double c = plane->GetNormal().Dot(camera.ViewDir());
        // Only planes square to the view stand for a near or far distance.
        if (ZtLVec::GetResabs() < 1.0 - std::fabs(c))
            continue;
        const ZtLPlane3f& plane3f = plane->GetPlane3f();
        const double distance =
            std::fabs(plane3f.GetNormal().Dot(camera.GetPosition()) - plane3f.GetDistance());
        const std::int64_t uors = ZtOdPdsMasterToUors(distance, uorsPerMaster);
        if (c < 0.0)
            clipFar = uors;
        else
            clipNear = uors;
    }
}

void ZtOdPdsTagRecord::Write(ZtUFile* file, const ZtOdPdsTagRecord* previous) {
    if (!previous || previous->target != target)
        WriteVector(file, L"target{%lld %lld %lld}\n", target);
    if ((!previous || previous->clipFar != clipFar) && clipFar > -1)
        ZtUSysFile::fwprintf(file, L"clip_far{%lld}\n", static_cast<long long>(clipFar));
    if ((!previous || previous->clipNear != clipNear) && clipNear > -1)
        ZtUSysFile::fwprintf(file, L"clip_near{%lld}\n", static_cast<long long>(clipNear));
    if (!previous || previous->perspAngle != perspAngle)
        ZtUSysFile::fwprintf(file, L"persp_ang{%d}\n", static_cast<int>(perspAngle));
    if (!previous || previous->eye != eye)
        WriteVector(file, L"eye{%lld %lld %lld}\n", eye);
    // The identifier is unsigned but printed signed, as the readers scan it: the top half
    // of its range comes back as the same bits.
    // The three fields after the identifier are the same in every record.
    ZtUSysFile::fwprintf(file, L"tag{%lld 1 0 0.000000 %lld %lld %lld\n",
                         static_cast<long long>(id), static_cast<long long>(position.x),
                         static_cast<long long>(position.y), static_cast<long long>(position.z));
    WriteVector(file, L"p{%lld %lld %lld}\n", secondPoint);
    if (!linkage.IsNull())
        ZtUSysFile::fwprintf(file, L"l{%d %d %d %d}\n", static_cast<int>(linkage.word0),
                             static_cast<int>(linkage.word1), static_cast<int>(linkage.word2),
                             static_cast<int>(linkage.word3));
    text.Replace(L"\r\n", L"\n", 1);
    ZtUSysFile::fwprintf(file, L"text{%d\n%s}}\n", static_cast<int>(text.GetLength()),
                         text.GetString());
}
