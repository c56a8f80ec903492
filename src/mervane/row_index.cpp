#include "mervane/row_index.h"

#include <algorithm>

#include "mervane/id_blob.h"
#include "mervane/name_cache.h"
#include "mervane/record_values.h"
#include "mervane/sort_key.h"
#include "mervane/text_codec.h"

namespace mervane {

namespace {

struct Row {
    CEOID id;
    bool missing;
    uint64_t number;
    std::string key;
};

Row ReadRow(const Statement& statement, const Property& property, const NameCache* names, CEOID id)
{
    Row row{id, true, 0, {}};
    if (const auto number = statement.Integer(1)) {
        const auto value = InRange(property, *number);
        row.missing = !value || PropertyType(property.id) == CEVT_LPWSTR;
        row.number = static_cast<uint64_t>(value.value_or(0)) ^
                     (PropertyType(property.id) == CEVT_FILETIME ? 0 : uint64_t{1} << 63);
    } else if (const auto text = statement.Text(1)) {
        row.missing = PropertyType(property.id) != CEVT_LPWSTR;
        row.key = SortKey(DecodeText(*text));
    } else if (const auto blob = statement.Blob(1)) {
        row.missing = !names;
        if (names)
            row.key = SortKey(names->Join(ReadIdBlob(*blob).ids, L','));
    }
    return row;
}

} // namespace

RowIndex::RowIndex(Database& database, const TableInfo& table, const SORTORDERSPEC& sort,
                   const NameCache* names)
    : m_sort(sort)
{
    const Property& property = table.properties[static_cast<size_t>(FindProperty(table, sort.propid))];
    Statement statement(database, std::string("SELECT oid, ") + property.column + " FROM " + table.name);
    std::vector<Row> rows;
    while (statement.Step() == Statement::Result::Row) {
        const int64_t id = statement.Integer(0).value_or(0);
        if (id > 0 && id <= UINT32_MAX)
            rows.push_back(ReadRow(statement, property, names, static_cast<CEOID>(id)));
    }
    const bool descending = (sort.dwFlags & CEDB_SORT_DESCENDING) != 0;
    std::sort(rows.begin(), rows.end(), [descending](const Row& a, const Row& b) {
        if (a.missing != b.missing)
            return b.missing;
        if (a.missing)
            return a.id < b.id;
        if (a.number != b.number)
            return (a.number < b.number) != descending;
        if (const int order = a.key.compare(b.key))
            return (order < 0) != descending;
        return a.id < b.id;
    });
    for (const Row& row : rows) {
        m_rowOf[row.id] = static_cast<int>(m_rows.size());
        m_rows.push_back(row.id);
    }
}

int RowIndex::RowOf(CEOID id) const
{
    const auto found = m_rowOf.find(id);
    return found == m_rowOf.end() ? -1 : found->second;
}

} // namespace mervane
