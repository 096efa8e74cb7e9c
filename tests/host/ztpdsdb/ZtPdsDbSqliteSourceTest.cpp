#include "CollectRows.h"
#include "support/DgnTestModels.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztpdsdb/ZtPdsDbAttach.h"
#include "ztpdsdb/ZtPdsDbSource.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>

namespace {

// Makes the database `path` with `sql`.
void MakeDatabase(const std::string& path, const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    char* message = nullptr;
    EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message), SQLITE_OK)
        << (message ? message : "");
    sqlite3_free(message);
    sqlite3_close(db);
}

constexpr const char* kTable =
    "CREATE TABLE element_attributes(entity INTEGER, occurrence INTEGER, name TEXT, value TEXT);";

TEST(ZtPdsDbSqliteSource, ReadsTablesAndViewsWhateverTheirColumnsCase) {
    ZtTestTempDir dir;
    const std::string table = dir.File("table.db"), view = dir.File("view.db");
    MakeDatabase(table, std::string(kTable) +
                            "INSERT INTO element_attributes VALUES (12, 101, 'nps', '6'),"
                            "(12, 70000, 'spec', 'A1'), (12, NULL, 'nps', '4'),"
                            "(12, 7, 'spec', NULL), (21, 1, 'tag', x'41004243');");
    // A project's own table, its numbers cast to text in the view.
    MakeDatabase(view, "CREATE TABLE pipes(mslink INTEGER, nps REAL, spec VARCHAR(8));"
                       "INSERT INTO pipes VALUES (101, 6, 'A1'), (102, 2.5, 'B2');"
                       "CREATE VIEW element_attributes AS "
                       "SELECT 12 AS Entity, mslink AS OCCURRENCE, 'nps' AS name, "
                       "CAST(nps AS TEXT) AS value FROM pipes UNION ALL "
                       "SELECT 12, mslink, 'spec', spec FROM pipes;");
    struct Case {
        std::string path;
        std::vector<CollectedRow> rows;
        std::size_t withNull;
    };
    const Case cases[] = {
        {table, {{12, 101, "nps", "6"}, {12, 70000, "spec", "A1"}}, 2},
        {view,
         {{12, 101, "nps", "6.0"},
          {12, 102, "nps", "2.5"},
          {12, 101, "spec", "A1"},
          {12, 102, "spec", "B2"}},
         0},
    };
    for (const Case& c : cases) {
        std::string error;
        auto source = ZtPdsDbSource::Open(c.path, {}, &error);
        ASSERT_TRUE(source) << error;
        EXPECT_EQ(source->GetName(), c.path);
        CollectRows collect;
        // A blob in a text column fails the table's read after its first rows.
        const bool read = source->ReadRows(collect, &error);
        if (c.path == table) {
            EXPECT_FALSE(read);
            EXPECT_NE(error.find("row 5 of element_attributes holds a blob in column value, "
                                 "where a text is expected"),
                      std::string::npos)
                << error;
        } else {
            EXPECT_TRUE(read) << error;
        }
        EXPECT_EQ(collect.rows, c.rows) << c.path;
        EXPECT_EQ(source->GetRowsWithNull(), c.withNull) << c.path;
    }
}

// Each bad source fails to open, with its problem and the schema expected.
TEST(ZtPdsDbSqliteSource, BadSourcesNameTheirProblem) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("text.db"), "element_attributes, but in words\n"));
    std::filesystem::create_directory(dir.File("folder.db"));
    MakeDatabase(dir.File("other.db"), "CREATE TABLE attributes(entity INTEGER);");
    MakeDatabase(dir.File("column.db"), "CREATE TABLE element_attributes(entity INTEGER, "
                                        "occ INTEGER, name TEXT, value TEXT);");
    MakeDatabase(dir.File("type.db"), "CREATE TABLE element_attributes(entity INTEGER, "
                                      "occurrence INTEGER, name TEXT, value REAL);");
    MakeDatabase(dir.File("entity.db"), "CREATE TABLE element_attributes(entity TEXT, "
                                        "occurrence INTEGER, name TEXT, value TEXT);");
    const std::pair<const char*, const char*> cases[] = {
        {"missing.db", "no such file"},
        {"folder.db", "a folder, not a database file"},
        {"text.db", "the file is not a SQLite database"},
        {"other.db", "the database has no table or view element_attributes"},
        {"column.db", "element_attributes has no column occurrence (its columns: entity occ "
                      "name value)"},
        {"type.db", "column value of element_attributes is of type REAL, not a text type"},
        {"entity.db", "column entity of element_attributes is of type TEXT, not an integer type"},
    };
    for (const auto& [file, problem] : cases) {
        std::string error;
        EXPECT_FALSE(ZtPdsDbSource::Open(dir.File(file), {}, &error)) << file;
        EXPECT_EQ(error.find("attribute source " + dir.File(file) + ": " + problem), 0u) << error;
        EXPECT_NE(error.find(std::string("; it must offer ") + ZtPdsDbSource::kExpectedSchema),
                  std::string::npos)
            << error;
    }
}

