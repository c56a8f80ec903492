#include "e2e/harness/store_reader.h"

#include <windows.h>

#include <sqlite3.h>

namespace {

constexpr int kBusyLimit = 5000; // milliseconds

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

std::string Utf8(const std::wstring& text)
{
    std::string bytes(text.size() * 3, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<size_t>(length));
    return bytes;
}

StoreReader::Value ColumnValue(sqlite3_stmt* statement, int column)
{
    const int type = sqlite3_column_type(statement, column);
    if (type == SQLITE_NULL)
        return std::nullopt;
    const void* bytes = type == SQLITE_BLOB
                            ? sqlite3_column_blob(statement, column)
                            : static_cast<const void*>(sqlite3_column_text(statement, column));
    const auto size = static_cast<size_t>(sqlite3_column_bytes(statement, column));
    return std::string(static_cast<const char*>(bytes), bytes ? size : 0);
}

} // namespace

void StoreReader::Closer::operator()(sqlite3* database) const
{
    sqlite3_close(database);
}

StoreReader::StoreReader(const std::wstring& path)
{
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(Utf8(path).c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    m_database.reset(database);
    if (result == SQLITE_OK)
        sqlite3_busy_timeout(database, kBusyLimit);
    else
        m_database.reset();
}

StoreReader::Rows StoreReader::Query(const std::string& sql) const
{
    sqlite3_stmt* compiled = nullptr;
    if (!m_database || sqlite3_prepare_v2(m_database.get(), sql.c_str(), -1, &compiled, nullptr) != SQLITE_OK)
        return {};
    const std::unique_ptr<sqlite3_stmt, Finalizer> statement(compiled);
    Rows rows;
    const int columns = sqlite3_column_count(compiled);
    while (sqlite3_step(compiled) == SQLITE_ROW) {
        std::vector<Value> row;
        row.reserve(static_cast<size_t>(columns));
        for (int column = 0; column < columns; ++column)
            row.push_back(ColumnValue(compiled, column));
        rows.push_back(std::move(row));
    }
    return rows;
}

StoreReader::Value StoreReader::QueryOne(const std::string& sql) const
{
    const Rows rows = Query(sql);
    return rows.empty() || rows[0].empty() ? std::nullopt : rows[0][0];
}

bool ChangeStore(const std::wstring& path, const std::string& sql)
{
    sqlite3* database = nullptr;
    bool changed =
        sqlite3_open_v2(Utf8(path).c_str(), &database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK;
    if (changed) {
        sqlite3_busy_timeout(database, kBusyLimit);
        changed = sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    sqlite3_close(database);
    return changed;
}

// The exclusive mode keeps readers out too, which a store with a log lets in otherwise.
StoreLock::StoreLock(const std::wstring& path)
{
    m_held = sqlite3_open_v2(Utf8(path).c_str(), &m_database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK &&
             sqlite3_exec(m_database, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr,
                          nullptr) == SQLITE_OK;
}

StoreLock::~StoreLock()
{
    sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(m_database);
}
