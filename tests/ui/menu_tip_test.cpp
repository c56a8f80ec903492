#include "ui/bars/menu_tip.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "support/menu_driver.h"
#include "support/test_windows.h"
#include "ui/screen/scale.h"
#include "ui_test_resource.h"
#include "util/owners.h"

namespace {

constexpr int kFrame = 1; // of a tip, which may lie outside of the place that it is given

class MenuTipTest : public testing::Test {
  protected:
    MenuTipTest()
    {
        AppendMenuW(m_menu.get(), MF_STRING, 700, L"Without a string");
        AppendMenuW(m_menu.get(), MF_SEPARATOR, 0, nullptr);
        AppendMenuW(m_menu.get(), MF_STRING, IDS_MENU_TIP, L"With one");
    }

    // While the menu stands at this place of the screen.
    void Track(POINT place, const std::function<void()>& action)
    {
        const MenuDriver driver([&](HMENU) {
            action();
            EndMenu();
        });
        TrackPopupMenu(m_menu.get(), TPM_RETURNCMD, place.x, place.y, 0, m_owner.Handle(), nullptr);
        EXPECT_TRUE(driver.Ran());
    }
    void Select(UINT item, UINT flags = MF_HILITE)
    {
        m_tip.OnMenuSelect(m_owner.Handle(), MAKEWPARAM(item, flags), reinterpret_cast<LPARAM>(m_menu.get()));
    }
    void Leave() { m_tip.OnMenuSelect(m_owner.Handle(), MAKEWPARAM(0, 0xFFFF), 0); }
    // Of this thread; null when none is to be seen.
    static HWND Shown()
    {
        HWND shown = nullptr;
        EnumThreadWindows(
            GetCurrentThreadId(),
            [](HWND window, LPARAM found) -> BOOL {
                wchar_t name[32] = L"";
                GetClassNameW(window, name, 32);
                if (wcscmp(name, TOOLTIPS_CLASSW) == 0 && IsWindowVisible(window))
                    *reinterpret_cast<HWND*>(found) = window;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&shown));
        return shown;
    }
    std::wstring TextOf(HWND tip) const { return ToolTipText(tip, m_owner.Handle(), 1); }
    static RECT PlaceOf(HWND window)
    {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
    static LONG FontHeight(HWND window)
    {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
        return font.lfHeight;
    }
    RECT ItemPlace() const
    {
        RECT item{};
        EXPECT_TRUE(GetMenuItemRect(nullptr, m_menu.get(), 2, &item));
        return item;
    }

    TestParent m_owner{nullptr, 300, 200};
    UniqueMenu m_menu{CreatePopupMenu()};
    MenuTip m_tip;
};

TEST_F(MenuTipTest, StandsBesideTheHighlightedItem)
{
    Track({20, 20}, [this] {
        Select(IDS_MENU_TIP);
        HWND tip = Shown();
        ASSERT_NE(tip, nullptr);
        EXPECT_EQ(TextOf(tip), L"Start something & more");
        EXPECT_NEAR(PlaceOf(tip).left, ItemPlace().right + Scale(m_owner.Handle(), 4), kFrame);
        EXPECT_GE(PlaceOf(tip).bottom, ItemPlace().top);
        EXPECT_LE(PlaceOf(tip).top, ItemPlace().bottom);
        EXPECT_TRUE(GetWindowLongPtrW(tip, GWL_EXSTYLE) & WS_EX_TOPMOST) << "as menus are";
    });
}

TEST_F(MenuTipTest, GoesWithTheHighlight)
{
    Track({20, 20}, [this] {
        Select(700);
        EXPECT_EQ(Shown(), nullptr) << "of an item that has none";
        Select(IDS_MENU_TIP);
        EXPECT_NE(Shown(), nullptr);
        Select(700);
        EXPECT_EQ(Shown(), nullptr);
        Select(IDS_MENU_TIP);
        Select(IDS_MENU_TIP, MF_HILITE | MF_POPUP);
        EXPECT_EQ(Shown(), nullptr) << "of a menu with that number";
        Select(IDS_MENU_TIP);
        Leave();
        EXPECT_EQ(Shown(), nullptr);
    });
}

TEST_F(MenuTipTest, IsOfTheResolutionThatItsWindowComesTo)
{
    const int dpi = DpiOf(m_owner.Handle());
    LONG single = 0;
    for (const int times : {1, 2, 1}) {
        mervane::NoteDpi(m_owner.Handle(), static_cast<WPARAM>(dpi * times));
        Track({20, 20}, [&] {
            Select(IDS_MENU_TIP);
            HWND tip = Shown();
            ASSERT_NE(tip, nullptr);
            if (!single)
                single = FontHeight(tip);
            EXPECT_NEAR(FontHeight(tip), single * times, 1) << "each is a whole number of pixels";
            EXPECT_NEAR(PlaceOf(tip).left, ItemPlace().right + times * Scale(4), kFrame);
        });
    }
    mervane::ForgetDpi(m_owner.Handle());
}

TEST_F(MenuTipTest, StandsOnTheOtherSideWhereTheScreenEnds)
{
    Track({GetSystemMetrics(SM_CXSCREEN), 20}, [this] {
        Select(IDS_MENU_TIP);
        HWND tip = Shown();
        ASSERT_NE(tip, nullptr);
        EXPECT_NEAR(PlaceOf(tip).right, ItemPlace().left - Scale(m_owner.Handle(), 4), kFrame);
    });
}

} // namespace
