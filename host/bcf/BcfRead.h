#pragma once
#include "bcf/BcfTopic.h"

#include <string>
#include <vector>

// Reads a BCF archive of version 2.0, 2.1 or 3.0: every topic folder's markup, its
// comments, and its viewpoints with their cameras, clip planes and selected components
// (snapshots are not read). What can't be read of a topic is said in `problems` and the
// rest is kept; a topic whose markup is unreadable is left out. False with the reason in
// `error` only where the file is no zip archive or holds no BCF at all.
bool ReadBcfArchive(const std::string& path, BcfArchive* archive,
                    std::vector<std::string>* problems, std::string* error);
