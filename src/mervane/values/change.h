// A change of the store as programs tell it each other.
#pragma once

#include <optional>

#include "mervane/values/database_change.h"
#include "mervane/values/property_map.h"

namespace mervane {

struct Change {
    WPARAM code; // one of the kChange... codes
    CEOID id = 0;
    bool touchesNames = true; // what a record is called or whether it is there: others show it
    bool alsoUses = false;    // use counts of categories were changed with it

    bool operator==(const Change&) const = default;
};

constexpr bool IsWorkCode(WPARAM code)
{
    return code == kChangeWorkBegins || code == kChangeWorkEnded;
}

struct TableChange {
    TableId table;
    Change change;

    bool operator==(const TableChange&) const = default;
};

// Code, table and whether names are touched in one word: what a peer's message has in wParam.
WPARAM PackChange(const TableChange& what);
// None for what is no such word. Bits beyond those that PackChange uses are passed over.
std::optional<TableChange> UnpackChange(WPARAM packed, CEOID id);

} // namespace mervane
