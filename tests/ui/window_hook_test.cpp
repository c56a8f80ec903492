#include "ui/window_hook.h"

#include <gtest/gtest.h>
#include <commctrl.h>

#include <vector>

namespace {

constexpr UINT kAsk = WM_APP + 1; // answered by whoever gets it first

LRESULT CALLBACK OwnProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return message == kAsk ? 100 + static_cast<LRESULT>(wParam)
                           : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK InFront(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    return 1000 + DefSubclassProc(window, message, wParam, lParam);
}

class WindowHookTest : public testing::Test {
  protected:
    struct Watcher {
        WindowHook hook;
        std::vector<UINT> messages;
    };

    WindowHookTest()
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = OwnProcedure;
        windowClass.lpszClassName = L"WindowHookTest";
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 10, 10, nullptr, nullptr,
                                   nullptr, nullptr);
    }
    ~WindowHookTest() override
    {
        if (IsWindow(m_window))
            DestroyWindow(m_window);
        UnregisterClassW(L"WindowHookTest", nullptr);
    }

    static LRESULT Watch(void* self, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* watcher = static_cast<Watcher*>(self);
        watcher->messages.push_back(message);
        if (message == kAsk && wParam == 0)
            return 7;
        return message == WM_NCDESTROY ? 0 : watcher->hook.Next(message, wParam, lParam);
    }
    static LRESULT Other(void*, UINT, WPARAM, LPARAM) { return 0; }

    LRESULT Ask(WPARAM wParam) { return SendMessageW(m_window, kAsk, wParam, 0); }

    HWND m_window;
    Watcher m_watcher;
};

TEST_F(WindowHookTest, StandsInFrontOfTheWindow)
{
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    EXPECT_EQ(Ask(0), 7);
    EXPECT_EQ(Ask(5), 105) << "the window's own answer";
    EXPECT_EQ(m_watcher.messages, (std::vector<UINT>{kAsk, kAsk}));
}

TEST_F(WindowHookTest, TellsWhoStandsThere)
{
    EXPECT_EQ(WindowHook::SelfOf(m_window, Watch), nullptr);
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    EXPECT_EQ(WindowHook::SelfOf(m_window, Watch), &m_watcher);
    EXPECT_EQ(WindowHook::SelfOf(m_window, Other), nullptr);
    EXPECT_EQ(WindowHook::SelfOf(nullptr, Watch), nullptr);
}

TEST_F(WindowHookTest, IsTheOnlyOneForAWindowAndForAHook)
{
    Watcher second;
    EXPECT_FALSE(second.hook.Attach(nullptr, Watch, &second));
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    EXPECT_FALSE(second.hook.Attach(m_window, Watch, &second));
    EXPECT_FALSE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    EXPECT_EQ(Ask(0), 7);
    EXPECT_TRUE(second.messages.empty());
}

TEST_F(WindowHookTest, LeavesTheWindowAsItWas)
{
    const LONG_PTR before = GetWindowLongPtrW(m_window, GWLP_WNDPROC);
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    m_watcher.hook.Detach();
    EXPECT_EQ(GetWindowLongPtrW(m_window, GWLP_WNDPROC), before);
    EXPECT_EQ(Ask(0), 100);
    EXPECT_TRUE(m_watcher.messages.empty());
    EXPECT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher)) << "and may come back";
}

TEST_F(WindowHookTest, LeavesFromBehindAnotherProcedure)
{
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    ASSERT_TRUE(SetWindowSubclass(m_window, InFront, 1, 0));
    EXPECT_EQ(Ask(0), 1007);
    m_watcher.hook.Detach();
    EXPECT_EQ(Ask(0), 1100);
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    EXPECT_EQ(Ask(0), 1007);
    RemoveWindowSubclass(m_window, InFront, 1);
}

TEST_F(WindowHookTest, EndsWithTheWindow)
{
    ASSERT_TRUE(m_watcher.hook.Attach(m_window, Watch, &m_watcher));
    DestroyWindow(m_window);
    ASSERT_FALSE(m_watcher.messages.empty());
    EXPECT_EQ(m_watcher.messages.back(), WM_NCDESTROY);
    EXPECT_EQ(WindowHook::SelfOf(m_window, Watch), nullptr);
}

// The object that a hook belongs to may end with its window.
TEST_F(WindowHookTest, MayBeDeletedAtTheEndOfTheWindow)
{
    auto* watcher = new Watcher;
    static bool s_deleted;
    s_deleted = false;
    const auto deleteAtEnd = [](void* self, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        auto* owner = static_cast<Watcher*>(self);
        if (message != WM_NCDESTROY)
            return owner->hook.Next(message, wParam, lParam);
        delete owner;
        s_deleted = true;
        return 0;
    };
    ASSERT_TRUE(watcher->hook.Attach(m_window, deleteAtEnd, watcher));
    ASSERT_TRUE(SetWindowSubclass(m_window, InFront, 1, 0)) << "stays until the window is gone";
    DestroyWindow(m_window);
    EXPECT_TRUE(s_deleted);
}

} // namespace
