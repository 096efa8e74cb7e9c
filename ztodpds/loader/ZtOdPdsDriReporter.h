#pragma once
#include "diagnostics/ZtOdPdsDiagnostics.h"
#include "readers/ZtOdPdsBlockTracker.h"

#include <cstdint>
#include <string_view>

class ZtOdPdsBlock;
class ZtOdPdsBlockFileSource;
class ZtUWideStringBuffer;

// What a reporting read of a control file says beyond what the block reader reports:
// blocks the loader does not know or cannot use, values it reads otherwise than written,
// blocks whose values later ones replace, and what stands behind the enclosing block. It
// lives for one read.
class ZtOdPdsDriReporter {
public:
    ZtOdPdsDriReporter(ZtOdPdsDiagnostics& sink, const wchar_t* file) : tracker_(sink, file) {}

    ZtOdPdsBlockTracker& Tracker() { return tracker_; }
    // A tracker for the children of the block read last.
    ZtOdPdsBlockTracker ValueTracker() const;

    // The file is no control file: `firstName` is the name of its first block, or null
    // when no block begins in it.
    void NotControlFile(const ZtUWideStringBuffer* firstName);
    // Lines before the enclosing block are ignored by design: the tracker notes them only.
    void Preamble() { tracker_.SetQuiet(true); }
    // The enclosing block's name has been read; its blocks follow.
    void Enclosed() {
        tracker_.SetQuiet(false);
        enclosingAt_ = tracker_.NameAt();
    }
    // A block inside the enclosing one, before the loader acts on it. `dgn` blocks are
    // reported by the loader as it reads their children.
    void BlockRead(const ZtOdPdsBlock& block);
    // The children of a `dgn` block: a child other than the first `name`, at `at`.
    void ModelChild(const ZtOdPdsBlock& child, ZtOdPdsSourcePosition at);
    // A `dgn` block with no `name` (null) or with the trimmed name `name`, whose value
    // begins at `at`.
    void ModelNamed(const std::wstring_view* name, ZtOdPdsSourcePosition at);
    // The reading of blocks ended, the last one read into `block`: reports how, and reads
    // on behind the enclosing block for what would never be read.
    void EndRead(ZtOdPdsBlockFileSource& source, ZtOdPdsBlock& block);

    void Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at, std::wstring_view text = {},
                std::int64_t figure0 = 0, std::int64_t figure1 = 0,
                ZtOdPdsSourcePosition related = {}) const;

private:
    // A number block, `needs` numbers long, that the loader takes when `taken`.
    void NumberBlock(const ZtOdPdsBlock& block, int needs);

    ZtOdPdsBlockTracker tracker_;
    ZtOdPdsSourcePosition enclosingAt_;
    // The last transform and new_origin that were taken, which a later one would replace.
    ZtOdPdsSourcePosition transformAt_;
    ZtOdPdsSourcePosition newOriginAt_;
    // The last old_origin taken that no new_origin has used yet.
    ZtOdPdsSourcePosition oldOriginAt_;
};
