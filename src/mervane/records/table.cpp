#include "mervane/records/table.h"

#include <bit>
#include <vector>

#include "mervane/records/record_block.h"
#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

int PlaceInMask(uint32_t mask, int index)
{
    return std::popcount(mask & ((1u << index) - 1));
}

} // namespace

std::string Table::ColumnsOf(uint32_t mask, const char* behindEach) const
{
    std::string columns;
    for (size_t i = 0; i < m_info.properties.size(); ++i) {
        if (!(mask >> i & 1))
            continue;
        if (!columns.empty())
            columns += ", ";
        columns += m_info.properties[i].column;
        columns += behindEach;
    }
    return columns;
}

Statement& Table::Selecting(uint32_t mask)
{
    Statement& statement = m_selects[mask];
    if (!statement.IsValid())
        statement = Statement(m_database, "SELECT " + (mask ? ColumnsOf(mask, "") : std::string("1")) +
                                              " FROM " + m_info.name + " WHERE oid = ?");
    return statement;
}

Statement& Table::Updating(uint32_t mask)
{
    Statement& statement = m_updates[mask];
    if (!statement.IsValid())
        statement = Statement(m_database, std::string("UPDATE ") + m_info.name + " SET " +
                                              (mask ? ColumnsOf(mask, " = ?") : std::string("oid = oid")) +
                                              " WHERE oid = ?");
    return statement;
}

Statement& Table::Inserting(uint32_t mask)
{
    Statement& statement = m_inserts[mask];
    if (statement.IsValid())
        return statement;
    std::string places;
    for (int i = 0; i < std::popcount(mask); ++i)
        places += i ? ", ?" : "?";
    statement = Statement(m_database, std::string("INSERT INTO ") + m_info.name +
                                          (mask ? "(" + ColumnsOf(mask, "") + ") VALUES(" + places + ")"
                                                : std::string(" DEFAULT VALUES")));
    return statement;
}

int Table::BindValues(Statement& statement, const RecordValues& values) const
{
    int parameter = 1;
    for (size_t i = 0; i < m_info.properties.size(); ++i)
        if (values.Changes(static_cast<int>(i)))
            values.Bind(statement, parameter++, static_cast<int>(i));
    return parameter;
}

Answer Table::Exists(CEOID id)
{
    if (!id)
        return Answer::No;
    Statement& statement = Selecting(0);
    const ScopedReset reset(statement);
    statement.BindInteger(1, id);
    switch (statement.Step()) {
    case Statement::Result::Row: return Answer::Yes;
    case Statement::Result::Done: return Answer::No;
    case Statement::Result::Failed: break;
    }
    return Answer::Failed;
}

uint32_t Table::MaskOf(WORD count, const CEPROPID* wanted) const
{
    if (count == 0)
        return FullMask();
    uint32_t mask = 0;
    for (WORD i = 0; i < count; ++i)
        if (const int index = FindProperty(m_info, wanted[i]); index >= 0)
            mask |= 1u << index;
    return mask;
}

CEOID Table::Read(CEOID id, WORD* count, const CEPROPID* wanted, CEPROPVAL** properties)
{
    const bool all = *count == 0;
    const size_t wantedCount = all ? m_info.properties.size() : *count;
    const uint32_t mask = MaskOf(*count, wanted);
    std::vector<WantedColumn> columns;
    columns.reserve(wantedCount);
    for (size_t i = 0; i < wantedCount; ++i) {
        const CEPROPID property = all ? m_info.properties[i].id : wanted[i];
        const int index = FindProperty(m_info, property);
        columns.push_back({property, index < 0 ? nullptr : &m_info.properties[static_cast<size_t>(index)],
                           index < 0 ? 0 : PlaceInMask(mask, index)});
    }
    Statement& statement = Selecting(mask);
    const ScopedReset reset(statement);
    statement.BindInteger(1, id);
    if (!id || statement.Step() != Statement::Result::Row)
        return 0;
    *properties = PackRow(statement, columns, all, count);
    if (!*properties)
        m_database.NoteTrouble(StoreTrouble::NoMemory);
    return *properties ? id : 0;
}

std::vector<CEPROPID> Table::ReadForeign(CEOID id)
{
    std::vector<CEPROPID> foreign;
    Statement& statement = Selecting(FullMask());
    const ScopedReset reset(statement);
    statement.BindInteger(1, id);
    if (!id || statement.Step() != Statement::Result::Row)
        return foreign;
    int column = 0;
    for (const Property& property : m_info.properties)
        if (IsForeign(statement, {property.id, &property, column++}))
            foreign.push_back(property.id);
    return foreign;
}

std::optional<std::wstring> Table::ReadText(CEOID id, CEPROPID property)
{
    const int index = FindProperty(m_info, property);
    if (index < 0 || PropertyType(property) != CEVT_LPWSTR)
        return std::nullopt;
    Statement& statement = Selecting(1u << index);
    const ScopedReset reset(statement);
    statement.BindInteger(1, id);
    if (!id || statement.Step() != Statement::Result::Row)
        return std::nullopt;
    const auto text = statement.Text(0);
    return text ? std::optional(DecodeText(*text)) : std::nullopt;
}

// SQLite has given its last identifier, or the last row has it.
bool Table::IsNumberedOut()
{
    const std::string name = m_info.name;
    const std::string last = "SELECT max(ifnull((SELECT seq FROM sqlite_sequence WHERE name = '" + name +
                             "'), 0), ifnull((SELECT max(oid) FROM " + name + "), 0))";
    return m_database.QueryInteger(last.c_str()) == INT64_MAX;
}

CEOID Table::Insert(const RecordValues& values)
{
    OwnTrouble own(m_database);
    Statement& statement = Inserting(values.Mask());
    const ScopedReset reset(statement);
    BindValues(statement, values);
    if (!statement.Run()) {
        const StoreTrouble trouble = own.Take();
        // SQLite says of both that it is full.
        const bool isOut = trouble == StoreTrouble::Full && IsNumberedOut();
        (void)own.Take(); // where that could not be told
        m_database.NoteTrouble(isOut ? StoreTrouble::NoIdentifier : trouble);
        return 0;
    }
    const int64_t id = m_database.LastInsertId();
    if (id > 0 && id <= UINT32_MAX)
        return static_cast<CEOID>(id);
    // Inside a bulk nothing rolls it back.
    (void)Delete(id);
    m_database.NoteTrouble(StoreTrouble::NoIdentifier);
    return 0;
}

bool Table::Update(CEOID id, const RecordValues& values)
{
    Statement& statement = Updating(values.Mask());
    const ScopedReset reset(statement);
    statement.BindInteger(BindValues(statement, values), id);
    return statement.Run() && m_database.Changes() == 1;
}

bool Table::Delete(int64_t id)
{
    if (!m_delete.IsValid())
        m_delete = Statement(m_database, std::string("DELETE FROM ") + m_info.name + " WHERE oid = ?");
    const ScopedReset reset(m_delete);
    m_delete.BindInteger(1, id);
    return m_delete.Run() && m_database.Changes() == 1;
}

} // namespace mervane
