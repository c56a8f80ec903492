// Whether a file that nobody writes to is a whole store.
#pragma once

#include <string>

#include "mervane/file/trouble.h"

namespace mervane {

class Database;

// Asked some hundred times in a second; false when something else is to be done first.
using MayGoOn = bool (*)();

struct WholeCheck {
    enum class Result { Whole, NotWhole, Interrupted };

    Result result;
    StoreTrouble trouble; // why it is not whole
};

// Reads the file from one end to the other and makes nothing beside it: its marks and tables must be a
// store's, and SQLite's quick check must find nothing. Never interrupted without mayGoOn.
WholeCheck CheckWhole(const std::wstring& path, MayGoOn mayGoOn = nullptr);

// Makes one of SQLite's checks, a PRAGMA. None: it finds nothing. Damaged or NotAStore: it does. Else it
// could not be made, which says nothing of the file.
StoreTrouble TroubleOfCheck(Database& file, const char* check);

} // namespace mervane
