#include "ztobject/ZtOaShape.h"

void ZtOaShape::VisitProperties(ZtOaPropertyVisitor& visitor) const {
    attributes_.VisitProperties(visitor);
}

int ZtOaShape::GetBoundingBox(ZtLBox3f* box) const {
    if (box)
        *box = box_;
    return 1;
}
