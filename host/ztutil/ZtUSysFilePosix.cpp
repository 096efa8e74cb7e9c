#include "ztutil/ZtUSysFile.h"

#include "ztutil/ZtUFileReader.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysFilePlatform.h"
#include "ztutil/ZtUSysString.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <memory>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

namespace {

std::string ToSystemPath(const wchar_t* path) {
    return ZtUSysString::WideToPath(path);
}

// Opens without blocking (a FIFO would wait for a partner) and keeps regular files only.
int OpenRegularFile(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
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

// The file systems whose files the kernel makes up as they are read (/proc, /sys and
// their kin): no review file lives there, and some never end.
bool IsKernelFile(int descriptor) {
    struct statfs system;
    if (::fstatfs(descriptor, &system) != 0)
        return false;
    switch (static_cast<unsigned long>(system.f_type)) {
    case PROC_SUPER_MAGIC:
    case SYSFS_MAGIC:
    case DEBUGFS_MAGIC:
    case TRACEFS_MAGIC:
    case SECURITYFS_MAGIC:
        return true;
    default:
        return false;
    }
}

} // namespace

ZtUFileReader* ZtUSysOpenExistingFile(const wchar_t* path) {
    const std::string systemPath = ToSystemPath(path);
    const int descriptor = OpenRegularFile(systemPath);
    if (descriptor < 0)
        return nullptr;
    if (IsKernelFile(descriptor)) {
        ::close(descriptor);
        ZtUFileScope::RecordWarning(systemPath +
                                    " is a file of the kernel's (in /proc or /sys), not read");
        return nullptr;
    }
    ZtUFileIdentity identity;
    if (ZtUSysDescriptor::Identify(descriptor, &identity))
        ZtUFileScope::RecordRead(identity);
    return new ZtUFileReader(descriptor);
}

bool ZtUSysFile::ExistsW(const wchar_t* path) {
    struct stat status;
    return path && *path && ::stat(ToSystemPath(path).c_str(), &status) == 0;
}

bool ZtUSysFile::IdentifyW(const wchar_t* path, ZtUFileIdentity* identity) {
    struct stat status;
    if (!path || !*path || ::stat(ToSystemPath(path).c_str(), &status) != 0)
        return false;
    *identity = {static_cast<std::uint64_t>(status.st_dev),
                 static_cast<std::uint64_t>(status.st_ino)};
    return true;
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
