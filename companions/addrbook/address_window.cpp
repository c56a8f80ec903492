#include "addrbook/address_window.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "addrbook/list_columns.h"
#include "addrbook/resource.h"
#include "mervane/backup/restoration.h"
#include "mervane/backup/backup_keep.h"
#include "mervane/file/folder_files.h"
#include "mervane/file/store_path.h"
#include "mervane/file/trouble.h"
#include "ui/control_text.h"
#include "ui/dialog_in_front.h"
#include "ui/launch.h"
#include "ui/list_boxes.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "ui/session_end.h"
#include "ui/store_window.h"
#include "util/clock.h"

namespace addrbook {

namespace {

constexpr const wchar_t* kTitle = L"Address Book";
constexpr int kMargin = 4;
constexpr int kLabelWidth = 36;
constexpr int kFindWidth = 220;
constexpr int kWindowWidth = 800;
constexpr int kWindowHeight = 560;

// The journal has a password, and asks for it first.
constexpr const wchar_t* kStartJournal = L"\n\nStart the journal: it offers a backup, where one is whole.";

// Where there are backups, or where nobody can tell, the person does not want a new store.
bool IsLost(const std::wstring& path)
{
    if (!mervane::IsGone(path))
        return false;
    const mervane::BackupSearch backups = mervane::NewestWholeBackup(path, mervane::DayOfTime(LocalNow()));
    return backups.hasAny || backups.trouble != StoreTrouble::None;
}

std::wstring FailureText(const std::wstring& path, StoreTrouble trouble,
                         const std::vector<RenamedFile>& setAside)
{
    return NotOpenedText(path, trouble, setAside) + (mervane::IsBroken(path, trouble) ? kStartJournal : L"");
}

} // namespace

bool AddressWindow::RegisterWindowClass(HINSTANCE instance)
{
    return CompanionWindow::RegisterWindowClass(instance, kAddressWindowClass,
                                                WindowProcedure<AddressWindow>::Run, IDR_ADDRESS_MENU);
}

bool AddressWindow::Create(HINSTANCE instance, Turn* turn)
{
    m_turn = turn;
    const std::wstring path = mervane::StorePath();
    if (IsLost(path)) {
        m_failure = GoneText(path, mervane::FileExists(path)) + kStartJournal;
        return false;
    }
    OpenSettings(kSettingsKey);
    if (!CompanionWindow::Create(instance, kAddressWindowClass, kTitle,
                                 MiddlePlace(kWindowWidth, kWindowHeight), this)) {
        m_failure = L"The address book cannot be shown.";
        return false;
    }
    if (m_contacts.Open(kContactsKey, m_window)) {
        m_isLoaded = true;
        Reload();
        return true;
    }
    m_failure = FailureText(path, m_contacts.Trouble(), m_contacts.TakeSetAside());
    DestroyWindow(m_window);
    return false;
}

void AddressWindow::TellFailure() const
{
    MessageBoxW(nullptr, m_failure.c_str(), kTitle, MB_OK | MB_ICONERROR);
}

void AddressWindow::TellSetAside()
{
    const std::vector<RenamedFile> setAside = m_contacts.TakeSetAside();
    if (!setAside.empty())
        MessageBoxW(m_window, SetAsideText(setAside).c_str(), kTitle, MB_OK | MB_ICONEXCLAMATION);
}

void AddressWindow::TellNotKept() const
{
    if (m_notKept != StoreTrouble::None)
        MessageBoxW(nullptr, NotKeptText(mervane::StorePath(), m_notKept).c_str(), kTitle,
                    MB_OK | MB_ICONEXCLAMATION);
}

LRESULT AddressWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: return OnCreate() ? 0 : -1;
    case WM_SETFOCUS: SetFocus(m_focus ? m_focus : m_list); return 0;
    case WM_ACTIVATE: PassActivationOn(m_window, wParam); return OnFrameMessage(message, wParam, lParam);
    case WM_COMMAND:
        OnCommand(GET_WM_COMMAND_ID(wParam, lParam), GET_WM_COMMAND_CMD(wParam, lParam));
        return 0;
    case WM_NOTIFY: return OnNotify(reinterpret_cast<NMHDR*>(lParam));
    case WM_INITMENUPOPUP: EnableCommands(); return 0;
    case WM_CONTEXTMENU:
        if (reinterpret_cast<HWND>(wParam) != m_list)
            return DefWindowProcW(m_window, message, wParam, lParam);
        ShowListMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_HELP:
    case kMsgHelpBehindMenu:
        if (IsHelpDue(m_window, message))
            ShowHelp(kHelpAddressBook, m_window);
        return TRUE;
    case kMsgDatabaseChange: OnContactsChanged(wParam); return 0;
    case WM_CLOSE:
        if (!PassCloseOn(m_window))
            Close();
        return 0;
    case WM_QUERYENDSESSION: return AnswerSessionQuery(m_window);
    case WM_ENDSESSION: OnEndSession(wParam); return 0;
    case WM_DESTROY: OnDestroy(); return 0;
    default: return OnFrameMessage(message, wParam, lParam);
    }
}

bool AddressWindow::OnCreate()
{
    SetStoreOfWindow(m_window, mervane::StoreNumber(mervane::StorePath()), std::exchange(m_turn, nullptr));
    MakeFonts();
    m_findLabel = MakeChild(L"STATIC", L"Fi&nd:", SS_CENTERIMAGE, 0, IDC_FIND_LABEL);
    m_find = MakeChild(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, IDC_FIND);
    m_count =
        MakeChild(L"STATIC", L"", SS_CENTERIMAGE | SS_RIGHT | SS_NOPREFIX | SS_ENDELLIPSIS, 0, IDC_COUNT);
    MakeList();
    return m_findLabel && m_find && m_count && m_list;
}

