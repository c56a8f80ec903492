#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class Layout : public JournalWindowTest {
  protected:
    static RECT PlaceOf(HWND window)
    {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }

    [[nodiscard]] bool Restart() { return m_journal.Close() && m_journal.Start() != nullptr; }
};

TEST_F(Layout, TheWindowComesBackWhereItWasLeft)
{
    HWND window = m_journal.Start();
    ASSERT_NE(window, nullptr);
    SetWindowPos(window, nullptr, 80, 90, 600, 400, SWP_NOZORDER);
    ASSERT_TRUE(WaitFor([&] { return PlaceOf(window).left == 80 && PlaceOf(window).right == 680; }));
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(WaitFor([&] {
        const RECT place = PlaceOf(Window()), wanted{80, 90, 680, 490};
        return EqualRect(&place, &wanted);
    }));
}

TEST_F(Layout, AMaximizedWindowComesBackMaximized)
{
    HWND window = m_journal.Start();
    ASSERT_NE(window, nullptr);
    PostMessageW(window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    ASSERT_TRUE(WaitFor([&] { return IsZoomed(window) != 0; }));
    ASSERT_TRUE(Restart());
    EXPECT_TRUE(WaitFor([&] { return IsZoomed(Window()) != 0; }));
}

TEST_F(Layout, ColumnWidthsSurviveARestart)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    const RemoteListView list = List();
    const int before = list.ColumnWidth(0);
    const POINT header = list.HeaderPoint(0);
    const POINT divider{header.x + before / 2, header.y};
    ASSERT_TRUE(Drag(divider, {divider.x - 60, divider.y}));
    ASSERT_TRUE(WaitFor([&] { return NumberSetting(L"Settings", L"iCols") == 2u; }))
        << "stored at once, when the divider is let go";
    const int width = list.ColumnWidth(0);
    EXPECT_LT(width, before);
    EXPECT_TRUE(NumberSetting(L"Settings", L"Column10").has_value());
    EXPECT_EQ((NumberSetting(L"Settings", L"Column0").value_or(0) >> 12) & 0xFFF, static_cast<DWORD>(width));
    ASSERT_TRUE(Restart());
    EXPECT_EQ(List().ColumnWidth(0), width);
}

TEST_F(Layout, TheSortOfAHeaderClickSurvivesARestart)
{
    ASSERT_NE(AddEntry(L"Zebra", kNoon), 0u);
    ASSERT_NE(AddEntry(L"apple", kNoon + 1), 0u);
    ASSERT_NE(AddEntry(L"Mango", kNoon + 2), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(3));
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"Mango"; })) << "newest first";
    ASSERT_TRUE(Click(List().HeaderPoint(1)));
    ASSERT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"Zebra"; })) << "the subject starts descending";
    // Beside the first point, so that the two are no double click.
    const POINT header = List().HeaderPoint(1);
    ASSERT_TRUE(Click({header.x + 40, header.y}));
    ASSERT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"apple"; })) << "a second click turns it round";
    EXPECT_TRUE(WaitFor([&] { return List().Text(1, 1) == L"Mango"; }));
    ASSERT_TRUE(Restart());
    ASSERT_TRUE(ShowsRows(3));
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"apple"; }));
    EXPECT_EQ(NumberSetting(L"Options", L"sort"), 0x0066001Fu);
}

TEST_F(Layout, TheBandsKeepTheirLayout)
{
    ASSERT_TRUE(StoreSetting(L"Settings", L"mstyle", 129)); // a row of its own, with a gripper
    ASSERT_TRUE(StoreSetting(L"Settings", L"mrestore", 300));
    ASSERT_TRUE(StoreSetting(L"Settings", L"tstyle", 129));
    ASSERT_TRUE(StoreSetting(L"Settings", L"trestore", 250));
    ASSERT_NE(m_journal.Start(), nullptr);
    const RECT before = PlaceOf(Buttons().Handle());
    const RECT window = PlaceOf(Window());
    ASSERT_TRUE(Restart());
    const RECT after = PlaceOf(Buttons().Handle());
    const RECT windowAfter = PlaceOf(Window());
    EXPECT_EQ(after.left - windowAfter.left, before.left - window.left);
    EXPECT_EQ(after.top - windowAfter.top, before.top - window.top);
    EXPECT_EQ(NumberSetting(L"Settings", L"mstyle").value_or(0) & 129, 129u);
}

} // namespace
