#include "tags/ZtOdPdsTagReporter.h"

#include "readers/ZtOdPdsBlock.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

namespace {

// The tags a text took in: lines that begin "tag{" behind a line that ends "}}", where
// a tag ends. A body may well hold a line that begins "tag{" itself.
std::int64_t TagLines(std::wstring_view text) {
    const std::size_t tagEnd = text.find(L"}}\n");
    std::int64_t lines = 0;
    if (tagEnd == std::wstring_view::npos)
        return lines;
    for (std::size_t at = text.find(L"\ntag{", tagEnd); at != std::wstring_view::npos;
         at = text.find(L"\ntag{", at + 1))
        ++lines;
    return lines;
}

} // namespace

ZtOdPdsBlockTracker& ZtOdPdsTagReporter::BeginFile(const wchar_t* path) {
    files_.emplace_back(path ? path : L"");
    return tracker_.emplace(sink_, files_.back().c_str());
}

ZtOdPdsBlockTracker ZtOdPdsTagReporter::ValueTracker() const {
    ZtOdPdsBlockTracker tracker(sink_, files_.back().c_str(), tracker_->ValueAt());
    tracker.ExpectHeadLine();
    return tracker;
}

void ZtOdPdsTagReporter::Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at,
                                std::wstring_view text, std::int64_t figure0, std::int64_t figure1,
                                std::int64_t figure2) {
    ZtOdPdsReport(sink_, check, files_.back().c_str(), at, text, {figure0, figure1, figure2});
}

void ZtOdPdsTagReporter::ReportAt(ZtOdPdsCheck check, const Place& where, std::wstring_view text,
                                  std::int64_t figure0, std::int64_t figure1,
                                  const Place* related) {
    ZtOdPdsDiagnostic diagnostic;
    diagnostic.check = check;
    diagnostic.file = files_[where.file].c_str();
    diagnostic.at = where.at;
    diagnostic.text = text;
    diagnostic.figures[0] = figure0;
    diagnostic.figures[1] = figure1;
    if (related) {
        diagnostic.relatedFile = files_[related->file].c_str();
        diagnostic.related = related->at;
    }
    sink_.Report(diagnostic);
}

void ZtOdPdsTagReporter::EndFile(const ZtOdPdsBlock& last, int tagLines, int done) {
    const std::int64_t lost = std::max(tagLines - done, 0);
    const ZtOdPdsBlockTracker& tracker = *tracker_;
    Report(ZtOdPdsCheck::kFactBlocks, {}, {}, knownBlocks_, done);
    knownBlocks_ = 0;
    // Viewpoint keys before tags that were lost did have a tag to take them: the loss is
    // reported, not the keys.
    if (lost > 0)
        pending_.clear();
    if (tracker.GetStop() == ZtOdPdsBlockStop::kStrayBrace) {
        Report(ZtOdPdsCheck::kStrayBrace, tracker.StrayBraceAt(), {}, lost);
    } else if (tracker.EndedInBlock()) {
        ZtOdPdsReport(sink_, ZtOdPdsCheck::kUnclosedBlock, files_.back().c_str(), tracker.NameAt(),
                      last.GetName().Str(), {tracker.EndedInCount(), tracker.EndCount(), lost},
                      tracker.EndedInCount() ? tracker.CountAt() : ZtOdPdsSourcePosition{});
    }
}

void ZtOdPdsTagReporter::Finish() {
    FlushCameraRun();
    ReportRepeatedIdentifiers();
    for (const auto& [key, place] : pending_)
        ReportAt(ZtOdPdsCheck::kStickyUnused, place, key, 1, 0, nullptr);
    pending_.clear();
}

void ZtOdPdsTagReporter::OtherKey(const ZtOdPdsBlock& block) {
    // File groups are the writer's: the reader skips them by design.
    if (block.GetName() == L"file")
        return KnownKey();
    Report(ZtOdPdsCheck::kUnknownKey, tracker_->NameAt(), block.GetName().Str(),
           kZtOdPdsKeyTagFile);
}

