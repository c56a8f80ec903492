// The menu bar, worked with real keys and the real mouse.
#include "ui/menu_bar.h"

#include <gtest/gtest.h>

#include "ui/bands_window.h"
#include "ui/input.h"
#include "ui/ui_test_resource.h"

namespace {

constexpr int kFile = 0;
constexpr int kEdit = 1;
constexpr int kGreyMenu = 2;
constexpr int kGo = 3;
constexpr WORD kAlt = VK_MENU;

class MenuBarTest : public testing::Test {
  protected:
    MenuBarTest()
    {
        m_window.onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
            return OnMessage(message, wParam, lParam, result);
        };
        m_window.Show();
        // Out of the way of the menus.
        InputScript().MoveTo([this] { return CenterOf(m_window.Focus(), {0, 0, 200, 100}); }).Run();
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
    {
        if (message == WM_INITMENUPOPUP)
            m_initialized.push_back(reinterpret_cast<HMENU>(wParam));
        if (message == WM_COMMAND && lParam == 0) {
            EXPECT_TRUE(OpenMenus().empty());
            EXPECT_EQ(GetFocus(), m_window.Focus());
        }
        if (message == WM_SYSCOMMAND)
            m_systemCommands.push_back({wParam & 0xFFF0, lParam});
        return m_onMessage && m_onMessage(message, wParam, lParam, result);
    }

    // Runs the steps in a loop like the program's.
    void Play(const InputScript& steps)
    {
        InputScript script = steps;
        script.Run([this](const MSG& message) {
            return CommandBands_TranslateMenuKey(m_window.MenuBar(), message);
        });
    }

