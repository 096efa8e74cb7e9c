// The sample plant's database, examples/plant/plant.db, is made from plant.sql beside it,
// and gives attributes to every linked element of the sample's models.
#include "CollectRows.h"
#include "support/DgnTestModels.h"
#include "tools/ZtTestPlantModels.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztpdsdb/ZtPdsDbAttach.h"
#include "ztpdsdb/ZtPdsDbSource.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

const std::string kPlant = ZT_SOURCE_DIR "/examples/plant/";

std::vector<CollectedRow> ReadAll(const std::string& path) {
    CollectRows collect;
    std::string error;
    auto source = ZtPdsDbSource::Open(path, {}, &error);
    EXPECT_TRUE(source && source->ReadRows(collect, &error)) << error;
    return collect.rows;
}

TEST(ExamplesDatabase, PlantDbHoldsTheRowsOfPlantSql) {
    ZtTestTempDir dir;
    const std::string made = dir.File("plant.db");
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(made.c_str(), &db), SQLITE_OK);
    char* message = nullptr;
    EXPECT_EQ(
        sqlite3_exec(db, ZtTestReadBytes(kPlant + "plant.sql").c_str(), nullptr, nullptr, &message),
        SQLITE_OK)
        << (message ? message : "");
    sqlite3_free(message);
    sqlite3_close(db);
    const std::vector<CollectedRow> rows = ReadAll(kPlant + "plant.db");
    EXPECT_EQ(rows, ReadAll(made))
        << "plant.db differs from plant.sql: run sqlite3 plant.db < plant.sql in examples/plant";
    EXPECT_EQ(rows.size(), 139u);
}

TEST(ExamplesDatabase, EveryLinkedElementOfTheSampleHasAttributes) {
    std::string error;
    auto source = ZtPdsDbSource::Open(kPlant + "plant.db", {}, &error);
    ASSERT_TRUE(source) << error;
    const std::pair<const char*, std::size_t> attributes[] = {
        {"pipes.dgn", 9 * 5 + 4 * 4}, {"equipment.dgn", 7 * 3}, {"steel.dgn", 26 * 2}};
    for (const auto& [file, count] : attributes) {
        DgnTestFolder folder;
        ZtTestDgnWriter writer(3, {});
        for (const ZtTestPlantModel& model : ZtTestPlantModels())
            if (model.fileName == file)
                writer = model.writer;
        auto model = folder.Load(writer.Bytes());
        ASSERT_TRUE(model) << file;
        ASSERT_TRUE(ZtPdsDbAttach(*source, *model, &error)) << error;
        const ZtDgnAttributeStore* store = model->GetAttributeStore();
        EXPECT_TRUE(store->GetUnmatchedKeys().empty()) << file;
        EXPECT_EQ(store->GetAttributeCount(), count) << file;
        EXPECT_EQ(store->GetRowsRead(), 139u);
    }
}

} // namespace
