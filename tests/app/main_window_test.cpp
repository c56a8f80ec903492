#include "app/main_window.h"

#include <algorithm>

#include "app/main_window_fixture.h"
#include "data/journal_entry.h"
#include "res/resource.h"
#include "support/import_watch.h"
#include "support/lost_leaf.h"
#include "support/test_drive.h"
#include "support/thread_hook.h"
#include "support/work_area_setting.h"
#include "ui/screen/scale.h"
#include "util/clock.h"

namespace {

TEST_F(MainWindowTest, HasItsClassAndTitle)
{
    HWND window = Create();
    wchar_t name[32];
    GetClassNameW(window, name, 32);
    EXPECT_STREQ(name, L"Journal");
    EXPECT_EQ(WindowText(window), L"Kelvra Journal");
    EXPECT_EQ(FindWindowW(L"Journal", nullptr), window);
}

// What the main window is created with.
CREATESTRUCTW g_created{};
std::wstring g_createdTitle;

LRESULT CALLBACK WatchCreation(int code, WPARAM wParam, LPARAM lParam)
{
    wchar_t name[16] = L"";
    GetClassNameW(reinterpret_cast<HWND>(wParam), name, 16);
    if (code == HCBT_CREATEWND && wcscmp(name, L"Journal") == 0) {
        g_created = *reinterpret_cast<CBT_CREATEWNDW*>(lParam)->lpcs;
        g_createdTitle = g_created.lpszName;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(MainWindowTest, IsCreatedVisibleAndWithoutAFrame)
{
    const ThreadHook hook(WH_CBT, WatchCreation);
    Create();
    EXPECT_EQ(g_createdTitle, L"Kelvra Journal");
    EXPECT_NE(g_created.style & WS_VISIBLE, 0);
    EXPECT_EQ(static_cast<DWORD>(g_created.style) & (WS_OVERLAPPEDWINDOW & ~WS_CAPTION), 0u);
    EXPECT_EQ(static_cast<DWORD>(g_created.dwExStyle) & ~DWORD{WS_EX_WINDOWEDGE}, 0u);
    EXPECT_EQ(g_created.hwndParent, nullptr);
    EXPECT_EQ(g_created.hMenu, nullptr);
}

TEST_F(MainWindowTest, TheClassIsPlain)
{
    WNDCLASSW windowClass{};
    ASSERT_TRUE(GetClassInfoW(Instance(), L"Journal", &windowClass));
    EXPECT_EQ(windowClass.style, static_cast<UINT>(CS_HREDRAW | CS_VREDRAW));
    EXPECT_EQ(windowClass.cbClsExtra, 0);
    EXPECT_EQ(windowClass.cbWndExtra, 0);
    EXPECT_EQ(windowClass.hIcon, nullptr);
    EXPECT_EQ(windowClass.lpszMenuName, nullptr);
    EXPECT_EQ(windowClass.hbrBackground, GetStockObject(WHITE_BRUSH));
}

TEST_F(MainWindowTest, TheListTakesTheRestBelowTheBands)
{
    Create();
    ExpectListBelowBands();
}

TEST_F(MainWindowTest, TheListFollowsTheWindowsSize)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 0, 0, Scale(500), Scale(400), SWP_NOZORDER);
    EXPECT_TRUE(PumpUntil([&] {
        RECT client, list;
        GetClientRect(window, &client);
        GetWindowRect(List(), &list);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&list), 2);
        return client.right < Scale(500) && list.right == client.right && list.bottom == client.bottom;
    }));
}

TEST_F(MainWindowTest, CannotBeMadeSmallerThanItCanBeWorked)
{
    HWND window = Create();
    MINMAXINFO info{};
    SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    const RECT area = WorkArea();
    EXPECT_EQ(info.ptMinTrackSize.x, std::min<LONG>(Scale(320), area.right - area.left));
    EXPECT_EQ(info.ptMinTrackSize.y, std::min<LONG>(Scale(160), area.bottom - area.top));
}

