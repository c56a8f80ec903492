#include "app/main_window.h"

#include <algorithm>
#include <utility>

#include "app/about_dialog.h"
#include "app/command_table.h"
#include "filter/filter_categories.h"
#include "filter/filter_dialog.h"
#include "filter/filter_menu.h"
#include "filter/filter_settings.h"
#include "filter/filter_text.h"
#include "list/entry_commands.h"
#include "mervane/file/store_path.h"
#include "mervane/file/store_waiter.h"
#include "res/resource.h"
#include "settings/window_placement.h"
#include "ui/bars/command_bands.h"
#include "ui/bars/drop_down.h"
#include "ui/dialog_in_front.h"
#include "ui/hourglass.h"
#include "ui/launch.h"
#include "ui/pictures/program_icon.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "ui/session_end.h"
#include "ui/store_window.h"

namespace {

constexpr int kMinWidth = 320;
constexpr int kMinHeight = 160;
constexpr UINT kFromAccelerator = 1; // the high word of an accelerator's WM_COMMAND

// Behind the bar's own handling of the click.
constexpr UINT kMsgDropFilterMenu = WM_APP + 0x340;
// After the bands' own work: storing may fail and show a box, and meanwhile the bands may be made anew.
constexpr UINT kMsgStoreBands = WM_APP + 0x341;

// As for a combo box.
bool IsDropDownKey(const MSG& message)
{
    return (message.message == WM_KEYDOWN && message.wParam == VK_F4) ||
           (message.message == WM_SYSKEYDOWN && message.wParam == VK_DOWN);
}

// What is read is the old file's; a file that has come back does not count.
std::wstring FileTroubleText(const DbJournal& journal)
{
    const StoreTrouble trouble = journal.FileTrouble();
    if (trouble == StoreTrouble::None)
        return {};
    std::wstring text = L"Nothing can be saved: " + ReasonText(trouble) +
                        L".\n\nWhat was read of the file that was open is still shown.";
    if (trouble == StoreTrouble::OtherFile)
        text +=
            L" Close the journal and the address book, and start again to open the file that is there now.";
    return text;
}

std::wstring MissingEntriesText()
{
    return L"Not every entry is shown: " + ReasonText(StoreTrouble::Damaged) +
           L".\n\nWhat can be read is shown. The help tells, under Backup, how to go back to a backup.";
}

} // namespace

MainWindow::MainWindow(const Session& session)
    : m_session(session), m_list(session),
      m_fileNotice([this] { return FileTroubleText(m_session.journal); }), m_missingNotice(MissingEntriesText)
{}

bool MainWindow::RegisterWindowClass(HINSTANCE instance)
{
    WNDCLASSW windowClass{};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = WindowProcedure<MainWindow>::Run;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = kMainWindowClass;
    return RegisterClassW(&windowClass) != 0;
}

