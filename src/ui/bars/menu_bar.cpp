#include "ui/bars/menu_bar.h"

#include <commctrl.h>

#include "ui/bars/menu_keys.h"
#include "ui/screen/message_font.h"

namespace {

constexpr UINT kMsgOpen = WM_APP + 0x310; // wParam: index, lParam: by keyboard

bool IsButtonDown(UINT message)
{
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCMBUTTONDOWN: return true;
    default: return false;
    }
}

bool CanTakeFocus(HWND window)
{
    return IsWindow(window) && IsWindowVisible(window) && IsWindowEnabled(window);
}

} // namespace

std::unique_ptr<MenuBar> MenuBar::Create(HWND bar, HINSTANCE instance, int menuId)
{
    UniqueMenu menu(LoadMenuW(instance, MAKEINTRESOURCEW(menuId)));
    HWND owner = GetParent(GetParent(bar));
    if (!menu || !owner)
        return nullptr;
    std::unique_ptr<MenuBar> self(new MenuBar(bar, owner, std::move(menu)));
    SendMessageW(bar, TB_SETEXTENDEDSTYLE, TBSTYLE_EX_DRAWDDARROWS, 0);
    SendMessageW(bar, TB_SETBITMAPSIZE, 0, 0);
    SendMessageW(bar, WM_SETFONT, reinterpret_cast<WPARAM>(self->m_font.get()), FALSE);
    if (!self->m_buttons.Add(self->Handle()) ||
        !self->m_ownerHook.Attach(owner, HandleOwnerMessage, self.get()))
        return nullptr;
    return self;
}

MenuBar::MenuBar(HWND bar, HWND owner, UniqueMenu menu)
    : m_buttons(bar), m_owner(owner), m_menu(std::move(menu)), m_font(MakeMenuFont(owner))
{}

MenuBar::~MenuBar()
{
    if (m_mode == Mode::Open)
        EndMenu();
}

LRESULT MenuBar::HandleOwnerMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* menuBar = static_cast<MenuBar*>(self);
    if (menuBar->OnOwnerMessage(message, wParam, lParam))
        return 0;
    return menuBar->m_ownerHook.Next(message, wParam, lParam);
}

// The system turns Alt, F10 and Alt with a letter into SC_KEYMENU, by its own rules of what counts as
// pressing Alt alone.
bool MenuBar::OnOwnerMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SYSCOMMAND:
        return (wParam & 0xFFF0) == SC_KEYMENU && OnKeyMenu(static_cast<wchar_t>(LOWORD(lParam)));
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            OnOwnerDeactivated();
        return false;
    case WM_CANCELMODE: OnOwnerDeactivated(); return false;
    default: return false;
    }
}

bool MenuBar::OnKeyMenu(wchar_t character)
{
    if (m_mode == Mode::Open || IsIconic(m_owner))
        return false;
    if (character == 0) {
        Activate(NextItem(m_buttons.Enabled(), -1, 1));
        return true;
    }
    Leave();
    return character != L' ' && OnMnemonic(character); // blank: the system menu
}

bool MenuBar::OnMnemonic(wchar_t character)
{
    const int index = FindMnemonic(ItemTexts(Handle()), character);
    if (index < 0)
        return false;
    PostOpen(index, true);
    return true;
}

void MenuBar::OnOwnerDeactivated()
{
    if (m_mode == Mode::Active)
        Leave();
    if (m_mode == Mode::Open)
        EndMenu();
}

bool MenuBar::OnBarMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    *result = 0;
    if (message == kMsgOpen) {
        Open(static_cast<int>(wParam), lParam != 0);
        return true;
    }
    if (m_mode != Mode::Active)
        return false;
    switch (message) {
    case WM_KEYDOWN: return OnKeyDown(wParam);
    case WM_CHAR: return OnChar(static_cast<wchar_t>(wParam));
    case WM_SYSKEYDOWN:
        if (wParam != VK_MENU && wParam != VK_F10)
            return false;
        Leave();
        return true;
    case WM_KILLFOCUS: Release(); return false;
    case WM_MOUSEMOVE: return IsMouseResting();
    default: return false;
    }
}

