#include "addrbook/list_columns.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "addrbook/contact_rows.h"
#include "ui/screen/scale.h"

namespace addrbook {

namespace {

struct ColumnShape {
    const wchar_t* title;
    int width;
};
// In the order of Column; the widths are the narrowest to begin with.
constexpr ColumnShape kColumns[kColumnCount] = {
    {L"File As", 180}, {L"Company", 140}, {L"E-mail", 150}, {L"Phone", 132}};

constexpr DWORD kNarrowest = 8; // pixels: less the mouse does not get hold of
constexpr DWORD kWidest = 4096;

std::wstring WidthName(size_t column)
{
    return L"ColumnWidth" + std::to_wstring(column);
}

// The columns share a width; they get no narrower than they need.
int FirstWidth(HWND list, size_t column, int room)
{
    int all = 0;
    for (const ColumnShape& shape : kColumns)
        all += Scale(list, shape.width);
    return MulDiv(Scale(list, kColumns[column].width), std::max(room, all), all);
}

int WidthOf(HWND list, size_t column, const RegistryStore& settings, int room)
{
    const DWORD stored = settings.GetNumber(kSettings, WidthName(column).c_str(), 0);
    return stored >= kNarrowest && stored <= kWidest ? SeenWidth(list, static_cast<int>(stored))
                                                     : FirstWidth(list, column, room);
}

// What a list as wide as its parent has for columns beside its border and its scroll bar.
int RoomForColumns(HWND list)
{
    RECT client{};
    GetClientRect(GetParent(list), &client);
    return static_cast<int>(client.right) - MetricOf(list, SM_CXVSCROLL) - 2 * MetricOf(list, SM_CXEDGE) -
           static_cast<int>(kColumnCount);
}

} // namespace

void InsertColumns(HWND list, const RegistryStore& settings)
{
    const int room = RoomForColumns(list);
    for (size_t i = 0; i < kColumnCount; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<wchar_t*>(kColumns[i].title);
        column.cx = WidthOf(list, i, settings, room);
        SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
}

void SaveColumnWidths(HWND list, RegistryStore& settings)
{
    for (size_t i = 0; i < kColumnCount; ++i) {
        const int seen = ListView_GetColumnWidth(list, static_cast<int>(i));
        settings.SetNumber(kSettings, WidthName(i).c_str(), static_cast<DWORD>(StoredWidth(list, seen)));
    }
}

} // namespace addrbook
