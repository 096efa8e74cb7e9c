#include "bcf/BcfWrite.h"

#include "bcf/BcfXml.h"
#include "bcf/BcfZip.h"

#include <set>

namespace {

bool Is30(BcfVersion version) {
    return version == BcfVersion::k30;
}

std::string ViewpointFile(std::size_t i) {
    return i == 0 ? "viewpoint.bcfv" : "viewpoint" + std::to_string(i + 1) + ".bcfv";
}

std::string SnapshotFile(std::size_t i) {
    return i == 0 ? "snapshot.png" : "snapshot" + std::to_string(i + 1) + ".png";
}

void WriteComment(BcfXmlWriter& xml, const BcfComment& comment) {
    xml.Open("Comment");
    xml.Attribute("Guid", comment.guid);
    xml.Text("Date", comment.date);
    xml.Text("Author", comment.author);
    xml.Text("Comment", comment.text);
    if (!comment.viewpointGuid.empty()) {
        xml.Open("Viewpoint");
        xml.Attribute("Guid", comment.viewpointGuid);
        xml.Close();
    }
    xml.Close();
}

void WriteViewpointReference(BcfXmlWriter& xml, const BcfViewpoint& viewpoint, std::size_t i,
                             BcfVersion version) {
    xml.Open(Is30(version) ? "ViewPoint" : "Viewpoints");
    xml.Attribute("Guid", viewpoint.guid);
    xml.Text("Viewpoint", ViewpointFile(i));
    if (!viewpoint.snapshot.empty())
        xml.Text("Snapshot", SnapshotFile(i));
    xml.Number("Index", static_cast<double>(i));
    xml.Close();
}

void WriteComponent(BcfXmlWriter& xml, const BcfComponent& component) {
    xml.Open("Component");
    if (!component.ifcGuid.empty())
        xml.Attribute("IfcGuid", component.ifcGuid);
    if (!component.originatingSystem.empty())
        xml.Text("OriginatingSystem", component.originatingSystem);
    if (!component.authoringToolId.empty())
        xml.Text("AuthoringToolId", component.authoringToolId);
    xml.Close();
}

// The selection, and every component shown: a viewpoint hides nothing.
void WriteComponents(BcfXmlWriter& xml, const BcfViewpoint& viewpoint) {
    xml.Open("Components");
    if (!viewpoint.selection.empty()) {
        xml.Open("Selection");
        for (const BcfComponent& component : viewpoint.selection)
            WriteComponent(xml, component);
        xml.Close();
    }
    xml.Open("Visibility");
    xml.Attribute("DefaultVisibility", "true");
    xml.Close();
    xml.Close();
}

void WriteCamera(BcfXmlWriter& xml, const BcfCamera& camera, BcfVersion version) {
    xml.Open(camera.perspective ? "PerspectiveCamera" : "OrthogonalCamera");
    xml.Triple("CameraViewPoint", camera.position);
    xml.Triple("CameraDirection", camera.direction);
    xml.Triple("CameraUpVector", camera.up);
    if (camera.perspective)
        xml.Number("FieldOfView", camera.fieldOfView);
    else
        xml.Number("ViewToWorldScale", camera.viewToWorldScale);
    if (Is30(version))
        xml.Number("AspectRatio", camera.aspect.value_or(1.0));
    xml.Close();
}

// The document's bytes; empty only where memory ran out, as a document is never empty.
std::string Finished(BcfXmlWriter& xml) {
    std::string bytes;
    return xml.Finish(&bytes) ? bytes : std::string();
}

std::string VersionXml(BcfVersion version) {
    BcfXmlWriter xml;
    xml.Open("Version");
    xml.Attribute("VersionId", Is30(version) ? "3.0" : "2.1");
    if (!Is30(version))
        xml.Text("DetailedVersion", "2.1");
    xml.Close();
    return Finished(xml);
}

// The values a 3.0 topic may take are those the extensions list.
std::string ExtensionsXml(const BcfArchive& archive) {
    std::set<std::string> types, statuses, users;
    for (const BcfTopic& topic : archive.topics) {
        types.insert(topic.type);
        statuses.insert(topic.status);
        users.insert(topic.author);
        for (const BcfComment& comment : topic.comments)
            users.insert(comment.author);
    }
    BcfXmlWriter xml;
    xml.Open("Extensions");
    const std::pair<const char*, const std::set<std::string>*> lists[] = {
        {"TopicTypes", &types}, {"TopicStatuses", &statuses}, {"Users", &users}};
    for (const auto& [list, values] : lists) {
        const std::string name(list);
        xml.Open(list);
        const std::string item =
            name == "TopicStatuses" ? "TopicStatus" : name.substr(0, name.size() - 1);
        for (const std::string& value : *values)
            xml.Text(item.c_str(), value);
        xml.Close();
    }
    xml.Close();
    return Finished(xml);
}

} // namespace

