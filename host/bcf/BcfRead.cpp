#include "bcf/BcfRead.h"

#include "bcf/BcfXml.h"
#include "bcf/BcfZip.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

namespace {

bool ReadVector(BcfXmlNode node, BcfVector* out) {
    BcfVector v{};
    const char* names[] = {"X", "Y", "Z"};
    for (int i = 0; i < 3; ++i)
        if (!BcfXmlNumber(BcfXmlChild(node, names[i]), &v[static_cast<std::size_t>(i)]))
            return false;
    *out = v;
    return true;
}

// The children of a 3.0 list element, or the repeated elements of 2.1 where they stand
// without one.
std::vector<BcfXmlNode> Listed(BcfXmlNode parent, const char* list, const char* item) {
    std::vector<BcfXmlNode> found = BcfXmlChildren(BcfXmlChild(parent, list), item);
    const std::vector<BcfXmlNode> bare = BcfXmlChildren(parent, item);
    found.insert(found.end(), bare.begin(), bare.end());
    return found;
}

std::optional<BcfCamera> ReadCamera(BcfXmlNode info) {
    BcfXmlNode node = BcfXmlChild(info, "PerspectiveCamera");
    BcfCamera camera;
    camera.perspective = node != nullptr;
    if (!node)
        node = BcfXmlChild(info, "OrthogonalCamera");
    if (!node || !ReadVector(BcfXmlChild(node, "CameraViewPoint"), &camera.position) ||
        !ReadVector(BcfXmlChild(node, "CameraDirection"), &camera.direction))
        return std::nullopt;
    ReadVector(BcfXmlChild(node, "CameraUpVector"), &camera.up);
    BcfXmlNumber(BcfXmlChild(node, camera.perspective ? "FieldOfView" : "ViewToWorldScale"),
                 camera.perspective ? &camera.fieldOfView : &camera.viewToWorldScale);
    double aspect = 0;
    if (BcfXmlNumber(BcfXmlChild(node, "AspectRatio"), &aspect) && aspect > 0)
        camera.aspect = aspect;
    return camera;
}

void ReadViewpoint(const std::string& bytes, BcfViewpoint* viewpoint, std::string* problem) {
    const std::unique_ptr<BcfXmlDocument> document = BcfXmlDocument::Parse(bytes, problem);
    if (!document)
        return;
    const BcfXmlNode info = document->Root();
    if (!BcfXmlIs(info, "VisualizationInfo")) {
        *problem = "no VisualizationInfo";
        return;
    }
    if (viewpoint->guid.empty())
        viewpoint->guid = BcfXmlAttribute(info, "Guid");
    viewpoint->camera = ReadCamera(info);
    const BcfXmlNode selection = BcfXmlChild(BcfXmlChild(info, "Components"), "Selection");
    for (const BcfXmlNode component : BcfXmlChildren(selection, "Component"))
        viewpoint->selection.push_back({BcfXmlAttribute(component, "IfcGuid"),
                                        BcfXmlChildText(component, "OriginatingSystem"),
                                        BcfXmlChildText(component, "AuthoringToolId")});
    for (const BcfXmlNode node : BcfXmlChildren(BcfXmlChild(info, "Lines"), "Line")) {
        BcfLine line;
        if (ReadVector(BcfXmlChild(node, "StartPoint"), &line.start) &&
            ReadVector(BcfXmlChild(node, "EndPoint"), &line.end))
            viewpoint->lines.push_back(line);
    }
    for (const BcfXmlNode node :
         BcfXmlChildren(BcfXmlChild(info, "ClippingPlanes"), "ClippingPlane")) {
        BcfClipPlane plane;
        if (ReadVector(BcfXmlChild(node, "Location"), &plane.location) &&
            ReadVector(BcfXmlChild(node, "Direction"), &plane.direction))
            viewpoint->clipPlanes.push_back(plane);
    }
}

BcfComment ReadComment(BcfXmlNode node) {
    return {BcfXmlAttribute(node, "Guid"), BcfXmlChildText(node, "Date"),
            BcfXmlChildText(node, "Author"), BcfXmlChildText(node, "Comment"),
            BcfXmlAttribute(BcfXmlChild(node, "Viewpoint"), "Guid")};
}

// One topic folder: its markup, then the viewpoints it names, in the order of their
// indexes where they have them. A folder whose markup names no viewpoint but holds the
// one of BCF 2.0's fixed name has that one.
class TopicReader {
public:
    TopicReader(const BcfZipReader& zip, std::string folder, std::vector<std::string>* problems)
        : zip_(zip), folder_(std::move(folder)), problems_(problems) {}

