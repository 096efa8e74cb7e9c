#pragma once
#include "ztutil/ZtUSysFile.h"

#include <utility>

// A write stream of the host's for the length of one function. Close ends it as the
// host's fclose does; left without Close, on an exception's way out, it is given up
// unclosed (ZtUSysFile::fdiscard), and what was written goes with it.
class ZtOdPdsWriteStream {
public:
    explicit ZtOdPdsWriteStream(ZtUFile* file) : file_(file) {}
    ~ZtOdPdsWriteStream() {
        if (file_)
            ZtUSysFile::fdiscard(file_);
    }
    ZtOdPdsWriteStream(const ZtOdPdsWriteStream&) = delete;
    ZtOdPdsWriteStream& operator=(const ZtOdPdsWriteStream&) = delete;

    ZtUFile* Get() const { return file_; }
    // fclose's result.
    int Close() { return ZtUSysFile::fclose(std::exchange(file_, nullptr)); }

private:
    ZtUFile* file_;
};
