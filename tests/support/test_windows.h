// Helpers for tests with real windows in their own process.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "support/thread_hook.h"

constexpr DWORD kWaitLimit = 10'000; // milliseconds

// Dispatches what waits in the queue.
void PumpMessages();
// Pumps until the condition holds; false when the limit passes first.
bool PumpUntil(const std::function<bool()>& condition, DWORD limit = kWaitLimit);

std::wstring WindowText(HWND window);
// What the control says of one of its tools; 80 characters of it at most.
std::wstring ToolTipText(HWND tips, HWND owner, UINT_PTR tool);

// A plain window to be the parent of controls; shown, destroyed at the end.
class TestParent {
  public:
    // onMessage may be null; it returns true when it has set *result.
    using Handler = std::function<bool(HWND, UINT, WPARAM, LPARAM, LRESULT* result)>;
    explicit TestParent(Handler onMessage = nullptr, int width = 640, int height = 480);
    ~TestParent();
    TestParent(const TestParent&) = delete;
    TestParent& operator=(const TestParent&) = delete;

    HWND Handle() const { return m_window; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Handler m_onMessage;
    HWND m_window = nullptr;
};

// While it lives, this thread can make no window of the class, or only the nth of them is refused.
class WindowRefuser {
  public:
    explicit WindowRefuser(const wchar_t* className, int nth = 0);
    ~WindowRefuser();
    WindowRefuser(const WindowRefuser&) = delete;
    WindowRefuser& operator=(const WindowRefuser&) = delete;

    int Seen() const { return m_seen; } // windows of the class that were to be made

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);

    bool Refuses(HWND window);

    std::wstring m_className;
    int m_nth;
    int m_seen = 0;
    const ThreadHook m_hook{WH_CBT, Hook};
};

// Answers message boxes that this thread opens while it lives, and keeps what they said. Answers are taken in
// order; the last one serves for all further boxes.
class MessageBoxAnswerer {
  public:
    struct Box {
        std::wstring text;
        std::wstring caption;
        HWND owner = nullptr;
        std::vector<int> answers; // that it offers, in ascending order
        HICON icon = nullptr;
    };
    explicit MessageBoxAnswerer(std::vector<int> answers = {IDOK});
    ~MessageBoxAnswerer();
    MessageBoxAnswerer(const MessageBoxAnswerer&) = delete;
    MessageBoxAnswerer& operator=(const MessageBoxAnswerer&) = delete;

    const std::vector<Box>& Boxes() const { return m_boxes; }

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    void Answer(HWND box);

    std::vector<int> m_answers;
    std::vector<Box> m_boxes;
    const ThreadHook m_hook{WH_CBT, Hook};
};

// Runs an action once the next dialog of this thread (any modal dialog, not a message box) is up and idle, so
// that a modal call can be worked from inside. The action gets the dialog's window and must end it. A dialog
// that is there already is not the next one, though the display may make it the active one late.
class ModalDriver {
  public:
    explicit ModalDriver(std::function<void(HWND dialog)> action);
    ~ModalDriver();
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

    bool Ran() const { return m_ran; }

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    bool WasThere(HWND window) const;

    std::function<void(HWND)> m_action;
    std::vector<HWND> m_before; // windows that are there already
    const ThreadHook m_hook{WH_CBT, Hook};
    HWND m_dialog = nullptr;
    UINT_PTR m_timer = 0;
    bool m_ran = false;
};
