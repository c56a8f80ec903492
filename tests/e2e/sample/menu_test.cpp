#include "e2e/harness/input.h"
#include "e2e/harness/message_box.h"
#include "e2e/harness/remote_menu.h"
#include "e2e/harness/remote_toolbar.h"
#include "e2e/sample/sample_test.h"

namespace {

class MenuTest : public SampleTest {
  protected:
    HWND OpenPopup()
    {
        const RemoteToolbar bar(Control(m_window, SAMPLE_BAR));
        if (!Click(bar.ArrowPoint(SAMPLE_CMD_DIALOG)))
            return nullptr;
        return WaitForPopup(m_program.Id());
    }
};

TEST_F(MenuTest, ReadsAMenuBar)
{
    const RemoteMenu bar = MenuBarOf(m_window);
    ASSERT_TRUE(bar);
    const std::vector<RemoteMenuItem> items = bar.Items();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].text, L"&File");
    EXPECT_NE(items[0].submenu, nullptr);
    EXPECT_EQ(bar.Find(SAMPLE_CMD_BOX).text, L"&Box\tCtrl+B");
    EXPECT_EQ(bar.Find(9999).id, 0u);
}

TEST_F(MenuTest, ReadsAPopup)
{
    HWND popup = OpenPopup();
    ASSERT_NE(popup, nullptr);
    const std::vector<RemoteMenuItem> items = MenuOfPopup(popup).Items();
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items[0].id, static_cast<UINT>(SAMPLE_CMD_BOX));
    EXPECT_TRUE(items[0].enabled);
    EXPECT_FALSE(items[0].checked);
    EXPECT_TRUE(items[1].separator);
    EXPECT_TRUE(items[2].checked);
    EXPECT_FALSE(items[3].enabled);
    EXPECT_TRUE(ClosePopups(m_program.Id()));
    EXPECT_FALSE(IsWindowVisible(popup));
}

TEST_F(MenuTest, ChoosesFromAPopupWithTheMouse)
{
    HWND popup = OpenPopup();
    ASSERT_NE(popup, nullptr);
    EXPECT_FALSE(ChooseFromPopup(popup, 9999));
    ASSERT_TRUE(ChooseFromPopup(popup, SAMPLE_CMD_CHECKED));
    EXPECT_TRUE(Tells(L"checked"));
}

TEST_F(MenuTest, ChoosesFromTheBarWithKeys)
{
    ASSERT_TRUE(Activate(m_window));
    PressKeys({VK_MENU, 'F'});
    ASSERT_NE(WaitForPopup(m_program.Id()), nullptr);
    PressKey('B');
    EXPECT_TRUE(WaitForMessageBox(m_program.Id()).Answer(IDNO));
    EXPECT_TRUE(Tells(L"no"));
}

} // namespace
