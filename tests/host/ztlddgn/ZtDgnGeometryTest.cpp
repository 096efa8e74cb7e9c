// Element geometry decoded from records, and read again from a loaded model's file by
// offset.
#include "ztlddgn/ZtDgnGeometry.h"
#include "support/DgnTestModels.h"
#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnGeometryReader.h"
#include "ztutil/ZtUSysString.h"

#include <cmath>
#include <filesystem>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

// The decoded geometry of element `index` as the writer wrote it.
ZtDgnGeometry Decode(const ZtTestDgnWriter& w, std::uint32_t index, int dimension) {
    const std::vector<std::uint8_t>& bytes = w.Bytes();
    const std::size_t at = w.Offset(index);
    ZtDgnGeometry geometry;
    EXPECT_TRUE(ZtDgnDecodeGeometry(bytes.data() + at, bytes.size() - at, dimension, &geometry));
    return geometry;
}

void ExpectNear(const ZtLVec3f& got, const ZtLVec3f& want, double tolerance = 1e-6) {
    EXPECT_NEAR(got.x, want.x, tolerance);
    EXPECT_NEAR(got.y, want.y, tolerance);
    EXPECT_NEAR(got.z, want.z, tolerance);
}

ZtLPos3f ArcPoint(const ZtDgnArc& arc, double t) {
    return arc.centre + arc.a * std::cos(t) + arc.b * std::sin(t);
}

TEST(ZtDgnGeometry, PointElementsGiveTheirVerticesIn2dAnd3d) {
    for (int dimension : {2, 3}) {
        ZtTestDgnWriter w(dimension, {});
        const double z = dimension == 3 ? 30 : 0;
        const std::uint32_t line = w.Line({}, {1, 2, 30}, {4, 5, 30});
        const std::uint32_t string = w.LineString({}, {{0, 0, 30}, {10, 0, 30}, {10, 10, 30}});
        const std::uint32_t shape = w.Shape({}, {{0, 0, 30}, {5, 0, 30}, {0, 5, 30}, {0, 0, 30}});
        SCOPED_TRACE(dimension);
        const ZtDgnGeometry a = Decode(w, line, dimension);
        ASSERT_EQ(a.polylines.size(), 1u);
        EXPECT_EQ(a.polylines[0].points, (std::vector<ZtLPos3f>{{1, 2, z}, {4, 5, z}}));
        EXPECT_FALSE(a.polylines[0].closed);
        EXPECT_EQ(Decode(w, string, dimension).polylines[0].points.size(), 3u);
        const ZtDgnGeometry c = Decode(w, shape, dimension);
        EXPECT_TRUE(c.polylines[0].closed);
        EXPECT_EQ(c.polylines[0].points[1], ZtLPos3f(5, 0, z));
    }
}

// A curve runs through its inner points, smoothly: from the third to the third from last.
TEST(ZtDgnGeometry, CurvePassesThroughItsInnerPoints) {
    ZtTestDgnWriter w(3, {});
    const std::vector<ZtTestDgnPoint> points = {{-20, 0, 0}, {-10, 0, 0}, {0, 0, 0}, {10, 10, 0},
                                                {20, 0, 0},  {30, 0, 0},  {40, 0, 0}};
    const ZtDgnGeometry g = Decode(w, w.Curve({}, points), 3);
    ASSERT_EQ(g.polylines.size(), 1u);
    const std::vector<ZtLPos3f>& run = g.polylines[0].points;
    EXPECT_EQ(run.front(), ZtLPos3f(0, 0, 0));
    EXPECT_EQ(run.back(), ZtLPos3f(20, 0, 0));
    EXPECT_GT(run.size(), 8u);
    EXPECT_NE(std::find(run.begin(), run.end(), ZtLPos3f(10, 10, 0)), run.end());
}

struct ArcCase {
    const char* what;
    int dimension;
    ZtTestDgnTurn turn;
    double start, sweep; // degrees; a full ellipse has no start
    bool ellipse;
};

