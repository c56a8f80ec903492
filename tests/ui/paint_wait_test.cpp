#include "ui/paint_wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "mervane/file/store_waiter.h"
#include "support/test_windows.h"
#include "ui/window_procedure.h"

namespace {

class PaintWait : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_NE(m_window.Handle(), nullptr);
        PumpMessages();
        m_paints = 0;
        SetStoreWaiter(PaintWhileWaiting);
    }
    void TearDown() override { SetStoreWaiter(nullptr); }

    bool OnMessage(UINT message, LRESULT* result)
    {
        m_paints += message == WM_PAINT;
        if (message == WM_PAINT)
            m_pointer = GetCursor();
        m_keys += message == WM_KEYDOWN;
        m_timers += message == WM_TIMER;
        *result = 7;
        return message == WM_APP;
    }

    TestParent m_window{
        [this](HWND, UINT message, WPARAM, LPARAM, LRESULT* result) { return OnMessage(message, result); }};
    int m_paints = 0;
    HCURSOR m_pointer = nullptr; // when it last painted
    int m_keys = 0;
    int m_timers = 0;
};

TEST_F(PaintWait, PaintsWhatIsInvalid)
{
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    PaintWhileWaiting(10);
    EXPECT_GE(m_paints, 1);
    EXPECT_FALSE(GetUpdateRect(m_window.Handle(), nullptr, FALSE));
}

TEST_F(PaintWait, LeavesKeysAndTimersInTheQueue)
{
    ASSERT_TRUE(PostMessageW(m_window.Handle(), WM_KEYDOWN, VK_F9, 0));
    ASSERT_TRUE(PostMessageW(m_window.Handle(), WM_TIMER, 1, 0));
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    PaintWhileWaiting(30);
    EXPECT_EQ(m_keys, 0);
    EXPECT_EQ(m_timers, 0);
    PumpMessages();
    EXPECT_EQ(m_keys, 1);
    EXPECT_EQ(m_timers, 1);
}

TEST_F(PaintWait, KeepsTheEndOfTheProgram)
{
    PostQuitMessage(3);
    PaintWhileWaiting(30);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    while (message.message != WM_QUIT)
        ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3u);
}

TEST_F(PaintWait, AnswersWhatIsSent)
{
    std::atomic<DWORD_PTR> answer = 0;
    std::thread sender([&] {
        DWORD_PTR result = 0;
        SendMessageTimeoutW(m_window.Handle(), WM_APP, 0, 0, SMTO_NORMAL, kWaitLimit, &result);
        answer = result;
    });
    const ULONGLONG end = GetTickCount64() + kWaitLimit;
    while (!answer && GetTickCount64() < end)
        PaintWhileWaiting(20);
    sender.join();
    EXPECT_EQ(answer, 7u);
}

// A close, a command or a system command in the midst of something would be done within it.
TEST_F(PaintWait, PutsOffWhatIsSentAndAsksForWork)
{
    std::vector<UINT> done;
    bool isWaiting = false;
    const TestParent window{[&](HWND self, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
        const bool isOurs = message == WM_CLOSE || message == WM_SYSCOMMAND || message == WM_COMMAND;
        if (!isOurs)
            return false;
        *result = 0;
        if (mervane::PutOffWhileWaiting(self, message, wParam, lParam))
            return true;
        done.push_back(message == WM_COMMAND ? HIWORD(wParam) + 1000u : message);
        isWaiting = isWaiting || mervane::IsWaitingForStore();
        return true;
    }};
    std::atomic<bool> isSent = false;
    std::thread sender([&] {
        SendMessageW(window.Handle(), WM_CLOSE, 0, 0);
        SendMessageW(window.Handle(), WM_COMMAND, MAKEWPARAM(7, BN_CLICKED), 0);
        SendMessageW(window.Handle(), WM_COMMAND, MAKEWPARAM(7, 1), 0);
        SendMessageW(window.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        isSent = true;
    });
    const ULONGLONG end = GetTickCount64() + kWaitLimit;
    while (!isSent && GetTickCount64() < end) {
        mervane::WaitForStore(20);
        EXPECT_FALSE(mervane::IsWaitingForStore());
    }
    sender.join();
    EXPECT_TRUE(done.empty());
    PumpMessages();
    EXPECT_EQ(done, (std::vector<UINT>{WM_CLOSE, 1000, 1001, WM_SYSCOMMAND}));
    EXPECT_FALSE(isWaiting);
}

// A window that is an object, and notes the commands that reach it.
class CommandWindow {
  public:
    CommandWindow()
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = WindowProcedure<CommandWindow>::Run;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"CommandWindow";
        RegisterClassW(&windowClass);
        CreateWindowExW(0, L"CommandWindow", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                        windowClass.hInstance, this);
    }
    ~CommandWindow() { DestroyWindow(m_window); }
    CommandWindow(const CommandWindow&) = delete;
    CommandWindow& operator=(const CommandWindow&) = delete;

    HWND Handle() const { return m_window; }
    std::vector<WPARAM> commands;

  private:
    friend class WindowProcedure<CommandWindow>;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_COMMAND)
            commands.push_back(wParam);
        return DefWindowProcW(m_window, message, wParam, lParam);
    }

    HWND m_window = nullptr;
};

TEST_F(PaintWait, WindowsTakeNoCommandMeanwhile)
{
    static HWND s_window;
    CommandWindow window;
    s_window = window.Handle();
    ASSERT_NE(s_window, nullptr);
    SetStoreWaiter([](DWORD) { SendMessageW(s_window, WM_COMMAND, 7, 0); });
    mervane::WaitForStore(1);
    EXPECT_TRUE(window.commands.empty());
    PumpMessages();
    EXPECT_EQ(window.commands, std::vector<WPARAM>{7});
}

// What a control tells of itself; keys that are sent are the control's too.
TEST_F(PaintWait, LetsThroughWhatAControlTells)
{
    WPARAM told = 0;
    const TestParent window{[&](HWND self, UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
        if (message == WM_COMMAND && !mervane::PutOffWhileWaiting(self, message, wParam, lParam) &&
            mervane::IsWaitingForStore())
            told = wParam;
        return false;
    }};
    std::atomic<bool> isSent = false;
    std::thread sender([&] {
        SendMessageW(window.Handle(), WM_COMMAND, MAKEWPARAM(7, EN_CHANGE), 1);
        isSent = true;
    });
    const ULONGLONG end = GetTickCount64() + kWaitLimit;
    while (!isSent && GetTickCount64() < end)
        mervane::WaitForStore(20);
    sender.join();
    EXPECT_EQ(told, MAKEWPARAM(7, EN_CHANGE));
}

TEST_F(PaintWait, ShowsTheHourglassMeanwhile)
{
    HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    SetCursor(arrow);
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    PaintWhileWaiting(1);
    EXPECT_EQ(m_pointer, LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(GetCursor(), arrow);
}

} // namespace
