#include "app/journal_app.h"

#include <gtest/gtest.h>

#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/screen/work_area.h"

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
    EXPECT_EQ(WorkArea().right, area.right);
    EXPECT_EQ(WorkArea().bottom, area.bottom);
}

} // namespace