void ZtOdPdsTagReporter::StickyRead(std::wstring_view key) {
    const Place here = Here();
    if (key == L"persp_ang")
        angleAt_ = here;
    const auto found = pending_.find(key);
    if (found != pending_.end()) {
        ReportAt(ZtOdPdsCheck::kStickyUnused, found->second, key, 0, 0, &here);
        found->second = here;
    } else {
        pending_.emplace(std::wstring(key), here);
    }
}

void ZtOdPdsTagReporter::ViewTried(bool made, double angle) {
    pending_.clear();
    if (made) {
        FlushCameraRun();
        return;
    }
    if (cameraRun_) {
        ++cameraRun_->after;
        return;
    }
    cameraRun_ = CameraRun{Here(), std::llround(angle / 0.017453292519943295), 0, angleAt_};
}

void ZtOdPdsTagReporter::FlushCameraRun() {
    if (!cameraRun_)
        return;
    const CameraRun& run = *cameraRun_;
    ReportAt(ZtOdPdsCheck::kTagCamera, run.first, {}, run.degrees, run.after,
             run.angle ? &*run.angle : nullptr);
    cameraRun_.reset();
}

void ZtOdPdsTagReporter::HeadDropped(const ZtOdPdsBlock& tag, int scanned, std::int32_t third) {
    // The head is the value's first line.
    const std::wstring_view value = tag.GetValue().Str();
    const std::wstring_view head = value.substr(0, value.find_first_of(L"\n\r"));
    if (scanned < 5)
        Report(ZtOdPdsCheck::kTagHead, tracker_->NameAt(), head, scanned);
    else
        Report(ZtOdPdsCheck::kTagKind, tracker_->NameAt(), head, third);
}

void ZtOdPdsTagReporter::TextRead(std::wstring_view value, ZtOdPdsSourcePosition at,
                                  const ZtOdPdsBlock& tag) {
    const std::size_t lineEnd = value.find_first_of(L"\n\r");
    if (lineEnd == std::wstring_view::npos)
        return;
    std::int64_t count = 0;
    for (std::size_t i = 0; i < lineEnd && std::iswdigit(static_cast<std::wint_t>(value[i])); ++i)
        count = std::min<std::int64_t>(count * 10 + (value[i] - L'0'), INT32_MAX);
    // A count one or two above the body's length lets the whole body pass unread, which is
    // as good as the count itself. Below it, the rest of the body is read for braces.
    const std::wstring_view body = value.substr(lineEnd + 1);
    const auto length = static_cast<std::int64_t>(body.size());
    const std::int64_t swallowed = TagLines(body);
    const std::size_t unread = static_cast<std::size_t>(std::max<std::int64_t>(count - 2, 0));
    const bool bracesRead =
        length > count &&
        body.find_first_of(L"{}", std::min(unread, body.size())) != std::wstring_view::npos;
    // Cut short: a brace in the last characters closed the text, and what stands behind it
    // on its line is no block.
    const std::wstring_view behind =
        std::wstring_view(tag.GetValue().Str()).substr(static_cast<std::size_t>(tag.GetCursor()));
    const std::wstring_view rest = ZtUTrimmedView(behind.substr(0, behind.find(L'\n')));
    const bool cut = length < count && !rest.empty() && rest.find(L'{') == std::wstring_view::npos;
    if (swallowed > 0 || bracesRead || cut)
        Report(ZtOdPdsCheck::kTextCount, at, cut ? rest : std::wstring_view(), count, length,
               swallowed);
}

void ZtOdPdsTagReporter::TagImported(std::uint64_t identifier, ZtOdPdsSourcePosition at) {
    identifiers_.push_back({identifier, Place{files_.size() - 1, at}});
}

void ZtOdPdsTagReporter::ReportRepeatedIdentifiers() {
    // Stable, so that each identifier's tags stay in the order read: the first is the one
    // the others repeat.
    std::stable_sort(identifiers_.begin(), identifiers_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t first = 0, next = 1; first < identifiers_.size(); first = next++)
        for (; next < identifiers_.size() && identifiers_[next].first == identifiers_[first].first;
             ++next)
            ReportAt(ZtOdPdsCheck::kTagIdRepeated, identifiers_[next].second, {},
                     static_cast<std::int64_t>(identifiers_[next].first), 0,
                     &identifiers_[first].second);
    identifiers_.clear();
}