TEST_F(MainWindowTest, CanAlwaysBeMadeAsSmallAsTheWorkArea)
{
    HWND window = Create();
    const RECT area{0, 0, Scale(300), Scale(150)};
    const ScopedWorkArea small(window, area);
    MINMAXINFO info{};
    SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, area.right);
    EXPECT_EQ(info.ptMinTrackSize.y, area.bottom);
}

TEST_F(MainWindowTest, TheListHasTheKeyboard)
{
    HWND window = Create();
    EXPECT_EQ(GetWindowLongPtrW(List(), GWL_STYLE) & LVS_SHOWSELALWAYS, LVS_SHOWSELALWAYS);
    EXPECT_EQ(GetWindowLongPtrW(List(), GWL_STYLE) & LVS_TYPEMASK, LVS_REPORT);
    SetFocus(window);
    EXPECT_EQ(GetFocus(), List());
}

TEST_F(MainWindowTest, HelpIsAnsweredAndReturnsOne)
{
    const NothingStarts nothing;
    HWND window = Create();
    const MessageBoxAnswerer answerer({IDOK});
    HELPINFO info{};
    info.cbSize = sizeof info;
    EXPECT_EQ(SendMessageW(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&info)), 1);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Error starting help");
}

class RefreshingMessage : public MainWindowTest,
                          public testing::WithParamInterface<std::tuple<UINT, WPARAM, LPARAM, bool>> {};

TEST_P(RefreshingMessage, RebuildsTheListOrNot)
{
    HWND window = Create();
    const auto [message, wParam, lParam, refreshes] = GetParam();
    AddEntry(L"From elsewhere", 1);
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    SendMessageW(window, message, wParam, lParam);
    EXPECT_EQ(Rows(), refreshes ? 1 : 0);
    if (message == 1125 && refreshes) {
        EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT)) << "none, or that of what is below the mouse";
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, RefreshingMessage,
                         testing::Values(std::tuple(1125u, 1u, 0, false), std::tuple(1125u, 2u, 7, true),
                                         std::tuple(1125u, 6u, 7, true), std::tuple(1125u, 8u, 7, true),
                                         std::tuple(1125u, 15u, 0, true), std::tuple(1125u, 15u, 1, false),
                                         std::tuple(1125u, 3u, 0, false), std::tuple(1125u, 0u, 0, false),
                                         std::tuple(1125u, 99u, 0, false),
                                         std::tuple(static_cast<UINT>(WM_SETTINGCHANGE), 0u, 0, true)));

TEST_F(MainWindowTest, WorkThatBeginsShowsTheHourglass)
{
    HWND window = Create();
    SetCursor(nullptr);
    SendMessageW(window, 1125, 1, 0);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
}

class ClosingMessage : public MainWindowTest, public testing::WithParamInterface<std::pair<UINT, WPARAM>> {};

TEST_P(ClosingMessage, SavesTheSortClosesTheJournalAndQuits)
{
    HWND window = Create();
    App().Journal().SetSort({kPropSubject, 0}, 1);
    SendMessageW(window, GetParam().first, GetParam().second, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(m_window.Handle(), nullptr);
    EXPECT_EQ(App().GetNumber(L"Options", L"sort", 0), 0x0066001Fu);
    EXPECT_FALSE(App().Journal().IsOpen());
    EXPECT_TRUE(TakeQuitMessage());
}

INSTANTIATE_TEST_SUITE_P(Ways, ClosingMessage,
                         testing::Values(std::pair<UINT, WPARAM>(WM_CLOSE, 0),
                                         std::pair<UINT, WPARAM>(1023, 0),
                                         std::pair<UINT, WPARAM>(WM_COMMAND, CMD_QUIT)));

// Whether anything has been stored for the window, its bands or its columns.
bool HasSettings()
{
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Settings", 0, KEY_READ, &key);
    return UniqueKey(key) != nullptr;
}

TEST_F(MainWindowTest, AFailedStartLeavesNoWindowAndNoSetting)
{
    const std::string junk = "This is no store.\r\n";
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), junk));
    EXPECT_EQ(m_window.Create(Instance()), nullptr);
    EXPECT_EQ(FindWindowW(L"Journal", nullptr), nullptr);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), junk);
    EXPECT_FALSE(HasSettings());
    EXPECT_TRUE(TakeQuitMessage());
}

