#pragma once
#include "ztutil/ZtUFileIdentity.h"

#include <cstddef>
#include <string>

// The operating system's calls on an open file descriptor that the text stream and the
// model loader make. Each platform has its own implementation file. Failures return the
// C library's error number (errno).
namespace ZtUSysDescriptor {

// Opens the file at `path` (UTF-8, as the host names files) for reading, in binary and
// without waiting for a FIFO's writer: its descriptor, or -1 with errno set; a folder
// gives EISDIR on every platform. The file is recorded as read in the innermost
// ZtUFileScope.
int OpenForReading(const std::string& path);
// Bytes read into `buffer` (0 at the end of the file), or -1 with errno set. An
// interrupted call is retried.
long long Read(int descriptor, void* buffer, std::size_t size);
// Moves the read position to `offset` bytes from the start: 0, or -1 with errno set.
int Seek(int descriptor, unsigned long long offset);
// Bytes written (some, not necessarily all), or -1 with errno set.
long long Write(int descriptor, const void* bytes, std::size_t size);
// The size of a regular file, or -1 for anything else.
long long RegularFileSize(int descriptor);
// Puts the file's data on the device: 0, or an error number.
int Commit(int descriptor);
// 0, or an error number.
int Close(int descriptor);
// Which file the descriptor is open on; false if the system can't say.
bool Identify(int descriptor, ZtUFileIdentity* identity);

} // namespace ZtUSysDescriptor
