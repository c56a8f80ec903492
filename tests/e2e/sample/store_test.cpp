#include <gtest/gtest.h>
#include <sqlite3.h>

#include "e2e/harness/settings.h"
#include "e2e/harness/store_reader.h"
#include "support/test_store.h"

namespace {

class OpenStore {
  public:
    explicit OpenStore(const std::wstring& path) { sqlite3_open16(path.c_str(), &m_database); }
    ~OpenStore() { sqlite3_close(m_database); }
    OpenStore(const OpenStore&) = delete;
    OpenStore& operator=(const OpenStore&) = delete;

    bool Run(const char* sql)
    {
        return sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

  private:
    sqlite3* m_database = nullptr;
};

TEST(StoreReaderTest, ReadsWhileAnotherConnectionWrites)
{
    const TestStore file;
    OpenStore writer(file.Path());
    ASSERT_TRUE(writer.Run(
        "PRAGMA journal_mode=WAL; CREATE TABLE t(a, b); INSERT INTO t VALUES(1, 'x'), (NULL, '')"));
    const StoreReader reader(file.Path());
    ASSERT_TRUE(reader.IsOpen());
    const StoreReader::Rows rows = reader.Query("SELECT a, b FROM t ORDER BY rowid");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0][0], "1");
    EXPECT_EQ(rows[0][1], "x");
    EXPECT_EQ(rows[1][0], std::nullopt);
    EXPECT_EQ(rows[1][1], "");
    ASSERT_TRUE(writer.Run("BEGIN; INSERT INTO t VALUES(3, 'y')"));
    EXPECT_EQ(reader.QueryOne("SELECT count(*) FROM t"), "2");
    ASSERT_TRUE(writer.Run("COMMIT"));
    EXPECT_EQ(reader.QueryOne("SELECT count(*) FROM t"), "3");
}

TEST(StoreReaderTest, AMissingFileOrTableHasNoRows)
{
    const TestStore file;
    EXPECT_FALSE(StoreReader(file.Path()).IsOpen());
    EXPECT_TRUE(StoreReader(file.Path()).Query("SELECT 1").empty());
    OpenStore writer(file.Path());
    ASSERT_TRUE(writer.Run("CREATE TABLE t(a)"));
    EXPECT_EQ(StoreReader(file.Path()).QueryOne("SELECT a FROM t"), std::nullopt);
    EXPECT_EQ(StoreReader(file.Path()).QueryOne("SELECT a FROM u"), std::nullopt);
}

TEST(SettingsTest, ReadsWhatWasStored)
{
    const TestRegistry registry;
    EXPECT_EQ(NumberSetting(L"Options", L"sort"), std::nullopt);
    ASSERT_TRUE(StoreSetting(L"Options", L"sort", 17u));
    ASSERT_TRUE(StoreSetting(L"", L"name", L"text"));
    EXPECT_EQ(NumberSetting(L"Options", L"sort"), 17u);
    EXPECT_EQ(TextSetting(L"", L"name"), L"text");
    EXPECT_EQ(TextSetting(L"Options", L"sort"), std::nullopt);
}

} // namespace
