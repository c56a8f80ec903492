#include "ui/drop_down.h"

#include <gtest/gtest.h>

#include "ui/bands_window.h"
#include "ui/input.h"
#include "ui/scale.h"
#include "util/owners.h"

namespace {

constexpr size_t kFilterButton = 7;
constexpr UINT kFirstItem = 701;
constexpr UINT kSecondItem = 702;

class DropDownTest : public testing::Test {
  protected:
    DropDownTest() : m_menu(CreatePopupMenu())
    {
        AppendMenuW(m_menu.get(), MF_STRING, kFirstItem, L"First");
        AppendMenuW(m_menu.get(), MF_STRING, kSecondItem, L"Second");
        m_window.onMessage = [this](UINT message, WPARAM, LPARAM lParam, LRESULT*) {
            const auto* notification = reinterpret_cast<const NMHDR*>(lParam);
            if (message == WM_NOTIFY && notification->code == static_cast<UINT>(TBN_DROPDOWN))
                Drop(*reinterpret_cast<const NMTOOLBARW*>(lParam));
            return false;
        };
        m_window.Show();
    }

    void Drop(const NMTOOLBARW& notification)
    {
        m_button = ButtonRects(m_window.ButtonBar())[kFilterButton];
        m_chosen.push_back(
            TrackDropDown(notification.hdr.hwndFrom, notification.iItem, m_menu.get(), m_window.Window()));
    }

    std::function<POINT()> Arrow()
    {
        return [this] {
            const RECT rect = ButtonRects(m_window.ButtonBar())[kFilterButton];
            return CenterOf(m_window.ButtonBar(), {rect.right - Scale(8), rect.top, rect.right, rect.bottom});
        };
    }
    static bool IsOpen() { return !OpenMenus().empty(); }

    UniqueMenu m_menu;
    std::vector<UINT> m_chosen;
    RECT m_button{};
    BandsWindow m_window{640};
};

} // namespace

TEST_F(DropDownTest, ChosenItemIsReturnedAndNotSent)
{
    InputScript()
        .Click(Arrow())
        .Until("open", IsOpen)
        .Do([] { PressKey(VK_DOWN); })
        .Do([] { PressKey(VK_DOWN); })
        .Until("second item", [this] { return SelectedItem(m_menu.get()) == 1; })
        .Do([] { PressKey(VK_RETURN); })
        .Until("closed", [this] { return !m_chosen.empty(); })
        .Run();
    EXPECT_EQ(m_chosen, std::vector<UINT>{kSecondItem});
    EXPECT_TRUE(m_window.commands.empty());
}

TEST_F(DropDownTest, EscapeChoosesNothing)
{
    InputScript()
        .Click(Arrow())
        .Until("open", IsOpen)
        .Do([] { PressKey(VK_ESCAPE); })
        .Until("closed", [this] { return !m_chosen.empty(); })
        .Run();
    EXPECT_EQ(m_chosen, std::vector<UINT>{0});
}

TEST_F(DropDownTest, MenuLiesBelowItsButton)
{
    RECT item{};
    InputScript()
        .Click(Arrow())
        .Until("open", IsOpen)
        .Do([&] {
            GetMenuItemRect(nullptr, m_menu.get(), 0, &item);
            PressKey(VK_ESCAPE);
        })
        .Until("closed", [this] { return !m_chosen.empty(); })
        .Run();
    RECT button = m_button;
    MapWindowPoints(m_window.ButtonBar(), nullptr, reinterpret_cast<POINT*>(&button), 2);
    EXPECT_GE(item.top, button.bottom);
    EXPECT_LT(item.top, button.bottom + Scale(10));
    EXPECT_GE(item.left, button.left);
    EXPECT_LT(item.left, button.left + Scale(10));
}

TEST_F(DropDownTest, ClickOnTheButtonClosesWithoutOpeningAgain)
{
    InputScript()
        .Click(Arrow())
        .Until("open", IsOpen)
        .Click(Arrow())
        .Until("closed", [this] { return !m_chosen.empty(); })
        .Run();
    PumpMessages();
    EXPECT_EQ(m_chosen, std::vector<UINT>{0});
    EXPECT_FALSE(IsOpen());
    // And the next click opens it.
    InputScript()
        .Click(Arrow())
        .Until("open", IsOpen)
        .Do([] { PressKey(VK_ESCAPE); })
        .Until("closed", [this] { return m_chosen.size() == 2; })
        .Run();
}
