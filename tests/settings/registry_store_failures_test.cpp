// What fails, and how it is reported.
#include <utility>

#include "settings/registry_store_fixture.h"
#include "support/import_watch.h"
#include "support/thread_hook.h"

namespace {

TEST_F(RegistryStoreTest, ASubkeyThatDoesNotOpenIsReported)
{
    MakeDeadLink();
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.GetNumber(kLinkName, L"n", 7), 7u);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Text(L"Options", L"n", L"mine"), L"mine");
    EXPECT_EQ(answerer.Boxes().size(), 2u);
}

TEST_F(RegistryStoreTest, ADeletionThatFailsGivesZero)
{
    MakeDeadLink();
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 0);
    EXPECT_EQ(answerer.Boxes().size(), 1u); // that the subkey did not open
}

TEST_F(RegistryStoreTest, AWriteWithoutASubkeyIsReportedTwice)
{
    ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.SetNumber(L"Options", L"n", 1), 1);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_KEY_DELETED));
    EXPECT_EQ(answerer.Boxes()[1].text, SystemMessage(ERROR_INVALID_HANDLE));
    EXPECT_EQ(answerer.Boxes()[1].caption, L"Error");
    EXPECT_EQ(m_store.SetString(L"Options", L"t", L"x"), 1);
    EXPECT_EQ(answerer.Boxes().size(), 4u);
}

TEST_F(RegistryStoreTest, AFailedWriteToTheRootIsReported)
{
    ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.SetNumber(L"", L"n", 1), 1);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_KEY_DELETED));
}

TEST_F(RegistryStoreTest, ReadsOfARootThatIsGoneAreDefaultsUnreported)
{
    m_store.SetNumber(L"Options", L"n", 1);
    ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 7), 7u);
    EXPECT_EQ(m_store.GetNumber(L"", L"n", 8), 8u);
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 1);
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST_F(RegistryStoreTest, OperationsLeaveNoHandleBehind)
{
    const auto handles = [] {
        DWORD count = 0;
        EXPECT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &count));
        return count;
    };
    const auto work = [this] {
        m_store.SetNumber(L"Options", L"n", 1);
        m_store.SetString(L"Options", L"Find0", L"x");
        (void)m_store.GetNumber(L"Options", L"n", 0);
        (void)Text(L"Options", L"Find0");
        (void)m_store.FindListString(L"Options", L"Find", L"y", 5);
        m_store.RemoveValue(L"Options", L"n");
        RegistryStore other;
        (void)other.Open(kPath);
        (void)other.Open(kPath);
    };
    work();
    const DWORD before = handles();
    for (int i = 0; i < 50; ++i)
        work();
    EXPECT_LT(handles(), before + 10);
}

// The handle that opening the root takes: the one a key gets that is opened in its place.
TEST_F(RegistryStoreTest, ARootThatDoesNotCloseIsReported)
{
    const MessageBoxAnswerer answerer;
    {
        HKEY probe = nullptr;
        ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kPath, 0, KEY_ALL_ACCESS, &probe), ERROR_SUCCESS);
        RegCloseKey(probe);
        RegistryStore store;
        ASSERT_EQ(store.Open(kPath), 1);
        ASSERT_EQ(RegCloseKey(probe), ERROR_SUCCESS);
        EXPECT_TRUE(answerer.Boxes().empty());
    }
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_INVALID_HANDLE));
}

HICON g_boxIcon;
HWND g_boxOwner;
bool g_boxHasCancel;

LRESULT CALLBACK LookAtBox(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE) {
        const HWND box = reinterpret_cast<HWND>(wParam);
        g_boxOwner = GetWindow(box, GW_OWNER);
        g_boxHasCancel = GetDlgItem(box, IDCANCEL) != nullptr;
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (const LRESULT icon = SendMessageW(child, STM_GETICON, 0, 0))
                g_boxIcon = reinterpret_cast<HICON>(icon);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST(ReportError, ShowsTheSystemsTextInABoxTitledError)
{
    const MessageBoxAnswerer answerer;
    g_boxIcon = nullptr;
    const ThreadHook hook(WH_CBT, LookAtBox);
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_ACCESS_DENIED));
    EXPECT_EQ(g_boxIcon, LoadIconW(nullptr, IDI_INFORMATION));
    EXPECT_EQ(g_boxOwner, nullptr);
    EXPECT_FALSE(g_boxHasCancel);
}