// The system refuses the nth window of a class.
struct Refused {
    const wchar_t* windowClass;
    int nth;
};

class RefusedPart : public MainWindowTest, public testing::WithParamInterface<Refused> {};

TEST_P(RefusedPart, LeavesNoWindowAndNoSetting)
{
    const WindowRefuser refuser(GetParam().windowClass, GetParam().nth);
    EXPECT_EQ(m_window.Create(Instance()), nullptr);
    EXPECT_EQ(refuser.Seen(), GetParam().nth);
    EXPECT_EQ(FindWindowW(L"Journal", nullptr), nullptr);
    EXPECT_FALSE(HasSettings());
    EXPECT_TRUE(TakeQuitMessage());
}

// The bars: the two bands', the adornments'. The third lends the standard images, which may be missing.
INSTANTIATE_TEST_SUITE_P(Each, RefusedPart,
                         testing::Values(Refused{L"ReBarWindow32", 1}, Refused{L"ToolbarWindow32", 1},
                                         Refused{L"ToolbarWindow32", 2}, Refused{L"ToolbarWindow32", 4},
                                         Refused{L"SysListView32", 1}));

TEST_F(MainWindowTest, MakesTheDaysBackupOnce)
{
    const auto isMade = [this] {
        const auto found = BackupsOf(m_store.Path());
        return found.size() == 1 && found[0].ends_with(L"-2026-01-31.db");
    };
    SYSTEMTIME now{};
    now.wYear = 2026;
    now.wMonth = 1;
    now.wDay = 31;
    ScopedClockForTesting clock(now);
    Create();
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty()) << "before the first paint";
    ASSERT_NE(AddEntry(L"kept", 5), 0u);
    EXPECT_TRUE(PumpUntil(isMade));
    const std::string bytes = ReadFileBytes(BackupFolderOf(m_store.Path()) + BackupsOf(m_store.Path())[0]);
    // The next start of the day, until its time has come too.
    SendMessageW(m_window.Handle(), WM_CLOSE, 0, 0);
    TakeQuitMessage();
    MainWindow second{App().GetSession()};
    HWND window = second.Create(Instance());
    ASSERT_NE(window, nullptr);
    second.ShowFirst(SW_SHOWNORMAL);
    ASSERT_NE(AddEntry(L"later", 6), 0u);
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(PumpUntil([&] { return GetTickCount64() - start > 1500; }));
    EXPECT_TRUE(isMade());
    EXPECT_TRUE(ReadFileBytes(BackupFolderOf(m_store.Path()) + BackupsOf(m_store.Path())[0]) == bytes);
    DestroyWindow(window);
}

// Long entries, five pages each.
void AddLongEntries(int count)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    {
        CeDBase::BulkScope bulk(App().Journal());
        std::wstring body(20'000, L'x');
        CEPROPVAL value{};
        value.propid = kPropBody;
        value.val.lpwstr = body.data();
        for (int i = 0; i < count; ++i)
            ASSERT_NE(App().Journal().WriteRecord(0, 1, &value), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    App().Journal().Close();
}

// Closed in the midst of it, as at the end of the session.
TEST_F(MainWindowTest, LeavesNoHalfBackup)
{
    ASSERT_NO_FATAL_FAILURE(AddLongEntries(1000));
    HWND window = Create();
    ASSERT_TRUE(PumpUntil([&] { return !BackupsOf(m_store.Path()).empty(); }));
    ASSERT_TRUE(BackupsOf(m_store.Path())[0].ends_with(L".part"));
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty());
}

// Once, and not over a dialog or while the window is minimised.
TEST_F(MainWindowTest, TellsOfDamageThatTheBackupHasFound)
{
    ASSERT_NO_FATAL_FAILURE(AddLongEntries(100));
    std::string bytes = ReadFileBytes(m_store.Path());
    ASSERT_GT(bytes.size(), size_t{4096 * 400});
    bytes.replace(4096 * 200, 4096 * 20, 4096 * 20, '\x55');
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    const MessageBoxAnswerer answerer;
    HWND window = Create();
    EnableWindow(window, FALSE);
    EXPECT_FALSE(PumpUntil([&] { return !answerer.Boxes().empty(); }, 2000)) << "something is in front";
    ShowWindow(window, SW_MINIMIZE);
    EnableWindow(window, TRUE);
    EXPECT_FALSE(PumpUntil([&] { return !answerer.Boxes().empty(); }, 700)) << "where it would not be seen";
    ShowWindow(window, SW_RESTORE);
    EXPECT_TRUE(PumpUntil([&] { return !answerer.Boxes().empty(); }));
    EXPECT_FALSE(PumpUntil([&] { return answerer.Boxes().size() > 1; }, 700));
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_TRUE(answerer.Boxes()[0].text.starts_with(L"The journal's file is damaged. "));
    EXPECT_EQ(answerer.Boxes()[0].owner, window);
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty());
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == bytes);
}

