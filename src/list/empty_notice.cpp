#include "list/empty_notice.h"

#include <commctrl.h>

#include <algorithm>

#include "ui/screen/scale.h"

namespace {

constexpr const wchar_t* kEmptyText = L"<No Entries to Show>";
constexpr int kNoticeTop = 20;

// A header that is higher than the notice's place leaves it below itself.
RECT NoticeRect(HWND list)
{
    RECT rect{};
    RECT header{};
    GetClientRect(list, &rect);
    GetClientRect(ListView_GetHeader(list), &header);
    rect.top = std::max<LONG>(Scale(list, kNoticeTop), header.bottom);
    rect.bottom = std::max(rect.top, rect.bottom);
    return rect;
}

// Else the list, which scrolls what it has painted, would scroll the notice's pixels too.
void ClipChildren(HWND list)
{
    SetWindowLongPtrW(list, GWL_STYLE, GetWindowLongPtrW(list, GWL_STYLE) | WS_CLIPCHILDREN);
}

} // namespace

void EmptyNotice::Show(HWND list, bool empty)
{
    if (!empty)
        return Hide();
    if (m_window)
        return;
    ClipChildren(list);
    const RECT rect = NoticeRect(list);
    m_window.reset(CreateWindowExW(0, L"STATIC", kEmptyText, WS_CHILD | WS_VISIBLE | SS_CENTER, rect.left,
                                   rect.top, rect.right - rect.left, rect.bottom - rect.top, list, nullptr,
                                   GetModuleHandleW(nullptr), nullptr));
    SetFont(list);
}

void EmptyNotice::SetFont(HWND list) const
{
    if (m_window)
        SendMessageW(m_window.get(), WM_SETFONT, static_cast<WPARAM>(SendMessageW(list, WM_GETFONT, 0, 0)),
                     TRUE);
}

void EmptyNotice::Fit(HWND list)
{
    if (!m_window)
        return;
    const RECT rect = NoticeRect(list);
    MoveWindow(m_window.get(), rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, TRUE);
}

HBRUSH EmptyNotice::Colors(HDC dc)
{
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return GetSysColorBrush(COLOR_WINDOW);
}
