#include "ui/window_scroll.h"

#include <commctrl.h>

#include <algorithm>

#include "ui/screen/scale.h"

namespace {

constexpr int kLine = 24;
constexpr UINT_PTR kSubclass = 4;

LRESULT CALLBACK Procedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR window)
{
    if (message == WM_SETFOCUS)
        SendMessageW(reinterpret_cast<HWND>(window), kMsgControlFocused, 0,
                     reinterpret_cast<LPARAM>(control));
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(control, Procedure, kSubclass);
    return DefSubclassProc(control, message, wParam, lParam);
}

} // namespace

void TellFocus(HWND control, HWND window)
{
    SetWindowSubclass(control, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(window));
}

int ScrollTarget(WORD request, int position, int track, int page, int content, int line)
{
    switch (request) {
    case SB_LINEUP: position -= line; break;
    case SB_LINEDOWN: position += line; break;
    case SB_PAGEUP: position -= page; break;
    case SB_PAGEDOWN: position += page; break;
    case SB_TOP: position = 0; break;
    case SB_BOTTOM: position = content; break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: position = track; break;
    default: break;
    }
    return std::clamp(position, 0, std::max(content - page, 0));
}

int PositionToShow(int start, int end, int position, int page)
{
    if (end > position + page)
        position = end - page;
    return std::min(position, start);
}

void WindowScroll::SetExtent(HWND window, int content, int page)
{
    m_content = content;
    m_page = page;
    m_position = 0;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(content - 1, 0);
    info.nPage = static_cast<UINT>(std::max(page, 0));
    SetScrollInfo(window, m_bar, &info, TRUE);
}

void WindowScroll::OnScroll(HWND window, WORD request)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(window, m_bar, &info);
    MoveTo(window,
           ScrollTarget(request, m_position, info.nTrackPos, m_page, m_content, Scale(window, kLine)));
}

void WindowScroll::Reveal(HWND window, HWND control)
{
    if (m_content <= m_page)
        return;
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&rect), 2);
    const int start = (IsAcross() ? rect.left : rect.top) + m_position;
    const int end = (IsAcross() ? rect.right : rect.bottom) + m_position;
    const int target = PositionToShow(start, end, m_position, m_page);
    MoveTo(window, std::clamp(target, 0, m_content - m_page));
}

void WindowScroll::MoveTo(HWND window, int position)
{
    const int moved = m_position - position;
    if (moved == 0)
        return;
    m_position = position;
    SetScrollPos(window, m_bar, position, TRUE);
    ScrollWindowEx(window, IsAcross() ? moved : 0, IsAcross() ? 0 : moved, nullptr, nullptr, nullptr, nullptr,
                   SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
}
