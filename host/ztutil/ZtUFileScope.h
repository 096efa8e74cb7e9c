#pragma once
#include "ztutil/ZtUFileIdentity.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Sees what the write streams of a scope write, and has the last word on whether a
// stream's text takes its target's place. A host that must count what a plug-in wrote
// installs one, rather than reading the file back.
class ZtUWriteWatcher {
public:
    // What a write stream is about to put in place of its target.
    struct Replacement {
        const std::string& path; // as the writer was asked for it
        std::uint64_t bytes;     // the new file's size
        long long oldBytes;      // the replaced file's size, -1 for a new file
    };

    virtual ~ZtUWriteWatcher() = default;
    // Each piece of text handed to a write stream, as one print made it.
    virtual void Wrote(std::wstring_view text) = 0;
    // Whether `replacement` goes ahead; if not, its text is thrown away and the old
    // file stays, and the stream's close still succeeds.
    virtual bool MayReplace(const Replacement& replacement) = 0;
};

// What the host's file layer has to say about one stretch of the host's work, and what
// the host asks of it there. A host installs a scope around each piece of work (pdsreview
// around each step); the file layer records into the innermost scope of the thread, and
// outside any scope it records nothing and refuses nothing. An inner scope, such as one
// that watches a part of the work, hands what it recorded on to the scope around it when
// it ends; what an outer scope protects and watches holds inside it too.
//
// A scope is made and destroyed on one thread, innermost first, as a local variable.
class ZtUFileScope {
public:
    // A write that failed: the path as the writer was asked for it and the reason.
    struct Failure {
        std::string path;
        std::string reason;
    };

    // Becomes the thread's innermost scope.
    ZtUFileScope();
    // The scope that was innermost before is again, and takes over what this one recorded.
    ~ZtUFileScope();
    ZtUFileScope(const ZtUFileScope&) = delete;
    ZtUFileScope& operator=(const ZtUFileScope&) = delete;

    // The thread's innermost scope, or null.
    static ZtUFileScope* Current();

    // No write stream of the scope may replace `file`; one that tries fails with `reason`.
    void Protect(const ZtUFileIdentity& file, std::string reason);
    // `watcher` (not owned, or null) sees the scope's writes from now on.
    void Watch(ZtUWriteWatcher* watcher) { watcher_ = watcher; }

    // The writes that failed, oldest first.
    const std::vector<Failure>& GetFailures() const { return failures_; }
    // What the user should hear of although nothing failed, oldest first, once each.
    const std::vector<std::string>& GetWarnings() const { return warnings_; }
    // The files that the scope's readers opened, once each.
    const std::vector<ZtUFileIdentity>& GetReads() const { return reads_; }

    // What the file layer tells the innermost scope, if there is one.
    static void RecordFailure(std::string path, std::string reason);
    static void RecordWarning(std::string text);
    static void RecordRead(const ZtUFileIdentity& file);
    // Why `file` must not be replaced, or null if it may be.
    static const std::string* ProtectionOf(const ZtUFileIdentity& file);
    static ZtUWriteWatcher* CurrentWatcher();

private:
    struct Protection {
        ZtUFileIdentity file;
        std::string reason;
    };

    ZtUFileScope* outer_;
    ZtUWriteWatcher* watcher_ = nullptr;
    std::vector<Protection> protections_;
    std::vector<Failure> failures_;
    std::vector<std::string> warnings_;
    std::vector<ZtUFileIdentity> reads_;
};
