#include "tags/ZtOdPdsTagViewpoint.h"

#include "ztnav/ZtNvViewPoint.h"
#include "ztplugin/ZtOpView.h"

void ZtOdPdsAddTagClipPlane(double direction, double distance, ZtOpView* view) {
    if (!view)
        return;
    const ZtNvCamera& camera = view->AnonView().GetViewPoint().GetCamera();
    const ZtLVec3f& viewDir = camera.ViewDir();
    const ZtLUnitVec3f normal(viewDir * direction);
    const ZtLPos3f point = camera.GetPosition() + viewDir * distance;
    ZtOaClipPlaneSet* planes = view->AnonView().EditClipPlaneSet();
    ZtOaClipPlane* plane = nullptr;
    for (int index = 0; index <= 5; ++index) {
        plane = planes->Edit(index);
        if (plane && !plane->IsEnabled())
            break;
    }
    if (plane) {
        plane->AlignToPick(ZtOaClipPlane::kAlignToNormal, point, normal, nullptr);
        plane->SetEnabled(true);
    }
}

ZtOpView* ZtOdPdsTagViewpoint::MakeView() const {
    ZtNvViewPoint viewPoint;
    ZtNvCamera camera;
    camera.SetPosition(eye);
    camera.PointAt(target);
    camera.SetHeightField(perspAngle);
    camera.AlignUp(up);
    if (!camera.HasValidFrustum(0.0))
        return nullptr;
    viewPoint.SetCamera(camera);

    // Only the camera: no focal distance and no world up, so the distance to the target
    // is not kept.
    auto* view = new ZtOpView;
    *view->AnonView().EditViewPoint() = viewPoint;
    if (clipNear > 0.0)
        ZtOdPdsAddTagClipPlane(1.0, clipNear, view);
    if (clipFar > 0.0)
        ZtOdPdsAddTagClipPlane(-1.0, clipFar, view);
    return view;
}
