// The tables that the schema's text makes, as SQLite writes them down.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mervane {

struct OwnTable {
    std::string name;
    std::string created;            // in one line, without the bracket at the end
    std::vector<std::string> added; // columns of later versions: "first_name TEXT"

    // Its definition in one line, without the bracket at the end: added columns follow the others.
    std::string Sql() const;
};

// Of a version that is not known yet: those of the newest one.
std::vector<OwnTable> OwnTablesOf(int64_t version);

// Makes a view of the table's name that has the columns of the newest version too, absent in each record;
// empty where it lacks none.
std::string ViewAsNewest(const OwnTable& table, const std::vector<OwnTable>& newest);

// Runs of spaces and line ends as one space, none before a comma or a closing bracket.
std::string InOneLine(std::string_view sql);

} // namespace mervane
