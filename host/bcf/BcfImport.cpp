#include "bcf/BcfImport.h"

#include "report/ReportScene.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>

namespace {

// The field of view given to an orthogonal camera and to a topic without a camera.
constexpr double kStandInFieldOfView = 45;
// How nearly a clip plane must face the line of sight to be a near or far plane.
constexpr double kFacing = 0.9999;

using Vec = BcfVector;

Vec Add(const Vec& a, const Vec& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
Vec Sub(const Vec& a, const Vec& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
Vec Times(const Vec& a, double f) {
    return {a[0] * f, a[1] * f, a[2] * f};
}
double Dot(const Vec& a, const Vec& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
double Length(const Vec& a) {
    return std::sqrt(Dot(a, a));
}

Vec Centre(const ZtLBox3f& box) {
    return {(box.GetMin().x + box.GetMax().x) / 2, (box.GetMin().y + box.GetMax().y) / 2,
            (box.GetMin().z + box.GetMax().z) / 2};
}

// A camera in scene units: the eye, the target, the field of view and the distances of
// the near and far planes (0 for none).
struct SceneCamera {
    Vec eye{}, target{};
    double fieldOfView = kStandInFieldOfView;
    double nearDistance = 0, farDistance = 0;
};

std::string FileName(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

class TagWriter {
public:
    TagWriter(const BcfArchive& archive, const ReportScene& scene, double uorsPerMaster,
              std::uint64_t firstTagId)
        : archive_(archive), scene_(scene), metres_(scene.metresPerUnit), uors_(uorsPerMaster) {
        out_.nextTagId = firstTagId;
    }

    BcfTagFile Write() {
        for (const BcfTopic& topic : archive_.topics)
            WriteTopic(topic);
        if (archive_.hasDocuments)
            Warn("the archive's documents are left out: a tag holds none");
        return std::move(out_);
    }

private:
    void Warn(const std::string& what) { out_.warnings.push_back(what); }

    void WriteTopic(const BcfTopic& topic) {
        const std::string name = "topic '" + topic.title + "'";
        const BcfViewpoint* viewpoint = nullptr;
        for (const BcfViewpoint& candidate : topic.viewpoints)
            if (candidate.camera) {
                viewpoint = &candidate;
                break;
            }
        if (topic.viewpoints.size() > 1)
            Warn(name + " has " + std::to_string(topic.viewpoints.size()) +
                 " viewpoints: its view takes the first with a camera");
        const std::pair<std::size_t, const char*> dropped[] = {
            {topic.documentReferences, "document references"},
            {topic.relatedTopics, "related topics"},
            {topic.referenceLinks, "reference links"}};
        for (const auto& [count, what] : dropped)
            if (count)
                Warn(name + ": its " + std::to_string(count) + " " + what +
                     " are left out: a tag holds none");
        const SceneCamera camera = viewpoint ? CameraOf(*viewpoint, name) : WholeScene(name);
        const Vec point = viewpoint ? PointOf(*viewpoint, camera) : camera.target;
        WriteCamera(camera);
        std::string first = Trimmed(topic.description);
        const std::string title = Trimmed(topic.title);
        if (first.empty())
            first = title;
        else if (!title.empty() && first.rfind(title, 0) != 0)
            first = title + "\n" + first;
        if (first.empty())
            first = "BCF topic " + topic.guid;
        WriteTag(point, first);
        for (const BcfComment& comment : topic.comments) {
            const std::string text = Trimmed(comment.text);
            if (text.empty() || text == first)
                continue;
            WriteTag(point, comment.author.empty() ? text : comment.author + ": " + text);
        }
    }

    SceneCamera CameraOf(const BcfViewpoint& viewpoint, const std::string& name) {
        const BcfCamera& bcf = *viewpoint.camera;
        SceneCamera camera;
        const Vec position = Times(bcf.position, 1 / metres_);
        Vec direction = Times(bcf.direction, 1 / metres_);
        if (Length(direction) == 0 || !std::isfinite(Length(direction))) {
            Warn(name + ": its camera looks nowhere; it is made to look along -Z");
            direction = {0, 0, -1 / metres_};
        }
        if (bcf.perspective) {
            camera.eye = position;
            camera.target = Add(position, direction);
            camera.fieldOfView = bcf.fieldOfView;
        } else {
            // As far back as a perspective camera must stand to see the same height.
            const Vec unit = Times(direction, 1 / Length(direction));
            const double height = std::abs(bcf.viewToWorldScale) / metres_;
            const double back =
                height / 2 / std::tan(kStandInFieldOfView / 2 * std::numbers::pi / 180);
            camera.target = position;
            camera.eye = Sub(position, Times(unit, back > 0 ? back : 1));
            Warn(name + ": its orthogonal camera becomes a perspective one that sees the "
                        "same height at its position");
        }
        const Vec unit =
            Times(Sub(camera.target, camera.eye), 1 / Length(Sub(camera.target, camera.eye)));
        std::size_t across = 0;
        for (const BcfClipPlane& plane : viewpoint.clipPlanes) {
            const double length = Length(plane.direction);
            const double facing = length > 0 ? Dot(plane.direction, unit) / length : 0;
            const double distance = Dot(Sub(Times(plane.location, 1 / metres_), camera.eye), unit);
            if (facing <= -kFacing && distance > 0)
                camera.nearDistance = distance;
            else if (facing >= kFacing && distance > 0)
                camera.farDistance = distance;
            else
                ++across;
        }
        if (across)
            Warn(name + ": " + std::to_string(across) +
                 " clipping planes left out: a tag's view clips only across its line of sight");
        return camera;
    }

    SceneCamera WholeScene(const std::string& name) {
        Warn(name + " has no camera: its view looks at the whole scene");
        ZtLBox3f extent;
        for (const ReportModel& model : scene_.models)
            if (!model.extent.IsEmpty()) {
                extent.Extend(model.extent.GetMin());
                extent.Extend(model.extent.GetMax());
            }
        SceneCamera camera;
        if (!extent.IsEmpty())
            camera.target = Centre(extent);
        const double size =
            extent.IsEmpty()
                ? 1
                : std::max(1e-9,
                           Length(Sub({extent.GetMax().x, extent.GetMax().y, extent.GetMax().z},
                                      {extent.GetMin().x, extent.GetMin().y, extent.GetMin().z})));
        camera.eye = Add(camera.target, Times({1, -1, 1}, size));
        return camera;
    }

    Vec PointOf(const BcfViewpoint& viewpoint, const SceneCamera& camera) {
        for (const BcfComponent& component : viewpoint.selection) {
            if (component.authoringToolId.empty())
                continue;
            if (const std::optional<std::size_t> element = ElementOf(component))
                return PointOn(viewpoint, scene_.elements[*element].box, camera.eye);
        }
        if (const std::optional<std::size_t> element = Sighted(camera))
            return Centre(scene_.elements[*element].box);
        return camera.target;
    }

    // The end of a line of the viewpoint that ends on the element's box, where the export
    // put the tag's own point; else a point on the box's near side.
    Vec PointOn(const BcfViewpoint& viewpoint, const ZtLBox3f& box, const Vec& eye) const {
        const double slack = 1 / uors_;
        for (const BcfLine& line : viewpoint.lines) {
            const Vec end = Times(line.end, 1 / metres_);
            if (end[0] >= box.GetMin().x - slack && end[0] <= box.GetMax().x + slack &&
                end[1] >= box.GetMin().y - slack && end[1] <= box.GetMax().y + slack &&
                end[2] >= box.GetMin().z - slack && end[2] <= box.GetMax().z + slack)
                return end;
        }
        return FrontOf(box, eye);
    }

    // Where the line from the eye to the box's centre enters the box (its centre for an eye
    // inside it): the tag export picks from the tag's point away from the eye, so a point
    // on the element's near side finds the element rather than what lies behind it.
    static Vec FrontOf(const ZtLBox3f& box, const Vec& eye) {
        const Vec centre = Centre(box);
        const Vec direction = Sub(centre, eye);
        const Vec low{box.GetMin().x, box.GetMin().y, box.GetMin().z};
        const Vec high{box.GetMax().x, box.GetMax().y, box.GetMax().z};
        double enter = 0;
        for (std::size_t a = 0; a < 3; ++a)
            if (direction[a] != 0) {
                const double t0 = (low[a] - eye[a]) / direction[a];
                const double t1 = (high[a] - eye[a]) / direction[a];
                enter = std::max(enter, std::min(t0, t1));
            }
        return Add(eye, Times(direction, std::min(enter, 1.0)));
    }

    // The element of a DMRS value: the first in the scene's order, of the model file
    // named where one is.
    std::optional<std::size_t> ElementOf(const BcfComponent& component) {
        if (!byDmrs_) {
            byDmrs_.emplace();
            for (std::size_t m = 0; scene_.source && m < scene_.models.size(); ++m) {
                const ReportModel& model = scene_.models[m];
                const std::string file = FileName(model.file);
                for (std::size_t i = model.firstElement; i < model.firstElement + model.elements;
                     ++i) {
                    const std::string dmrs = scene_.source->Facts(i).dmrs;
                    if (dmrs.empty())
                        continue;
                    byDmrs_->emplace(std::make_pair(std::string(), dmrs), i);
                    byDmrs_->emplace(std::make_pair(file, dmrs), i);
                }
            }
        }
        const auto found = byDmrs_->find(std::make_pair(
            FileName(Trimmed(component.originatingSystem)), Trimmed(component.authoringToolId)));
        if (found == byDmrs_->end())
            return std::nullopt;
        return found->second;
    }

    // The element whose box the line of sight enters first, the eye outside it.
    std::optional<std::size_t> Sighted(const SceneCamera& camera) const {
        const Vec direction = Sub(camera.target, camera.eye);
        std::optional<std::size_t> best;
        double nearest = HUGE_VAL;
        for (std::size_t i = 0; i < scene_.elements.size(); ++i) {
            const ZtLBox3f& box = scene_.elements[i].box;
            if (box.IsEmpty() || scene_.elements[i].components)
                continue;
            const Vec low{box.GetMin().x, box.GetMin().y, box.GetMin().z};
            const Vec high{box.GetMax().x, box.GetMax().y, box.GetMax().z};
            double enter = 0, leave = HUGE_VAL;
            bool misses = false;
            for (std::size_t a = 0; a < 3 && !misses; ++a) {
                if (direction[a] == 0) {
                    misses = camera.eye[a] < low[a] || camera.eye[a] > high[a];
                    continue;
                }
                double t0 = (low[a] - camera.eye[a]) / direction[a];
                double t1 = (high[a] - camera.eye[a]) / direction[a];
                if (t0 > t1)
                    std::swap(t0, t1);
                enter = std::max(enter, t0);
                leave = std::min(leave, t1);
                misses = enter > leave;
            }
            if (!misses && enter > 0 && enter < nearest) {
                nearest = enter;
                best = i;
            }
        }
        return best;
    }

    std::string Uors(const Vec& v) const {
        return std::to_string(Uor(v[0])) + " " + std::to_string(Uor(v[1])) + " " +
               std::to_string(Uor(v[2]));
    }

    long long Uor(double value) const {
        const double uors = value * uors_;
        constexpr double kLimit = 9.0e18;
        return std::isfinite(uors) ? std::llround(std::clamp(uors, -kLimit, kLimit)) : 0;
    }

    // Every key, so that the tag import begins a view here whatever came before.
    void WriteCamera(const SceneCamera& camera) {
        std::string& out = out_.text;
        out += "target{" + Uors(camera.target) + "}\n";
        out += "clip_far{" + std::to_string(Uor(camera.farDistance)) + "}\n";
        out += "clip_near{" + std::to_string(Uor(camera.nearDistance)) + "}\n";
        const double degrees = std::isfinite(camera.fieldOfView) ? camera.fieldOfView : 45;
        out += "persp_ang{" + std::to_string(std::lround(std::clamp(degrees, 1.0, 179.0))) + "}\n";
        out += "eye{" + Uors(camera.eye) + "}\n";
    }

    void WriteTag(const Vec& point, std::string body) {
        body.erase(std::remove(body.begin(), body.end(), '\r'), body.end());
        // The tag format reads a brace among a text's last two characters as the end of
        // the block; a space after it keeps the text whole.
        if (body.find_first_of("{}", body.size() < 2 ? 0 : body.size() - 2) != std::string::npos)
            body += ' ';
        std::size_t characters = 0;
        for (const char c : body)
            characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        out_.text += "tag{" + std::to_string(out_.nextTagId++) + " 1 0 0.000000 " + Uors(point) +
                     "\ntext{" + std::to_string(characters) + "\n" + body + "}}\n";
        ++out_.tags;
    }

    const BcfArchive& archive_;
    const ReportScene& scene_;
    double metres_, uors_;
    // By model file (empty: any) and DMRS value, made when a topic first asks.
    std::optional<std::map<std::pair<std::string, std::string>, std::size_t>> byDmrs_;
    BcfTagFile out_;
};

} // namespace

BcfTagFile BcfTagFileOfArchive(const BcfArchive& archive, const ReportScene& scene,
                               double uorsPerMaster, std::uint64_t firstTagId) {
    return TagWriter(archive, scene, uorsPerMaster, firstTagId).Write();
}
