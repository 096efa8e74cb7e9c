#include "TagTestSupport.h"

#include "tags/ZtOdPdsTagRecord.h"
#include "ztutil/ZtUAutoCLocaleOverride.h"
#include "ztutil/ZtUSysFile.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A view from (0, 0, 10) looking down -Z, with one tag at the origin.
struct OneTag {
    OneTag() {
        view = doc.AddView({0, 0, 10}, {0, 0, 0});
        tag = TagDocument::AddTag(view, 42, {0, 0, 0}, L"body");
    }
    ZtOdPdsTagRecord Fill() {
        ZtOdPdsTagRecord record;
        record.Fill(nullptr, tag, view->GetComments()[0], view, kTagTestFactor);
        return record;
    }

    TagDocument doc{kTagTestFactor};
    ZtOpView* view;
    ZtOpRedlineTag* tag;
};

TEST(ZtOdPdsTagRecord, FocalDistanceSetsTheTarget) {
    OneTag one;
    one.view->AnonView().EditViewPoint()->SetFocalDistance(4.0);
    EXPECT_EQ(one.Fill().target, (ZtOdPdsUorVector{0, 0, 6000}));
}

TEST(ZtOdPdsTagRecord, CameraWithoutFrustumGivesTheTagsOwnPointAsSecond) {
    OneTag one;
    ZtNvCamera camera = one.view->AnonView().GetViewPoint().GetCamera();
    camera.SetHeightField(0.0);
    one.view->AnonView().EditViewPoint()->SetCamera(camera);
    one.tag = TagDocument::AddTag(one.view, 43, {1.5, -2.5, 0}, L"x");
    const ZtOdPdsTagRecord record = one.Fill();
    EXPECT_EQ(record.secondPoint, (ZtOdPdsUorVector{1500, -2500, 0}));
    EXPECT_EQ(record.perspAngle, 0);
}

// Which planes stand for clip distances: square to the view (within the tolerance),
// enabled, the later of a kind winning.
TEST(ZtOdPdsTagRecord, ClipDistancesFromSquarePlanes) {
    const double tilt = std::acos(1.0 - 0.5e-9); // |c| within the tolerance of 1
    struct Plane {
        ZtLVec3f normal;
        double distance;
        bool enabled;
    };
    struct Case {
        const char* what;
        std::vector<Plane> planes;
        std::int64_t nearUors, farUors;
    };
    const Case cases[] = {
        {"near and far", {{{0, 0, -1}, 2, true}, {{0, 0, 1}, 9, true}}, 2000, 9000},
        {"the later near wins", {{{0, 0, -1}, 2, true}, {{0, 0, -1}, 3, true}}, 3000, -1},
        {"a disabled plane counts not", {{{0, 0, 1}, 9, false}}, -1, -1},
        {"a slanted plane counts not", {{{0, 0.5, -1}, 2, true}}, -1, -1},
        {"all but square counts", {{{0, std::sin(tilt), -std::cos(tilt)}, 2, true}}, 1999, -1},
        {"a far plane at the eye", {{{0, 0, 1}, 0, true}}, -1, 0},
    };
    for (const Case& c : cases) {
        OneTag one;
        for (std::size_t i = 0; i < c.planes.size(); ++i) {
            const Plane& p = c.planes[i];
            TagDocument::AddPlane(one.view, static_cast<int>(i), p.normal, p.distance);
            one.view->AnonView()
                .EditClipPlaneSet()
                ->Edit(static_cast<int>(i))
                ->SetEnabled(p.enabled);
        }
        const ZtOdPdsTagRecord record = one.Fill();
        EXPECT_EQ(record.clipNear, c.nearUors) << c.what;
        EXPECT_EQ(record.clipFar, c.farUors) << c.what;
    }
}

// Write compares with the record before, and changes the text in the record itself.
TEST(ZtOdPdsTagRecord, WriteComparesWithThePreviousRecord) {
    ZtTestTempDir dir;
    ZtOdPdsTagRecord first;
    first.target = {1, 2, 3};
    first.eye = {4, 5, 6};
    first.perspAngle = 45;
    first.clipFar = 0;
    first.id = 0xFFFFFFFFFFFFFFFFull;
    first.text.SetString(L"a\r\nb\r\n");
    ZtOdPdsTagRecord second = first;
    second.clipFar = -1;
    second.clipNear = 5;
    second.id = 2;
    second.text.SetString(L"{}");
    {
        const ZtUAutoCLocaleOverride numbers(4);
        ZtUFile* file = ZtUSysFile::fopenW(dir.WideFile("r.tag").c_str(), ZtUSysFile::kAccessWrite,
                                           ZtUSysFile::kCreateAlways, ZtUSysFile::kTranslateText,
                                           ZtUSysFile::kShareReadWrite, 0, 384);
        ASSERT_NE(file, nullptr);
        first.Write(file, nullptr);
        second.Write(file, &first);
        ZtUSysFile::fclose(file);
    }
    EXPECT_STREQ(first.text.GetString(), L"a\nb\n");
    EXPECT_EQ(ZtTestReadBytes(dir.File("r.tag")), "target{1 2 3}\n"
                                                  "clip_far{0}\n"
                                                  "persp_ang{45}\n"
                                                  "eye{4 5 6}\n"
                                                  "tag{-1 1 0 0.000000 0 0 0\n"
                                                  "p{0 0 0}\n"
                                                  "text{4\na\nb\n}}\n"
                                                  "clip_near{5}\n"
                                                  "tag{2 1 0 0.000000 0 0 0\n"
                                                  "p{0 0 0}\n"
                                                  "text{2\n{}}}\n");
}

} // namespace
