// The sample plant's design files in examples/plant are the output of the plant's
// generator, and load as models.
#include "support/DgnTestModels.h"

#include "tools/ZtTestPlantModels.h"
#include "ztobject/ZtOaAttribute.h"

#include <fstream>
#include <iterator>
#include <set>

namespace {

TEST(Examples, SamplePlantFilesAreUpToDate) {
    for (const ZtTestPlantModel& model : ZtTestPlantModels()) {
        const std::string path = std::string(ZT_SOURCE_DIR) + "/examples/plant/" + model.fileName;
        std::ifstream in(path, std::ios::binary);
        ASSERT_TRUE(in) << path;
        const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in),
                                              std::istreambuf_iterator<char>()};
        EXPECT_EQ(bytes, model.writer.Bytes())
            << path << " differs from its generator: run zt_make_dgn_examples examples/plant";
    }
}

TEST(Examples, SamplePlantModelsLoadWithLinkagesOnEveryPiece) {
    struct Expected {
        const char* file;
        double factor;
        std::set<int> levels;
    };
    const Expected expected[] = {
        {"pipes.dgn", 80000, {10, 11, 12, 13}},
        {"equipment.dgn", 96000, {20, 21, 22}},
        {"steel.dgn", 1000, {30, 31, 32}},
    };
    ZtUNameDict names;
    for (const Expected& e : expected) {
        const std::string path = std::string(ZT_SOURCE_DIR) + "/examples/plant/" + e.file;
        std::string reason;
        auto model = ZtDgnReadModel(std::wstring(path.begin(), path.end()).c_str(), &names, true,
                                    nullptr, &reason);
        ASSERT_TRUE(model) << reason;
        EXPECT_EQ(model->GetUorsPerMaster(), e.factor);
        EXPECT_TRUE(model->GetWarnings().empty());
        std::set<int> levels;
        for (int i = 0; i < model->GetNumChildren(); ++i) {
            const ZtOaNode* node = model->GetChild(i);
            const auto slot = node->IsGroup()
                                  ? static_cast<const ZtDgnGroupNode*>(node)->GetSlot()
                                  : static_cast<const ZtDgnElementNode*>(node)->GetSlot();
            const int level = model->GetElement(slot).GetLevel();
            levels.insert(level);
            // Labels are the one kind of piece without a database row.
            EXPECT_EQ(node->FindAttribute("ZtDgnDMRSAttribute") != nullptr, level != 13)
                << e.file << " " << node->GetElementIndex();
        }
        EXPECT_EQ(levels, e.levels) << e.file;
    }
}

} // namespace
