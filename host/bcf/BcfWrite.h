#pragma once
#include "bcf/BcfTopic.h"

#include <ctime>
#include <string>

// Writes the topics as a BCF archive of the archive's version: bcf.version, for 3.0 the
// extensions that name the topics' types, statuses and authors, and a folder per topic
// named by its GUID with its markup, its viewpoints and their snapshots. Each entry is
// dated `time`. False with the reason in `error`; whatever stood at `path` then stays.
bool WriteBcfArchive(const BcfArchive& archive, const std::string& path, std::time_t time,
                     std::string* error);

// A topic's markup and a viewpoint's visualisation as the archive holds them.
std::string BcfMarkupXml(const BcfTopic& topic, BcfVersion version);
std::string BcfViewpointXml(const BcfViewpoint& viewpoint, BcfVersion version);