decltype(&LocalFree) g_localFree = nullptr;
const MessageBoxAnswerer* g_answerer = nullptr;
std::vector<size_t> g_boxesWhenFreed; // for each block that holds the system's text

HLOCAL WINAPI NoteFreed(HLOCAL block)
{
    const std::wstring text = SystemMessage(ERROR_ACCESS_DENIED);
    const size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    if (block && LocalSize(block) >= bytes && memcmp(block, text.c_str(), bytes) == 0)
        g_boxesWhenFreed.push_back(g_answerer->Boxes().size());
    return g_localFree(block);
}

TEST(ReportError, FreesTheSystemsTextBehindTheBox)
{
    const MessageBoxAnswerer answerer;
    g_answerer = &answerer;
    g_localFree = __imp_LocalFree;
    g_boxesWhenFreed.clear();
    const ImportWatch<decltype(&LocalFree)> blocks(&__imp_LocalFree, NoteFreed);
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(g_boxesWhenFreed, std::vector<size_t>{1});
}

TEST(ReportError, ShowsMessagesWithInsertionsAsTheyStand)
{
    const MessageBoxAnswerer answerer;
    RegistryStore::ReportError(ERROR_BAD_EXE_FORMAT); // "%1 is not a valid Win32 application"
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_BAD_EXE_FORMAT));
}

TEST(ReportError, AnUnknownCodeStillShowsABox)
{
    const MessageBoxAnswerer answerer;
    RegistryStore::ReportError(0x2FFFFFFF);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
}

// What stores something with each tick of a timer would put up a box for each.
TEST(ReportError, OneBoxStandsForAnErrorUntilItIsAnswered)
{
    static bool s_reported;
    s_reported = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        RegistryStore::ReportError(ERROR_ACCESS_DENIED);
        if (HWND box = FindWindowW(L"#32770", L"Error"); box && !std::exchange(s_reported, true)) {
            RegistryStore::ReportError(ERROR_ACCESS_DENIED);
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
    });
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    KillTimer(nullptr, timer);
    EXPECT_TRUE(s_reported);
    EXPECT_EQ(FindWindowW(L"#32770", L"Error"), nullptr);
    const MessageBoxAnswerer answerer;
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(answerer.Boxes().size(), 1u) << "and another one for the next time";
}

// A write without its subkey fails twice, with one error behind the other, at each tick.
TEST(ReportError, TwoErrorsThatTakeTurnsHaveOneBoxEach)
{
    static int s_ticks;
    static size_t s_boxes;
    s_ticks = 0;
    s_boxes = 0;
    const auto tick = [](HWND, UINT, UINT_PTR, DWORD) {
        const int own = ++s_ticks;
        if (own > 10)
            return;
        RegistryStore::ReportError(ERROR_ACCESS_DENIED);
        RegistryStore::ReportError(ERROR_INVALID_HANDLE);
        if (own < 10)
            return;
        for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", L"Error")) != nullptr;
             ++s_boxes)
            PostMessageW(box, WM_COMMAND, IDOK, 0);
    };
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, tick);
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    KillTimer(nullptr, timer);
    EXPECT_EQ(s_boxes, 2u);
}

TEST(ReportError, NothingElseCanBeWorkedWhileItsBoxStands)
{
    const TestParent parent;
    static bool s_wasEnabled;
    s_wasEnabled = true;
    static HWND s_parent;
    s_parent = parent.Handle();
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        if (HWND box = FindWindowW(L"#32770", L"Error")) {
            s_wasEnabled = IsWindowEnabled(s_parent) != FALSE;
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
    });
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    KillTimer(nullptr, timer);
    EXPECT_FALSE(s_wasEnabled);
    EXPECT_TRUE(IsWindowEnabled(parent.Handle()));
}

} // namespace
