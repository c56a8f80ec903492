// Which table and columns hold a database's records: one place for the names.
#pragma once

#include <cstdint>
#include <span>

#include "mervane/values/tables.h"

namespace mervane {

struct Property {
    CEPROPID id;
    const char* column;
    bool saturates = false; // a 16-bit number that reads as the nearest one when the stored one is larger
};

struct TableInfo {
    const char* name;
    std::span<const Property> properties; // in ascending property number
    CEPROPID nameProperty;                // what a blob's reference is shown as; 0 for the journal
    CEPROPID defaultSort;
};

constexpr size_t kMaxProperties = 32; // of a table: what a write changes is a mask with a bit for each
constexpr size_t kTableCount = 3;
constexpr size_t IndexOf(TableId table)
{
    return static_cast<size_t>(table);
}

const TableInfo& InfoOf(TableId table);
// The place of a property in the table's list, by its whole identifier; -1 when the table has no such
// property.
int FindProperty(const TableInfo& table, CEPROPID id);

} // namespace mervane
