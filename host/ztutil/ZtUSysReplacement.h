#pragma once
#include <memory>
#include <string>

// Where a write stream's text goes on its way to its target: a temporary file made in the
// folder of the file that the target names, found once, when the stream is made, so that
// the move at the end goes where the checks looked. Each platform has its own
// implementation file.
//
// On POSIX the target is resolved a name at a time from an open folder: a link is followed
// only if it belongs to the user or to the owner of the folder it stands in (the kernel's
// protected-links rule, whatever the system's setting), and the move renames within that
// folder. A replaced file's mode, owner and group are kept where the system permits; a
// group that can't be kept gets no more than others, an owner that can't be kept no
// set-id bits. Replacing a file with other hard links, which keep the old text, is
// recorded as a warning in the innermost ZtUFileScope, and so is a scope's protection
// of the file, as the failure's reason.
class ZtUSysReplacement {
public:
    // Makes the temporary file for `target` (UTF-8, as the host names files) and opens it
    // for writing into `descriptor`. `permissions` are fopenW's pair, for a new file. Null,
    // with the reason in `why`, if the target can't be written.
    static std::unique_ptr<ZtUSysReplacement> Begin(const std::string& target, unsigned permissions,
                                                    int* descriptor, std::string* why);
    // Removes the temporary file, unless it was moved into place.
    ~ZtUSysReplacement();
    ZtUSysReplacement(const ZtUSysReplacement&) = delete;
    ZtUSysReplacement& operator=(const ZtUSysReplacement&) = delete;

    // Moves the temporary file into the target's place: 0, or an error number.
    int Commit();
    // The size of the file replaced, -1 when the target is new.
    long long GetOldSize() const { return oldSize_; }

private:
    ZtUSysReplacement() = default;

    // The folder both names stand in, where the platform opens folders; -1 elsewhere, and
    // then the names are whole paths.
    int folder_ = -1;
    std::string temporary_;
    std::string target_;
    long long oldSize_ = -1;
    bool committed_ = false;
};
