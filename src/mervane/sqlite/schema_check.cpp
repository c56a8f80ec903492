#include "mervane/sqlite/schema_check.h"

#include <string>

#include "mervane/sqlite/own_tables.h"

namespace mervane {

namespace {

bool IsWord(std::string_view text)
{
    return !text.empty() &&
           text.find_first_not_of("abcdefghijklmnopqrstuvwxyz_0123456789") == std::string_view::npos;
}

// " mood TEXT", with a number as its default at the most.
bool IsPlainColumn(std::string_view column)
{
    const size_t name = 1, nameEnd = column.find(' ', name);
    if (!column.starts_with(' ') || nameEnd == std::string_view::npos ||
        !IsWord(column.substr(name, nameEnd - name)))
        return false;
    std::string_view rest = column.substr(nameEnd + 1);
    for (const std::string_view type : {"TEXT", "INTEGER", "BLOB"}) {
        if (!rest.starts_with(type))
            continue;
        rest.remove_prefix(type.size());
        constexpr std::string_view kDefault = " DEFAULT ";
        return rest.empty() || (rest.starts_with(kDefault) && rest.size() < 30 &&
                                rest.find_first_not_of("-0123456789", kDefault.size()) == rest.npos);
    }
    return false;
}

// ", a TEXT, b INTEGER"
bool ArePlainColumns(std::string_view columns)
{
    while (!columns.empty()) {
        columns.remove_prefix(1); // the comma
        const size_t end = columns.find(',');
        if (!IsPlainColumn(columns.substr(0, end)))
            return false;
        columns = end == std::string_view::npos ? std::string_view() : columns.substr(end);
    }
    return true;
}

bool IsOwnSql(const OwnTable& table, std::string_view sql, int64_t version)
{
    const std::string line = InOneLine(sql), own = table.Sql();
    if (!line.starts_with(own) || !line.ends_with(')'))
        return false;
    const std::string_view more = std::string_view(line).substr(own.size(), line.size() - own.size() - 1);
    return more.empty() || (version > kSchemaVersion && more.starts_with(',') && ArePlainColumns(more));
}

bool IsOwnTable(Database& database, const OwnTable& table, int64_t version)
{
    Statement row(database, "SELECT sql FROM main.sqlite_schema WHERE type = 'table' AND name = ?");
    row.BindText(1, table.name);
    if (row.Step() != Statement::Result::Row)
        return false;
    const auto sql = row.Text(0);
    return sql && IsOwnSql(table, *sql, version);
}

// None but those that only make a read faster: an index of an expression would be worked out at each write, a
// unique one refuse it.
bool HasHarmlessIndexes(Database& database, const OwnTable& table)
{
    Statement odd(database,
                  "SELECT count(*) FROM pragma_index_list(?1) AS list, pragma_index_xinfo(list.name) AS part "
                  "WHERE (list.origin = 'c' AND (list.\"unique\" OR list.partial)) OR part.cid < -1 "
                  "OR part.coll COLLATE NOCASE NOT IN ('BINARY', 'NOCASE', 'RTRIM')");
    odd.BindText(1, table.name);
    return odd.Step() == Statement::Result::Row && odd.Integer(0) == int64_t{0};
}

} // namespace

bool HasOwnTables(Database& database, int64_t version)
{
    for (const OwnTable& table : OwnTablesOf(version))
        if (!IsOwnTable(database, table, version) || !HasHarmlessIndexes(database, table))
            return false;
    return true;
}

StoreMarks MarksIn(Database& database)
{
    const std::optional<int64_t> application = database.QueryInteger("PRAGMA application_id");
    if (!application)
        return {-1, -1};
    return {*application, database.QueryInteger("PRAGMA user_version").value_or(-1)};
}

} // namespace mervane
