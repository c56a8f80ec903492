#include "ui/bars/drop_down.h"

#include <gtest/gtest.h>

#include "support/menu_driver.h"
#include "ui/bands_window.h"
#include "ui/input.h"
#include "ui/screen/scale.h"
#include "ui/taken_message.h"
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

// The window may have been closed behind the menu.
TEST_F(DropDownTest, TheEndOfTheProgramIsNotTakenForAClick)
{
    const RECT button = ButtonRects(m_window.ButtonBar())[kFilterButton];
    POINT middle = CenterOf(m_window.ButtonBar(), button);
    ASSERT_TRUE(SetCursorPos(middle.x, middle.y));
    const MenuDriver driver([](HMENU) {
        PostQuitMessage(7);
        EndMenu();
    });
    NMTOOLBARW notification{};
    notification.hdr.hwndFrom = m_window.ButtonBar();
    notification.iItem = kFilterCommand;
    Drop(notification);
    EXPECT_TRUE(driver.Ran());
    MSG quit{};
    EXPECT_TRUE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(quit.wParam, 7u);
}

// As Wine's loop takes it with a message that has gone with its window.
TEST_F(DropDownTest, TheEndOfTheProgramIsNotLostInTheMenusLoop)
{
    auto owner = std::make_unique<TestParent>();
    HWND window = owner->Handle();
    const MenuDriver driver([&owner](HMENU) {
        owner.reset();
        PostQuitMessage(0);
        MSG lost{};
        EXPECT_TRUE(PeekMessageW(&lost, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE));
        EXPECT_EQ(lost.message, UINT{WM_QUIT});
        EndMenu();
        PostThreadMessageW(GetCurrentThreadId(), WM_CANCELMODE, 0, 0);
    });
    EXPECT_EQ(TrackMenu(m_menu.get(), TPM_RETURNCMD, {10, 10}, window), 0u);
    EXPECT_TRUE(driver.Ran());
    MSG quit{};
    EXPECT_TRUE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(quit.message, UINT{WM_QUIT});
}

TEST_F(DropDownTest, NoEndComesWhereTheOwnerIsThere)
{
    const MenuDriver driver([](HMENU) { EndMenu(); });
    EXPECT_EQ(TrackMenu(m_menu.get(), TPM_RETURNCMD, {10, 10}, m_window.Window()), 0u);
    EXPECT_TRUE(driver.Ran());
    MSG quit{};
    EXPECT_FALSE(PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST_F(DropDownTest, AMessageOfAnotherWindowStays)
{
    MSG taken{};
    PostMessageW(m_window.Window(), WM_APP, 1, 0);
    EXPECT_FALSE(TakeMessage(m_window.ButtonBar(), WM_APP, &taken));
    EXPECT_TRUE(TakeMessage(m_window.Window(), WM_APP, &taken));
    EXPECT_EQ(taken.wParam, 1u);
}

TEST_F(DropDownTest, TheQuitMessageIsNoOther)
{
    MSG taken{};
    PostQuitMessage(7);
    EXPECT_FALSE(TakeMessage(nullptr, WM_PAINT, &taken));
    PostMessageW(nullptr, WM_APP, 1, 2);
    EXPECT_TRUE(TakeMessage(nullptr, WM_APP, &taken));
    EXPECT_EQ(taken.lParam, 2);
    EXPECT_FALSE(TakeMessage(nullptr, WM_APP, &taken));
    EXPECT_TRUE(PeekMessageW(&taken, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(taken.wParam, 7u);
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

TEST(MenuPlaces, ACornerThatLiesOnTheScreenStays)
{
    const RECT screen{1920, -200, 3840, 880};
    for (const POINT corner : {POINT{1920, -200}, POINT{2500, 300}, POINT{3839, 879}}) {
        const POINT place = PointWithin(corner, screen);
        EXPECT_EQ(place.x, corner.x);
        EXPECT_EQ(place.y, corner.y);
    }
}

// A button that hangs over the edge has its corner on the screen beside.
TEST(MenuPlaces, OneThatDoesNotIsBroughtToTheEdge)
{
    const RECT screen{1920, -200, 3840, 880};
    const auto [left, above] = PointWithin({1900, -300}, screen);
    EXPECT_EQ(left, 1920);
    EXPECT_EQ(above, -200);
    const auto [right, below] = PointWithin({3840, 880}, screen);
    EXPECT_EQ(right, 3839);
    EXPECT_EQ(below, 879);
}

TEST(MenuPlaces, TheScreenIsTheOneThatShowsTheButton)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetMonitorInfoW(MonitorFromPoint({}, MONITOR_DEFAULTTOPRIMARY), &info));
    const POINT corner = MenuCorner({-40, 30}, {-40, 10, 60, 30});
    EXPECT_EQ(corner.x, info.rcMonitor.left);
    EXPECT_EQ(corner.y, 30);
}
