#include "report/ModelElementSource.h"
#include "support/DgnTestModels.h"
#include "ztlddgn/ZtDgnAttributeBuilder.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnGeometry.h"

#include <gtest/gtest.h>

namespace {

ZtTestDgnSymbology Linked(std::vector<std::uint16_t> linkage) {
    ZtTestDgnSymbology s;
    s.linkages = {std::move(linkage)};
    return s;
}

std::unique_ptr<ZtDgnModel> LoadLines(DgnTestFolder& folder, const std::string& name,
                                      const std::vector<ZtTestDgnSymbology>& lines) {
    ZtTestDgnWriter writer(3, {});
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto y = static_cast<std::int32_t>(1000 * i);
        writer.Line(lines[i], {0, y, 0}, {2000, y, 0});
    }
    writer.EndOfDesign();
    return folder.Load(writer.Bytes(), nullptr, name);
}

} // namespace

// The second model's elements are numbered on from the first's, and each is described
// from its own model: its DMRS value, and the attributes its model's project database gave
// it, in the database's order. Past the last element there is nothing.
TEST(ModelElementSource, NumbersElementsOnAndDescribesEachFromItsOwnModel) {
    DgnTestFolder folder;
    const auto first = LoadLines(folder, "a.dgn", {ZtTestDgnSymbology()});
    const auto second = LoadLines(
        folder, "b.dgn", {Linked(ZtTestDmrsLinkage(12, 101)), Linked(ZtTestDmrsLinkage(12, 102))});
    ASSERT_TRUE(first && second);
    ZtDgnAttributeBuilder builder(*second);
    std::string why;
    ASSERT_TRUE(builder.AddRow(12, 101, "tag_number", "V-101", &why)) << why;
    ASSERT_TRUE(builder.AddRow(12, 101, "type", "globe", &why)) << why;
    second->AttachAttributes(builder.Finish("plant.db"));

    ModelElementSource source({first.get(), second.get()});
    const ReportElementFacts plain = source.Facts(0);
    EXPECT_TRUE(plain.dmrs.empty());
    EXPECT_TRUE(plain.attributes.empty());

    const ReportElementFacts valve = source.Facts(1);
    EXPECT_EQ(valve.index, plain.index); // the first element of a file laid out alike
    EXPECT_EQ(valve.dmrs, "0 12 101 0");
    EXPECT_EQ(valve.attributes,
              (std::vector<ReportAttribute>{{"tag_number", "V-101"}, {"type", "globe"}}));

    const ReportElementFacts unmatched = source.Facts(2);
    EXPECT_EQ(unmatched.index, valve.index + 1);
    EXPECT_EQ(unmatched.dmrs, "0 12 102 0");
    EXPECT_TRUE(unmatched.attributes.empty());

    EXPECT_EQ(source.Facts(3).index, -1);
    ZtDgnGeometry geometry;
    EXPECT_FALSE(source.Geometry(3, &geometry));
}

// Geometry is read again from the element's file, in the model's master units.
TEST(ModelElementSource, ReadsAnElementsGeometryAgainInMasterUnits) {
    DgnTestFolder folder;
    const auto first = LoadLines(folder, "a.dgn", {ZtTestDgnSymbology()});
    const auto second = LoadLines(folder, "b.dgn", {ZtTestDgnSymbology(), ZtTestDgnSymbology()});
    ASSERT_TRUE(first && second);
    ModelElementSource source({first.get(), second.get()});
    ZtDgnGeometry geometry;
    ASSERT_TRUE(source.Geometry(2, &geometry));
    ASSERT_EQ(geometry.polylines.size(), 1u);
    const auto& points = geometry.polylines[0].points;
    ASSERT_EQ(points.size(), 2u);
    EXPECT_NEAR(points[0].y, 1.0, 1e-9);
    EXPECT_NEAR(points[1].x, 2.0, 1e-9);
}
