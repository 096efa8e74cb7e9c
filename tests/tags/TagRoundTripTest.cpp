// Every tag file of the fixtures and the sample review, imported, exported and imported
// again, gives the same tags: the same comments, and the same viewpoints and positions up
// to what the format itself loses, each loss checked at its own bound below.
#include "TagTestSupport.h"

#include "plugin/ZtOdPdsStatus.h"
#include "tags/ZtOdPdsTagImportPlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace {

// One tag as the document holds it, with its view's viewpoint and clip distances.
struct FlatTag {
    std::uint64_t id;
    std::wstring body;
    ZtLPos3f pos3d;
    ZtLPos2f pos2dA, pos2dB;
    ZtLPos3f eye;
    ZtLVec3f viewDir;
    double heightField;
    double clipNear = -1, clipFar = -1;
};

std::vector<FlatTag> Flatten(const ZtOpState& state, std::size_t* views) {
    std::vector<FlatTag> out;
    const ZtOpFolderItem* root = ZtOpSavedViewsElement::Get(&state)->Get();
    *views = root->GetNumChildren();
    for (std::size_t v = 0; v < root->GetNumChildren(); ++v) {
        const auto* view = static_cast<const ZtOpView*>(root->GetChild(v));
        const ZtNvCamera& camera = view->AnonView().GetViewPoint().GetCamera();
        FlatTag base{};
        base.eye = camera.GetPosition();
        base.viewDir = camera.ViewDir();
        base.heightField = camera.GetHeightField();
        const ZtOaClipPlaneSet& planes = view->AnonView().GetClipPlaneSet();
        for (int i = 0; i < planes.Size(); ++i) {
            const ZtOaClipPlane* plane = planes.Get(i);
            if (!plane->IsEnabled())
                continue;
            const ZtLPlane3f& p = plane->GetPlane3f();
            const double distance = std::fabs(p.GetNormal().Dot(base.eye) - p.GetDistance());
            (plane->GetNormal().Dot(base.viewDir) < 0 ? base.clipFar : base.clipNear) = distance;
        }
        for (std::size_t r = 0; r < view->GetRedlines().Size(); ++r) {
            const auto* tag = static_cast<const ZtOpRedlineTag*>(view->GetRedlines()[r]);
            FlatTag flat = base;
            flat.id = tag->GetCommentId();
            flat.pos3d = tag->GetPos3d();
            flat.pos2dA = tag->GetPos2dA();
            flat.pos2dB = tag->GetPos2dB();
            for (std::size_t c = 0; c < view->GetComments().Size(); ++c)
                if (view->GetComments()[c]->GetId() == flat.id)
                    flat.body = view->GetComments()[c]->GetBody().GetString();
            out.push_back(flat);
        }
    }
    return out;
}

int Import(TagDocument& doc, const std::wstring& path) {
    ZtOdPdsTagImportPlugin import;
    const ZtUWideString name(path.c_str());
    return import.IExport(0, &doc.state, nullptr, &name);
}

std::vector<std::string> TagFiles() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(ZT_TEST_DIR "/fixtures"))
        if (entry.path().extension() == ".tag")
            files.push_back(entry.path().string());
    const std::string sample = ZT_SOURCE_DIR "/examples/plant/plant.tag";
    if (std::filesystem::exists(sample))
        files.push_back(sample);
    std::sort(files.begin(), files.end());
    return files;
}

