#include "app/journal_app.h"

#include <gtest/gtest.h>

#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

TEST(JournalApp, SettingsLieUnderItsKey)
{
    const TestRegistry registry;
    App().SetNumber(L"Options", L"sort", 5);
    DWORD value = 0, size = sizeof value;
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Options", L"sort",
                           RRF_RT_REG_DWORD, nullptr, &value, &size),
              ERROR_SUCCESS);
    EXPECT_EQ(value, 5u);
}

TEST(JournalApp, StartsWithTheJournalClosedAndWithoutAWindow)
{
    const TestRegistry registry;
    JournalApp app;
    EXPECT_FALSE(app.Journal().IsOpen());
    EXPECT_EQ(app.MainWindowHandle(), nullptr);
    EXPECT_EQ(app.Instance(), nullptr);
}

TEST(JournalApp, WorkAreaEdgesAreTheSystems)
{
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    EXPECT_EQ(WorkAreaRight(), area.right);
    EXPECT_EQ(WorkAreaBottom(), area.bottom);
}

TEST(JournalApp, TheHourglassIsTheSystemsAndGoes)
{
    ShowHourglass();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    RemoveHourglass();
    EXPECT_EQ(GetCursor(), nullptr);
}

// The mouse need not be moved for it.
TEST(JournalApp, AWindowBelowTheMouseHasItsPointerBackAfterTheHourglass)
{
    const TestParent parent([](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT* result) {
        if (message != WM_SETCURSOR)
            return false;
        EXPECT_EQ(LOWORD(lParam), HTCLIENT);
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
        *result = TRUE;
        return true;
    });
    RECT place{};
    GetWindowRect(parent.Handle(), &place);
    POINT before{};
    GetCursorPos(&before);
    SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    ASSERT_TRUE(PumpUntil([&] {
        POINT mouse{};
        return GetCursorPos(&mouse) && WindowFromPoint(mouse) == parent.Handle();
    }));
    ShowHourglass();
    RemoveHourglass();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
    SetCursorPos(before.x, before.y);
}

} // namespace
