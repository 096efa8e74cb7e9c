#pragma once

class ZtUWideStringBuffer;

// Receives the lines of one read of ZtOdPdsTextFile: one Begin, any number of Line calls,
// one End, also when the read stops early. The line buffer is the reader's and is
// overwritten for the next line; a consumer that keeps text copies it.
class ZtOdPdsInputConsumer {
public:
    virtual int Begin() = 0;
    virtual int End() = 0;
    // Nonzero to go on reading, zero to stop.
    virtual int Line(ZtUWideStringBuffer& line) = 0;

protected:
    // Consumers are not deleted through this interface; ZtOdPdsDstInputConsumer adds the
    // virtual destructor for those that are.
    ~ZtOdPdsInputConsumer() = default;
};