TEST(TagRoundTrip, ImportExportImportKeepsTagsUpToTheFormatsLosses) {
    const std::vector<std::string> files = TagFiles();
    ASSERT_FALSE(files.empty());
    for (const double factor : {1000.0, 80000.0}) {
        for (const std::string& file : files) {
            const std::string what = file + " at " + std::to_string(factor);
            TagDocument first(factor);
            ASSERT_EQ(Import(first, ZtTestWide(file)), kZtOdPdsOk) << what;
            ZtOdPdsTagExportPlugin plugin;
            ASSERT_EQ(first.Export(plugin, nullptr), kZtOdPdsOk) << what;
            TagDocument second(factor);
            ASSERT_EQ(Import(second, first.dir.WideFile("out.tag")), kZtOdPdsOk) << what;

            std::size_t viewsBefore = 0, viewsAfter = 0;
            const std::vector<FlatTag> before = Flatten(first.state, &viewsBefore);
            const std::vector<FlatTag> after = Flatten(second.state, &viewsAfter);
            ASSERT_EQ(after.size(), before.size()) << what;
            // Views whose viewpoints are alike in whole UORs write no key between them and
            // so read back as one view.
            EXPECT_LE(viewsAfter, viewsBefore) << what;

            // Every length is cut towards zero once: less than one UOR.
            const double uor = 1.0 / factor;
            double nearInForce = -1, farInForce = -1;
            for (std::size_t i = 0; i < before.size(); ++i) {
                const FlatTag& a = before[i];
                const FlatTag& b = after[i];
                const std::string at = what + ", tag " + std::to_string(a.id);
                EXPECT_EQ(b.id, a.id) << at;
                EXPECT_EQ(b.body, a.body) << at;
                ExpectNear(b.pos3d, a.pos3d, uor, at + " position");
                ExpectNear(b.eye, a.eye, uor, at + " eye");
                // The target is written one master unit ahead of the eye, not where the
                // view looked: the direction survives, cut to whole UORs at that distance.
                ExpectNear(b.viewDir, a.viewDir, 3 * uor, at + " direction");
                // The angle is cut to whole degrees: up to one degree less.
                EXPECT_LE(b.heightField, a.heightField + 1e-12) << at;
                EXPECT_GT(b.heightField, a.heightField - 0.017453292519943295 - 1e-12) << at;
                // A view without a plane of a kind writes nothing for it, and the reader
                // keeps the distance of the last view that had one.
                if (a.clipNear > 0)
                    nearInForce = a.clipNear;
                if (a.clipFar > 0)
                    farInForce = a.clipFar;
                EXPECT_NEAR(b.clipNear, nearInForce, uor) << at;
                EXPECT_NEAR(b.clipFar, farInForce, uor) << at;
                // Camera-space positions move as the camera and the points do: a point cut by
                // up to a UOR on each axis at depth d moves by up to 2 UOR / d on the image
                // plane at distance 1 (the second point is written in the tag's plane, at
                // the tag's depth), and the turn of the view adds its own share.
                const double depth = (a.pos3d - a.eye).Dot(a.viewDir);
                const double flat = 2 * uor / depth + 6 * uor;
                ExpectNear(b.pos2dA, a.pos2dA, flat, at);
                ExpectNear(b.pos2dB, a.pos2dB, flat, at);
            }
        }
    }
}

// The losses one at a time: 1001 UORs at 1000 a master unit come back as 1000, and -1001
// as -1000 (cut towards zero, never rounded); the target comes back one master unit
// ahead of the eye, wherever it was; 30 degrees come back as 29.
TEST(TagRoundTrip, EachLossOfTheFormat) {
    TagDocument doc(1000.0);
    const std::wstring in = ZtTestWide(doc.dir.File("in.tag"));
    ZtTestWriteBytes(doc.dir.File("in.tag"), "target{1001 0 0}\n"
                                             "persp_ang{30}\n"
                                             "eye{1001 5000 0}\n"
                                             "tag{7 1 0 0.000000 1001 -1001 0\n"
                                             "text{4\nDone}}\n");
    ASSERT_EQ(Import(doc, in), kZtOdPdsOk);
    ZtOdPdsTagExportPlugin plugin;
    std::string text;
    ASSERT_EQ(doc.Export(plugin, &text), kZtOdPdsOk);
    EXPECT_EQ(text, "file{0n{}}\n"
                    "target{1000 4000 0}\n"
                    "persp_ang{29}\n"
                    "eye{1000 5000 0}\n"
                    "tag{7 1 0 0.000000 1000 -1000 0\n"
                    "p{1000 -1000 0}\n"
                    "text{4\nDone}}\n");
}

} // namespace
