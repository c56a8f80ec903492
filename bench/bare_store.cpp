#include "bare_store.h"

#include <sqlite3.h>

#include "sql_watch.h"
#include "stores.h"

namespace bench {

namespace {

int64_t PragmaOf(sqlite3* connection, const char* pragma)
{
    sqlite3_stmt* statement = nullptr;
    const std::string sql = std::string("PRAGMA ") + pragma;
    sqlite3_prepare_v2(connection, sql.c_str(), -1, &statement, nullptr);
    const int64_t value = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : 0;
    sqlite3_finalize(statement);
    return value;
}

} // namespace

BareStore::BareStore(const std::wstring& path)
{
    sqlite3* const product = NewestConnection();
    if (sqlite3_open16(path.c_str(), &m_handle) != SQLITE_OK)
        Fail("SQLite cannot open a store");
    for (const char* pragma : {"mmap_size", "cache_size", "wal_autocheckpoint", "cell_size_check"})
        TakeOver(product, pragma);
    Execute("PRAGMA synchronous = FULL");
    if (PragmaOf(m_handle, "synchronous") != 2)
        Fail("SQLite does not flush as it should");
}

BareStore::~BareStore()
{
    sqlite3_close_v2(m_handle);
}

void BareStore::TakeOver(sqlite3* from, const char* pragma)
{
    if (from)
        Execute((std::string("PRAGMA ") + pragma + " = " + std::to_string(PragmaOf(from, pragma))).c_str());
}

void BareStore::Execute(const char* sql)
{
    if (sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail(sqlite3_errmsg(m_handle));
}

BareStatement::BareStatement(BareStore& store, const char* sql)
{
    if (sqlite3_prepare_v3(store.Handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr) !=
        SQLITE_OK)
        Fail(sqlite3_errmsg(store.Handle()));
}

BareStatement::~BareStatement()
{
    sqlite3_finalize(m_statement);
}

} // namespace bench