    // Another window, not yet on the screen: it becomes the active one when it is shown.
    static UniqueWindow MakeOther()
    {
        return UniqueWindow(CreateWindowExW(0, L"STATIC", L"Other", WS_OVERLAPPEDWINDOW, 300, 300, 200, 100,
                                            nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
    }

    int Hot() const { return static_cast<int>(SendMessageW(m_window.MenuBar(), TB_GETHOTITEM, 0, 0)); }
    bool IsActive() const { return GetFocus() == m_window.MenuBar(); }
    bool IsLeft() const { return GetFocus() == m_window.Focus() && Hot() < 0 && OpenMenus().empty(); }
    HMENU Menu(int index) const { return GetSubMenu(CommandBar_GetMenu(m_window.MenuBar()), index); }
    HMENU Inner() const { return GetSubMenu(Menu(kEdit), 0); }
    bool IsOpen(HMENU menu) const { return InnermostMenu() == menu; }

    std::function<bool()> Hot(int index)
    {
        return [this, index] { return IsActive() && Hot() == index && OpenMenus().empty(); };
    }
    // A menu is open with an item selected; -1: none selected.
    std::function<bool()> Open(int index, int item) { return OpenMenu(Menu(index), item); }
    std::function<bool()> OpenMenu(HMENU menu, int item)
    {
        return [this, menu, item] { return IsOpen(menu) && SelectedItem(menu) == item; };
    }
    std::function<bool()> Left()
    {
        return [this] { return IsLeft(); };
    }
    // Left, but the mouse may make a button hot.
    std::function<bool()> Closed()
    {
        return [this] { return GetFocus() == m_window.Focus() && OpenMenus().empty(); };
    }
    std::function<bool()> Commanded()
    {
        return [this] { return !m_window.commands.empty(); };
    }
    std::function<POINT()> Button(int index)
    {
        return [this, index] {
            return CenterOf(m_window.MenuBar(), ButtonRects(m_window.MenuBar())[static_cast<size_t>(index)]);
        };
    }
    static std::function<POINT()> Item(HMENU menu, UINT index)
    {
        return [menu, index] {
            RECT rect{};
            GetMenuItemRect(nullptr, menu, index, &rect);
            return POINT{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
        };
    }
    std::function<POINT()> Outside()
    {
        return [this] { return CenterOf(m_window.Focus(), {0, 0, 200, 100}); };
    }
    static std::function<void()> Key(WORD key)
    {
        return [key] { PressKey(key); };
    }
    static std::function<void()> AltAnd(WORD key)
    {
        return [key] { PressWith(kAlt, key); };
    }

    std::vector<UINT> m_noCommands;
    std::vector<HMENU> m_initialized;
    std::vector<std::pair<WPARAM, LPARAM>> m_systemCommands;
    std::function<bool(UINT, WPARAM, LPARAM, LRESULT*)> m_onMessage;
    BandsWindow m_window{640};
};

} // namespace

TEST_F(MenuBarTest, ButtonsHaveTheMenusTexts)
{
    const wchar_t* const texts[] = {L"&File", L"&Edit", L"&Uh", L"G&o"};
    ASSERT_EQ(SendMessageW(m_window.MenuBar(), TB_BUTTONCOUNT, 0, 0), 4);
    for (int i = 0; i < 4; ++i) {
        wchar_t text[32] = L"";
        SendMessageW(m_window.MenuBar(), TB_GETBUTTONTEXTW, static_cast<WPARAM>(MenuBarButtons::CommandOf(i)),
                     reinterpret_cast<LPARAM>(text));
        EXPECT_STREQ(text, texts[i]);
    }
}

TEST_F(MenuBarTest, MenuIsTheBarsAndComesOnce)
{
    EXPECT_TRUE(IsMenu(CommandBar_GetMenu(m_window.MenuBar())));
    EXPECT_EQ(CommandBar_GetMenu(m_window.ButtonBar()), nullptr);
    HINSTANCE instance = GetModuleHandleW(nullptr);
    EXPECT_FALSE(CommandBar_InsertMenubar(m_window.MenuBar(), instance, TEST_MENU));
    EXPECT_FALSE(CommandBar_InsertMenubar(m_window.ButtonBar(), instance, 9999));
}

TEST_F(MenuBarTest, AltMakesTheFirstItemHotAndAltLeaves)
{
    Play(InputScript().Do(Key(kAlt)).Until("hot", Hot(kFile)).Do(Key(kAlt)).Until("left", Left()));
    // It works again, and no system menu came of it.
    Play(InputScript().Do(Key(kAlt)).Until("hot", Hot(kFile)).Do(Key(kAlt)).Until("left", Left()));
    EXPECT_EQ(m_window.commands, m_noCommands);
    EXPECT_TRUE(m_systemCommands.empty());
}

TEST_F(MenuBarTest, F10IsLikeAlt)
{
    Play(InputScript().Do(Key(VK_F10)).Until("hot", Hot(kFile)).Do(Key(VK_F10)).Until("left", Left()));
    Play(InputScript().Do(Key(VK_F10)).Until("hot", Hot(kFile)).Do(Key(kAlt)).Until("left", Left()));
}

TEST_F(MenuBarTest, EscapeLeavesTheHotBar)
{
    Play(InputScript().Do(Key(kAlt)).Until("hot", Hot(kFile)).Do(Key(VK_ESCAPE)).Until("left", Left()));
}

TEST_F(MenuBarTest, ArrowsMoveAlongTheBarPastWhatIsGrey)
{
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("first", Hot(kFile))
             .Do(Key(VK_RIGHT))
             .Until("second", Hot(kEdit))
             .Do(Key(VK_RIGHT))
             .Until("last", Hot(kGo))
             .Do(Key(VK_RIGHT))
             .Until("round", Hot(kFile))
             .Do(Key(VK_LEFT))
             .Until("back", Hot(kGo))
             .Do(Key(VK_LEFT))
             .Until("before the grey one", Hot(kEdit))
             .Do(Key(VK_ESCAPE))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, DownUpAndEnterOpenTheHotMenu)
{
    for (const WORD key : {WORD{VK_DOWN}, WORD{VK_UP}, WORD{VK_RETURN}})
        Play(InputScript()
                 .Do(Key(kAlt))
                 .Until("hot", Hot(kFile))
                 .Do(Key(VK_RIGHT))
                 .Until("second", Hot(kEdit))
                 .Do(Key(key))
                 .Until("open", Open(kEdit, 0))
                 .Do(Key(VK_ESCAPE))
                 .Until("hot again", Hot(kEdit))
                 .Do(Key(VK_ESCAPE))
                 .Until("left", Left()));
}

TEST_F(MenuBarTest, LetterOpensItsMenuFromTheHotBar)
{
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do(Key('O'))
             .Until("open", Open(kGo, 0))
             .Do(Key(VK_RETURN))
             .Until("command", Commanded()));
    EXPECT_EQ(m_window.commands, std::vector<UINT>{CMD_FOURTH});
    EXPECT_TRUE(IsLeft());
}

TEST_F(MenuBarTest, LetterOfNoMenuLeavesTheBarHot)
{
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do(Key('X'))
             .Do(Key(VK_RIGHT))
             .Until("still hot", Hot(kEdit))
             .Do(Key(VK_ESCAPE))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, AltWithALetterOpensItsMenuAtOnce)
{
    Play(InputScript()
             .Do(AltAnd('E'))
             .Until("open", Open(kEdit, 0))
             .Do(Key('L'))
             .Until("command", Commanded()));
    EXPECT_EQ(m_window.commands, std::vector<UINT>{CMD_LAST_OF_SECOND});
    EXPECT_TRUE(IsLeft());
}

TEST_F(MenuBarTest, AltWithALetterWorksFromAnyWindowOfTheParent)
{
    for (HWND focus : {m_window.Window(), m_window.Focus(), m_window.MenuBar()}) {
        SetFocus(focus);
        Play(InputScript().Do(AltAnd('F')).Until("open", Open(kFile, 0)).Do(Key(kAlt)).Until("closed", [] {
            return OpenMenus().empty();
        }));
    }
}

TEST_F(MenuBarTest, AltWithALetterWhileTheBarIsHotOpensItsMenu)
{
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do(AltAnd('E'))
             .Until("open", Open(kEdit, 0))
             .Do(Key(VK_ESCAPE))
             .Until("hot", Hot(kEdit))
             .Do(Key(VK_ESCAPE))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, AltBlankIsForTheSystemMenu)
{
    m_onMessage = [](UINT message, WPARAM, LPARAM, LRESULT*) { return message == WM_SYSCOMMAND; };
    const auto asked = [this] { return !m_systemCommands.empty(); };
    Play(InputScript().Do(AltAnd(VK_SPACE)).Until("system menu", asked));
    EXPECT_EQ(m_systemCommands.back(), std::make_pair(WPARAM{SC_KEYMENU}, LPARAM{' '}));
    m_systemCommands.clear();
    Play(InputScript().Do(Key(kAlt)).Until("hot", Hot(kFile)).Do(Key(VK_SPACE)).Until("system menu", asked));
    EXPECT_EQ(m_systemCommands.back(), std::make_pair(WPARAM{SC_KEYMENU}, LPARAM{' '}));
    EXPECT_TRUE(IsLeft());
}

TEST_F(MenuBarTest, ArrowsGoFromMenuToMenu)
{
    Play(InputScript()
             .Do(AltAnd('F'))
             .Until("first", Open(kFile, 0))
             .Do(Key(VK_DOWN))
             .Until("second item", Open(kFile, 1))
             .Do(Key(VK_LEFT))
             .Until("last menu", Open(kGo, 0))
             .Do(Key(VK_RIGHT))
             .Until("first menu", Open(kFile, 0))
             .Do(Key(VK_RIGHT))
             .Until("second menu", Open(kEdit, 0))
             .Do(Key(VK_DOWN))
             .Until("item without a menu", Open(kEdit, 1))
             .Do(Key(VK_RIGHT))
             .Until("past the grey one", Open(kGo, 0))
             .Do(Key(VK_LEFT))
             .Until("back", Open(kEdit, 0))
             .Do(Key(VK_LEFT))
             .Until("and back", Open(kFile, 0))
             .Do(Key(kAlt))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, RightArrowGoesIntoAnInnerMenuAndLeftOnlyOutOfIt)
{
    Play(InputScript()
             .Do(AltAnd('E'))
             .Until("open", Open(kEdit, 0))
             .Do(Key(VK_RIGHT))
             .Until("inner", OpenMenu(Inner(), 0))
             .Do(Key(VK_LEFT))
             .Until("outer", Open(kEdit, 0))
             .Do(Key(kAlt))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, RightArrowLeadsOutOfAnInnerMenuToTheNextOne)
{
    Play(InputScript()
             .Do(AltAnd('E'))
             .Until("open", Open(kEdit, 0))
             .Do(Key(VK_RIGHT))
             .Until("inner", OpenMenu(Inner(), 0))
             .Do(Key(VK_RIGHT))
             .Until("next menu", Open(kGo, 0))
             .Do(Key(kAlt))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, InnermostCommandIsReachedByArrows)
{
    HMENU innermost = GetSubMenu(Inner(), 1);
    Play(InputScript()
             .Do(AltAnd('E'))
             .Until("open", Open(kEdit, 0))
             .Do(Key(VK_RIGHT))
             .Until("inner", OpenMenu(Inner(), 0))
             .Do(Key(VK_DOWN))
             .Until("inner's second", OpenMenu(Inner(), 1))
             .Do(Key(VK_RIGHT))
             .Until("innermost", OpenMenu(innermost, 0))
             .Do(Key(VK_RETURN))
             .Until("command", Commanded()));
    EXPECT_EQ(m_window.commands, std::vector<UINT>{CMD_INNERMOST});
}

TEST_F(MenuBarTest, EscapeClosesInnerMenuThenMenuThenLeaves)
{
    Play(InputScript()
             .Do(AltAnd('E'))
             .Until("open", Open(kEdit, 0))
             .Do(Key(VK_RIGHT))
             .Until("inner", OpenMenu(Inner(), 0))
             .Do(Key(VK_ESCAPE))
             .Until("outer", Open(kEdit, 0))
             .Do(Key(VK_ESCAPE))
             .Until("hot", Hot(kEdit))
             .Do(Key(VK_ESCAPE))
             .Until("left", Left()));
}

TEST_F(MenuBarTest, AltClosesAnOpenMenuAndLeaves)
{
    Play(InputScript()
             .Do(AltAnd('F'))
             .Until("open", Open(kFile, 0))
             .Do(Key(kAlt))
             .Until("left", Left())
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do(Key(kAlt))
             .Until("left again", Left()));
}

TEST_F(MenuBarTest, ParentIsAskedBeforeEachMenuOpens)
{
    Play(InputScript()
             .Do(AltAnd('F'))
             .Until("open", Open(kFile, 0))
             .Do(Key(VK_LEFT))
             .Until("next", Open(kGo, 0))
             .Do(Key(VK_LEFT))
             .Until("with an inner one", Open(kEdit, 0))
             .Do(Key(VK_RIGHT))
             .Until("inner", OpenMenu(Inner(), 0))
             .Do(Key(kAlt))
             .Until("left", Left()));
    EXPECT_EQ(m_initialized, (std::vector<HMENU>{Menu(kFile), Menu(kGo), Menu(kEdit), Inner()}));
    EXPECT_EQ(m_window.commands, m_noCommands);
}

// Some systems close the menu then.
TEST_F(MenuBarTest, GreyItemSendsNothing)
{
    m_onMessage = [](UINT message, WPARAM wParam, LPARAM, LRESULT*) {
        if (message == WM_INITMENUPOPUP)
            EnableMenuItem(reinterpret_cast<HMENU>(wParam), CMD_ONE, MF_BYCOMMAND | MF_GRAYED);
        return false;
    };
    const std::function<void()> keys[] = {Key('G'), Key('O'), Key(VK_RETURN)};
    for (const auto& key : keys)
        Play(InputScript()
                 .Do(AltAnd('F'))
                 .Until("open", Open(kFile, 0))
                 .Do(key)
                 .Do([] { EndMenu(); })
                 .Until("closed", Closed()));
    Play(InputScript()
             .Do(AltAnd('F'))
             .Until("open", Open(kFile, 0))
             .Click(Item(Menu(kFile), 2))
             .Do([] { EndMenu(); })
             .Until("closed", Closed()));
    EXPECT_EQ(m_window.commands, m_noCommands);
}

TEST_F(MenuBarTest, GreyMenuDoesNotOpen)
{
    Play(InputScript()
             .Do(AltAnd('U'))
             .Click(Button(kGreyMenu))
             .Do(AltAnd('F'))
             .Until("another", Open(kFile, 0))
             .MoveTo(Button(kGreyMenu))
             .MoveTo(Button(kGo))
             .Until("one more", Open(kGo, -1))
             .MoveTo(Outside())
             .Do(Key(kAlt))
             .Until("left", Left()));
    EXPECT_EQ(m_initialized, (std::vector<HMENU>{Menu(kFile), Menu(kGo)}));
}

TEST_F(MenuBarTest, ClickOpensAndClickCloses)
{
    Play(InputScript()
             .Click(Button(kEdit))
             .Until("open", Open(kEdit, -1))
             .Click(Button(kEdit))
             .Until("closed", Closed())
             .Click(Button(kEdit))
             .Until("open again", Open(kEdit, -1))
             .Click(Button(kEdit))
             .Until("closed again", Closed())
             .MoveTo(Outside())
             .Until("left", Left()));
    EXPECT_EQ(m_initialized, (std::vector<HMENU>{Menu(kEdit), Menu(kEdit)}));
    for (const auto& notification : m_window.notifications)
        EXPECT_NE(notification.code, static_cast<UINT>(TBN_DROPDOWN));
}

TEST_F(MenuBarTest, MouseAloneChoosesACommand)
{
    Play(InputScript()
             .Click(Button(kFile))
             .Until("open", Open(kFile, -1))
             .Click(Item(Menu(kFile), 1))
             .Until("command", Commanded()));
    EXPECT_EQ(m_window.commands, std::vector<UINT>{CMD_TWO});
    EXPECT_EQ(GetFocus(), m_window.Focus());
}

TEST_F(MenuBarTest, PressedMouseButtonChoosesWhereItIsReleased)
{
    Play(InputScript()
             .MoveTo(Button(kFile))
             .Do(ButtonDown)
             .Until("open", Open(kFile, -1))
             .MoveTo(Item(Menu(kFile), 0))
             .Until("selected", Open(kFile, 0))
             .Do(ButtonUp)
             .Until("command", Commanded()));
    EXPECT_EQ(m_window.commands, std::vector<UINT>{CMD_ONE});
}

TEST_F(MenuBarTest, MouseOverAnotherButtonOpensItsMenu)
{
    Play(InputScript()
             .Click(Button(kFile))
             .Until("open", Open(kFile, -1))
             .MoveTo(Button(kEdit))
             .Until("next", Open(kEdit, -1))
             .MoveTo(Button(kFile))
             .Until("back", Open(kFile, -1))
             .Click(Outside())
             .Until("closed", Left()));
    EXPECT_EQ(m_initialized, (std::vector<HMENU>{Menu(kFile), Menu(kEdit), Menu(kFile)}));
}

TEST_F(MenuBarTest, MouseOverTheBarOpensNothingBeforeAMenuIsOpen)
{
    Play(InputScript().MoveTo(Button(kFile)).MoveTo(Button(kEdit)).MoveTo(Outside()));
    EXPECT_TRUE(m_initialized.empty());
}

TEST_F(MenuBarTest, ClickOutsideClosesTheMenu)
{
    Play(InputScript().Do(AltAnd('F')).Until("open", Open(kFile, 0)).Click(Outside()).Until("left", Left()));
    EXPECT_EQ(m_window.commands, m_noCommands);
}

TEST_F(MenuBarTest, RestingMouseDoesNotTakeTheHighlightFromTheKeyboard)
{
    Play(InputScript()
             .MoveTo(Button(kGo))
             .Do(Key(kAlt))
             .Until("first", Hot(kFile))
             .Do([this] { PostMessageW(m_window.MenuBar(), WM_MOUSEMOVE, 0, MAKELPARAM(60, 5)); })
             .Do(Key(VK_RIGHT))
             .Until("second", Hot(kEdit))
             .Do(Key(VK_DOWN))
             .Until("open", Open(kEdit, 0))
             .Do(Key(VK_LEFT))
             .Until("neighbour", Open(kFile, 0))
             .Do(Key(kAlt))
             .Until("closed", Closed())
             .MoveTo(Outside()));
}

TEST_F(MenuBarTest, ClickElsewhereLeavesTheHotBar)
{
    Play(InputScript().Do(Key(kAlt)).Until("hot", Hot(kFile)).Click(Outside()).Until("left", Left()));
    // Also where a click does not take the focus.
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Click([this] { return CenterOf(m_window.ButtonBar(), ButtonRects(m_window.ButtonBar())[4]); })
             .Until("left", Left()));
}

TEST_F(MenuBarTest, KeysOfTheHotBarAreNoAccelerators)
{
    ACCEL keys[] = {{FVIRTKEY, VK_RIGHT, 501}, {FVIRTKEY, 'F', 502}, {FVIRTKEY, VK_RETURN, 503}};
    HACCEL table = CreateAcceleratorTableW(keys, 3);
    const auto translate = [&](const MSG& message) {
        MSG copy = message;
        return CommandBands_TranslateMenuKey(m_window.MenuBar(), message) ||
               TranslateAcceleratorW(m_window.Window(), table, &copy);
    };
    InputScript()
        .Do(Key(kAlt))
        .Until("hot", Hot(kFile))
        .Do(Key(VK_RIGHT))
        .Until("second", Hot(kEdit))
        .Do(Key(VK_RETURN))
        .Until("open", Open(kEdit, 0))
        .Do(Key(VK_ESCAPE))
        .Until("hot again", Hot(kEdit))
        .Do(Key('F'))
        .Until("file", Open(kFile, 0))
        .Do(Key(kAlt))
        .Until("left", Left())
        .Run(translate);
    EXPECT_EQ(m_window.commands, m_noCommands);
    InputScript().Do(Key('F')).Until("accelerator", Commanded()).Run(translate);
    EXPECT_EQ(m_window.commands, std::vector<UINT>{502});
    DestroyAcceleratorTable(table);
}

TEST_F(MenuBarTest, AnotherWindowsActivationLeavesTheHotBar)
{
    const UniqueWindow other = MakeOther();
    HWND focusWhenInactive = nullptr;
    m_onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT*) {
        if (message == WM_ACTIVATE && LOWORD(wParam) == WA_INACTIVE)
            focusWhenInactive = GetFocus();
        return false;
    };
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do([&other] { ShowWindow(other.get(), SW_SHOW); })
             .Until("other active", [&other] { return GetForegroundWindow() == other.get(); }));
    EXPECT_LT(Hot(), 0);
    EXPECT_EQ(focusWhenInactive, m_window.Focus());
    EXPECT_NE(GetFocus(), m_window.MenuBar());
}

TEST_F(MenuBarTest, AnotherWindowsActivationClosesAnOpenMenu)
{
    const UniqueWindow other = MakeOther();
    Play(InputScript()
             .Do(AltAnd('F'))
             .Until("open", Open(kFile, 0))
             .Do([&other] { ShowWindow(other.get(), SW_SHOW); })
             .Until("closed", [] { return OpenMenus().empty(); }));
    EXPECT_EQ(GetForegroundWindow(), other.get());
    EXPECT_LT(Hot(), 0);
}

TEST_F(MenuBarTest, FocusThatIsGoneGoesToTheParent)
{
    Play(InputScript()
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do([this] { DestroyWindow(m_window.Focus()); })
             .Do(Key(VK_ESCAPE))
             .Until("parent has it", [this] { return GetFocus() == m_window.Window(); }));
}

TEST_F(MenuBarTest, CommandMayOpenAModalWindow)
{
    m_onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
        if (message == WM_COMMAND && lParam == 0 && LOWORD(wParam) == CMD_ONE) {
            const MessageBoxAnswerer answerer({IDOK});
            MessageBoxW(m_window.Window(), L"One", L"Test", MB_OK);
        }
        return false;
    };
    Play(InputScript()
             .Do(AltAnd('F'))
             .Until("open", Open(kFile, 0))
             .Do(Key(VK_RETURN))
             .Until("command", Commanded())
             .Until("focus back", Left())
             .Do(Key(kAlt))
             .Until("hot", Hot(kFile))
             .Do(Key(VK_ESCAPE))
             .Until("left", Left()));
}

TEST(MenuBarLifetime, WindowMayGoWhileAMenuIsOpen)
{
    for (const bool onlyBands : {true, false}) {
        BandsWindow window(640);
        window.Show();
        HWND bar = window.MenuBar();
        InputScript()
            .Do([] { PressWith(kAlt, 'F'); })
            .Until("open", [] { return !OpenMenus().empty(); })
            .Do([&] { DestroyWindow(onlyBands ? window.Bands() : window.Window()); })
            .Until("closed", [] { return OpenMenus().empty(); })
            .Run([bar](const MSG& message) { return CommandBands_TranslateMenuKey(bar, message); });
        EXPECT_FALSE(IsWindow(bar));
        PumpMessages();
    }
}
