// Whether a record is without any property.
#pragma once

#include "mervane/sqlite/sql_database.h"
#include "mervane/values/property_map.h"

namespace mervane {

// One record at a time; its texts are not read.
class EmptyRecordTest {
  public:
    EmptyRecordTest(Database& database, const TableInfo& table) : m_database(database), m_table(table) {}

    // What is stored in a form that reads as absent counts as none. false for a record that is not there.
    bool IsEmpty(CEOID id);

  private:
    Database& m_database;
    const TableInfo& m_table;
    Statement m_select;
};

} // namespace mervane