    bool Read(BcfTopic* topic) {
        std::string bytes, error;
        if (!zip_.Read(folder_ + "markup.bcf", &bytes, &error))
            return Problem("markup.bcf: " + error);
        const std::unique_ptr<BcfXmlDocument> document = BcfXmlDocument::Parse(bytes, &error);
        if (!document)
            return Problem("markup.bcf: " + error);
        const BcfXmlNode markup = document->Root();
        const BcfXmlNode node = BcfXmlChild(markup, "Topic");
        if (!BcfXmlIs(markup, "Markup") || !node)
            return Problem("markup.bcf holds no topic");
        topic->guid = BcfXmlAttribute(node, "Guid");
        topic->type = BcfXmlAttribute(node, "TopicType");
        topic->status = BcfXmlAttribute(node, "TopicStatus");
        topic->title = BcfXmlChildText(node, "Title");
        topic->description = BcfXmlChildText(node, "Description");
        double index = 0;
        if (BcfXmlNumber(BcfXmlChild(node, "Index"), &index))
            topic->index = index;
        topic->date = BcfXmlChildText(node, "CreationDate");
        topic->author = BcfXmlChildText(node, "CreationAuthor");
        topic->referenceLinks = Listed(node, "ReferenceLinks", "ReferenceLink").size();
        topic->documentReferences = Listed(node, "DocumentReferences", "DocumentReference").size();
        topic->relatedTopics = Listed(node, "RelatedTopics", "RelatedTopic").size();
        std::vector<BcfXmlNode> comments = BcfXmlChildren(markup, "Comment");
        const std::vector<BcfXmlNode> listed =
            BcfXmlChildren(BcfXmlChild(node, "Comments"), "Comment");
        comments.insert(comments.end(), listed.begin(), listed.end());
        for (const BcfXmlNode comment : comments)
            topic->comments.push_back(ReadComment(comment));
        std::vector<BcfXmlNode> views = BcfXmlChildren(markup, "Viewpoints");
        const std::vector<BcfXmlNode> listedViews =
            BcfXmlChildren(BcfXmlChild(node, "Viewpoints"), "ViewPoint");
        views.insert(views.end(), listedViews.begin(), listedViews.end());
        std::stable_sort(views.begin(), views.end(),
                         [](BcfXmlNode a, BcfXmlNode b) { return Index(a) < Index(b); });
        for (const BcfXmlNode view : views)
            ReadView(BcfXmlAttribute(view, "Guid"), Trimmed(BcfXmlChildText(view, "Viewpoint")),
                     topic);
        if (views.empty() && Has("viewpoint.bcfv"))
            ReadView({}, "viewpoint.bcfv", topic);
        return true;
    }

private:
    static double Index(BcfXmlNode view) {
        double index = 0;
        return BcfXmlNumber(BcfXmlChild(view, "Index"), &index) ? index : 1e300;
    }

    static std::string Trimmed(const std::string& text) {
        const std::size_t first = text.find_first_not_of(" \t\r\n");
        if (first == std::string::npos)
            return {};
        return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
    }

    bool Has(const std::string& name) const {
        const std::vector<std::string>& names = zip_.Names();
        return std::find(names.begin(), names.end(), folder_ + name) != names.end();
    }

    void ReadView(std::string guid, const std::string& file, BcfTopic* topic) {
        BcfViewpoint viewpoint;
        viewpoint.guid = std::move(guid);
        std::string bytes, error;
        if (file.empty())
            error = "names no viewpoint file";
        else if (zip_.Read(folder_ + file, &bytes, &error))
            ReadViewpoint(bytes, &viewpoint, &error);
        if (!error.empty())
            Problem("viewpoint " + (file.empty() ? viewpoint.guid : file) + ": " + error);
        topic->viewpoints.push_back(std::move(viewpoint));
    }

    bool Problem(const std::string& what) {
        problems_->push_back("topic " + folder_.substr(0, folder_.size() - 1) + ": " + what);
        return false;
    }

    const BcfZipReader& zip_;
    std::string folder_;
    std::vector<std::string>* problems_;
};

// The folder that holds the archive's BCF: none, or the one an archive made by zipping
// that folder puts everything under; the shallowest that holds bcf.version, else the
// shallowest parent of a topic folder.
std::string RootOf(const std::vector<std::string>& names) {
    std::optional<std::string> root;
    const auto consider = [&](const std::string& name, const std::string& last, bool up) {
        if (name.size() < last.size() ||
            name.compare(name.size() - last.size(), last.size(), last) != 0)
            return;
        std::string folder = name.substr(0, name.size() - last.size());
        if (up)
            folder.erase(folder.find_last_of('/') + 1);
        if ((folder.empty() || folder.back() == '/') && (!root || folder.size() < root->size()))
            root = folder;
    };
    for (const std::string& name : names)
        consider(name, "bcf.version", false);
    for (const std::string& name : names)
        if (!root)
            consider(name, "/markup.bcf", true);
    return root.value_or(std::string());
}

} // namespace

bool ReadBcfArchive(const std::string& path, BcfArchive* archive,
                    std::vector<std::string>* problems, std::string* error) {
    const std::unique_ptr<BcfZipReader> zip = BcfZipReader::Open(path, error);
    if (!zip)
        return false;
    const std::string root = RootOf(zip->Names());
    std::set<std::string> folders; // sorted, for the same order on every run
    for (const std::string& name : zip->Names()) {
        if (name.compare(0, root.size(), root) != 0)
            continue;
        const std::string inside = name.substr(root.size());
        const std::size_t slash = inside.find('/');
        if (slash != std::string::npos && slash > 0 && inside.substr(slash + 1) == "markup.bcf")
            folders.insert(name.substr(0, root.size() + slash + 1));
        archive->hasDocuments |= inside == "documents.xml";
    }
    std::string bytes, why;
    const bool hasVersion = zip->Read(root + "bcf.version", &bytes, &why);
    if (hasVersion) {
        if (const auto document = BcfXmlDocument::Parse(bytes, &why))
            archive->versionId = BcfXmlAttribute(document->Root(), "VersionId");
    }
    if (folders.empty() && !hasVersion) {
        *error = "not a BCF file: a zip archive without BCF topics or bcf.version";
        return false;
    }
    archive->version = archive->versionId.rfind("3.", 0) == 0 ? BcfVersion::k30 : BcfVersion::k21;
    for (const std::string& folder : folders) {
        BcfTopic topic;
        if (TopicReader(*zip, folder, problems).Read(&topic))
            archive->topics.push_back(std::move(topic));
    }
    // In the writer's order where it gave one, the topics without after those with.
    std::stable_sort(archive->topics.begin(), archive->topics.end(),
                     [](const BcfTopic& a, const BcfTopic& b) {
                         return a.index.value_or(HUGE_VAL) < b.index.value_or(HUGE_VAL);
                     });
    return true;
}
