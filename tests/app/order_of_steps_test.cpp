// In which order the program starts, builds its window and stores what it keeps at the end.
#include "app/main_window_fixture.h"

#include <algorithm>

#include "support/import_watch.h"
#include "support/settings_log.h"
#include "support/thread_hook.h"

namespace {

using Steps = std::vector<std::wstring>;
using Names = std::vector<std::wstring>;

Steps g_steps;

struct CreationRequest {
    std::wstring title;
    DWORD exStyle = 0;
    DWORD style = 0;
    std::vector<int> place;
    HWND parent = nullptr;
    HMENU menu = nullptr;
    LPVOID data = nullptr;
} g_asked;

DWORD g_controls = 0; // that the start asked for before its window
BOOL g_controlsAnswer = TRUE;
bool g_frameBeforeBands = false;
bool g_openBeforeBands = false;
bool g_filterBeforeList = false;

bool IsMain(HWND window)
{
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    return wcscmp(name, L"Journal") == 0;
}

ATOM WINAPI WatchClass(const WNDCLASSW* windowClass);
BOOL WINAPI WatchControls(const INITCOMMONCONTROLSEX* controls);
HWND WINAPI WatchCreation(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID data);
BOOL WINAPI WatchShow(HWND window, int command);
BOOL WINAPI WatchUpdate(HWND window);
LRESULT CALLBACK WatchSent(int code, WPARAM wParam, LPARAM lParam);

// Notes the steps while it lives.
struct StepWatch {
    StepWatch();
    ~StepWatch();
    StepWatch(const StepWatch&) = delete;
    StepWatch& operator=(const StepWatch&) = delete;

