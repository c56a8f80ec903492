// The menu bar by the mouse.
#include "ui/menu_bar_fixture.h"

namespace {

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

} // namespace
