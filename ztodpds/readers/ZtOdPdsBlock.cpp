#include "readers/ZtOdPdsBlock.h"

#include "readers/ZtOdPdsBlockReader.h"
#include "readers/ZtOdPdsBlockTracker.h"

#include <algorithm>
#include <cwchar>
#include <limits>

// Out of line, so that the readers' character loops stay small enough to be inlined whole.
// The name is trimmed before it is copied, as Trim would trim it.
void ZtOdPdsBlock::SetName(const wchar_t* text, std::size_t length) {
    const std::wstring_view trimmed = ZtUTrimmedView({text, length});
    name_.SetString(trimmed.data(), trimmed.size());
}

int ZtOdPdsBlock::NextChild(ZtOdPdsBlock* child) {
    return ReadChild<false>(child, nullptr);
}

int ZtOdPdsBlock::NextChild(ZtOdPdsBlock* child, ZtOdPdsBlockTracker& tracker) {
    return ReadChild<true>(child, &tracker);
}

// The plain read and the tracked one are two loops, so that the plain one pays nothing for
// the tracking.
template <bool kTracked>
int ZtOdPdsBlock::ReadChild(ZtOdPdsBlock* child, ZtOdPdsBlockTracker* tracker) {
    if (!child || child == this)
        return 0;
    child->AddFlags(flags_);
    const std::wstring& value = value_.Str();
    // The cursor is 32 bits wide; a value longer than that is read no further.
    const std::size_t end =
        std::min(value.size(), static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()));
    std::size_t at = std::min(static_cast<std::size_t>(cursor_), end);
    // The child's name and value are slices of this value until they are set.
    ZtOdPdsSliceBlockReader reader(child, 0, value.data() + at);
    int result = 0;
    // A closing brace with nothing open (kUnmatchedClose) is passed over: what follows it
    // is gathered below depth 0 and makes no block unless later braces make up for it.
    if constexpr (kTracked) {
        while (at < end) {
            // Runs that only move the place on go to the reader at once; none can complete
            // the block.
            if (const std::size_t passed = std::min<std::size_t>(reader.PassThrough(), end - at)) {
                const wchar_t* const nul = std::wmemchr(value.data() + at, L'\0', passed);
                const std::size_t run =
                    nul ? static_cast<std::size_t>(nul - value.data()) - at : passed;
                if (run != 0) {
                    tracker->StepOver(value.data() + at, run);
                    at += run;
                    reader.FeedTo(value.data() + at);
                    continue;
                }
            }
            if (reader.Depth() > 0 && ZtOdPdsBlockTracker::OnlyMovesOn(value[at])) {
                while (at < end && ZtOdPdsBlockTracker::OnlyMovesOn(value[at]))
                    tracker->Step(value[at++]);
                reader.FeedTo(value.data() + at);
                continue;
            }
            if (reader.Depth() == 0 && reader.PassThrough() == 0 && !reader.InCount() &&
                ZtOdPdsBlockTracker::OnlyMovesOnOutside(value[at])) {
                while (at < end && ZtOdPdsBlockTracker::OnlyMovesOnOutside(value[at]))
                    tracker->StepOutside(value[at++]);
                reader.FeedTo(value.data() + at);
                continue;
            }
            const int fed = tracker->Feed(reader, value[at]);
            ++at;
            if (fed == ZtOdPdsBlockReader::kComplete) {
                result = 1;
                break;
            }
        }
        if (result)
            tracker->Completed();
        else
            tracker->Stopped(reader, ZtOdPdsBlockReader::kContinue);
    } else {
        result = reader.FeedTo(value.data() + end) == ZtOdPdsBlockReader::kComplete ? 1 : 0;
        at = static_cast<std::size_t>(reader.Next() - value.data());
    }
    cursor_ = static_cast<std::int32_t>(at);
    return result;
}
