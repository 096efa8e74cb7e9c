#pragma once

class ZtOdPdsInputConsumer;
class ZtUFile;

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

private:
    ZtUFile* file_ = nullptr;
};
