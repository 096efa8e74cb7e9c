#include "readers/ZtOdPdsBlockFileSource.h"

#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockReader.h"
#include "readers/ZtOdPdsBlockTracker.h"
#include "ztutil/ZtUSysFile.h"

#include <utility>

namespace {

// Feeds the characters of `file` to `reader` until it completes (kComplete), or, with
// `stopAtStray`, until a closing brace comes with no block open (kUnmatchedClose). At the
// end of the input the result is kContinue. A tracker, if given, follows every character;
// the plain read is a loop of its own, so that it pays nothing for the tracking. Both take
// the runs of a value from the reader at once.
template <bool kTracked>
int Pump(ZtUFile* file, ZtOdPdsBlockReader& reader, ZtOdPdsBlockTracker* tracker,
         bool stopAtStray) {
    // The reader takes the runs of a value by itself, the tracked read only those that a
    // tracker has nothing to note of but their place.
    const auto next = [file] { return ZtUSysFile::fgetwc(file); };
    for (unsigned c = next(); c != ZtUFile::kEnd;) {
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
        if constexpr (kTracked)
            c = reader.GatherPlainRun<ZtUFile::kEnd>(
                next, [tracker](wchar_t taken) { tracker->Step(taken); });
        else
            c = reader.GatherRun<ZtUFile::kEnd>(next);
    }
    if constexpr (kTracked)
        tracker->Stopped(reader, ZtOdPdsBlockReader::kContinue);
    return ZtOdPdsBlockReader::kContinue;
}

// The largest buffer kept from one block for the next: enough for any block of an
// ordinary file, and small beside the memory that a long block takes anyway.
constexpr std::size_t kMostSpareCapacity = 1 << 16;

} // namespace

ZtOdPdsBlockFileSource::~ZtOdPdsBlockFileSource() {
    Close();
    ZtOdPdsBlockReader::Free(spare_);
}

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
    if (!file_) {
        block->Clear();
        return 0;
    }
    ZtOdPdsBlockReader reader(block, 0, {std::exchange(spare_, nullptr), spareCapacity_});
    const int result = tracker ? Pump<true>(file_, reader, tracker, true)
                               : Pump<false>(file_, reader, nullptr, true);
    const ZtOdPdsBlockReader::Buffer spare = reader.TakeBuffer(kMostSpareCapacity);
    spare_ = spare.text;
    spareCapacity_ = spare.capacity;
    return result == ZtOdPdsBlockReader::kComplete ? 1 : 0;
}
