#include "mervane/table_scan.h"

namespace mervane {

namespace {

// Why it did not come to the end.
StoreTrouble Scan(Database& database, const std::string& sql, const OnScannedRow& onRow)
{
    const StoreTrouble before = database.TakeTrouble();
    bool goesOn = true;
    {
        Statement statement(database, sql);
        while (goesOn && statement.Step() == Statement::Result::Row) {
            const int64_t id = statement.Integer(0).value_or(0);
            if (id > 0 && id <= UINT32_MAX)
                onRow(static_cast<CEOID>(id), statement);
            goesOn = !statement.HasFailed();
        }
        goesOn = goesOn && !statement.HasFailed();
    }
    const StoreTrouble trouble = database.TakeTrouble();
    database.NoteTrouble(before);
    if (goesOn)
        return StoreTrouble::None;
    return trouble == StoreTrouble::None ? StoreTrouble::Other : trouble;
}

} // namespace

StoreTrouble ScanTable(Database& database, const char* table, const std::string& columns,
                       const OnScannedRow& onRow)
{
    const std::string select = "SELECT oid" + (columns.empty() ? columns : ", " + columns) + " FROM " + table;
    StoreTrouble trouble = Scan(database, select, onRow);
    if (trouble != StoreTrouble::Damaged)
        return trouble;
    // Around the damage: by the table itself, from both ends as far as each goes.
    trouble = Scan(database, select + " NOT INDEXED ORDER BY oid", onRow);
    if (trouble != StoreTrouble::Damaged)
        return trouble;
    trouble = Scan(database, select + " NOT INDEXED ORDER BY oid DESC", onRow);
    return trouble == StoreTrouble::None ? StoreTrouble::Damaged : trouble;
}

} // namespace mervane
