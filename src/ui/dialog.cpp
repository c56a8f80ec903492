#include "ui/dialog.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "mervane/file/store_waiter.h"
#include "ui/dialog_in_front.h"
#include "ui/launch.h"
#include "ui/pictures/program_icon.h"
#include "ui/placeholder_edit.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "ui/select_all_key.h"
#include "ui/session_end.h"
#include "ui/wine.h"

namespace {

constexpr ULONGLONG kSettleTime = 150; // milliseconds
constexpr WORD kFromAccelerator = 1;   // the high word of a WM_COMMAND; a button's click has 0
constexpr UINT kMsgResolutionChanged = WM_APP + 0x320;

// The messages whose answer is the dialog procedure's return value itself.
bool IsAnsweredDirectly(UINT message)
{
    switch (message) {
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_QUERYDRAGICON: return true;
    default: return false;
    }
}

// A caption with a system menu shows an icon: the system's own unless it is given one.
bool ShowsIcon(HWND window)
{
    constexpr LONG_PTR kHasIcon = WS_CAPTION | WS_SYSMENU;
    return (GetWindowLongPtrW(window, GWL_STYLE) & kHasIcon) == kHasIcon;
}

// From the outermost to the innermost. Never freed: a dialog may be open while the program frees the rest.
std::vector<Dialog*>& OpenDialogs()
{
    static auto& s_open = *new std::vector<Dialog*>;
    return s_open;
}

} // namespace

Dialog::~Dialog()
{
    if (m_window)
        SetWindowLongPtrW(m_window, DWLP_USER, 0);
    Forget();
}

const wchar_t* Dialog::UnsavedInOpenDialogs()
{
    const auto& open = OpenDialogs();
    for (auto dialog = open.rbegin(); dialog != open.rend(); ++dialog)
        if (const wchar_t* unsaved = (*dialog)->Unsaved())
            return unsaved;
    return nullptr;
}

// A copy, since a dialog may end by it.
void Dialog::TellSessionEnd()
{
    const std::vector<Dialog*> open = OpenDialogs();
    for (auto dialog = open.rbegin(); dialog != open.rend(); ++dialog)
        if (std::count(OpenDialogs().begin(), OpenDialogs().end(), *dialog))
            (*dialog)->OnSessionEnd();
}

void Dialog::Forget()
{
    std::erase(OpenDialogs(), this);
}

INT_PTR Dialog::DoModal(HINSTANCE instance, int templateId, HWND owner)
{
    // For a bad owner the system answers 0, which could not be told from a cancelled dialog.
    if (owner && !IsWindow(owner))
        return -1;
    return DialogBoxParamW(instance, MAKEINTRESOURCEW(templateId), owner, Procedure,
                           reinterpret_cast<LPARAM>(this));
}

// Some messages come before WM_INITDIALOG: there is no object yet, and the dialog manager takes them.
INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG)
        return Opened(window, reinterpret_cast<Dialog*>(lParam))->Build();
    if (message == WM_NCDESTROY)
        mervane::ForgetDpi(window);
    auto* self = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!self)
        return FALSE;
    if (message == WM_ACTIVATE) {
        self->NoteActivation(wParam, reinterpret_cast<HWND>(lParam));
        PassActivationOn(window, wParam);
    }
    if (mervane::PutOffWhileWaiting(window, message, wParam, lParam) ||
        self->IsOutOfReach(message, wParam, lParam))
        return TRUE;
    mervane::PassToControls(window, message, wParam, lParam);
    LRESULT result = 0;
    const bool handled =
        self->OnMessage(message, wParam, lParam, &result) || self->Dispatch(message, wParam, lParam, &result);
    // The object may be gone by now: a dialog ends by its messages.
    if (message == WM_NCDESTROY && GetWindowLongPtrW(window, DWLP_USER)) {
        SetWindowLongPtrW(window, DWLP_USER, 0);
        self->SetWindow(nullptr);
        self->Forget();
    }
    if (handled && IsAnsweredDirectly(message))
        return result;
    if (handled)
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
    return handled;
}

Dialog* Dialog::Opened(HWND window, Dialog* dialog)
{
    dialog->SetWindow(window);
    dialog->m_dpi = DpiOf(window);
    dialog->SetIcons();
    SetWindowLongPtrW(window, DWLP_USER, reinterpret_cast<LONG_PTR>(dialog));
    OpenDialogs().push_back(dialog);
    return dialog;
}

void Dialog::SetIcons()
{
    if (!ShowsIcon(m_window))
        return;
    m_smallIcon = SetProgramIcon(m_window, ICON_SMALL);
    m_bigIcon = SetProgramIcon(m_window, ICON_BIG);
}

