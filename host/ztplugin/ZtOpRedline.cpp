#include "ztplugin/ZtOpRedline.h"

#include "ztnav/ZtNvCamera.h"
#include "ztutil/ZtUMemory.h"

#include <new>

void* ZtOpRedline::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpRedline::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}

ZtLPos2f ZtOpRedline::WindowToCameraSpace(const ZtNvCamera& camera, bool yDown,
                                          const ZtLPos2f& window) {
    const double halfHeight = camera.GetHalfHeight();
    const double wy = yDown ? 1.0 - window.y : window.y;
    return {(2 * window.x - 1) * halfHeight * camera.GetAspectRatio(), (2 * wy - 1) * halfHeight};
}

ZtLPos2f ZtOpRedline::CameraToWindowSpace(const ZtNvCamera& camera, bool yDown,
                                          const ZtLPos2f& cameraSpace) {
    const double halfHeight = camera.GetHalfHeight();
    const double wx = (cameraSpace.x / (halfHeight * camera.GetAspectRatio()) + 1) / 2;
    const double wy = (cameraSpace.y / halfHeight + 1) / 2;
    return {wx, yDown ? 1.0 - wy : wy};
}