void AddressWindow::OnResolutionChanged(int dpiBefore)
{
    RescaleColumns(m_list, dpiBefore, DpiOf(m_window));
}

// The count gives way to the box, the box to nothing.
void AddressWindow::LayOut()
{
    RECT client{};
    GetClientRect(m_window, &client);
    const int margin = Scale(m_window, kMargin), label = Scale(m_window, kLabelWidth), height = RowHeight();
    const int findLeft = margin + label;
    const int findWidth = std::max(
        0, std::min(Scale(m_window, kFindWidth), static_cast<int>(client.right) - findLeft - margin));
    const int countLeft = findLeft + findWidth + margin;
    const int listTop = height + 2 * margin;
    MoveWindow(m_findLabel, margin, margin, label, height, TRUE);
    MoveWindow(m_find, findLeft, margin, findWidth, height, TRUE);
    MoveWindow(m_count, countLeft, margin, std::max(0, static_cast<int>(client.right) - countLeft - margin),
               height, TRUE);
    MoveWindow(m_list, 0, listTop, client.right, std::max(0, static_cast<int>(client.bottom) - listTop),
               TRUE);
}

// What was never loaded is not saved. Nor does it end the program: with a quit message in the queue the box
// that tells why would close by itself.
void AddressWindow::OnDestroy()
{
    if (!m_isLoaded)
        return;
    m_isLoaded = false;
    if (StorePlace())
        SaveColumnWidths(m_list, m_settings);
    m_contacts.Close();
    m_notKept = m_contacts.Trouble();
    PostQuitMessage(0);
}

// The process may be ended as soon as this returns. Open dialogs go with the window; a transfer has been
// stopped by then.
void AddressWindow::OnEndSession(WPARAM ends)
{
    if (!TakeSessionEnd(m_window, ends))
        return;
    Close();
    m_notKept = StoreTrouble::None; // nobody is there to be told
}

// Not while it is still being made, when nobody sees it. A copy that is started from here on opens a window
// of its own.
void AddressWindow::Close()
{
    if (!m_isLoaded)
        return;
    EndAnyMenu();
    SetStoreOfWindow(m_window, kNoStore);
    DestroyWindow(m_window);
}

// In the box the arrows move in the list, so that what was found is opened without leaving it.
bool AddressWindow::TranslateKey(const MSG& message)
{
    if (message.message != WM_KEYDOWN)
        return false;
    const bool isSelectAll = message.wParam == L'A' && GetKeyState(VK_CONTROL) < 0;
    if (message.hwnd == m_list && isSelectAll) {
        OnCommand(CMD_SELECT_ALL, 0);
        return true;
    }
    const bool moves = message.wParam == VK_UP || message.wParam == VK_DOWN || message.wParam == VK_PRIOR ||
                       message.wParam == VK_NEXT;
    if (message.hwnd != m_find || !moves)
        return false;
    SendMessageW(m_list, WM_KEYDOWN, message.wParam, message.lParam);
    return true;
}

void AddressWindow::OnCommand(int id, WORD notification)
{
    // Behind a dialog or a box nothing is begun, whoever asks for it.
    if (!IsWindowEnabled(m_window) && id != IDC_FIND && id != CMD_CLOSE)
        return;
    // Nor within a menu's loop, where another program may ask for it.
    if (id != IDC_FIND && EndMenuOf(m_window)) {
        PostMessageW(m_window, WM_COMMAND, MAKEWPARAM(id, notification), 0);
        return;
    }
    switch (id) {
    case CMD_NEW_CONTACT: return NewContact();
    case IDOK:
    case CMD_EDIT_CONTACT: return EditCurrent();
    case CMD_DELETE_CONTACT: return DeleteSelected();
    case CMD_SELECT_ALL: return SetRowState(-1, LVIS_SELECTED);
    case CMD_IMPORT: return AskImport();
    case CMD_EXPORT_CARDS: return AskExport();
    case CMD_SHOW_HELP: ShowHelp(kHelpAddressBook, m_window); return;
    case CMD_CLOSE: PostMessageW(m_window, WM_CLOSE, 0, 0); return;
    case CMD_FIND_CONTACT:
        SetFocus(m_find);
        SendMessageW(m_find, EM_SETSEL, 0, -1);
        return;
    case IDCANCEL: return OnEscape();
    case IDC_FIND:
        if (notification == EN_CHANGE)
            OnFindChanged();
        return;
    default: return;
    }
}

void AddressWindow::OnEscape()
{
    if (GetWindowTextLengthW(m_find))
        SetWindowTextW(m_find, L"");
    else
        SetFocus(m_list);
}

void AddressWindow::OnFindChanged()
{
    const std::optional<std::wstring> text = ReadText(m_find);
    if (!text)
        return;
    const std::vector<CEOID> selected = Selected();
    const CEOID focused = Focused();
    m_rows.Find(*text);
    ShowRows(selected, focused, 0);
}

// Bulk work of another program is over at its end, which is told too.
void AddressWindow::OnContactsChanged(WPARAM code)
{
    if (code != kChangeWorkBegins)
        m_refresh.Ask(m_window);
}

void AddressWindow::EnableCommands()
{
    HMENU menu = GetMenu(m_window);
    const auto enable = [menu](UINT id, bool enabled) {
        EnableMenuItem(menu, id, enabled ? MF_ENABLED : MF_GRAYED);
    };
    enable(CMD_EDIT_CONTACT, Focused() != 0);
    enable(CMD_DELETE_CONTACT, ListView_GetSelectedCount(m_list) > 0);
    enable(CMD_SELECT_ALL, m_rows.Count() > 0);
    enable(CMD_EXPORT_CARDS, m_rows.Count() > 0);
}

} // namespace addrbook
