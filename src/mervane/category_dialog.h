// The window of ZCatsDlg.
#pragma once

#include <windows.h>

class DbCategories;

namespace mervane {

// As ZCatsDlg::DoModal, over categories that are open.
INT_PTR RunCategoryDialog(HWND owner, DbCategories& categories);

} // namespace mervane
