// The window that asks what becomes of a card whose UID a stored contact has.
#pragma once

#include <windows.h>

#include "addrbook/transfer/import_question.h"

namespace addrbook {

ImportAnswer AskAboutCard(HINSTANCE instance, HWND owner, const ImportQuestion& question);

} // namespace addrbook