std::string BcfMarkupXml(const BcfTopic& topic, BcfVersion version) {
    BcfXmlWriter xml;
    xml.Open("Markup");
    xml.Open("Topic");
    xml.Attribute("Guid", topic.guid);
    xml.Attribute("TopicType", topic.type);
    xml.Attribute("TopicStatus", topic.status);
    xml.Text("Title", topic.title);
    if (topic.index)
        xml.Number("Index", *topic.index);
    xml.Text("CreationDate", topic.date);
    xml.Text("CreationAuthor", topic.author);
    if (!topic.description.empty())
        xml.Text("Description", topic.description);
    if (Is30(version)) {
        if (!topic.comments.empty()) {
            xml.Open("Comments");
            for (const BcfComment& comment : topic.comments)
                WriteComment(xml, comment);
            xml.Close();
        }
        if (!topic.viewpoints.empty()) {
            xml.Open("Viewpoints");
            for (std::size_t i = 0; i < topic.viewpoints.size(); ++i)
                WriteViewpointReference(xml, topic.viewpoints[i], i, version);
            xml.Close();
        }
        xml.Close();
    } else {
        xml.Close();
        for (const BcfComment& comment : topic.comments)
            WriteComment(xml, comment);
        for (std::size_t i = 0; i < topic.viewpoints.size(); ++i)
            WriteViewpointReference(xml, topic.viewpoints[i], i, version);
    }
    xml.Close();
    return Finished(xml);
}

std::string BcfViewpointXml(const BcfViewpoint& viewpoint, BcfVersion version) {
    BcfXmlWriter xml;
    xml.Open("VisualizationInfo");
    xml.Attribute("Guid", viewpoint.guid);
    WriteComponents(xml, viewpoint);
    if (viewpoint.camera)
        WriteCamera(xml, *viewpoint.camera, version);
    if (!viewpoint.lines.empty()) {
        xml.Open("Lines");
        for (const BcfLine& line : viewpoint.lines) {
            xml.Open("Line");
            xml.Triple("StartPoint", line.start);
            xml.Triple("EndPoint", line.end);
            xml.Close();
        }
        xml.Close();
    }
    if (!viewpoint.clipPlanes.empty()) {
        xml.Open("ClippingPlanes");
        for (const BcfClipPlane& plane : viewpoint.clipPlanes) {
            xml.Open("ClippingPlane");
            xml.Triple("Location", plane.location);
            xml.Triple("Direction", plane.direction);
            xml.Close();
        }
        xml.Close();
    }
    xml.Close();
    return Finished(xml);
}

namespace {

// Adds an XML document, refusing one that could not be made.
bool AddXml(BcfZipWriter& zip, const std::string& name, std::string xml, std::string* error) {
    if (xml.empty()) {
        *error = name + ": out of memory";
        return false;
    }
    return zip.Add(name, std::move(xml));
}

} // namespace

bool WriteBcfArchive(const BcfArchive& archive, const std::string& path, std::time_t time,
                     std::string* error) {
    BcfZipWriter zip(path, time);
    bool ok = AddXml(zip, "bcf.version", VersionXml(archive.version), error);
    if (Is30(archive.version))
        ok = ok && AddXml(zip, "extensions.xml", ExtensionsXml(archive), error);
    for (const BcfTopic& topic : archive.topics) {
        const std::string folder = topic.guid + "/";
        ok = ok && AddXml(zip, folder + "markup.bcf", BcfMarkupXml(topic, archive.version), error);
        for (std::size_t i = 0; ok && i < topic.viewpoints.size(); ++i) {
            const BcfViewpoint& viewpoint = topic.viewpoints[i];
            ok = AddXml(zip, folder + ViewpointFile(i), BcfViewpointXml(viewpoint, archive.version),
                        error);
            if (ok && !viewpoint.snapshot.empty())
                ok = zip.Add(folder + SnapshotFile(i), viewpoint.snapshot);
        }
    }
    if (ok && zip.Close())
        return true;
    if (error->empty())
        *error = zip.Error();
    return false;
}
