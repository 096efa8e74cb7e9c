#pragma once
#include "bcf/BcfTopic.h"

#include <ctime>
#include <string>
#include <vector>

struct ReportScene;

struct BcfExportSettings {
    BcfVersion version = BcfVersion::k21;
    std::string author;
    std::time_t time = 0;
    int snapshotWidth = 640;
};

// The saved views' tags as topics, one a tag: a tag is one remark on one element, which
// is what a coordination tool tracks as an issue, and the tags of one view each keep their
// own element and their own fate there. The tag's text gives the title (its first line),
// the description and the comment; its view gives the viewpoint (the camera in metres,
// the clip planes, the element under the tag selected, a snapshot of what the camera
// sees). What the version can't hold is said in `warnings`.
BcfArchive BcfArchiveOfScene(const ReportScene& scene, const BcfExportSettings& settings,
                             std::vector<std::string>* warnings);

// A time as BCF dates it, in UTC: "2026-11-26T03:20:00Z".
std::string BcfDate(std::time_t time);
