#include "pick/only_item.h"

#include <commctrl.h>

void ShowOnlyItem(HWND list, const wchar_t* text)
{
    ListView_DeleteAllItems(list);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.pszText = const_cast<wchar_t*>(text); // the list only reads it
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    ListView_SetItemState(list, 0, LVIS_FOCUSED, LVIS_FOCUSED);
    RECT client{};
    GetClientRect(list, &client);
    ListView_SetColumnWidth(list, 0, static_cast<int>(client.right));
}
