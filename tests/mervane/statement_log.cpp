#include "statement_log.h"

#include <sqlite3.h>

#include <utility>

namespace {

std::vector<std::string> g_statements;

int OnStatement(unsigned, void*, void* statement, void*)
{
    g_statements.emplace_back(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
}

int OnOpen(sqlite3* handle, const char**, const sqlite3_api_routines*)
{
    return sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, OnStatement, nullptr);
}

using Hook = void (*)();

} // namespace

StatementLog::StatementLog()
{
    g_statements.clear();
    sqlite3_auto_extension(reinterpret_cast<Hook>(OnOpen));
}

StatementLog::~StatementLog()
{
    sqlite3_cancel_auto_extension(reinterpret_cast<Hook>(OnOpen));
}

std::vector<std::string> StatementLog::Take()
{
    return std::exchange(g_statements, {});
}