HWND MainWindow::Create(HINSTANCE instance, Turn* turn)
{
    m_instance = instance;
    m_turn = turn;
    const WindowProcedure<MainWindow>::Creation creation(this);
    return CreateWindowExW(0, kMainWindowClass, kMainWindowTitle, WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
}

void MainWindow::ShowFirst(int showCommand)
{
    m_isToBeSeen = true;
    ShowAsLeft(m_window, showCommand, m_leftMaximized);
    m_backup.Start(m_window);
    NoteMissingEntries();
}

bool MainWindow::TranslateMenuKey(const MSG& message)
{
    if (CommandBands_TranslateMenuKey(m_bands.MenuBar(), message))
        return true;
    if (!IsDropDownKey(message) || GetAncestor(message.hwnd, GA_ROOT) != m_window)
        return false;
    DropFilterMenu();
    return true;
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: return OnCreate();
    case WM_DESTROY: return OnDestroy();
    case kMsgCloseRequest:
    case WM_CLOSE: RequestClose(); return 0;
    case WM_QUERYENDSESSION: return AnswerSessionQuery(m_window);
    case WM_ENDSESSION: return OnEndSession(wParam);
    case WM_ACTIVATE:
        PassActivationOn(m_window, wParam);
        return DefWindowProcW(m_window, message, wParam, lParam);
    case WM_SIZE: return OnSize();
    case WM_DPICHANGED: return OnResolutionChanged(*reinterpret_cast<const RECT*>(lParam));
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED: return OnColorsChanged(message, wParam, lParam);
    case WM_SETFOCUS: SetFocus(m_list.Handle()); return 0;
    case WM_WINDOWPOSCHANGING:
        if (!m_isToBeSeen)
            KeepHidden(*reinterpret_cast<WINDOWPOS*>(lParam));
        return DefWindowProcW(m_window, message, wParam, lParam);
    case WM_GETMINMAXINFO: return OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lParam));
    case WM_SETTINGCHANGE: m_list.Refresh(); return 0;
    case WM_NOTIFY: return OnNotify(reinterpret_cast<NMHDR*>(lParam));
    case WM_MENUSELECT: m_menuTip.OnMenuSelect(m_window, wParam, lParam); return 0;
    case WM_HELP:
    case kMsgHelpBehindMenu:
        if (IsHelpDue(m_window, message))
            ShowHelp(kHelpMain, m_window);
        return 1;
    case WM_COMMAND: return OnCommand(LOWORD(wParam), HIWORD(wParam) == kFromAccelerator && !lParam);
    case kMsgDatabaseChange: return OnDatabaseChange(wParam, lParam);
    case kMsgDropFilterMenu: DropFilterMenu(); return 0;
    case kMsgStoreBands: StoreBands(); return 0;
    case kMsgSelectionChanged: return OnSelectionChanged(static_cast<int>(wParam));
    default: return DefWindowProcW(m_window, message, wParam, lParam);
    }
}

LRESULT MainWindow::OnCreate()
{
    SetStoreOfWindow(m_window, mervane::StoreNumber(mervane::StorePath()), std::exchange(m_turn, nullptr));
    if (BuildContents()) {
        m_loaded = true;
        return 0;
    }
    DestroyWindow(m_window);
    return -1;
}

bool MainWindow::BuildContents()
{
    RegistryStore& settings = m_session.settings;
    const CEPROPID sort = settings.GetNumber(kOptions, kSortValue, kSortDefault);
    if (!m_session.journal.Open(m_window, {sort, 0}))
        return false;
    // Before anything of the window is to be seen, so that its contents are laid out and painted once.
    m_leftMaximized = FrameAndPlace(m_window, settings);
    if (!m_bands.Create(m_instance, m_window, settings))
        return false;
    OnSelectionChanged(0);
    LoadFilter(settings, &m_session.filter);
    (void)ShowFilter();
    return m_list.Create(m_window, &m_columns, LVS_REPORT | LVS_SHOWSELALWAYS, m_bands.Height()) != nullptr;
}

LRESULT MainWindow::OnDestroy()
{
    if (m_loaded) {
        StoreLayout();
        m_list.Destroy();
        m_loaded = false;
    }
    PostQuitMessage(0);
    return 0;
}

void MainWindow::RequestClose()
{
    if (mervane::IsWaitingForStore())
        PostMessageW(m_window, WM_CLOSE, 0, 0);
    else if (!PassCloseOn(m_window))
        Close();
}

// The process may be ended as soon as this returns. An open dialog goes with its owner; what it had to put
// aside it has put aside, and what it has open of the store is closed. Within a write that waits the store
// cannot be closed: that comes when the write has given up or is done, if the process lives to see it.
LRESULT MainWindow::OnEndSession(WPARAM ends)
{
    if (!TakeSessionEnd(m_window, ends))
        return 0;
    if (mervane::IsWaitingForStore()) {
        StoreSettings();
        PostMessageW(m_window, WM_ENDSESSION, ends, 0);
        return 0;
    }
    Close();
    m_notKept = StoreTrouble::None; // nobody is there to be told
    CeDBase::CloseAll();
    return 0;
}

