#include "ztlddgn/ZtDgnElement.h"

bool ZtDgnIsGraphicType(int type) {
    switch (type) {
    case 2:  // cell
    case 3:  // line
    case 4:  // line string
    case 6:  // shape
    case 7:  // text node
    case 11: // curve
    case 12: // complex chain
    case 14: // complex shape
    case 15: // ellipse
    case 16: // arc
    case 17: // text
    case 18: // surface
    case 19: // solid
    case 21: // B-spline poles
    case 22: // point string
    case 23: // cone
    case 24: // B-spline surface header
    case 25: // B-spline surface boundary
    case 26: // B-spline knots
    case 27: // B-spline curve header
    case 28: // B-spline weights
    case 33: // dimension
    case 35: // shared cell instance
    case 36: // multi-line
    case 37: // tag value
    case 87: // raster header
    case 88: // raster component
        return true;
    default:
        return false;
    }
}

bool ZtDgnHasTotalLength(int type) {
    switch (type) {
    case 2:
    case 7:
    case 12:
    case 14:
    case 18:
    case 19:
    case 34: // shared cell definition: not drawn itself, but its components must be passed
        return true;
    default:
        return false;
    }
}
