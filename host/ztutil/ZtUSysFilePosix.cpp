#include "ztutil/ZtUSysFile.h"

#include "ztutil/ZtUSysFilePlatform.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string ToSystemPath(const wchar_t* path) {
    return ZtUSysString::WideToPath(path);
}

// Opens without blocking (a FIFO would wait for a partner) and keeps regular files only.
int OpenRegularFile(const std::string& path, int flags, mode_t permissions) {
    const int descriptor =
        ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions);
    if (descriptor < 0)
        return -1;
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK) != 0) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

// The mode of a new file for the Windows permission pair, less the umask. The umask can
// only be read by setting it; the host creates files from one thread.
mode_t NewFileMode(unsigned permissions) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return static_cast<mode_t>((permissions & ZtUSysFile::kPermitWrite) ? 0666 : 0444) & ~mask;
}

} // namespace

ZtUFile* ZtUSysOpenReplacement(const wchar_t* path, unsigned permissions) {
    const std::string target = ToSystemPath(path);
    std::string resolved = target;
    mode_t mode = 0;
    struct stat status;
    if (::stat(target.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            ZtUSysFile::RecordWriteFailure(target, S_ISDIR(status.st_mode) ? std::strerror(EISDIR)
                                                                           : "not a regular file");
            return nullptr;
        }
        mode = status.st_mode & 07777;
        // Through a link, the file it names is replaced, not the link.
        if (char* real = ::realpath(target.c_str(), nullptr)) {
            resolved = real;
            std::free(real);
        }
    } else if (errno == ENOENT) {
        mode = NewFileMode(permissions);
    } else {
        ZtUSysFile::RecordWriteFailure(target, std::strerror(errno));
        return nullptr;
    }
    const std::size_t slash = resolved.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : resolved.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? resolved : resolved.substr(slash + 1);
    std::string temporary = folder + "." + name + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        ZtUSysFile::RecordWriteFailure(target, std::strerror(errno));
        return nullptr;
    }
    if (::fchmod(descriptor, mode) != 0) {
        const int error = errno;
        ::close(descriptor);
        ::unlink(temporary.c_str());
        ZtUSysFile::RecordWriteFailure(target, std::strerror(error));
        return nullptr;
    }
    return new ZtUFile(descriptor, std::move(temporary), std::move(resolved), target);
}

ZtUFile* ZtUSysOpenExistingFile(const wchar_t* path) {
    const int descriptor = OpenRegularFile(ToSystemPath(path), O_RDONLY, 0);
    return descriptor < 0 ? nullptr : new ZtUFile(descriptor, ZtUFile::Mode::kRead);
}

bool ZtUSysFile::ExistsW(const wchar_t* path) {
    struct stat status;
    return path && *path && ::stat(ToSystemPath(path).c_str(), &status) == 0;
}

bool ZtUSysRegularFileNames(const wchar_t* folder, std::vector<std::string>& names) {
    // Closed however the walk ends, memory running out for a name included.
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(
        ::opendir(*folder ? ToSystemPath(folder).c_str() : "."), ::closedir);
    if (!directory)
        return false;
    while (const dirent* entry = ::readdir(directory.get())) {
        // Links count as what they point to, as with fopenW.
        struct stat status;
        if (::fstatat(::dirfd(directory.get()), entry->d_name, &status, 0) == 0 &&
            S_ISREG(status.st_mode))
            names.emplace_back(entry->d_name);
    }
    return true;
}

std::size_t ZtUSysPathRootLength(std::wstring_view path) {
    return !path.empty() && (path[0] == L'/' || path[0] == L'\\') ? 1 : 0;
}
