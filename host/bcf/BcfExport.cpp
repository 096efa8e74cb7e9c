#include "bcf/BcfExport.h"

#include "bcf/BcfGuid.h"
#include "report/PicturePainter.h"
#include "report/ReportScene.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// BCF 2.1 allows only these fields of view; 3.0 any between 0 and 180 degrees.
constexpr double kMinFieldOfView21 = 45, kMaxFieldOfView21 = 60;

BcfVector Scaled(const ZtLVec3f& v, double factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

std::string FirstLine(const std::string& text) {
    std::string line = text.substr(0, text.find_first_of("\r\n"));
    const std::size_t end = line.find_last_not_of(" \t");
    return end == std::string::npos ? std::string() : line.substr(0, end + 1);
}

bool IsBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

// The tag format holds LF line ends; comments in the document hold CR LF.
std::string WithoutCarriageReturns(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

// The camera in metres. Its direction runs from the eye to the view's target, so that the
// target comes back on import: the focal distance, or one scene unit as the tag export
// has it without one.
BcfCamera CameraOf(const ReportView& view, double metres, BcfVersion version,
                   std::vector<std::string>* warnings) {
    const ZtNvCamera& camera = view.camera;
    BcfCamera out;
    out.position = Scaled(camera.GetPosition(), metres);
    out.direction = Scaled(camera.ViewDir(), view.focalDistance.value_or(1.0) * metres);
    out.up = Scaled(camera.GetUp(), 1.0);
    out.fieldOfView = camera.GetHeightField() * 180 / std::numbers::pi;
    out.aspect = camera.GetAspectRatio() > 0 ? camera.GetAspectRatio() : 1.0;
    if (version == BcfVersion::k21 &&
        (out.fieldOfView < kMinFieldOfView21 || out.fieldOfView > kMaxFieldOfView21)) {
        const double kept = std::clamp(out.fieldOfView, kMinFieldOfView21, kMaxFieldOfView21);
        warnings->push_back("view '" + view.name + "': BCF 2.1 takes a field of view from 45 to " +
                            "60 degrees, so its " + std::to_string(std::lround(out.fieldOfView)) +
                            " degrees are written as " + std::to_string(std::lround(kept)) +
                            " (--bcf-version 3.0 keeps them)");
        out.fieldOfView = kept;
    }
    return out;
}

// A plane keeps what lies on its normal's side; BCF's direction points to what is cut.
BcfClipPlane ClipPlaneOf(const ZtLPlane3f& plane, double metres) {
    const ZtLVec3f normal = plane.GetNormal();
    const ZtLPos3f point(normal.x * plane.GetDistance(), normal.y * plane.GetDistance(),
                         normal.z * plane.GetDistance());
    return {Scaled(point, metres), {-normal.x, -normal.y, -normal.z}};
}

} // namespace

std::string BcfDate(std::time_t time) {
    std::tm utc{};
    gmtime_r(&time, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

BcfArchive BcfArchiveOfScene(const ReportScene& scene, const BcfExportSettings& settings,
                             std::vector<std::string>* warnings) {
    BcfArchive archive;
    archive.version = settings.version;
    const std::string date = BcfDate(settings.time);
    for (const ReportView& view : scene.views) {
        if (view.tags.empty())
            continue;
        std::vector<std::string> cameraWarnings;
        const BcfCamera camera =
            CameraOf(view, scene.metresPerUnit, settings.version, &cameraWarnings);
        warnings->insert(warnings->end(), cameraWarnings.begin(), cameraWarnings.end());
        std::vector<BcfClipPlane> planes;
        for (const ZtLPlane3f& plane : view.clipPlanes)
            planes.push_back(ClipPlaneOf(plane, scene.metresPerUnit));
        const std::string snapshot = SavedViewPng(scene, view, settings.snapshotWidth);
        for (const ReportTag& tag : view.tags) {
            const std::string name = "ztodpds tag " + std::to_string(tag.id) + " in " + view.name;
            BcfTopic topic;
            topic.guid = BcfNamedGuid("topic " + name);
            const std::string text = WithoutCarriageReturns(tag.text);
            topic.title = FirstLine(text);
            if (topic.title.empty())
                topic.title = "Tag " + std::to_string(tag.id);
            if (!IsBlank(text))
                topic.description = text;
            topic.index = static_cast<double>(archive.topics.size());
            topic.date = date;
            topic.author = settings.author;
            BcfViewpoint viewpoint;
            viewpoint.guid = BcfNamedGuid("viewpoint " + name);
            viewpoint.camera = camera;
            viewpoint.clipPlanes = planes;
            if (tag.placed)
                viewpoint.lines.push_back(
                    {camera.position, Scaled(tag.position, scene.metresPerUnit)});
            if (!tag.dmrs.empty())
                viewpoint.selection.push_back({{}, tag.modelFile, tag.dmrs});
            viewpoint.snapshot = snapshot;
            if (!IsBlank(text))
                topic.comments.push_back(
                    {BcfNamedGuid("comment " + name), date, settings.author, text, viewpoint.guid});
            topic.viewpoints.push_back(std::move(viewpoint));
            archive.topics.push_back(std::move(topic));
        }
    }
    return archive;
}
