#pragma once
#include "readers/ZtOdPdsInputConsumer.h"

// The first pass over a display-set file: counts the lines that begin with
// "<Display Set>", in every section, so that the second pass can report its progress.
class ZtOdPdsDisplaySetCounter : public ZtOdPdsInputConsumer {
public:
    int Begin() override { return 1; }
    int End() override { return 1; }
    int Line(ZtUWideStringBuffer& line) override;

    int GetCount() const { return count_; }

private:
    int count_ = 0;
};
