#include "ztutil/ZtUFileScope.h"

#include <algorithm>
#include <utility>

namespace {

thread_local ZtUFileScope* innermost = nullptr;

} // namespace

ZtUFileScope::ZtUFileScope() : outer_(innermost) {
    innermost = this;
}

ZtUFileScope::~ZtUFileScope() {
    innermost = outer_;
    for (Failure& failure : failures_)
        RecordFailure(std::move(failure.path), std::move(failure.reason));
    for (std::string& warning : warnings_)
        RecordWarning(std::move(warning));
    for (const ZtUFileIdentity& read : reads_)
        RecordRead(read);
}

ZtUFileScope* ZtUFileScope::Current() {
    return innermost;
}

void ZtUFileScope::Protect(const ZtUFileIdentity& file, std::string reason) {
    protections_.push_back({file, std::move(reason)});
}

void ZtUFileScope::RecordFailure(std::string path, std::string reason) {
    if (innermost)
        innermost->failures_.push_back({std::move(path), std::move(reason)});
}

void ZtUFileScope::RecordWarning(std::string text) {
    if (!innermost)
        return;
    std::vector<std::string>& warnings = innermost->warnings_;
    if (std::find(warnings.begin(), warnings.end(), text) == warnings.end())
        warnings.push_back(std::move(text));
}

void ZtUFileScope::RecordRead(const ZtUFileIdentity& file) {
    if (!innermost)
        return;
    std::vector<ZtUFileIdentity>& reads = innermost->reads_;
    if (std::find(reads.begin(), reads.end(), file) == reads.end())
        reads.push_back(file);
}

// Protections and watchers of enclosing scopes hold inside the inner ones too.
const std::string* ZtUFileScope::ProtectionOf(const ZtUFileIdentity& file) {
    for (const ZtUFileScope* scope = innermost; scope; scope = scope->outer_)
        for (const Protection& protection : scope->protections_)
            if (protection.file == file)
                return &protection.reason;
    return nullptr;
}

ZtUWriteWatcher* ZtUFileScope::CurrentWatcher() {
    for (const ZtUFileScope* scope = innermost; scope; scope = scope->outer_)
        if (scope->watcher_)
            return scope->watcher_;
    return nullptr;
}
