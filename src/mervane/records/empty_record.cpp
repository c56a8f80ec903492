#include "mervane/records/empty_record.h"

#include <string>

#include "mervane/records/record_values.h"

namespace mervane {

namespace {

// The SQL condition that a cell holds a value of its property.
std::string IsPresent(const Property& property)
{
    const std::string column = property.column;
    switch (PropertyType(property.id)) {
    case CEVT_LPWSTR: return "typeof(" + column + ") = 'text'";
    case CEVT_BLOB: return "typeof(" + column + ") = 'blob'";
    default: break;
    }
    const std::string isInteger = "typeof(" + column + ") = 'integer'";
    if (InRange(property, INT64_MAX) && InRange(property, INT64_MIN))
        return isInteger;
    const bool isSigned = PropertyType(property.id) == CEVT_I2;
    return "(" + isInteger + " AND " + column + " BETWEEN " +
           (isSigned ? "-32768 AND 32767" : "0 AND 65535") + ")";
}

std::string SelectEmpty(const TableInfo& table)
{
    std::string present;
    for (const Property& property : table.properties)
        present += (present.empty() ? "" : " OR ") + IsPresent(property);
    return std::string("SELECT 1 FROM ") + table.name + " WHERE oid = ? AND NOT (" + present + ")";
}

} // namespace

bool EmptyRecordTest::IsEmpty(CEOID id)
{
    if (!m_select.IsValid())
        m_select = Statement(m_database, SelectEmpty(m_table));
    const ScopedReset reset(m_select);
    m_select.BindInteger(1, id);
    return m_select.Step() == Statement::Result::Row;
}

} // namespace mervane
