#pragma once

class ZtNvViewPoint;
class ZtOaPartition;

// Operations of the host on a whole scene.
class ZtOpScene {
public:
    // Sets the viewpoint's camera to look at the whole of the scene below `partition`:
    // from above and aside, towards the centre of the bounding box of its geometry,
    // far enough away for the box to fit the height field, with the viewpoint's world-up
    // (+Z where it has none) as up. The bounding box is that of the geometry where the
    // transforms of the partitions place it, `partition`'s own included: in a document,
    // the scene's coordinates. A scene without geometry is seen as a box of size 2 about
    // the origin. A null viewpoint is left alone.
    static void DefaultInitializeViewPoint(ZtNvViewPoint* viewPoint, ZtOaPartition* partition);
};