void MenuBar::OnDropDown(int command)
{
    if (m_mode != Mode::Open)
        PostOpen(MenuBarButtons::IndexOf(command), false);
}

// Alt with a letter goes to the window with the focus, not to the one with the menu bar. While the bar is
// active its keys are no accelerators, and a click anywhere else ends that.
bool MenuBar::TranslateKey(const MSG& message)
{
    if (message.message == WM_SYSCHAR && GetAncestor(message.hwnd, GA_ROOT) == m_owner)
        return OnMnemonic(static_cast<wchar_t>(message.wParam));
    if (m_mode != Mode::Active)
        return false;
    if (message.hwnd != m_buttons.Window()) {
        if (IsButtonDown(message.message))
            Leave();
        return false;
    }
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return false;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

bool MenuBar::OnKeyDown(WPARAM key)
{
    const int hot = m_buttons.Hot();
    switch (key) {
    case VK_LEFT: m_buttons.SetHot(NextItem(m_buttons.Enabled(), hot, -1)); return true;
    case VK_RIGHT: m_buttons.SetHot(NextItem(m_buttons.Enabled(), hot, 1)); return true;
    case VK_UP:
    case VK_DOWN:
    case VK_RETURN: PostOpen(hot, true); return true;
    case VK_ESCAPE: Leave(); return true;
    default: return true;
    }
}

bool MenuBar::OnChar(wchar_t character)
{
    if (character < L' ')
        return true;
    if (character == L' ') {
        Leave();
        PostMessageW(m_owner, WM_SYSCOMMAND, SC_KEYMENU, L' ');
        return true;
    }
    if (!OnMnemonic(character))
        MessageBeep(0);
    return true;
}

// A mouse that rests over the bar must not take the highlight from the keyboard.
bool MenuBar::IsMouseResting() const
{
    POINT mouse{};
    GetCursorPos(&mouse);
    return mouse.x == m_mouseBefore.x && mouse.y == m_mouseBefore.y;
}

void MenuBar::Activate(int index)
{
    if (index < 0)
        return;
    HWND bar = m_buttons.Window();
    if (GetFocus() != bar)
        m_focusBefore = SetFocus(bar);
    m_mode = Mode::Active;
    GetCursorPos(&m_mouseBefore);
    ShowUnderlines();
    SendMessageW(bar, TB_SETANCHORHIGHLIGHT, TRUE, 0);
    m_buttons.SetHot(index);
}

// The focus goes back to where it was.
void MenuBar::Leave()
{
    Release();
    if (GetFocus() == m_buttons.Window())
        SetFocus(CanTakeFocus(m_focusBefore) ? m_focusBefore : m_owner);
    m_focusBefore = nullptr;
}

void MenuBar::Release()
{
    m_mode = Mode::Idle;
    SendMessageW(m_buttons.Window(), TB_SETANCHORHIGHLIGHT, FALSE, 0);
    m_buttons.SetHot(-1);
}

// Later, when what is under way now - a notification, a key's character - is done.
void MenuBar::PostOpen(int index, bool byKeyboard)
{
    PostMessageW(m_buttons.Window(), kMsgOpen, static_cast<WPARAM>(index), byKeyboard);
}

void MenuBar::Open(int index, bool byKeyboard)
{
    if (m_mode == Mode::Open || !m_buttons.IsEnabled(index))
        return;
    m_mode = Mode::Open;
    if (byKeyboard)
        ShowUnderlines();
    MenuTracker tracker(m_buttons, m_menu, m_owner);
    if (!tracker.Run(index, byKeyboard))
        return; // this object went with the bar
    if (tracker.Command() == 0 && tracker.IsEscaped()) {
        Activate(tracker.Index());
        return;
    }
    Leave();
    if (tracker.Command() != 0)
        PostMessageW(m_owner, WM_COMMAND, MAKEWPARAM(tracker.Command(), 0), 0);
}

void MenuBar::ShowUnderlines() const
{
    SendMessageW(m_owner, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL), 0);
}
