#pragma once
#include "ztutil/ZtUFile.h"
#include "ztutil/ZtUSysReplacement.h"

#include <cstdint>
#include <memory>
#include <string>

// The host's buffered text stream for writing a file that it creates or replaces.
//
// Writing encodes UTF-8 without a BOM: a surrogate pair becomes one sequence and a lone
// surrogate becomes U+FFFD. The text goes to a temporary file (ZtUSysReplacement), which
// Close moves over the target only when every write, the flush to the device and the
// close succeeded, and when the innermost scope's watcher, if any, agrees. A writer that
// fails, or that is destroyed without Close, removes its temporary file: the old file
// stays as it was. A failure is recorded in the innermost ZtUFileScope with the target as
// the writer was asked for it and the system's reason, and the scope's watcher sees each
// piece of text written.
class ZtUFileWriter final : public ZtUFile {
public:
    // Takes over `descriptor`, open for writing on the temporary file of `replacement`.
    ZtUFileWriter(int descriptor, std::unique_ptr<ZtUSysReplacement> replacement,
                  std::string shownPath);
    // Throws the text away unless Close put it in place.
    ~ZtUFileWriter() override;

    // A writer gives nothing to read.
    wchar_t* GetLine(wchar_t*, int) override { return nullptr; }
    bool Write(const wchar_t* text, std::size_t length) override;
    // Flushes, puts the text on the device, closes and moves it into place: 0, or -1 if
    // anything failed, which leaves the old file.
    int Close() override;

private:
    static constexpr std::size_t kChunk = 64 * 1024;

    unsigned Refill() override { return kEnd; }
    void EncodeUnit(unsigned unit);
    bool Flush();
    // Marks the stream failed with the operating system's error number.
    void Fail(int errorNumber);

    int descriptor_;
    std::unique_ptr<ZtUSysReplacement> replacement_;
    std::string shownPath_;
    // The errno of the first failure, 0 if none.
    int errorNumber_ = 0;
    // What has gone to the file so far.
    std::uint64_t bytesWritten_ = 0;
    // A high surrogate waits here for its low half.
    std::string pending_;
    unsigned highSurrogate_ = 0;
};
