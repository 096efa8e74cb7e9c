#include "ztutil/ZtUSysDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

long long ZtUSysDescriptor::Read(int descriptor, void* buffer, std::size_t size) {
    ssize_t got;
    do {
        got = ::read(descriptor, buffer, size);
    } while (got < 0 && errno == EINTR);
    return got;
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

int ZtUSysDescriptor::Replace(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

void ZtUSysDescriptor::Remove(const std::string& path) {
    ::unlink(path.c_str());
}
