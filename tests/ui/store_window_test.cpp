#include "ui/store_window.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "support/test_windows.h"

namespace {

constexpr const wchar_t* kClass = L"TestParent";

TEST(StoreWindow, IsTheOneThatSaysSo)
{
    const TestParent one, two;
    SetStoreOfWindow(one.Handle(), 17);
    SetStoreOfWindow(two.Handle(), 0xFEDCBA9876543210);
    EXPECT_EQ(FindWindowOfStore(kClass, 17), one.Handle());
    EXPECT_EQ(FindWindowOfStore(kClass, 0xFEDCBA9876543210), two.Handle());
    EXPECT_EQ(FindWindowOfStore(kClass, 18), nullptr);
    EXPECT_EQ(FindWindowOfStore(L"NoSuchClass", 17), nullptr);
}

TEST(StoreWindow, OneThatSaysNothingCounts)
{
    const TestParent window;
    EXPECT_EQ(FindWindowOfStore(kClass, 17), window.Handle());
}

TEST(StoreWindow, OneThatIsClosingDoesNotCount)
{
    const TestParent window;
    SetStoreOfWindow(window.Handle(), kNoStore);
    EXPECT_EQ(FindWindowOfStore(kClass, 17), nullptr);
}

TEST(Turn, OneAfterTheOther)
{
    std::atomic<bool> isStarted = false, isOver = false, cameAfter = false;
    std::thread other;
    {
        const Turn turn = TurnForStore(L"Test", 17);
        const Turn another = TurnForStore(L"Test", 18); // in nobody's way
        other = std::thread([&] {
            isStarted = true;
            const Turn waiting = TurnForStore(L"Test", 17);
            cameAfter = isOver.load();
        });
        EXPECT_TRUE(PumpUntil([&] { return isStarted.load(); }));
        for (int i = 0; i < 100; ++i)
            std::this_thread::yield();
        isOver = true;
    }
    other.join();
    EXPECT_TRUE(cameAfter);
}

// Whatever the making of a window then asks or waits for, no other start waits for it.
TEST(Turn, EndsWithTheWindowThatOthersFind)
{
    const TestParent window;
    Turn turn = TurnForStore(L"Test", 17);
    SetStoreOfWindow(window.Handle(), 17, &turn);
    std::atomic<bool> isOver = false;
    std::thread other([&] {
        const Turn next = TurnForStore(L"Test", 17);
        isOver = true;
    });
    EXPECT_TRUE(PumpUntil([&] { return isOver.load(); }));
    turn.End(); // a second time, which does nothing
    other.join();
}

// It would not answer before it is made.
TEST(StoreWindow, OneThatIsBeingMadeIsLeftAlone)
{
    int messages = 0;
    const TestParent window([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        messages += message == WM_SHOWWINDOW;
        return false;
    });
    ShowWindow(window.Handle(), SW_HIDE);
    messages = 0;
    BringOtherForward(window.Handle(), SW_SHOWNORMAL);
    EXPECT_EQ(messages, 0);
    EXPECT_FALSE(IsWindowVisible(window.Handle()));
    ShowWindow(window.Handle(), SW_SHOWNORMAL);
    ShowWindow(window.Handle(), SW_MINIMIZE);
    BringOtherForward(window.Handle(), SW_RESTORE);
    EXPECT_FALSE(IsIconic(window.Handle()));
}

TEST(StoreWindow, ComesForwardAsLargeAsItIs)
{
    const TestParent window;
    SetStoreOfWindow(window.Handle(), 17);
    Turn none = TurnForStore(L"Test", 18), turn = TurnForStore(L"Test", 17);
    EXPECT_FALSE(BringRunningCopyForward(kClass, 18, SW_SHOW, none));
    ShowWindow(window.Handle(), SW_MAXIMIZE);
    EXPECT_TRUE(BringRunningCopyForward(kClass, 17, SW_SHOW, turn));
    EXPECT_TRUE(IsZoomed(window.Handle()));
    ShowWindow(window.Handle(), SW_MINIMIZE);
    EXPECT_TRUE(BringRunningCopyForward(kClass, 17, SW_SHOW, turn));
    EXPECT_FALSE(IsIconic(window.Handle()));
}

} // namespace
