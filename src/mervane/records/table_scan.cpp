#include "mervane/records/table_scan.h"

namespace mervane {

namespace {

// Why it did not come to the end.
StoreTrouble Scan(Database& database, const std::string& sql, const OnScannedRow& onRow)
{
    OwnTrouble own(database);
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
    const StoreTrouble trouble = own.Take();
    if (goesOn)
        return StoreTrouble::None;
    return trouble == StoreTrouble::None ? StoreTrouble::Other : trouble;
}

// What is larger than anything that is read ends a scan like damage.
bool CanBePassedBy(StoreTrouble trouble)
{
    return trouble == StoreTrouble::Damaged || trouble == StoreTrouble::TooLarge;
}

} // namespace

StoreTrouble ScanTable(Database& database, const char* table, const std::string& columns,
                       const OnScannedRow& onRow)
{
    const std::string select = "SELECT oid" + (columns.empty() ? columns : ", " + columns) + " FROM " + table;
    StoreTrouble trouble = Scan(database, select, onRow);
    if (!CanBePassedBy(trouble))
        return trouble;
    // Around it: by the table itself, from both ends as far as each goes.
    trouble = Scan(database, select + " NOT INDEXED ORDER BY oid", onRow);
    if (!CanBePassedBy(trouble))
        return trouble;
    const StoreTrouble fromEnd = Scan(database, select + " NOT INDEXED ORDER BY oid DESC", onRow);
    return fromEnd == StoreTrouble::None ? trouble : fromEnd;
}

} // namespace mervane
