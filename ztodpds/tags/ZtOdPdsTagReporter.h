#pragma once
#include "diagnostics/ZtOdPdsDiagnostics.h"
#include "readers/ZtOdPdsBlockTracker.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ZtOdPdsBlock;

// What a reporting tag import says beyond what the block reader reports: tags dropped and
// why, viewpoint keys that no view takes, identifiers used twice, and tags lost where a
// file breaks off. It follows its action over every file the action reads, as the
// viewpoint state does, so that what carries over from one file to the next is judged
// as the import judges it.
class ZtOdPdsTagReporter {
public:
    explicit ZtOdPdsTagReporter(ZtOdPdsDiagnostics& sink) : sink_(sink) {}
    ZtOdPdsTagReporter(const ZtOdPdsTagReporter&) = delete;
    ZtOdPdsTagReporter& operator=(const ZtOdPdsTagReporter&) = delete;

    // A file begins; the tracker given follows its top-level blocks.
    ZtOdPdsBlockTracker& BeginFile(const wchar_t* path);
    ZtOdPdsBlockTracker& Tracker() { return *tracker_; }
    // The top-level reading of the file ended: reports what broke it off, if anything, and
    // how many of the file's `tagLines` (lines beginning "tag{") were never read as tags
    // when `done` tags were.
    void EndFile(const ZtOdPdsBlock& last, int tagLines, int done);
    // Every file is read: reports what waited for a later tag in vain, and the identifiers
    // used twice.
    void Finish();

    // A tracker for the children of the block read last, which stands where its value
    // begins and takes its first line as the block's head.
    ZtOdPdsBlockTracker ValueTracker() const;

    // One diagnostic at `at` of the file being read.
    void Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at, std::wstring_view text = {},
                std::int64_t figure0 = 0, std::int64_t figure1 = 0, std::int64_t figure2 = 0);

    // A top-level block of the file that is neither a viewpoint key nor a tag.
    void OtherKey(const ZtOdPdsBlock& block);
    // A top-level block of a known key.
    void KnownKey() { ++knownBlocks_; }
    // A viewpoint key whose value scanned and is in force from now on; `up` is none of
    // them, since it changes no view.
    void StickyRead(std::wstring_view key);
    // A view was made (or tried) from the viewpoint keys in force: they are taken.
    void ViewTried(bool made, double angle);

    // The tag `tag` is dropped for its head, of which `scanned` values scanned, the third
    // (if it did) being `third`.
    void HeadDropped(const ZtOdPdsBlock& tag, int scanned, std::int32_t third);
    // A `text` block at `at` with `value` (count, line end, body), just read from `tag`:
    // reports a count that does not cover the body.
    void TextRead(std::wstring_view value, ZtOdPdsSourcePosition at, const ZtOdPdsBlock& tag);

    // The tag at `at`, which came in under `identifier`.
    void TagImported(std::uint64_t identifier, ZtOdPdsSourcePosition at);

private:
    struct Place {
        std::size_t file = 0;
        ZtOdPdsSourcePosition at;
    };
    // Tags dropped one after another for want of a valid camera, reported together.
    struct CameraRun {
        Place first;
        std::int64_t degrees = 0;
        std::int64_t after = 0;
        std::optional<Place> angle;
    };

    Place Here() const { return {files_.size() - 1, tracker_->NameAt()}; }
    void ReportAt(ZtOdPdsCheck check, const Place& where, std::wstring_view text,
                  std::int64_t figure0, std::int64_t figure1, const Place* related);
    void FlushCameraRun();
    void ReportRepeatedIdentifiers();

    ZtOdPdsDiagnostics& sink_;
    // The paths of the files read, which the places refer to; a deque, so that a path
    // stays where it is while more are added.
    std::deque<std::wstring> files_;
    std::optional<ZtOdPdsBlockTracker> tracker_;
    // Viewpoint keys in force that no view has taken yet, by key.
    std::map<std::wstring, Place, std::less<>> pending_;
    std::optional<Place> angleAt_;
    std::optional<CameraRun> cameraRun_;
    // Every tag that came in, by identifier, in the order read: sorted at the end, where
    // the identifiers used twice show, so that a tag costs no more than a place in it.
    std::vector<std::pair<std::uint64_t, Place>> identifiers_;
    std::int64_t knownBlocks_ = 0;
};
