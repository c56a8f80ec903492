#include "mervane/list_windows.h"

#include <algorithm>

#include "util/compare_text.h"

namespace mervane {

namespace {

bool Matches(std::wstring_view name, std::wstring_view text, bool wholly)
{
    return wholly ? IsSameName(name, text) : NameStartsWith(name, text);
}

} // namespace

HWND CreateChildList(HINSTANCE instance, HWND parent, const RECT& rectangle, int id, DWORD style)
{
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    HWND list =
        CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"", style | WS_CHILD | WS_VISIBLE, rectangle.left,
                        rectangle.top, rectangle.right - rectangle.left, rectangle.bottom - rectangle.top,
                        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
    if (list)
        SendMessageW(list, WM_SETFONT, static_cast<WPARAM>(SendMessageW(parent, WM_GETFONT, 0, 0)), FALSE);
    return list;
}

ListRedrawPause::ListRedrawPause(HWND list) : m_list(list)
{
    SendMessageW(m_list, WM_SETREDRAW, FALSE, 0);
}

ListRedrawPause::~ListRedrawPause()
{
    SendMessageW(m_list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_list, nullptr, TRUE);
}

void AnswerText(LVITEMW& item, std::wstring_view text)
{
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0)
        return;
    item.pszText[text.copy(item.pszText, static_cast<size_t>(item.cchTextMax) - 1)] = L'\0';
}

int FindRow(const NMLVFINDITEMW& wanted, int count, const std::function<std::wstring_view(int row)>& nameOf)
{
    const UINT flags = wanted.lvfi.flags;
    if (!(flags & (LVFI_STRING | LVFI_PARTIAL)) || !wanted.lvfi.psz || count <= 0)
        return -1;
    const std::wstring_view text = wanted.lvfi.psz;
    const bool wholly = !(flags & LVFI_PARTIAL);
    const int start = wanted.iStart > 0 && wanted.iStart < count ? wanted.iStart : 0;
    const int end = flags & LVFI_WRAP ? start + count : count;
    for (int i = start; i < end; ++i)
        if (Matches(nameOf(i % count), text, wholly))
            return i % count;
    return -1;
}

} // namespace mervane
