#pragma once
#include "ztlinear/ZtLColor3f.h"

// The document's redline tool: the look that new redlines are drawn with. A new tool
// draws in red, one unit thick.
class ZtOpRedlineTool {
public:
    const ZtLColor3f& GetCurLineColor() const { return lineColor_; }
    void SetCurLineColor(const ZtLColor3f& color) { lineColor_ = color; }
    int GetCurLineThickness() const { return lineThickness_; }
    void SetCurLineThickness(int thickness) { lineThickness_ = thickness; }

private:
    ZtLColor3f lineColor_{1, 0, 0};
    int lineThickness_ = 1;
};