// An ellipse or arc decodes to the points the writer's own rotation puts it through: the
// ends of its axes, its start and its end.
TEST(ZtDgnGeometry, ArcsAndEllipsesKeepAxesRotationAndSweep) {
    const ArcCase cases[] = {
        {"2D ellipse turned 30 degrees", 2, {30, {0, 0, 1}}, 0, 360, true},
        {"3D ellipse turned about x", 3, {90, {1, 0, 0}}, 0, 360, true},
        {"3D ellipse unturned (zero quaternion)", 3, {}, 0, 360, true},
        {"2D arc counter-clockwise", 2, {45, {0, 0, 1}}, 10, 120, false},
        {"3D arc clockwise about a slanted axis", 3, {60, {1, 1, 1}}, 200, -90, false},
    };
    for (const ArcCase& c : cases) {
        SCOPED_TRACE(c.what);
        ZtTestDgnWriter w(c.dimension, {});
        const ZtTestDgnPoint centre = {1000, 2000, c.dimension == 3 ? 300 : 0};
        const std::uint32_t index = c.ellipse ? w.Ellipse({}, centre, 50, 20, c.turn)
                                              : w.Arc({}, centre, 50, 20, c.turn, c.start, c.sweep);
        const ZtDgnGeometry g = Decode(w, index, c.dimension);
        ASSERT_EQ(g.arcs.size(), 1u);
        const ZtDgnArc& arc = g.arcs[0];
        ExpectNear(arc.centre, {1000, 2000, c.dimension == 3 ? 300.0 : 0.0});
        EXPECT_NEAR(arc.a.Length(), 50, 1e-6);
        EXPECT_NEAR(arc.b.Length(), 20, 1e-6);
        EXPECT_NEAR(arc.a.Dot(arc.b), 0, 1e-6);
        EXPECT_NEAR(arc.start, c.start * kPi / 180, 1e-9);
        EXPECT_NEAR(arc.sweep, c.sweep * kPi / 180, 1e-9);
        // The element's range, which the writer computed with its own rotation, just
        // holds every point of the arc.
        ZtLBox3f box;
        for (int i = 0; i <= 720; ++i)
            box.Extend(ArcPoint(arc, arc.start + arc.sweep * i / 720));
        const std::vector<std::uint8_t>& bytes = w.Bytes();
        const std::size_t at = w.Offset(index);
        for (int axis = 0; axis < c.dimension; ++axis) {
            const double low = ZtDgnRangeValue(bytes.data() + at + 4 + 4 * axis);
            const double high = ZtDgnRangeValue(bytes.data() + at + 16 + 4 * axis);
            EXPECT_NEAR(box.GetMin()[axis], low, 1.01) << axis;
            EXPECT_NEAR(box.GetMax()[axis], high, 1.01) << axis;
        }
    }
}

TEST(ZtDgnGeometry, ConeHasItsTwoEndCircles) {
    ZtTestDgnWriter w(3, {});
    const ZtDgnGeometry g =
        Decode(w, w.Cone({}, {90, {0, 1, 0}}, {0, 0, 0}, 30, {100, 0, 0}, 10), 3);
    ASSERT_EQ(g.cones.size(), 1u);
    const ZtDgnCone& cone = g.cones[0];
    ExpectNear(cone.base.centre, {0, 0, 0});
    ExpectNear(cone.top.centre, {100, 0, 0});
    EXPECT_NEAR(cone.base.a.Length(), 30, 1e-6);
    EXPECT_NEAR(cone.top.b.Length(), 10, 1e-6);
    // Turned a quarter about y, the circles stand across the cone's axis, along x.
    EXPECT_NEAR(cone.base.a.x, 0, 1e-6);
    EXPECT_NEAR(cone.base.b.x, 0, 1e-6);
    // A 2D file has no cones.
    ZtTestDgnWriter flat(2, {});
    EXPECT_TRUE(Decode(flat, flat.Cone({}, {}, {0, 0, 0}, 1, {0, 0, 5}, 1), 2).IsEmpty());
}

TEST(ZtDgnGeometry, TextKeepsItsCornerSizeDirectionAndCharacters) {
    for (int dimension : {2, 3}) {
        SCOPED_TRACE(dimension);
        ZtTestDgnWriter w(dimension, {});
        const ZtDgnGeometry g =
            Decode(w, w.Text({}, {600, 300, 90}, "P-101 \xC4", 120, {90, {0, 0, 1}}), dimension);
        ASSERT_EQ(g.texts.size(), 1u);
        const ZtDgnText& t = g.texts[0];
        ExpectNear(t.origin, {600, 300, dimension == 3 ? 90.0 : 0.0});
        ExpectNear(t.advance, {0, 120, 0}, 1e-3);
        ExpectNear(t.height, {-120, 0, 0}, 1e-3);
        EXPECT_EQ(t.text, "P-101 \u00C4");
    }
}

