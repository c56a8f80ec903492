// The menu bar by the keyboard, and what else leaves it.
#include "ui/menu_bar_fixture.h"

namespace {

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

} // namespace
