#pragma once
#include "readers/ZtOdPdsInputConsumer.h"

// The first pass over a tag file: counts the lines that begin with "tag{", the base of
// the progress fraction of the second pass. A tag block indented or behind other text
// on its line is not counted, and a body line that begins with "tag{" is.
class ZtOdPdsTagCounter : public ZtOdPdsInputConsumer {
public:
    int Begin() override { return 1; }
    int End() override { return 1; }
    int Line(ZtUWideStringBuffer& line) override;

    int GetCount() const { return count_; }

private:
    int count_ = 0;
};