// Elements of 16-bit characters are marked FF FD; control characters never pass.
TEST(ZtDgnGeometry, WideAndControlCharacters) {
    ZtTestDgnWriter w(2, {});
    const std::uint32_t wide =
        w.Text({}, {0, 0, 0}, std::string("\xFF\xFD\xA9\x03\x41\x00", 6), 60);
    const std::uint32_t control = w.Text({}, {0, 0, 0}, "a\tb", 60);
    EXPECT_EQ(Decode(w, wide, 2).texts[0].text, "\u03A9A");
    EXPECT_EQ(Decode(w, control, 2).texts[0].text, "a\uFFFDb");
}

// A record cut anywhere short of what it says it holds decodes to nothing and false;
// so does one whose vertex count runs past its end.
TEST(ZtDgnGeometry, ShortRecordsAreRefused) {
    ZtTestDgnWriter w(3, {});
    const std::uint32_t elements[] = {
        w.Line({}, {0, 0, 0}, {1, 1, 1}),      w.LineString({}, {{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}),
        w.Arc({}, {0, 0, 0}, 5, 5, {}, 0, 90), w.Cone({}, {}, {0, 0, 0}, 1, {0, 0, 5}, 1),
        w.Text({}, {0, 0, 0}, "abc", 60),
    };
    w.Line({}, {0, 0, 0}, {1, 1, 1}); // so that each of the above has one after it
    const std::vector<std::uint8_t>& bytes = w.Bytes();
    for (std::uint32_t index : elements) {
        const std::size_t at = w.Offset(index);
        std::vector<std::uint8_t> record(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                                         bytes.begin() +
                                             static_cast<std::ptrdiff_t>(w.Offset(index + 1)));
        ZtDgnGeometry g;
        for (std::size_t cut = 0; cut < record.size(); ++cut) {
            EXPECT_FALSE(ZtDgnDecodeGeometry(record.data(), cut, 3, &g)) << index << " " << cut;
            EXPECT_TRUE(g.IsEmpty());
        }
        // The record's own length word shrunk: its fields no longer fit.
        std::vector<std::uint8_t> shrunk = record;
        ZtTestPutWord(shrunk, 2, 16);
        EXPECT_FALSE(ZtDgnDecodeGeometry(shrunk.data(), shrunk.size(), 3, &g)) << index;
    }
    std::vector<std::uint8_t> many(
        bytes.begin() + static_cast<std::ptrdiff_t>(w.Offset(elements[1])),
        bytes.begin() + static_cast<std::ptrdiff_t>(w.Offset(elements[2])));
    ZtTestPutWord(many, 36, 60000);
    ZtDgnGeometry g;
    EXPECT_FALSE(ZtDgnDecodeGeometry(many.data(), many.size(), 3, &g));
}

TEST(ZtDgnGeometry, TransformPlacesPointsAndTurnsVectors) {
    ZtTestDgnWriter w(3, {});
    ZtDgnGeometry g = Decode(w, w.Ellipse({}, {10, 0, 0}, 4, 2, {}), 3);
    ZtLMatrix3f turn;
    turn.SetValue(0, -1, 0, 1, 0, 0, 0, 0, 1);
    g.Transform(ZtLAffine3f(turn, {100, 0, 0}));
    ExpectNear(g.arcs[0].centre, {100, 10, 0});
    ExpectNear(g.arcs[0].a, {0, 4, 0});
    ExpectNear(g.arcs[0].b, {-2, 0, 0});
}

// The reader finds each loaded element again by its offset, and refuses one that the
// file no longer holds there.
TEST(ZtDgnGeometryReader, ReadsLoadedElementsAgainAndNoticesChanges) {
    ZtTestDgnWriter w(3, {});
    ZtTestDgnSymbology s;
    s.level = 5;
    w.LineString(s, {{0, 0, 0}, {100, 0, 0}, {100, 50, 0}});
    w.BeginCell(s);
    w.Shape(s, {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {0, 0, 0}});
    w.Arc(s, {5, 5, 0}, 3, 3, {}, 0, 180);
    w.EndGroup();
    w.Text(s, {0, 0, 0}, "TAG", 60);
    w.EndOfDesign();
    DgnTestFolder folder;
    const std::unique_ptr<ZtDgnModel> model = folder.Load(w.Bytes());
    ASSERT_TRUE(model);
    const std::string path = ZtUSysString::WideToPath(model->GetSourceFilename().Str());
    ZtDgnGeometryReader reader;
    std::string reason;
    ASSERT_TRUE(reader.Open(path, 3, &reason)) << reason;
    const std::size_t drawn[] = {1, 0, 1, 1, 1}; // pieces of each element; the cell none
    ASSERT_EQ(model->GetNumElements(), std::size(drawn));
    for (std::size_t slot = 0; slot < model->GetNumElements(); ++slot) {
        ZtDgnGeometry g;
        ASSERT_TRUE(reader.Read(model->GetElement(slot), &g)) << slot;
        EXPECT_EQ(g.polylines.size() + g.arcs.size() + g.texts.size(), drawn[slot]) << slot;
    }
    // In reverse, each read leaves the window it had.
    ZtDgnGeometry g;
    EXPECT_TRUE(reader.Read(model->GetElement(4), &g));
    EXPECT_TRUE(reader.Read(model->GetElement(0), &g));
    EXPECT_EQ(g.polylines[0].points.size(), 3u);

    // Another element stands at the first one's offset now, then the file is cut short.
    std::vector<std::uint8_t> changed = w.Bytes();
    changed[w.Offset(1) + 4] ^= 1;
    ZtTestWriteBytes(path, std::string(changed.begin(), changed.end()));
    ZtDgnGeometryReader again;
    ASSERT_TRUE(again.Open(path, 3, &reason));
    EXPECT_FALSE(again.Read(model->GetElement(0), &g));
    EXPECT_TRUE(g.IsEmpty());
    EXPECT_TRUE(again.Read(model->GetElement(1), &g));
    ZtTestWriteBytes(path, std::string(changed.begin(), changed.begin() + 1600));
    ZtDgnGeometryReader cut;
    ASSERT_TRUE(cut.Open(path, 3, &reason));
    EXPECT_FALSE(cut.Read(model->GetElement(0), &g));

    EXPECT_FALSE(ZtDgnGeometryReader().Read(model->GetElement(0), &g));
    EXPECT_FALSE(cut.Open(path + ".missing", 3, &reason));
    EXPECT_NE(reason.find("cannot open"), std::string::npos) << reason;
}

// The shared corpus, written by an independent program: each element's decoded vertices,
// in master units from the global origin, are those that program wrote.
TEST(ZtDgnGeometry, CorpusVerticesAreThoseTheWriterWasGiven) {
    const std::string corpus = ZT_SHARED_DIR "/data/dgn/";
    if (!std::filesystem::exists(corpus + "pipes3d.dgn"))
        GTEST_SKIP() << "no shared DGN corpus at " << corpus;
    struct Case {
        const char* file;
        std::uint32_t index; // the element's place in the file
        std::size_t vertex;  // of its polyline; a text gives its origin
        ZtLPos3f expected;   // in master units from the origin
    };
    const Case cases[] = {
        {"complex2d.dgn", 3, 0, {0, 0, 0}},
        {"complex2d.dgn", 3, 37, {9.25, 0.5, 0}},
        {"complex2d.dgn", 5, 1, {0.25, 5.5, 0}},
        {"pipes3d.dgn", 4, 2, {5, 5, 2.5}},
        {"pipes3d.dgn", 4, 3, {5, 5, 10}},
        {"pipes3d.dgn", 5, 2, {4, 14, 2}},
        {"pipes3d.dgn", 9, 0, {-0.75, 1.875, 3.6875}},
        {"pipes3d.dgn", 12, 1, {24, 2, 1}},
        {"pipes3d.dgn", 6, 0, {12, 22, 3.5}}, // a text's origin
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.file) + " element " + std::to_string(c.index));
        std::string reason;
        const std::unique_ptr<ZtDgnModel> model =
            ZtDgnReadModel(ZtTestWide(corpus + c.file).c_str(), nullptr, true, nullptr, &reason);
        ASSERT_TRUE(model) << reason;
        ZtDgnGeometryReader reader;
        ASSERT_TRUE(reader.Open(corpus + c.file, model->GetHeader().dimension, &reason));
        std::size_t slot = 0;
        while (slot < model->GetNumElements() && model->GetElement(slot).index != c.index)
            ++slot;
        ASSERT_LT(slot, model->GetNumElements());
        ZtDgnGeometry g;
        ASSERT_TRUE(reader.Read(model->GetElement(slot), &g));
        ASSERT_EQ(g.polylines.size() + g.texts.size(), 1u);
        const ZtLPos3f uors =
            g.texts.empty() ? g.polylines[0].points.at(c.vertex) : g.texts[0].origin;
        const ZtLPos3f at = (uors - model->GetHeader().globalOrigin) / model->GetUorsPerMaster();
        ExpectNear(at, c.expected, 1e-9);
    }
}

} // namespace
