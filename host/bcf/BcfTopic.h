#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

// What a BCF archive holds, as far as a review tag can use it: plain records, lengths in
// metres and angles in degrees, as the format has them.

using BcfVector = std::array<double, 3>;

struct BcfCamera {
    bool perspective = true;
    BcfVector position{}, direction{}, up{0, 0, 1};
    double fieldOfView = 60;      // perspective: the vertical angle, in degrees
    double viewToWorldScale = 1;  // orthogonal: the view's visible height, in metres
    std::optional<double> aspect; // width over height; 3.0 only
};

// A plane that cuts the view: `direction` points into the half that is cut away.
struct BcfClipPlane {
    BcfVector location{}, direction{};
};

struct BcfComponent {
    std::string ifcGuid;
    std::string originatingSystem;
    std::string authoringToolId;
};

// A line drawn in the view. The export draws the line of sight from the camera to each
// tag's point, which marks the point on its element exactly.
struct BcfLine {
    BcfVector start{}, end{};
};

struct BcfViewpoint {
    std::string guid;
    std::optional<BcfCamera> camera;
    std::vector<BcfLine> lines;
    std::vector<BcfClipPlane> clipPlanes;
    std::vector<BcfComponent> selection;
    std::string snapshot; // the PNG's bytes; empty without one
};

struct BcfComment {
    std::string guid;
    std::string date;
    std::string author;
    std::string text;
    std::string viewpointGuid; // the viewpoint it speaks of; empty if none
};

struct BcfTopic {
    std::string guid;
    std::string title;
    std::optional<double> index; // the topics' order, where the writer gave one
    std::string description;
    std::string date;
    std::string author;
    std::string type = "Issue";
    std::string status = "Open";
    std::vector<BcfComment> comments;
    std::vector<BcfViewpoint> viewpoints;
    // What a reader met that a review tag can't hold, counted for the user.
    std::size_t documentReferences = 0;
    std::size_t relatedTopics = 0;
    std::size_t referenceLinks = 0;
};

enum class BcfVersion { k21, k30 };

// The archive as a whole: its topics in the writer's order (their indexes, else their
// folders' names).
struct BcfArchive {
    BcfVersion version = BcfVersion::k21;
    std::string versionId; // as the archive gives it, "2.1"
    std::vector<BcfTopic> topics;
    bool hasDocuments = false; // 3.0's documents, which no tag holds
};
