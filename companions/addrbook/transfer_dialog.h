// The window that shows how far an import or export is, and what came of it.
#pragma once

#include <windows.h>

#include "addrbook/transfer/transfer.h"

namespace addrbook {

// Runs the work to its end; title is "Import" or "Export". False when it failed or was cancelled.
bool RunTransfer(HINSTANCE instance, HWND owner, const wchar_t* title, Transfer& transfer);

} // namespace addrbook
