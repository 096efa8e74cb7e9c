#pragma once
#include "bcf/BcfTopic.h"

#include <cstdint>
#include <string>
#include <vector>

struct ReportScene;

// Topics as a tag file, for the library's own tag import to make into saved views: each
// topic a view of its own (every viewpoint key written again, so that no two topics share
// one), the camera of its first viewpoint, a tag with its title and description, and a
// tag for each comment that says more. The tag stands on the centre of the first selected
// component that the scene holds (matched by its DMRS value in AuthoringToolId, and by
// its model file in OriginatingSystem where that is given), else on the nearest element
// the camera looks at, else at the camera's target.
struct BcfTagFile {
    std::string text;
    std::size_t tags = 0;
    std::uint64_t nextTagId = 0; // past the last tag written
    // What the tags can't hold of the topics, for the user.
    std::vector<std::string> warnings;
};

// `uorsPerMaster` turns scene units into the file's UORs; tag ids begin at `firstTagId`.
BcfTagFile BcfTagFileOfArchive(const BcfArchive& archive, const ReportScene& scene,
                               double uorsPerMaster, std::uint64_t firstTagId);