// A copy that is started from here on opens a window of its own.
void MainWindow::Close()
{
    EndAnyMenu();
    SetStoreOfWindow(m_window, kNoStore);
    m_backup.Stop();
    m_fileNotice.Stop();
    StoreSort();
    m_session.journal.Close();
    m_notKept = m_session.journal.Trouble();
    DestroyWindow(m_window);
}

void MainWindow::StoreSort() const
{
    SORTORDERSPEC sort{};
    m_session.journal.GetSort(&sort);
    m_session.settings.SetNumber(kOptions, kSortValue, sort.propid);
}

// All that is stored when the window is closed.
void MainWindow::StoreSettings() const
{
    StoreSort();
    StoreLayout();
    SaveColumns(m_columns, m_session.settings);
}

void MainWindow::StoreLayout() const
{
    SavePlacement(m_window, m_session.settings);
    SaveBandLayout(m_bands.Handle(), BandLayoutParts::All, m_session.settings);
}

LRESULT MainWindow::OnSize()
{
    if (m_loaded) {
        m_bands.Resize();
        RefitList();
    }
    return 0;
}

// While they are being made anew they are not what is to be stored.
void MainWindow::RebuildBands()
{
    const bool hadFocus = IsChild(m_bands.Handle(), GetFocus());
    m_loaded = false;
    const bool isBuilt = m_bands.Rebuild();
    m_loaded = true;
    if (isBuilt)
        OnSelectionChanged(m_list.SelectionFlag());
    if (hadFocus)
        SetFocus(m_list.Handle());
}

