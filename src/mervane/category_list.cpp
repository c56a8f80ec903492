#include "mervane/category_list.h"

#include <commctrl.h>

#include <algorithm>

#include "mervane/list_windows.h"
#include "util/window_metrics.h"

namespace mervane {

namespace {

constexpr DWORD kStyle = WS_TABSTOP | LVS_LIST | LVS_SINGLESEL | LVS_SHOWSELALWAYS;

// What has the focus: its category, and its place should that be gone.
struct Focus {
    int row;
    LPARAM category;
};

Focus FocusOf(HWND list)
{
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = ListView_GetNextItem(list, -1, LVNI_FOCUSED);
    if (item.iItem < 0 || !ListView_GetItem(list, &item))
        return {0, 0};
    return {item.iItem, item.lParam};
}

int RowOf(std::span<const NameCache::Entry> categories, const Focus& focus)
{
    for (size_t row = 0; row < categories.size(); ++row)
        if (static_cast<LPARAM>(categories[row].id) == focus.category)
            return static_cast<int>(row);
    return std::min(focus.row, static_cast<int>(categories.size()) - 1);
}

void InsertAll(HWND list, std::span<const NameCache::Entry> categories)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    for (const NameCache::Entry& category : categories) {
        item.pszText = const_cast<wchar_t*>(category.name.c_str()); // the list only reads it
        item.lParam = static_cast<LPARAM>(category.id);
        ListView_InsertItem(list, &item);
        ++item.iItem;
    }
}

// The columns are as wide as the longest name with its check box, but no wider than the list.
int ColumnWidth(HWND list, std::span<const NameCache::Entry> categories)
{
    HDC dc = GetDC(list);
    HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0));
    HGDIOBJ before = font ? SelectObject(dc, font) : nullptr;
    LONG widest = 0;
    for (const NameCache::Entry& category : categories) {
        SIZE size{};
        GetTextExtentPoint32W(dc, category.name.c_str(), static_cast<int>(category.name.size()), &size);
        widest = std::max(widest, size.cx);
    }
    if (before)
        SelectObject(dc, before);
    ReleaseDC(list, dc);
    RECT client{};
    GetClientRect(list, &client);
    const LONG beside = 2 * MetricOf(list, SM_CXSMICON);
    return static_cast<int>(std::clamp(widest + beside, beside, std::max(beside, client.right)));
}

} // namespace

HWND CreateCategoryList(HINSTANCE instance, HWND parent, const RECT& rectangle, int id)
{
    HWND list = CreateChildList(instance, parent, rectangle, id, kStyle);
    if (list)
        ListView_SetExtendedListViewStyleEx(list, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
    return list;
}

void FillCategoryList(HWND list, std::span<const NameCache::Entry> categories)
{
    const Focus focus = FocusOf(list);
    const ListRedrawPause pause(list);
    ListView_DeleteAllItems(list);
    ListView_SetItemCount(list, static_cast<int>(categories.size()));
    InsertAll(list, categories);
    if (categories.empty())
        return;
    ListView_SetColumnWidth(list, 0, ColumnWidth(list, categories));
    const int row = RowOf(categories, focus);
    ListView_SetItemState(list, row, LVIS_FOCUSED, LVIS_FOCUSED);
    ListView_EnsureVisible(list, row, FALSE);
}

} // namespace mervane
