// The start of the program and its message loop.
#include "app/main_window_fixture.h"

#include "support/fault_vfs.h"
#include "support/test_drive.h"
#include "support/thread_hook.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

// Nothing of an earlier start is there: no window and no class.
class InitInstance : public MainWindowTest {
  protected:
    InitInstance() { UnregisterClassW(kMainWindowClass, Instance()); }
    ~InitInstance() override
    {
        if (HWND window = App().MainWindowHandle())
            DestroyWindow(window);
    }

    static HWND Start(int showCommand = SW_SHOWNORMAL)
    {
        EXPECT_EQ(App().InitInstance(Instance(), showCommand), 1);
        return App().MainWindowHandle();
    }

    static void StorePlace(const RECT& place, DWORD isMaximized)
    {
        App().SetNumber(L"Settings", L"wLeft", static_cast<DWORD>(place.left));
        App().SetNumber(L"Settings", L"wTop", static_cast<DWORD>(place.top));
        App().SetNumber(L"Settings", L"wRight", static_cast<DWORD>(place.right));
        App().SetNumber(L"Settings", L"wBottom", static_cast<DWORD>(place.bottom));
        App().SetNumber(L"Settings", L"wMax", isMaximized);
    }
};

// It comes forward in its normal size.
TEST_F(InitInstance, ARunningCopyOfAnyTitleIsBroughtForward)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hInstance = Instance();
    windowClass.lpszClassName = L"Journal";
    ASSERT_NE(RegisterClassW(&windowClass), 0);
    const UniqueWindow running(CreateWindowExW(0, L"Journal", L"Another title", WS_OVERLAPPEDWINDOW, 20, 20,
                                               300, 200, nullptr, nullptr, Instance(), nullptr));
    ASSERT_NE(running, nullptr);
    ShowWindow(running.get(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(running.get()); }));
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    EXPECT_TRUE(PumpUntil([&] { return !IsZoomed(running.get()); }));
    EXPECT_TRUE(IsWindowVisible(running.get()));
    EXPECT_EQ(App().MainWindowHandle(), nullptr);
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST_F(InitInstance, WithoutItsWindowClassItEndsWithoutAWord)
{
    ASSERT_TRUE(MainWindow::RegisterWindowClass(Instance())) << "so that it cannot be registered again";
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    EXPECT_EQ(FindWindowW(L"Journal", nullptr), nullptr);
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST_F(InitInstance, AFailedCreationIsToldAndEndsIt)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store at all"));
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    EXPECT_EQ(App().MainWindowHandle(), nullptr);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Internal Main Window Creation Error");
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Journal");
    EXPECT_EQ(answerer.Boxes()[0].owner, nullptr);
    EXPECT_EQ(answerer.Boxes()[0].answers.size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].icon, nullptr);
    EXPECT_EQ(answerer.Boxes()[1].text, m_store.Path() + L"\n\ncannot be opened: the file is not a "
                                                         L"journal.\n\nNothing in it has been changed.\n\n"
                                                         L"There is no backup that could take its place.");
}

// What stands between the path and "Nothing in it has been changed." in the second box of a failed start.
std::wstring ToldReason(const std::wstring& path)
{
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    EXPECT_EQ(answerer.Boxes().size(), 2u);
    const std::wstring text = answerer.Boxes().empty() ? L"" : answerer.Boxes().back().text;
    const std::wstring start = path + L"\n\ncannot be opened: ",
                       end = L".\n\nNothing in it has been changed.";
    const size_t at = text.find(end);
    EXPECT_TRUE(text.starts_with(start) && at != std::wstring::npos);
    return at == std::wstring::npos ? text : text.substr(start.size(), at - start.size());
}

TEST_F(InitInstance, AStoreThatIsOutOfReachIsSaidToBe)
{
    const std::wstring path = L"Q:\\nowhere\\journal.db";
    ASSERT_EQ(GetDriveTypeW(L"Q:\\"), UINT{DRIVE_NO_ROOT_DIR});
    SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
    EXPECT_EQ(ToldReason(path), L"the journal's file cannot be reached");
}

TEST_F(InitInstance, ALogWithoutItsStoreIsSaidToBeOne)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path() + L"-wal", "what was saved last"));
    EXPECT_EQ(ToldReason(m_store.Path()),
              L"a log lies beside the journal's file, and it cannot be told whether it belongs to it");
    EXPECT_EQ(GetFileAttributesW(m_store.Path().c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(ReadFileBytes(m_store.Path() + L"-wal"), "what was saved last");
}

TEST_F(InitInstance, ADamagedStoreIsSaidToBe)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    App().Journal().Close();
    const std::string cut = ReadFileBytes(m_store.Path()).substr(0, 4096);
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), cut));
    EXPECT_EQ(ToldReason(m_store.Path()), L"the journal's file is damaged");
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == cut);
}

TEST_F(InitInstance, AStoreOfANewerVersionIsSaidToBe)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    App().Journal().Close();
    std::string newer = ReadFileBytes(m_store.Path());
    newer[60] = 0x7F; // SQLite's user_version, big-endian
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), newer));
    EXPECT_EQ(ToldReason(m_store.Path()), L"the journal's file is one of a newer version of this program");
}

