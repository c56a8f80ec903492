// What a person is asked about a card whose UID a stored contact has.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "addrbook/transfer/card_merge.h"

namespace addrbook {

enum class ImportChoice { Update, AddAsNew, Skip, Cancel };

struct ImportQuestion {
    std::string name; // the stored contact's File As
    std::vector<FieldChange> changes;
};

struct ImportAnswer {
    ImportChoice choice = ImportChoice::Cancel;
    bool isForAll = false; // for all cards to come
};

// Asks in a window over the owner.
using ImportAsker = std::function<ImportAnswer(HWND owner, const ImportQuestion& question)>;

} // namespace addrbook
