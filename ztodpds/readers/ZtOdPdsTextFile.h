#pragma once
#include "diagnostics/ZtOdPdsDiagnostics.h"

class ZtOdPdsInputConsumer;
class ZtUFile;

// Where a reporting read of lines stands: the line pump keeps `at` at the beginning of
// the line it hands to the consumer, so that the consumer can say where what it finds
// stands, and reports to `sink` what it cuts itself.
struct ZtOdPdsLineSpot {
    ZtOdPdsDiagnostics* sink = nullptr;
    const wchar_t* file = nullptr;
    ZtOdPdsSourcePosition at;
};

// The line pump: reads an open text file line by line into a consumer. A physical line
// longer than 511 characters arrives in pieces of 511 and a rest; pieces of fewer than
// two characters (a bare line end, a one-character last line) are not delivered.
class ZtOdPdsTextFile {
public:
    ZtOdPdsTextFile() = default;
    ~ZtOdPdsTextFile() { Close(); }
    ZtOdPdsTextFile(const ZtOdPdsTextFile&) = delete;
    ZtOdPdsTextFile& operator=(const ZtOdPdsTextFile&) = delete;

    // Closes a file that is still open, then opens `path`. Nonzero if open.
    int Open(const wchar_t* path);
    // Always 1.
    int Close();

    // One Begin, the lines without their LF, one End. Returns 1, or 0 if the consumer
    // refused a line or the stream reports an error. The file stays open.
    int ReadLines(ZtOdPdsInputConsumer& consumer);
    // The same read, keeping `spot` (whose sink must be set) at the line being handed on,
    // and reporting NULs that cut a line, lines split for their length, and a last line
    // that is dropped.
    int ReadLines(ZtOdPdsInputConsumer& consumer, ZtOdPdsLineSpot& spot);

private:
    template <bool kTracked> int Pump(ZtOdPdsInputConsumer& consumer, ZtOdPdsLineSpot* spot);

    ZtUFile* file_ = nullptr;
};
