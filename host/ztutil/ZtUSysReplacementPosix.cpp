#include "ztutil/ZtUSysReplacement.h"

#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysFile.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// Links followed in one resolution, as the kernel allows.
constexpr int kMaxLinks = 40;
// The longest name a folder takes (NAME_MAX of the common file systems).
constexpr std::size_t kMaxNameBytes = 255;
// What a temporary name adds to the target's: a leading point, a point and six letters.
constexpr std::size_t kTemporaryExtra = 8;
constexpr int kTemporaryAttempts = 100;

// A folder descriptor that closes itself.
class Folder {
public:
    explicit Folder(int descriptor = -1) : descriptor_(descriptor) {}
    ~Folder() { Reset(-1); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    int Get() const { return descriptor_; }
    void Reset(int descriptor) {
        if (descriptor_ >= 0)
            ::close(descriptor_);
        descriptor_ = descriptor;
    }
    int Release() { return std::exchange(descriptor_, -1); }

private:
    int descriptor_;
};

int OpenFolder(int at, const char* name) {
    return ::openat(at, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

// Puts the elements of `path` in front of `pending`, in their order, without empty and
// "." elements. True if the path ends in a separator or a "." element, which names a
// folder.
bool PushElements(std::string_view path, std::deque<std::string>& pending) {
    std::deque<std::string> elements;
    bool folder = true;
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = path.find('/', start);
        if (end == std::string_view::npos)
            end = path.size();
        const std::string_view element = path.substr(start, end - start);
        folder = element.empty() || element == "." || element == "..";
        if (!element.empty() && element != ".")
            elements.emplace_back(element);
        start = end + 1;
    }
    pending.insert(pending.begin(), elements.begin(), elements.end());
    return folder;
}

std::string ReadLink(int folder, const std::string& name) {
    std::string target(256, '\0');
    for (;;) {
        const ssize_t length = ::readlinkat(folder, name.c_str(), target.data(), target.size());
        if (length < 0)
            return {};
        if (static_cast<std::size_t>(length) < target.size()) {
            target.resize(static_cast<std::size_t>(length));
            return target;
        }
        target.resize(target.size() * 2);
    }
}

// The file that `path` names: the folder it stands in, its name there and, if it exists,
// its status. Each element is looked up in the folder found for the one before, so
// nothing can move between the checks and the use; a link is followed only if its owner
// is the user or the owner of its folder.
struct Resolution {
    Folder folder;
    std::string name;
    bool exists = false;
    struct stat status {};
};

bool Resolve(const std::string& path, Resolution* out, std::string* why) {
    const auto fail = [why](const char* reason) {
        *why = reason;
        return false;
    };
    std::deque<std::string> pending;
    out->folder.Reset(OpenFolder(AT_FDCWD, !path.empty() && path[0] == '/' ? "/" : "."));
    if (PushElements(path, pending))
        return fail(std::strerror(EISDIR));
    int links = 0;
    while (!pending.empty()) {
        const std::string element = std::move(pending.front());
        pending.pop_front();
        const bool last = pending.empty();
        if (out->folder.Get() < 0)
            return fail(std::strerror(errno));
        if (element == "..") {
            out->folder.Reset(OpenFolder(out->folder.Get(), ".."));
            continue;
        }
        struct stat status;
        if (::fstatat(out->folder.Get(), element.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno != ENOENT || !last)
                return fail(std::strerror(errno));
            out->name = element;
            return true;
        }
        if (S_ISLNK(status.st_mode)) {
            struct stat folder;
            if (++links > kMaxLinks)
                return fail(std::strerror(ELOOP));
            if (::fstat(out->folder.Get(), &folder) != 0)
                return fail(std::strerror(errno));
            if (status.st_uid != ::geteuid() && status.st_uid != folder.st_uid) {
                *why = "it is a link of user " + std::to_string(status.st_uid) +
                       " in a folder of user " + std::to_string(folder.st_uid) +
                       ", which is not followed";
                return false;
            }
            const std::string target = ReadLink(out->folder.Get(), element);
            if (target.empty())
                return fail(std::strerror(errno ? errno : ENOENT));
            if (target[0] == '/')
                out->folder.Reset(OpenFolder(AT_FDCWD, "/"));
            if (PushElements(target, pending) && last)
                return fail(std::strerror(EISDIR));
            continue;
        }
        if (last) {
            if (S_ISDIR(status.st_mode))
                return fail(std::strerror(EISDIR));
            if (!S_ISREG(status.st_mode))
                return fail("not a regular file");
            out->name = element;
            out->exists = true;
            out->status = status;
            return true;
        }
        if (!S_ISDIR(status.st_mode))
            return fail(std::strerror(ENOTDIR));
        out->folder.Reset(OpenFolder(out->folder.Get(), element.c_str()));
    }
    return fail(std::strerror(EISDIR));
}

// The mode of a new file for the Windows permission pair, less the umask. The umask can
// only be read by setting it; the host creates files from one thread.
mode_t NewFileMode(unsigned permissions) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return static_cast<mode_t>((permissions & ZtUSysFile::kPermitWrite) ? 0666 : 0444) & ~mask;
}

// Six letters that no other writer is likely to pick at the same moment.
std::string TemporarySuffix() {
    static std::uint64_t counter = 0;
    std::uint64_t state =
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
        (static_cast<std::uint64_t>(::getpid()) << 32) ^ ++counter * 0x9E3779B97F4A7C15u;
    static constexpr char kLetters[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::string suffix;
    for (int i = 0; i < 6; ++i) {
        state ^= state >> 31;
        state *= 0xBF58476D1CE4E5B9u;
        state ^= state >> 29;
        suffix += kLetters[state % (sizeof kLetters - 1)];
    }
    return suffix;
}

// A new file beside `name` in `folder`, named ".NAME.XXXXXX" with NAME cut (at a whole
// UTF-8 character) so that the whole fits in a folder whatever the target's length.
int CreateTemporary(int folder, const std::string& name, std::string* temporary) {
    std::size_t keep = std::min(name.size(), kMaxNameBytes - kTemporaryExtra);
    while (keep > 0 && keep < name.size() &&
           (static_cast<unsigned char>(name[keep]) & 0xC0) == 0x80)
        --keep;
    for (int attempt = 0; attempt < kTemporaryAttempts; ++attempt) {
        *temporary = "." + name.substr(0, keep) + "." + TemporarySuffix();
        const int descriptor =
            ::openat(folder, temporary->c_str(),
                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC, 0600);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    errno = EEXIST;
    return -1;
}

// Gives the new file the old one's owner and group where the system lets it, and takes
// from `mode` what would widen access without them.
void KeepOwner(int descriptor, const struct stat& old, mode_t* mode) {
    struct stat made;
    if (::fstat(descriptor, &made) != 0 ||
        (made.st_uid == old.st_uid && made.st_gid == old.st_gid) ||
        ::fchown(descriptor, old.st_uid, old.st_gid) == 0)
        return;
    const bool groupKept =
        made.st_gid == old.st_gid || ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
    if (!groupKept)
        *mode = (*mode & ~static_cast<mode_t>(070 | S_ISGID)) |
                (*mode & 070 & static_cast<mode_t>((*mode & 07) << 3));
    if (made.st_uid != old.st_uid)
        *mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
}

} // namespace

std::unique_ptr<ZtUSysReplacement> ZtUSysReplacement::Begin(const std::string& target,
                                                            unsigned permissions, int* descriptor,
                                                            std::string* why) {
    Resolution resolution;
    if (!Resolve(target, &resolution, why))
        return nullptr;
    const struct stat& old = resolution.status;
    if (resolution.exists)
        if (const std::string* reason = ZtUFileScope::ProtectionOf(
                {static_cast<std::uint64_t>(old.st_dev), static_cast<std::uint64_t>(old.st_ino)})) {
            *why = *reason;
            return nullptr;
        }
    std::unique_ptr<ZtUSysReplacement> replacement(new ZtUSysReplacement);
    replacement->folder_ = resolution.folder.Release();
    replacement->target_ = resolution.name;
    const int made =
        CreateTemporary(replacement->folder_, replacement->target_, &replacement->temporary_);
    if (made < 0) {
        *why = std::strerror(errno);
        replacement->temporary_.clear();
        return nullptr;
    }
    mode_t mode = resolution.exists ? old.st_mode & 07777 : NewFileMode(permissions);
    if (resolution.exists)
        KeepOwner(made, old, &mode);
    if (::fchmod(made, mode) != 0) {
        *why = std::strerror(errno);
        ::close(made);
        return nullptr;
    }
    if (resolution.exists) {
        replacement->oldSize_ = old.st_size;
        if (old.st_nlink > 1)
            ZtUFileScope::RecordWarning(target + " had " + std::to_string(old.st_nlink) +
                                        " hard links: it is replaced under this name, and the "
                                        "other names keep the old text");
    }
    *descriptor = made;
    return replacement;
}

ZtUSysReplacement::~ZtUSysReplacement() {
    if (!committed_ && !temporary_.empty())
        ::unlinkat(folder_, temporary_.c_str(), 0);
    if (folder_ >= 0)
        ::close(folder_);
}

int ZtUSysReplacement::Commit() {
    if (::renameat(folder_, temporary_.c_str(), folder_, target_.c_str()) != 0)
        return errno;
    committed_ = true;
    return 0;
}
