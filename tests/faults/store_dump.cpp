#include "store_dump.h"

#include <windows.h>

#include <memory>

#include <sqlite3.h>

#include "mervane/values/text_codec.h"

namespace {

struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using Connection = std::unique_ptr<sqlite3, Closer>;

Connection Open(const std::wstring& path, int flags)
{
    sqlite3* database = nullptr;
    // The system's own file system, whatever the default is.
    const int result = sqlite3_open_v2(mervane::EncodeText(path).c_str(), &database, flags, "win32");
    Connection connection(database);
    if (result != SQLITE_OK)
        return nullptr;
    sqlite3_busy_timeout(database, 200);
    return connection;
}

void AppendValue(sqlite3_stmt* statement, int column, std::string* text)
{
    const int type = sqlite3_column_type(statement, column);
    *text += std::to_string(type);
    *text += ':';
    if (const void* bytes = type == SQLITE_NULL ? nullptr : sqlite3_column_blob(statement, column))
        text->append(static_cast<const char*>(bytes),
                     static_cast<size_t>(sqlite3_column_bytes(statement, column)));
    *text += '|';
}

bool AppendRows(sqlite3* database, const char* sql, std::string* text)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(statement, sqlite3_finalize);
    int result = SQLITE_ERROR;
    while ((result = sqlite3_step(statement)) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            AppendValue(statement, column, text);
        *text += '\n';
    }
    return result == SQLITE_DONE;
}

} // namespace

std::string DumpStore(const std::wstring& path)
{
    const Connection connection = Open(path, SQLITE_OPEN_READWRITE);
    std::string text;
    for (const char* sql :
         {"BEGIN", "SELECT * FROM journal ORDER BY oid", "SELECT * FROM categories ORDER BY oid",
          "SELECT * FROM contacts ORDER BY oid", "SELECT * FROM sqlite_sequence ORDER BY name"})
        if (!AppendRows(connection.get(), sql, &text))
            return std::string("error: ") + sql + ": " + sqlite3_errmsg(connection.get());
    return text;
}

std::string CheckStore(const std::wstring& path)
{
    const Connection connection = Open(path, SQLITE_OPEN_READWRITE);
    std::string text;
    if (!AppendRows(connection.get(), "PRAGMA integrity_check", &text))
        return sqlite3_errmsg(connection.get());
    return text == "3:ok|\n" ? "ok" : text;
}

bool RunInStore(const std::wstring& path, const std::string& sql)
{
    const Connection connection = Open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    return sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}
