#include "ztnav/ZtNvCamera.h"

void ZtNvCamera::SetOrientation(const ZtLVec3f& viewDir, const ZtLVec3f& up) {
    const ZtLVec3f dir = viewDir.Normalized();
    if (dir.Length() == 0)
        return;
    const ZtLVec3f across = up - dir * up.Dot(dir);
    if (across.Length() < ZtLVec::GetResabs())
        return;
    viewDir_ = dir;
    up_ = across.Normalized();
}
