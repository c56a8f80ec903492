#include "list/list_place.h"

#include <commctrl.h>

#include <algorithm>

void ScrollToTop(HWND list, int row)
{
    const int last = ListView_GetItemCount(list) - 1;
    if (last < 0)
        return;
    const int end = row + ListView_GetCountPerPage(list) - 1;
    ListView_EnsureVisible(list, std::clamp(end, 0, last), FALSE);
    ListView_EnsureVisible(list, std::clamp(row, 0, last), FALSE);
}

ListPlace::ListPlace(HWND list)
    : m_top(ListView_GetTopIndex(list)), m_focused(ListView_GetNextItem(list, -1, LVNI_FOCUSED))
{}

void ListPlace::Restore(HWND list) const
{
    ScrollToTop(list, m_top);
    const int focused = std::min(m_focused, ListView_GetItemCount(list) - 1);
    if (focused >= 0)
        ListView_SetItemState(list, focused, LVIS_FOCUSED, LVIS_FOCUSED);
}