// Pictures of the bands have the colour of texts in them.
LRESULT MainWindow::OnColorsChanged(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_loaded) {
        RebuildBands();
        RefitList();
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

// While the window is being made it goes to its place as it was stored, whatever resolution that has.
LRESULT MainWindow::OnResolutionChanged(const RECT& place)
{
    if (!m_loaded)
        return 0;
    RebuildBands();
    m_list.OnResolutionChanged();
    m_smallIcon = SetProgramIcon(m_window, ICON_SMALL);
    m_bigIcon = SetProgramIcon(m_window, ICON_BIG);
    TakePlace(m_window, place);
    return OnSize();
}

void MainWindow::RefitList()
{
    m_list.Place(m_bands.Height());
}

LRESULT MainWindow::OnGetMinMaxInfo(MINMAXINFO* info)
{
    const RECT area = WorkAreaAt(m_window);
    info->ptMinTrackSize = {std::min<LONG>(Scale(m_window, kMinWidth), area.right - area.left),
                            std::min<LONG>(Scale(m_window, kMinHeight), area.bottom - area.top)};
    return 0;
}

LRESULT MainWindow::OnNotify(NMHDR* notification)
{
    HWND list = m_list.Handle();
    if (list && (notification->hwndFrom == list || notification->hwndFrom == ListView_GetHeader(list)))
        return m_list.OnNotify(notification);
    if (notification->code == TBN_DROPDOWN)
        PostMessageW(m_window, kMsgDropFilterMenu, 0, 0);
    if (notification->code == TBN_GETINFOTIPW)
        m_bands.OnGetInfoTip(reinterpret_cast<NMTBGETINFOTIPW*>(notification));
    if (notification->idFrom == IDC_BANDS)
        return OnBandsNotify(*notification);
    return 0;
}

// Only style and width: the maximised flag is stored when the window closes. While the bands are being built
// they are not yet what was stored.
LRESULT MainWindow::OnBandsNotify(const NMHDR& notification)
{
    if (!m_loaded)
        return 0;
    if (notification.code == RBN_HEIGHTCHANGE || notification.code == RBN_LAYOUTCHANGED) {
        RefitList();
        PostMessageW(m_window, kMsgStoreBands, 0, 0);
    }
    return 0;
}

void MainWindow::StoreBands() const
{
    if (m_loaded)
        SaveBandLayout(m_bands.Handle(), BandLayoutParts::StyleAndWidth, m_session.settings);
}

LRESULT MainWindow::OnCommand(UINT id, bool fromKeyboard)
{
    const Command* command = FindCommand(id);
    if (!command || !m_loaded)
        return 0;
    // Behind a dialog or a box nothing is begun, whoever asks for it.
    if (!IsWindowEnabled(m_window) && id != CMD_QUIT)
        return 0;
    // Nor within a menu's loop, where another program may ask for it.
    if (EndMenuOf(m_window)) {
        PostMessageW(m_window, WM_COMMAND, MAKEWPARAM(id, fromKeyboard ? kFromAccelerator : 0), 0);
        return 0;
    }
    // What is grey does nothing from the keyboard either.
    if (fromKeyboard && !m_bands.IsMenuCommandEnabled(id))
        return 0;
    command->run(*this, id);
    ShowWhatHasChanged();
    return 0;
}

LRESULT MainWindow::OnDatabaseChange(WPARAM code, LPARAM lParam)
{
    switch (code) {
    case kChangeWorkBegins: ShowHourglass(); return 0;
    case kChangeWorkEnded:
        if (lParam != 0)
            return 0;
        [[fallthrough]];
    case kChangeCreated:
    case kChangeModified:
    case kChangeDeleted:
        RemoveHourglass();
        m_refresh.Ask(m_window);
        NoteFileTrouble();
        return 0;
    default: return 0;
    }
}

LRESULT MainWindow::OnSelectionChanged(int flag)
{
    EnableEntryCommands(m_bands, {!m_list.Selection().IsEmpty(), m_list.CurrentEntry() != 0, flag != 0});
    return 0;
}

void MainWindow::ShowAbout()
{
    ShowAboutDialog(m_instance, m_window);
}

// A category that is chosen is sent as a command too, which does nothing.
void MainWindow::DropFilterMenu()
{
    if (!IsWindowEnabled(m_window))
        return; // a box has come up since the click
    FilterState& filter = m_session.filter;
    const FilterMenu menu(filter);
    const UINT command = TrackPressedDropDown(m_bands.ButtonBar(), CMD_CONTACTS, menu.Handle(), m_window);
    if (!m_loaded)
        return; // the window was closed behind the menu
    menu.Choose(command, &filter);
    m_isListDue |= command && menu.ListsCategories();
    if (command)
        SendMessageW(m_window, WM_COMMAND, command, 0);
    if (!FindCommand(command))
        ShowWhatHasChanged();
}

void MainWindow::EditFilter(bool categoriesMode)
{
    OpenFilterDialog(m_session, m_window, categoriesMode);
    m_isListDue = true;
}

void MainWindow::ClearTheFilter()
{
    ClearFilter(&m_session.filter, &m_session.settings);
    m_isListDue = true;
}

// Categories may have been renamed or deleted, here or by another program, and the list may be due. Not when
// the window was closed behind a dialog: the store is not opened anew.
void MainWindow::ShowWhatHasChanged()
{
    if (!m_loaded || !(ShowFilter() | std::exchange(m_isListDue, false)))
        return;
    m_list.Refresh();
    NoteMissingEntries();
}

void MainWindow::NoteMissingEntries()
{
    const bool now = m_list.IsCutShort();
    if (!std::exchange(m_missesEntries, now) && now)
        m_missingNotice.Tell(m_window);
}

void MainWindow::NoteFileTrouble()
{
    const StoreTrouble now = m_session.journal.FileTrouble();
    if (std::exchange(m_fileTrouble, now) != now && now != StoreTrouble::None)
        m_fileNotice.Tell(m_window);
}

// True when one of its categories has gone: the list is to be refreshed.
bool MainWindow::ShowFilter()
{
    const bool isOneGone = BringFilterUpToDate(&m_session.filter);
    m_bands.SetFilterText(FilterText(m_session.filter));
    return isOneGone;
}
