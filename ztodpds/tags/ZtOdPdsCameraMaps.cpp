#include "tags/ZtOdPdsCameraMaps.h"

#include "ztnav/ZtNvCamera.h"
#include "ztplugin/ZtOpRedline.h"

ZtLPos3f ZtOdPdsModelToFrustum(const ZtLPos3f& position, const ZtNvCamera& camera) {
    ZtLFrustum3f frustum;
    camera.Frustum(&frustum, 0.0);
    return position * frustum.GetMatrix();
}

ZtLPos2f ZtOdPdsFrustumToWindow(const ZtLPos3f& position) {
    return {(position.x + 1.0) * 0.5, (position.y + 1.0) * 0.5};
}

ZtLPos3f ZtOdPdsWindowToFrustum(const ZtLPos2f& position) {
    return {position.x + position.x - 1.0, position.y + position.y - 1.0, -1.0};
}

ZtLPos2f ZtOdPdsModelToWindow(const ZtLPos3f& position, const ZtNvCamera& camera) {
    return ZtOdPdsFrustumToWindow(ZtOdPdsModelToFrustum(position, camera));
}

ZtLPos2f ZtOdPdsModelToCameraSpace(const ZtLPos3f& position, const ZtNvCamera& camera) {
    return ZtOdPdsCameraMap(camera).ToCameraSpace(position);
}

ZtOdPdsCameraMap::ZtOdPdsCameraMap(const ZtNvCamera& camera) : camera_(camera) {
    ZtLFrustum3f frustum;
    camera.Frustum(&frustum, 0.0);
    matrix_ = frustum.GetMatrix();
}

ZtLPos2f ZtOdPdsCameraMap::ToCameraSpace(const ZtLPos3f& position) const {
    return ZtOpRedline::WindowToCameraSpace(camera_, false,
                                            ZtOdPdsFrustumToWindow(position * matrix_));
}