    const ImportWatch<decltype(&RegisterClassW)> registered{&__imp_RegisterClassW, WatchClass};
    const ImportWatch<decltype(&InitCommonControlsEx)> controls{&__imp_InitCommonControlsEx, WatchControls};
    const ImportWatch<decltype(&CreateWindowExW)> created{&__imp_CreateWindowExW, WatchCreation};
    const ImportWatch<decltype(&ShowWindow)> shown{&__imp_ShowWindow, WatchShow};
    const ImportWatch<decltype(&UpdateWindow)> updated{&__imp_UpdateWindow, WatchUpdate};
    const ThreadHook sent{WH_CALLWNDPROC, WatchSent};
}* g_watch = nullptr;

ATOM WINAPI WatchClass(const WNDCLASSW* windowClass)
{
    if (wcscmp(windowClass->lpszClassName, L"Journal") == 0)
        g_steps.push_back(L"class");
    return g_watch->registered.Original()(windowClass);
}

BOOL WINAPI WatchControls(const INITCOMMONCONTROLSEX* controls)
{
    // The window's own parts ask again.
    if (std::find(g_steps.begin(), g_steps.end(), L"window") == g_steps.end()) {
        g_steps.push_back(L"controls");
        g_controls = controls->dwICC;
        EXPECT_EQ(controls->dwSize, sizeof *controls);
    }
    return g_controlsAnswer && g_watch->controls.Original()(controls);
}

HWND WINAPI WatchCreation(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID data)
{
    if (wcscmp(className, L"Journal") == 0) {
        g_steps.push_back(L"window");
        g_asked = {title, exStyle, style, {x, y, width, height}, parent, menu, data};
    } else if (IsMain(parent) && wcscmp(className, WC_LISTVIEWW) == 0) {
        g_steps.push_back(L"list");
        g_filterBeforeList = App().Filter().active;
    } else if (IsMain(parent) && wcscmp(className, REBARCLASSNAMEW) == 0) {
        g_steps.push_back(L"bands");
        g_frameBeforeBands = (GetWindowLongPtrW(parent, GWL_STYLE) & WS_THICKFRAME) != 0;
        g_openBeforeBands = App().Journal().IsOpen();
    }
    return g_watch->created.Original()(exStyle, className, title, style, x, y, width, height, parent, menu,
                                       instance, data);
}

BOOL WINAPI WatchShow(HWND window, int command)
{
    if (IsMain(window))
        g_steps.push_back(L"show");
    return g_watch->shown.Original()(window, command);
}

BOOL WINAPI WatchUpdate(HWND window)
{
    if (IsMain(window))
        g_steps.push_back(L"update");
    return g_watch->updated.Original()(window);
}

LRESULT CALLBACK WatchSent(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (sent.message == WM_SETICON && IsMain(sent.hwnd))
        g_steps.push_back(sent.wParam == ICON_SMALL ? L"small icon" : L"big icon");
    if (sent.message == WM_INITDIALOG)
        g_steps.push_back(L"prompt");
    if (sent.message == LVM_SETITEMCOUNT)
        g_steps.push_back(L"fill");
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

StepWatch::StepWatch()
{
    g_watch = this;
    g_steps.clear();
    g_controlsAnswer = TRUE;
}

StepWatch::~StepWatch()
{
    g_watch = nullptr;
}

// Nothing of an earlier start is there: no window and no class.
class OrderOfStart : public MainWindowTest {
  protected:
    OrderOfStart() { UnregisterClassW(kMainWindowClass, Instance()); }
    ~OrderOfStart() override
    {
        if (HWND window = App().MainWindowHandle())
            DestroyWindow(window);
    }
    static void AskForPassword()
    {
        App().SetNumber(L"Options", L"Password", 1);
        App().SetNumber(L"Options", L"setpw", 1);
        App().SetString(L"Options", L"vacc", L"open");
    }
    static void AnswerPrompt(HWND dialog)
    {
        SetWindowTextW(FindWindowExW(dialog, nullptr, L"Edit", nullptr), L"open");
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    }
    static int Start() { return App().InitInstance(Instance(), SW_SHOWNORMAL); }
};

TEST_F(OrderOfStart, ClassControlsPromptWindowIconsAndTheShow)
{
    AskForPassword();
    const ModalDriver prompt(AnswerPrompt);
    const StepWatch watch;
    ASSERT_EQ(Start(), 1);
    EXPECT_TRUE(prompt.Ran());
    for (const wchar_t* within : {L"bands", L"list", L"fill"})
        std::erase(g_steps, within);
    EXPECT_EQ(g_steps, (Steps{L"class", L"controls", L"prompt", L"window", L"small icon", L"big icon",
                              L"show", L"update"}));
}

TEST_F(OrderOfStart, AsksForListsDatesAndBands)
{
    const StepWatch watch;
    ASSERT_EQ(Start(), 1);
    EXPECT_EQ(g_controls, 0x0501u);
}

TEST_F(OrderOfStart, AsksForABareWindowAndLeavesItsPlaceToTheSystem)
{
    const StepWatch watch;
    ASSERT_EQ(Start(), 1);
    EXPECT_EQ(g_asked.title, L"Kelvra Journal");
    EXPECT_EQ(g_asked.exStyle, 0u);
    EXPECT_EQ(g_asked.style, DWORD{WS_VISIBLE});
    EXPECT_EQ(g_asked.place, std::vector<int>(4, CW_USEDEFAULT));
    EXPECT_EQ(g_asked.parent, nullptr);
    EXPECT_EQ(g_asked.menu, nullptr);
    EXPECT_EQ(g_asked.data, nullptr);
}

// The user is not asked for a password by a program that cannot go on.
TEST_F(OrderOfStart, WithoutItsClassOrItsControlsNobodyIsAsked)
{
    AskForPassword();
    const MessageBoxAnswerer answerer;
    {
        const ModalDriver prompt(AnswerPrompt);
        const StepWatch watch;
        g_controlsAnswer = FALSE;
        EXPECT_EQ(Start(), 0);
        EXPECT_EQ(g_steps, (Steps{L"class", L"controls"}));
    }
    {
        const ModalDriver prompt(AnswerPrompt);
        const StepWatch watch; // the class is registered already
        EXPECT_EQ(Start(), 0);
        EXPECT_EQ(g_steps, Steps{L"class"});
    }
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_EQ(App().MainWindowHandle(), nullptr);
}

using OrderOfBuild = MainWindowTest;

TEST_F(OrderOfBuild, StoreFrameBandsFilterListAndItsRows)
{
    App().SetNumber(L"Filter", L"Active", 1);
    App().SetNumber(L"Filter", L"fRange", 0);
    App().SetNumber(L"Filter", L"fMonths", 4);
    App().Filter() = {};
    const StepWatch watch;
    Create();
    EXPECT_TRUE(g_openBeforeBands);
    EXPECT_TRUE(g_frameBeforeBands);
    EXPECT_TRUE(g_filterBeforeList);
    std::erase(g_steps, L"show");
    ASSERT_GE(g_steps.size(), 4u);
    g_steps.resize(4);
    EXPECT_EQ(g_steps, (Steps{L"window", L"bands", L"list", L"fill"}));
    App().Filter() = {};
}

TEST_F(OrderOfBuild, WithoutItsStoreNothingElseIsMade)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store at all"));
    const StepWatch watch;
    EXPECT_EQ(m_window.Create(Instance()), nullptr);
    EXPECT_EQ(g_steps, Steps{L"window"});
}

class OrderOfEnd : public MainWindowTest {
  protected:
    // What is stored of the window itself.
    static Names Layout()
    {
        return {L"wLeft",    L"wTop", L"wRight", L"wBottom",  L"wMax", L"mstyle",
                L"mrestore", L"mmax", L"tstyle", L"trestore", L"tmax"};
    }
    static Names Columns()
    {
        Names names;
        for (int i = 0; i <= 10; ++i)
            names.push_back(L"Column" + std::to_wstring(i));
        names.push_back(L"iCols");
        return names;
    }
    bool HasNotice() { return FindWindowExW(List(), nullptr, L"STATIC", nullptr) != nullptr; }
};

Names Joined(const std::vector<Names>& parts)
{
    Names all;
    for (const Names& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST_F(OrderOfEnd, TheSortIsStoredBeforeTheStoreIsClosedAndAllElseBehindIt)
{
    HWND window = Create();
    std::vector<bool> open;
    const SettingsLog log([&](const std::wstring&) { open.push_back(App().Journal().IsOpen()); });
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(log.Names(), Joined({{L"sort"}, Layout(), Columns()}));
    ASSERT_EQ(open.size(), log.Names().size());
    EXPECT_TRUE(open.front());
    EXPECT_EQ(std::count(open.begin(), open.end(), true), 1);
}

// Place and bands, columns, the notice, the quit message.
TEST_F(OrderOfEnd, TheNoticeGoesBehindTheColumnsAndTheQuitMessageIsLast)
{
    HWND window = Create();
    ASSERT_TRUE(HasNotice());
    const auto quits = [] {
        MSG message;
        return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) && message.message == WM_QUIT;
    };
    bool noticeStood = true;
    bool hadQuit = false;
    {
        const SettingsLog log([&](const std::wstring&) {
            noticeStood = noticeStood && HasNotice();
            hadQuit = hadQuit || quits();
        });
        SendMessageW(window, WM_DESTROY, 0, 0);
        EXPECT_EQ(log.Names(), Joined({Layout(), Columns()}));
    }
    EXPECT_TRUE(noticeStood);
    EXPECT_FALSE(hadQuit);
    EXPECT_FALSE(HasNotice());
    EXPECT_TRUE(quits());
}

} // namespace
