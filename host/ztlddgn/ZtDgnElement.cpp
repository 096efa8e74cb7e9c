#include "ztlddgn/ZtDgnElement.h"

const char* ZtDgnTypeName(int type) {
    switch (type) {
    case 2:
        return "cell";
    case 3:
        return "line";
    case 4:
        return "line string";
    case 6:
        return "shape";
    case 7:
        return "text node";
    case 11:
        return "curve";
    case 12:
        return "complex chain";
    case 14:
        return "complex shape";
    case 15:
        return "ellipse";
    case 16:
        return "arc";
    case 17:
        return "text";
    case 18:
        return "surface";
    case 19:
        return "solid";
    case 21:
        return "B-spline poles";
    case 22:
        return "point string";
    case 23:
        return "cone";
    case 24:
        return "B-spline surface header";
    case 25:
        return "B-spline surface boundary";
    case 26:
        return "B-spline knots";
    case 27:
        return "B-spline curve header";
    case 28:
        return "B-spline weights";
    case 33:
        return "dimension";
    case 35:
        return "shared cell instance";
    case 36:
        return "multi-line";
    case 37:
        return "tag value";
    case 87:
        return "raster header";
    case 88:
        return "raster component";
    default:
        return nullptr;
    }
}
