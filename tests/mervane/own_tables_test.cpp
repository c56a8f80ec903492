// The store's tables, known by the text that makes them.
#include <gtest/gtest.h>

#include "mervane/sqlite/own_tables.h"
#include "mervane/sqlite/schema_steps.h"
#include "mervane/values/property_map.h"

namespace mervane {

namespace {

const OwnTable& Named(const char* name, const std::vector<OwnTable>& tables)
{
    for (const OwnTable& table : tables)
        if (table.name == name)
            return table;
    static const OwnTable s_none;
    return s_none;
}

TEST(OwnTables, AreTheThreeOfEachVersion)
{
    EXPECT_TRUE(OwnTablesOf(0).empty());
    for (int64_t version = 1; version <= kSchemaVersion + 1; ++version) {
        const auto tables = OwnTablesOf(version);
        EXPECT_EQ(tables.size(), kTableCount);
        for (const char* name : {"journal", "categories", "contacts"})
            EXPECT_TRUE(
                Named(name, tables).Sql().starts_with(std::string("CREATE TABLE ") + name + "( oid "));
    }
}

TEST(OwnTables, HaveAddedColumnsBehindTheOthers)
{
    const std::string first = "CREATE TABLE contacts( oid INTEGER PRIMARY KEY AUTOINCREMENT, file_as TEXT, "
                              "company TEXT";
    EXPECT_EQ(Named("contacts", OwnTablesOf(1)).Sql(), first);
    EXPECT_EQ(
        Named("contacts", OwnTablesOf(2)).Sql(),
        first + ", first_name TEXT, last_name TEXT, job_title TEXT, emails TEXT, phones TEXT, address TEXT, "
                "birthday TEXT, note TEXT, vcard_extra TEXT");
}

// Each property has a column in the newest version.
TEST(OwnTables, HaveAColumnForEachProperty)
{
    for (size_t i = 0; i < kTableCount; ++i) {
        const TableInfo& info = InfoOf(static_cast<TableId>(i));
        const std::string sql = Named(info.name, OwnTablesOf(kSchemaVersion)).Sql();
        for (const Property& property : info.properties)
            EXPECT_NE(sql.find(std::string(", ") + property.column + ' '), std::string::npos)
                << property.column;
    }
}

TEST(OwnTables, ShowAsNewestWhatAnOlderVersionLacks)
{
    const std::vector<OwnTable> newest = {
        {"notes", "CREATE TABLE notes( oid", {"a TEXT", "b INTEGER", "c BLOB"}}};
    EXPECT_EQ(ViewAsNewest({"notes", "CREATE TABLE notes( oid", {"a TEXT"}}, newest),
              "CREATE TEMP VIEW notes AS SELECT *, NULL AS b, NULL AS c FROM main.notes");
    EXPECT_EQ(ViewAsNewest(newest.front(), newest), "");
}

} // namespace

} // namespace mervane
