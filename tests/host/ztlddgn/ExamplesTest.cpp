// The sample plant's design files in examples/plant are the output of the plant's
// generator; the end-to-end cases read them.
#include "support/DgnTestModels.h"

#include "tools/ZtTestPlantModels.h"

#include <fstream>
#include <iterator>

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

} // namespace
