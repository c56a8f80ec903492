// One table of the store: the statements that read and write its records by identifier.
#pragma once

#include <unordered_map>
#include <vector>

#include "mervane/records/record_values.h"
#include "mervane/sqlite/sql_database.h"
#include "mervane/values/property_map.h"

namespace mervane {

class Table {
  public:
    Table(Database& database, const TableInfo& info) : m_database(database), m_info(info) {}

    const TableInfo& Info() const { return m_info; }

    // The database notes why something failed, here and in all that follows.
    [[nodiscard]] Answer Exists(CEOID id);
    // As CeDBase::ReadRecord, of any record.
    CEOID Read(CEOID id, WORD* count, const CEPROPID* wanted, CEPROPVAL** properties);
    // As CeDBase::ForeignProperties, of any record.
    std::vector<CEPROPID> ReadForeign(CEOID id);
    // A text of a record as stored; none when it has none, or when that failed.
    std::optional<std::wstring> ReadText(CEOID id, CEPROPID property);

    // 0 on failure, also when the next identifier has more than 32 bits: the caller rolls back.
    [[nodiscard]] CEOID Insert(const RecordValues& values);
    // false on failure and when there is no such record.
    [[nodiscard]] bool Update(CEOID id, const RecordValues& values);
    [[nodiscard]] bool Delete(int64_t id);

  private:
    bool IsNumberedOut();
    Statement& Selecting(uint32_t mask);
    Statement& Updating(uint32_t mask);
    Statement& Inserting(uint32_t mask);
    // From parameter 1 on; returns the next free one.
    int BindValues(Statement& statement, const RecordValues& values) const;
    uint32_t MaskOf(WORD count, const CEPROPID* wanted) const;
    uint32_t FullMask() const { return (1u << m_info.properties.size()) - 1; }
    std::string ColumnsOf(uint32_t mask, const char* behindEach) const;

    Database& m_database;
    const TableInfo& m_info;
    // By the mask of their columns. A program uses few.
    std::unordered_map<uint32_t, Statement> m_selects;
    std::unordered_map<uint32_t, Statement> m_updates;
    std::unordered_map<uint32_t, Statement> m_inserts;
    Statement m_delete;
};

} // namespace mervane
