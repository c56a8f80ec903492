#include "pick/z_cats_dlg.h"

#include "mervane/db_categories.h"
#include "pick/category_dialog.h"

INT_PTR ZCatsDlg::DoModal()
{
    DbCategories categories;
    if (!categories.Open()) {
        TellThatNoneAreShown(m_owner, categories.Trouble());
        return -1;
    }
    return RunCategoryDialog(m_owner, categories);
}
