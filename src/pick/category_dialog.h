// The window of ZCatsDlg.
#pragma once

#include <windows.h>

#include "mervane/file/trouble.h"

class DbCategories;

// As ZCatsDlg::DoModal, over categories that are open.
INT_PTR RunCategoryDialog(HWND owner, DbCategories& categories);

// The box that stands in the dialog's place where the categories cannot be opened or read.
void TellThatNoneAreShown(HWND owner, StoreTrouble trouble);