// A writer that holds the file locked keeps the source from reading past the busy
// timeout; the file is read-only to the source and is never changed.
TEST(ZtPdsDbSqliteSource, AWritersLockFailsTheOpenAndTheFileStaysAsItWas) {
    ZtTestTempDir dir;
    const std::string path = dir.File("plant.db");
    MakeDatabase(path, std::string(kTable) + "INSERT INTO element_attributes VALUES "
                                             "(12, 1, 'nps', '6');");
    const std::string before = ZtTestReadBytes(path);
    const auto modified = std::filesystem::last_write_time(path);
    {
        std::string error;
        auto source = ZtPdsDbSource::Open(path, {}, &error);
        ASSERT_TRUE(source) << error;
        CollectRows collect;
        EXPECT_TRUE(source->ReadRows(collect, &error)) << error;
        EXPECT_EQ(collect.rows.size(), 1u);
    }
    EXPECT_EQ(ZtTestReadBytes(path), before);
    EXPECT_EQ(std::filesystem::last_write_time(path), modified);

    sqlite3* writer = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &writer), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(writer, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    ZtPdsDbOptions options;
    options.busyTimeoutMilliseconds = 50;
    std::string error;
    EXPECT_FALSE(ZtPdsDbSource::Open(path, options, &error));
    EXPECT_NE(error.find(": the database is locked by another writer; it must offer"),
              std::string::npos)
        << error;
    sqlite3_exec(writer, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(writer);
}

// A read that fails half-way attaches nothing: the model keeps what it had.
TEST(ZtPdsDbAttach, AFailedReadLeavesTheModelAsItWas) {
    ZtTestTempDir dir;
    MakeDatabase(dir.File("good.db"), std::string(kTable) + "INSERT INTO element_attributes "
                                                            "VALUES (12, 1, 'nps', '6');");
    MakeDatabase(dir.File("bad.db"),
                 "CREATE TABLE t(e, o, n, v); INSERT INTO t VALUES (12, 1, 'nps', '8'),"
                 "(12, 1, 'spec', 3.5);"
                 "CREATE VIEW element_attributes AS SELECT e AS entity, o AS occurrence, "
                 "n AS name, v AS value FROM t;");
    DgnTestFolder folder;
    ZtTestDgnWriter writer(3, {});
    ZtTestDgnSymbology s;
    s.linkages = {ZtTestDmrsLinkage(12, 1)};
    writer.Line(s, {0, 0, 0}, {1, 1, 1});
    writer.EndOfDesign();
    auto model = folder.Load(writer.Bytes());
    ASSERT_TRUE(model);

    std::string error;
    auto good = ZtPdsDbSource::Open(dir.File("good.db"), {}, &error);
    ASSERT_TRUE(good) << error;
    ASSERT_TRUE(ZtPdsDbAttach(*good, *model, &error)) << error;
    const ZtDgnAttributeStore* store = model->GetAttributeStore();
    ASSERT_TRUE(store);
    EXPECT_EQ(store->GetSource(), dir.File("good.db"));
    EXPECT_EQ(store->GetAttributeCount(), 1u);

    auto bad = ZtPdsDbSource::Open(dir.File("bad.db"), {}, &error);
    ASSERT_TRUE(bad) << error; // the view's columns declare no type: its rows tell
    EXPECT_FALSE(ZtPdsDbAttach(*bad, *model, &error));
    EXPECT_NE(error.find("row 2 of element_attributes holds a real number in column value"),
              std::string::npos)
        << error;
    EXPECT_EQ(model->GetAttributeStore(), store);
}

} // namespace