void Dialog::FollowResolution()
{
    const int before = std::exchange(m_dpi, DpiOf(m_window));
    if (m_dpi == before)
        return;
    SetIcons();
    OnResolutionChanged(before);
    (void)m_scroll.Fit(m_window, WorkAreaAt(m_window));
}

// A command that another program sends, or that was on its way, while another dialog or a box stands over
// this one; the click of a button as well. Any other notification of the dialog's own controls comes through:
// one may still tell that it loses the focus.
bool Dialog::IsOutOfReach(UINT message, WPARAM wParam, LPARAM lParam) const
{
    if (message != WM_COMMAND || IsWindowEnabled(m_window))
        return false;
    return !lParam || HIWORD(wParam) == BN_CLICKED;
}

bool Dialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case WM_COMMAND: return OnCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_CLOSE:
        if (!PassCloseOn(m_window))
            OnCancel();
        return true;
    case WM_CTLCOLOREDIT:
        *result = reinterpret_cast<LRESULT>(
            PlaceholderBrush(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
        return *result != 0;
    case WM_QUERYENDSESSION: *result = AnswerSessionQuery(m_window); return true;
    case WM_ENDSESSION: (void)TakeSessionEnd(m_window, wParam); return true;
    case WM_SETTINGCHANGE:
        OnSettingsChanged();
        if (wParam == SPI_SETWORKAREA)
            (void)m_scroll.Fit(m_window, WorkAreaAt(m_window));
        return true;
    case WM_DPICHANGED:
        // The dialog manager scales what the template has, behind this; what is the dialog's own comes then.
        mervane::NoteDpi(m_window, wParam);
        m_scroll.GoToStart();
        PostMessageW(m_window, kMsgResolutionChanged, 0, 0);
        return false;
    case kMsgResolutionChanged: FollowResolution(); return true;
    case WM_HELP:
    case kMsgHelpBehindMenu:
        if (!HelpTopic())
            return false;
        if (IsHelpDue(m_window, message))
            ShowHelp(HelpTopic(), m_window);
        *result = TRUE; // asked and answered: the owner would show its own page
        return true;
    default: return m_scroll.OnMessage(message, wParam, lParam);
    }
}

// A disabled button is not pressed by Enter or Esc either.
bool Dialog::OnCommand(int id, WORD notification)
{
    if ((id != IDOK && id != IDCANCEL) || notification > kFromAccelerator)
        return false;
    HWND button = GetItem(id);
    if (button && !IsWindowEnabled(button))
        return true;
    if (id == IDOK)
        OnOK();
    else
        OnCancel();
    return true;
}

bool Dialog::OnMessage(UINT, WPARAM, LPARAM, LRESULT*)
{
    return false;
}

bool Dialog::Build()
{
    const bool takesDefaultFocus = OnInitDialog();
    AddSelectAllKeys(m_window);
    if (m_scroll.Fit(m_window, OwnersWorkArea()))
        CenterOnWorkArea();
    return takesDefaultFocus;
}

bool Dialog::OnInitDialog()
{
    return true;
}

void Dialog::OnResolutionChanged(int) {}

void Dialog::Grow(int most, std::initializer_list<int> growing, std::initializer_list<int> below)
{
    const RECT area = OwnersWorkArea();
    RECT own{};
    GetWindowRect(m_window, &own);
    const int room = (area.bottom - area.top) - (own.bottom - own.top);
    GrowBy(std::clamp(room, 0, Scale(m_window, most)), growing, below);
}

void Dialog::GrowBy(int growth, std::initializer_list<int> growing, std::initializer_list<int> below)
{
    const auto grow = [&](HWND window) {
        RECT rect{};
        GetWindowRect(window, &rect);
        SetWindowPosition(0, 0, rect.right - rect.left, rect.bottom - rect.top + growth, window,
                          SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE, nullptr);
    };
    grow(m_window);
    for (const int id : growing)
        grow(GetItem(id));
    for (const int id : below) {
        RECT rect{};
        GetWindowRect(GetItem(id), &rect);
        ScreenToClientRect(&rect);
        SetWindowPosition(rect.left, rect.top + growth, 0, 0, GetItem(id),
                          SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE, nullptr);
    }
}

void Dialog::KeepFocus(int next)
{
    HWND focus = GetFocus();
    if (focus && IsWindowEnabled(focus))
        return;
    HWND item = GetItem(next);
    if (!IsWindowEnabled(item))
        item = GetNextDlgTabItem(m_window, item, FALSE);
    SendMessageW(m_window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(item), TRUE);
}

