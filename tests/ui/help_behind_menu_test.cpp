#include <gtest/gtest.h>

#include "support/menu_driver.h"
#include "support/test_windows.h"
#include "ui/dialog_in_front.h"
#include "util/owners.h"

namespace {

constexpr UINT kKeyF1 = 0x004D; // what the system posts for F1

int CountOfPosted(UINT message)
{
    MSG posted;
    int count = 0;
    while (PeekMessageW(&posted, nullptr, message, message, PM_REMOVE))
        ++count;
    return count;
}

TEST(HelpBehindMenu, ComesOnceForAllThatAskInTheMenu)
{
    const TestParent owner(nullptr, 300, 200);
    const UniqueMenu menu(CreatePopupMenu());
    AppendMenuW(menu.get(), MF_STRING, 700, L"Item");
    const MenuDriver driver([&](HMENU) {
        PostMessageW(owner.Handle(), kKeyF1, 0, 0);
        EXPECT_FALSE(IsHelpDue(owner.Handle(), WM_HELP));
        EXPECT_FALSE(IsHelpDue(owner.Handle(), WM_HELP));
        EndMenu(); // whatever was answered
    });
    EXPECT_EQ(TrackPopupMenu(menu.get(), TPM_RETURNCMD, 20, 20, 0, owner.Handle(), nullptr), 0);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(CountOfPosted(kKeyF1), 0);
    EXPECT_EQ(CountOfPosted(kMsgHelpBehindMenu), 1);
    PostMessageW(owner.Handle(), kKeyF1, 0, 0); // where the system asks only then
    EXPECT_TRUE(IsHelpDue(owner.Handle(), kMsgHelpBehindMenu));
    EXPECT_EQ(CountOfPosted(kKeyF1), 0);
}

TEST(HelpBehindMenu, IsForAMenuOfTheWindowOnly)
{
    const TestParent owner(nullptr, 300, 200), other(nullptr, 100, 100);
    EXPECT_TRUE(IsHelpDue(owner.Handle(), WM_HELP));
    const UniqueMenu menu(CreatePopupMenu());
    AppendMenuW(menu.get(), MF_STRING, 700, L"Item");
    const MenuDriver driver([&](HMENU) {
        EXPECT_TRUE(IsHelpDue(other.Handle(), WM_HELP));
        EndMenu();
    });
    TrackPopupMenu(menu.get(), TPM_RETURNCMD, 20, 20, 0, owner.Handle(), nullptr);
    EXPECT_EQ(CountOfPosted(kMsgHelpBehindMenu), 0);
}

} // namespace