// The rows do not tell that there were more.
TEST_F(MainWindowTest, TellsOnceThatEntriesAreMissingFromADamagedFile)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    for (int i = 0; i < 300; ++i)
        ASSERT_NE(AddEntry((L"entry " + std::to_wstring(i)).c_str(), static_cast<uint64_t>(i)), 0u);
    App().Journal().Close();
    LoseLeafOf(m_store.Path(), "entry 100");
    const MessageBoxAnswerer answerer;
    HWND window = Create();
    ASSERT_GT(Rows(), 0);
    ASSERT_LT(Rows(), 300);
    ASSERT_TRUE(PumpUntil([&] { return !answerer.Boxes().empty(); }));
    EXPECT_EQ(answerer.Boxes()[0].text.substr(0, 58),
              L"Not every entry is shown: the journal's file is damaged.\n\n");
    EXPECT_EQ(answerer.Boxes()[0].owner, window);
    SendMessageW(window, kMsgDatabaseChange, kChangeModified, 0);
    const auto isToldAgain = [&] {
        size_t count = 0;
        for (const auto& box : answerer.Boxes())
            count += box.text.starts_with(L"Not every entry");
        return count > 1;
    };
    EXPECT_FALSE(PumpUntil(isToldAgain, 1000));
}

// A sync or restore tool has put another file there, or none: what is saved would be refused.
TEST_F(MainWindowTest, TellsOnceThatItsFileHasGoneFromItsPlace)
{
    HWND window = Create();
    const MessageBoxAnswerer answerer;
    const std::wstring away = m_store.Path() + L".away";
    const auto stands = [&](size_t boxes, const std::wstring& text) {
        return PumpUntil([&] { return answerer.Boxes().size() == boxes; }) &&
               answerer.Boxes().back().text == text && answerer.Boxes().back().owner == window;
    };
    const std::wstring shown = L".\n\nWhat was read of the file that was open is still shown.";
    EnableWindow(window, FALSE);
    ASSERT_TRUE(MoveUnix(m_store.Path(), away));
    ASSERT_TRUE(PumpUntil([] { return App().Journal().FileTrouble() != StoreTrouble::None; }));
    EXPECT_FALSE(PumpUntil([&] { return !answerer.Boxes().empty(); }, 1000)) << "something is in front";
    EnableWindow(window, TRUE);
    EXPECT_TRUE(stands(1, L"Nothing can be saved: the journal's file cannot be reached" + shown));
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "another"));
    EXPECT_TRUE(stands(
        2,
        L"Nothing can be saved: the journal's file was replaced or written over" + shown +
            L" Close the journal and the address book, and start again to open the file that is there now."));
    // Back again: nothing more is told, also not of what was to be.
    EnableWindow(window, FALSE);
    ASSERT_TRUE(DeleteFileW(m_store.Path().c_str()));
    ASSERT_TRUE(MoveUnix(away, m_store.Path()));
    ASSERT_TRUE(PumpUntil([] { return App().Journal().FileTrouble() == StoreTrouble::None; }));
    EnableWindow(window, TRUE);
    EXPECT_FALSE(PumpUntil([&] { return answerer.Boxes().size() > 2; }, 1000));
    EXPECT_NE(AddEntry(L"goes on", 5), 0u);
}

} // namespace