TEST_F(InitInstance, TheWindowIsShownPaintedAndAsLargeAsTheWorkArea)
{
    HWND window = Start();
    EXPECT_EQ(App().Instance(), Instance());
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
    // Its size; a window manager may keep the frame from hiding above the screen.
    EXPECT_TRUE(PumpUntil([&] {
        const RECT area = WorkArea();
        RECT place{};
        GetWindowRect(window, &place);
        return place.right - place.left == area.right - area.left &&
               place.bottom - place.top == area.bottom - area.top;
    }));
}

TEST_F(InitInstance, TheShowCommandCounts)
{
    HWND window = Start(SW_SHOWMAXIMIZED);
    EXPECT_TRUE(PumpUntil([&] { return IsZoomed(window); }));
}

// How the main window was whenever it came into sight.
struct Sight {
    bool isZoomed;
    bool isIconic;
    bool hasIcon;
};
std::vector<Sight> g_sights;

LRESULT CALLBACK WatchSights(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    wchar_t name[16] = L"";
    GetClassNameW(sent.hwnd, name, 16);
    if (code == HC_ACTION && sent.message == WM_WINDOWPOSCHANGED && wcscmp(name, L"Journal") == 0 &&
        reinterpret_cast<const WINDOWPOS*>(sent.lParam)->flags & SWP_SHOWWINDOW)
        g_sights.push_back({IsZoomed(sent.hwnd) != 0, IsIconic(sent.hwnd) != 0,
                            SendMessageW(sent.hwnd, WM_GETICON, ICON_BIG, 0) != 0});
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// A window that is shown and then maximised or minimised is seen in between.
TEST_F(InitInstance, TheWindowComesIntoSightOnceAsItIsToBe)
{
    struct {
        int showCommand;
        DWORD leftMaximized;
        Sight wanted;
    } const starts[] = {{SW_SHOWNORMAL, 0, {false, false, true}},
                        {SW_SHOWNORMAL, 1, {true, false, true}},
                        {SW_SHOWMAXIMIZED, 0, {true, false, true}},
                        {SW_SHOWMINNOACTIVE, 1, {false, true, true}}};
    const ThreadHook hook(WH_CALLWNDPROCRET, WatchSights);
    for (const auto& start : starts) {
        UnregisterClassW(kMainWindowClass, Instance());
        StorePlace({60, 70, 460, 370}, start.leftMaximized);
        g_sights.clear();
        HWND window = Start(start.showCommand);
        EXPECT_TRUE(IsWindowVisible(window));
        ASSERT_EQ(g_sights.size(), 1u) << start.showCommand << ", " << start.leftMaximized;
        EXPECT_EQ(g_sights[0].isZoomed, start.wanted.isZoomed) << start.showCommand;
        EXPECT_EQ(g_sights[0].isIconic, start.wanted.isIconic) << start.showCommand;
        EXPECT_TRUE(g_sights[0].hasIcon);
        SendMessageW(window, WM_CLOSE, 0, 0);
        TakeQuitMessage();
    }
}

HICON IconOf(HWND window, WPARAM which)
{
    return reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, which, 0));
}

int IconSide(HWND window, WPARAM which)
{
    ICONINFO info{};
    BITMAP bitmap{};
    if (!GetIconInfo(IconOf(window, which), &info))
        return 0;
    GetObjectW(info.hbmColor, sizeof bitmap, &bitmap);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return static_cast<int>(bitmap.bmWidth);
}

TEST_F(InitInstance, TheWindowGetsASmallAndABigIcon)
{
    HWND window = Start();
    EXPECT_EQ(IconSide(window, ICON_SMALL), Scale(16));
    EXPECT_EQ(IconSide(window, ICON_BIG), Scale(32));
}

