#include "readers/ZtOdPdsBlockFileSource.h"

#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockReader.h"
#include "readers/ZtOdPdsBlockTracker.h"
#include "ztutil/ZtUSysFile.h"

namespace {

// Feeds the characters of `file` to `reader` until it completes (kComplete), or, with
// `stopAtStray`, until a closing brace comes with no block open (kUnmatchedClose). At the
// end of the input the result is kContinue. A tracker, if given, follows every character;
// the plain read is a loop of its own, so that it pays nothing for the tracking.
template <bool kTracked>
int Pump(ZtUFile* file, ZtOdPdsBlockReader& reader, ZtOdPdsBlockTracker* tracker,
         bool stopAtStray) {
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;) {
        int result;
        if constexpr (kTracked)
            result = tracker->Feed(reader, static_cast<wchar_t>(c));
        else
            result = reader.FeedChar(static_cast<wchar_t>(c));
        if (result == ZtOdPdsBlockReader::kComplete ||
            (stopAtStray && result == ZtOdPdsBlockReader::kUnmatchedClose)) {
            if constexpr (kTracked) {
                if (result == ZtOdPdsBlockReader::kComplete)
                    tracker->Completed();
                else
                    tracker->Stopped(reader, result);
            }
            return result;
        }
    }
    if constexpr (kTracked)
        tracker->Stopped(reader, ZtOdPdsBlockReader::kContinue);
    return ZtOdPdsBlockReader::kContinue;
}

} // namespace

int ZtOdPdsBlockFileSource::Open(const wchar_t* path) {
    Close();
    file_ = ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                               ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0,
                               ZtUSysFile::kPermitReadWrite);
    return file_ ? 1 : 0;
}

void ZtOdPdsBlockFileSource::Close() {
    if (file_)
        ZtUSysFile::fclose(file_);
    file_ = nullptr;
}

int ZtOdPdsBlockFileSource::ReadName(ZtUWideStringBuffer* out) {
    return ReadNameTracked(out, nullptr);
}

int ZtOdPdsBlockFileSource::ReadName(ZtUWideStringBuffer* out, ZtOdPdsBlockTracker& tracker) {
    return ReadNameTracked(out, &tracker);
}

int ZtOdPdsBlockFileSource::ReadNameTracked(ZtUWideStringBuffer* out,
                                            ZtOdPdsBlockTracker* tracker) {
    if (!file_)
        return 0;
    ZtOdPdsBlock block;
    ZtOdPdsBlockReader reader(&block, 1);
    // A stray closing brace before the first name is passed over.
    const int result = tracker ? Pump<true>(file_, reader, tracker, false)
                               : Pump<false>(file_, reader, nullptr, false);
    if (result != ZtOdPdsBlockReader::kComplete)
        return 0;
    if (out)
        *out = block.GetName();
    return 1;
}

int ZtOdPdsBlockFileSource::NextBlock(ZtOdPdsBlock* block) {
    return NextBlockTracked(block, nullptr);
}

int ZtOdPdsBlockFileSource::NextBlock(ZtOdPdsBlock* block, ZtOdPdsBlockTracker& tracker) {
    return NextBlockTracked(block, &tracker);
}

int ZtOdPdsBlockFileSource::NextBlockTracked(ZtOdPdsBlock* block, ZtOdPdsBlockTracker* tracker) {
    if (!block)
        return 0;
    block->AddFlags(flags_);
    ZtOdPdsBlockReader reader(block, 0);
    if (!file_)
        return 0;
    const int result = tracker ? Pump<true>(file_, reader, tracker, true)
                               : Pump<false>(file_, reader, nullptr, true);
    return result == ZtOdPdsBlockReader::kComplete ? 1 : 0;
}