void Dialog::NoteActivation(WPARAM state, HWND other)
{
    if (LOWORD(state) != WA_INACTIVE && ::GetWindow(other, GW_OWNER) == m_window)
        m_boxClosed = GetTickCount64();
}

// Under X11 the window manager hands the keyboard on a moment after a box has closed, to the window that was
// below it then. A dialog that has ended by that time cannot take it, and no window has the keyboard. Looking
// for messages takes what the window manager says; none is dispatched here.
void Dialog::AwaitKeyboard() const
{
    while (GetTickCount64() - m_boxClosed < kSettleTime) {
        MSG message;
        PeekMessageW(&message, m_window, WM_NULL, WM_NULL, PM_NOREMOVE);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
}

void Dialog::End(INT_PTR result)
{
    if (IsUnderWine())
        AwaitKeyboard();
    EndDialog(m_window, result);
}

void Dialog::OnOK()
{
    End(1);
}

void Dialog::OnCancel()
{
    End(0);
}

void Dialog::EnableItem(int id, bool enable)
{
    EnableWindow(GetItem(id), enable);
}

void Dialog::ScreenToClientRect(RECT* rect) const
{
    MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(rect), 2);
}

void Dialog::ClientToScreenRect(RECT* rect) const
{
    MapWindowPoints(m_window, nullptr, reinterpret_cast<POINT*>(rect), 2);
}

void Dialog::GetClientRectangle(RECT* rect, HWND control) const
{
    GetClientRect(control ? control : m_window, rect);
}

HWND Dialog::GetItem(int id) const
{
    return GetDlgItem(m_window, id);
}

HWND Dialog::GetWindow() const
{
    return m_window;
}

void Dialog::SetWindow(HWND window)
{
    m_window = window;
}

void Dialog::MoveWindow(int x, int y, int cx, int cy, bool repaint, HWND control)
{
    ::MoveWindow(control ? control : m_window, x, y, cx, cy, repaint);
}

void Dialog::SetWindowPosition(int x, int y, int cx, int cy, HWND control, UINT flags, HWND insertAfter)
{
    SetWindowPos(control ? control : m_window, insertAfter, x, y, cx, cy, flags);
}

RECT Dialog::OwnersWorkArea() const
{
    HWND owner = ::GetWindow(m_window, GW_OWNER);
    return WorkAreaAt(owner ? owner : m_window);
}

void Dialog::CenterOnWorkArea()
{
    CenterWithin(OwnersWorkArea());
}

void Dialog::CenterOnOwner()
{
    HWND owner = ::GetWindow(m_window, GW_OWNER);
    RECT around = OwnersWorkArea();
    if (owner && !IsIconic(owner))
        GetWindowRect(owner, &around);
    CenterWithin(around);
}

// A dialog larger than the work area keeps its caption in sight.
void Dialog::CenterWithin(const RECT& around)
{
    const RECT area = OwnersWorkArea();
    RECT own{};
    GetWindowRect(m_window, &own);
    const LONG width = own.right - own.left, height = own.bottom - own.top;
    const LONG x = std::min((around.left + around.right - width) / 2, area.right - width);
    const LONG y = std::min((around.top + around.bottom - height) / 2, area.bottom - height);
    SetWindowPos(m_window, nullptr, std::max(x, area.left), std::max(y, area.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Dialog::CheckButton(int id, bool checked)
{
    CheckDlgButton(m_window, id, checked ? BST_CHECKED : BST_UNCHECKED);
}

bool Dialog::IsItemVisible(int id) const
{
    HWND item = GetItem(id);
    return item && (GetWindowLongPtrW(item, GWL_STYLE) & WS_VISIBLE) != 0;
}

void Dialog::HideWindow(HWND control)
{
    ::ShowWindow(control, SW_HIDE);
}

void Dialog::HideItem(int id)
{
    HideWindow(GetItem(id));
}

void Dialog::ShowWindow(HWND control)
{
    ::ShowWindow(control, SW_SHOW);
}

void Dialog::ShowItem(int id)
{
    ShowWindow(GetItem(id));
}

void Dialog::OnSettingsChanged() {}

bool Dialog::IsButtonChecked(int id) const
{
    return IsDlgButtonChecked(m_window, id) == BST_CHECKED;
}

void Dialog::ShowInputPanel(bool) {}

void PlaceInDialog(HWND control, HWND dialog, HWND behind)
{
    SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog, WM_GETFONT, 0, 0)), FALSE);
    SetWindowPos(control, behind, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}
