#include "frame/companion_window.h"

#include <optional>
#include <utility>

#include "settings/window_placement.h"
#include "ui/pictures/program_icon.h"
#include "ui/screen/message_font.h"
#include "ui/screen/scale.h"

void CompanionWindow::DestroyIfThere()
{
    if (m_window)
        DestroyWindow(m_window);
}

bool CompanionWindow::RegisterWindowClass(HINSTANCE instance, const wchar_t* windowClass, WNDPROC procedure,
                                          UINT menu)
{
    WNDCLASSW look{};
    look.lpfnWndProc = procedure;
    look.hInstance = instance;
    look.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    look.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    look.lpszMenuName = MAKEINTRESOURCEW(menu);
    look.lpszClassName = windowClass;
    return RegisterClassW(&look) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

void CompanionWindow::OpenSettings(const wchar_t* key)
{
    m_hasSettings = m_settings.Open(key) != 0;
}

bool CompanionWindow::Create(HINSTANCE instance, const wchar_t* windowClass, const wchar_t* title,
                             const RECT& firstPlace, void* object)
{
    m_instance = instance;
    const std::optional<WindowPlace> left = LoadPlacement(m_settings);
    m_leftMaximized = left && left->maximized;
    const RECT place = left ? left->rect : firstPlace;
    return CreateWindowExW(WS_EX_CONTROLPARENT, windowClass, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                           place.left, place.top, place.right - place.left, place.bottom - place.top, nullptr,
                           nullptr, instance, object) != nullptr;
}

void CompanionWindow::ShowFirst(int showCommand)
{
    ShowAsLeft(m_window, showCommand, m_leftMaximized);
}

int CompanionWindow::Run(HACCEL keys)
{
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (m_window && (TranslateAcceleratorW(m_window, keys, &message) || TranslateKey(message) ||
                         IsDialogMessageW(m_window, &message)))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

LRESULT CompanionWindow::OnFrameMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED)
            LayOut();
        return 0;
    case WM_DPICHANGED: TakeResolution(*reinterpret_cast<const RECT*>(lParam)); return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE && IsChild(m_window, GetFocus()))
            m_focus = GetFocus();
        break;
    default: break;
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

void CompanionWindow::TakeResolution(const RECT& place)
{
    const int before = m_dpi;
    MakeFonts();
    OnResolutionChanged(before);
    TakePlace(m_window, place);
    LayOut();
    InvalidateRect(m_window, nullptr, TRUE);
}

// The children show the old font until they have the new one.
void CompanionWindow::MakeFonts()
{
    const UniqueFont old = std::exchange(m_font, MakeMessageFont(m_window));
    for (HWND child : std::exchange(m_children, {}))
        GiveFont(child);
    m_textHeight = TextHeight(m_window, m_font.get());
    m_smallIcon = SetProgramIcon(m_window, ICON_SMALL);
    m_bigIcon = SetProgramIcon(m_window, ICON_BIG);
    m_dpi = DpiOf(m_window);
}

void CompanionWindow::GiveFont(HWND child)
{
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    m_children.push_back(child);
}

HWND CompanionWindow::MakeChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, DWORD exStyle,
                                int id)
{
    HWND child =
        CreateWindowExW(exStyle, windowClass, text, style | WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, m_window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), m_instance, nullptr);
    if (child)
        GiveFont(child);
    return child;
}

bool CompanionWindow::StorePlace()
{
    if (m_hasSettings)
        SavePlacement(m_window, m_settings);
    return m_hasSettings;
}

int CompanionWindow::RowHeight() const
{
    constexpr int kAroundText = 8; // above and below the text, together
    return m_textHeight + Scale(m_window, kAroundText);
}
