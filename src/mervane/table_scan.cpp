#include "mervane/table_scan.h"

namespace mervane {

namespace {

// false when it did not come to the end.
bool Scan(Database& database, const std::string& sql, const OnScannedRow& onRow)
{
    Statement statement(database, sql);
    for (;;) {
        switch (statement.Step()) {
        case Statement::Result::Done: return true;
        case Statement::Result::Failed: return false;
        case Statement::Result::Row: break;
        }
        const int64_t id = statement.Integer(0).value_or(0);
        if (id > 0 && id <= UINT32_MAX)
            onRow(static_cast<CEOID>(id), statement);
    }
}

} // namespace

bool ScanTable(Database& database, const char* table, const std::string& columns, const OnScannedRow& onRow)
{
    const std::string select = "SELECT oid" + (columns.empty() ? columns : ", " + columns) + " FROM " + table;
    if (Scan(database, select, onRow))
        return true;
    if (!database.IsDamaged())
        return false;
    // Around the damage: by the table itself, from both ends as far as each goes.
    (void)(Scan(database, select + " NOT INDEXED ORDER BY oid", onRow) ||
           Scan(database, select + " NOT INDEXED ORDER BY oid DESC", onRow));
    return true;
}

} // namespace mervane