// Gives the main window icons while it is being created.
LRESULT CALLBACK GiveIcons(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    wchar_t name[16] = L"";
    GetClassNameW(sent.hwnd, name, 16);
    if (code == HC_ACTION && sent.message == WM_CREATE && wcscmp(name, L"Journal") == 0)
        for (const WPARAM which : std::initializer_list<WPARAM>{ICON_SMALL, ICON_BIG})
            SendMessageW(sent.hwnd, WM_SETICON, which,
                         reinterpret_cast<LPARAM>(LoadIconW(nullptr, IDI_APPLICATION)));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(InitInstance, IconsThatTheWindowHasStay)
{
    const ThreadHook hook(WH_CALLWNDPROC, GiveIcons);
    HWND window = Start();
    for (const WPARAM which : std::initializer_list<WPARAM>{ICON_SMALL, ICON_BIG})
        EXPECT_EQ(IconOf(window, which), LoadIconW(nullptr, IDI_APPLICATION)) << which;
}

TEST_F(InitInstance, RunEndsWithTheCodeOfTheQuitMessage)
{
    SendMessageW(Start(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(TakeQuitMessage());
    PostQuitMessage(42);
    EXPECT_EQ(App().Run(), 42);
}

// The keys and characters that reach the list.
struct Key {
    UINT message;
    WPARAM key;
    bool operator==(const Key&) const = default;
};
std::vector<Key> g_keys;

LRESULT CALLBACK WatchKeys(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_KEYDOWN || message == WM_CHAR)
        g_keys.push_back({message, wParam});
    return DefSubclassProc(window, message, wParam, lParam);
}

// Delete is a command, here a grey one; a letter is none.
TEST_F(InitInstance, RunDispatchesTheKeysThatAreNoCommands)
{
    HWND list = FindWindowExW(Start(), nullptr, L"SysListView32", nullptr);
    ASSERT_NE(list, nullptr);
    g_keys.clear();
    SetWindowSubclass(list, WatchKeys, 7, 0);
    PostMessageW(list, WM_KEYDOWN, VK_DELETE, 1);
    PostMessageW(list, WM_KEYDOWN, 'A', 1);
    PostQuitMessage(0);
    EXPECT_EQ(App().Run(), 0);
    RemoveWindowSubclass(list, WatchKeys, 7);
    EXPECT_EQ(g_keys, (std::vector<Key>{{WM_KEYDOWN, 'A'}, {WM_CHAR, 'a'}}));
}

// A tool has taken its file away, and the disk is full. At the session's end nobody would answer a box.
TEST_F(InitInstance, RunTellsThatNoCopyOfAReplacedStoreWasKept)
{
    constexpr int kStaysFull = 1;
    ASSERT_STREQ(FaultVfs::FaultName(FileCall::Write, kStaysFull), "disk stays full");
    const std::wstring away = m_store.Path() + L".away";
    for (const bool isSession : {false, true}) {
        UnregisterClassW(kMainWindowClass, Instance());
        FaultVfs faults;
        HWND window = Start();
        ASSERT_NE(AddEntry(L"in the log", 5), 0u);
        ASSERT_TRUE(MoveUnix(m_store.Path(), away));
        faults.FailNth(FileCall::Write, 1, kStaysFull);
        const MessageBoxAnswerer answerer;
        SendMessageW(window, isSession ? WM_ENDSESSION : WM_CLOSE, TRUE, 0);
        EXPECT_EQ(App().Run(), 0);
        EXPECT_TRUE(faults.HasFired());
        ASSERT_EQ(answerer.Boxes().size(), isSession ? 0u : 1u);
        if (!isSession) {
            EXPECT_EQ(answerer.Boxes()[0].text, NotKeptText(m_store.Path(), StoreTrouble::Full));
        }
        EXPECT_TRUE(MoveFileW(away.c_str(), m_store.Path().c_str()));
    }
}

TEST_F(InitInstance, WhatWasSetAsideIsToldOverTheWindow)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    App().Journal().Close();
    const std::wstring log = m_store.Path() + L"-wal";
    ASSERT_TRUE(WriteFileBytes(log, std::string(5000, 'x')));
    const MessageBoxAnswerer answerer;
    HWND window = Start();
    EXPECT_TRUE(answerer.Boxes().empty()) << "first there is the window";
    App().TellWhatWasFound();
    App().TellWhatWasFound();
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    const MessageBoxAnswerer::Box& box = answerer.Boxes()[0];
    EXPECT_EQ(box.owner, window);
    EXPECT_EQ(box.caption, L"Journal");
    EXPECT_EQ(box.answers, std::vector<int>{IDOK});
    EXPECT_NE(box.text.find(L"\n\n" + log + L"\nis kept as\n" + log + L".set-aside-2"), std::wstring::npos);
}

// Be the store open by then, or not.
TEST_F(InitInstance, AFailedStartNamesWhatWasSetAside)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    App().Journal().Close();
    const std::wstring log = m_store.Path() + L"-wal";
    const std::wstring named = L"\n\n" + log + L"\nis kept as\n" + log + L".set-aside-2";
    {
        ASSERT_TRUE(WriteFileBytes(log, std::string(5000, 'x')));
        const WindowRefuser refuser(L"SysListView32");
        const MessageBoxAnswerer answerer;
        EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
        ASSERT_EQ(answerer.Boxes().size(), 2u);
        EXPECT_NE(answerer.Boxes()[1].text.find(named), std::wstring::npos);
    }
    App().Journal().Close();
    FaultVfs faults;
    bool isNamed = false;
    for (int n = 1; n < 100 && !isNamed; ++n) {
        UnregisterClassW(kMainWindowClass, Instance());
        ASSERT_TRUE(WriteFileBytes(log, std::string(5000, 'x')));
        faults.FailNth(FileCall::ShmLock, n);
        const MessageBoxAnswerer answerer;
        if (App().InitInstance(Instance(), SW_SHOWNORMAL))
            break;
        faults.FailNone();
        ASSERT_EQ(answerer.Boxes().size(), 2u);
        isNamed = answerer.Boxes()[1].text.find(named) != std::wstring::npos;
    }
    EXPECT_TRUE(isNamed) << "in the box that tells why it was not opened";
}

} // namespace
