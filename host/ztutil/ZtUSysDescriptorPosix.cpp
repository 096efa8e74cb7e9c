#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysNativePath.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

std::filesystem::path ZtUSysNativePath(const std::string& path) {
    return std::filesystem::path(path);
}

std::string ZtUSysHostPath(const std::filesystem::path& path) {
    return path.native();
}

int ZtUSysDescriptor::OpenForReading(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0)
        return -1;
    // POSIX opens a folder for reading; Windows can't, so neither does the host.
    struct stat status;
    if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        ::close(descriptor);
        errno = EISDIR;
        return -1;
    }
    ZtUFileIdentity identity;
    if (Identify(descriptor, &identity))
        ZtUFileScope::RecordRead(identity);
    return descriptor;
}

long long ZtUSysDescriptor::Read(int descriptor, void* buffer, std::size_t size) {
    ssize_t got;
    do {
        got = ::read(descriptor, buffer, size);
    } while (got < 0 && errno == EINTR);
    return got;
}

int ZtUSysDescriptor::Seek(int descriptor, unsigned long long offset) {
    if (offset > static_cast<unsigned long long>(std::numeric_limits<off_t>::max())) {
        errno = EINVAL;
        return -1;
    }
    return ::lseek(descriptor, static_cast<off_t>(offset), SEEK_SET) < 0 ? -1 : 0;
}

long long ZtUSysDescriptor::Write(int descriptor, const void* bytes, std::size_t size) {
    ssize_t written;
    do {
        written = ::write(descriptor, bytes, size);
    } while (written < 0 && errno == EINTR);
    return written;
}

long long ZtUSysDescriptor::RegularFileSize(int descriptor) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return -1;
    return status.st_size;
}

int ZtUSysDescriptor::Commit(int descriptor) {
    return ::fsync(descriptor) == 0 ? 0 : errno;
}

int ZtUSysDescriptor::Close(int descriptor) {
    return ::close(descriptor) == 0 ? 0 : errno;
}

bool ZtUSysDescriptor::Identify(int descriptor, ZtUFileIdentity* identity) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0)
        return false;
    *identity = {static_cast<std::uint64_t>(status.st_dev),
                 static_cast<std::uint64_t>(status.st_ino)};
    return true;
}
