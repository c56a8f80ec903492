#include "ui/ownerless_box.h"

#include <vector>

#include "ui/dialog_in_front.h"
#include "ui/window_hook.h"

namespace {

// The thread's windows that can be seen and worked, disabled while it lives or until it lets them go.
class DisabledWindows {
  public:
    DisabledWindows()
    {
        EnumThreadWindows(GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&m_windows));
        for (HWND window : m_windows)
            EnableWindow(window, FALSE);
    }
    ~DisabledWindows() { LetGo(); }
    DisabledWindows(const DisabledWindows&) = delete;
    DisabledWindows& operator=(const DisabledWindows&) = delete;

    void LetGo()
    {
        for (HWND window : m_windows)
            EnableWindow(window, TRUE);
        m_windows.clear();
    }

  private:
    static BOOL CALLBACK Collect(HWND window, LPARAM windows)
    {
        if (IsWindowVisible(window) && IsWindowEnabled(window))
            reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
        return TRUE;
    }

    std::vector<HWND> m_windows;
};

// Watches for the box, which is the next dialog that this thread makes, and for its end.
class BoxWatch {
  public:
    explicit BoxWatch(DisabledWindows& behind) : m_behind(behind), m_outer(s_watch)
    {
        s_watch = this;
        m_hook = SetWindowsHookExW(WH_CBT, OnCreation, nullptr, GetCurrentThreadId());
    }
    ~BoxWatch()
    {
        Unhook();
        s_watch = m_outer;
    }
    BoxWatch(const BoxWatch&) = delete;
    BoxWatch& operator=(const BoxWatch&) = delete;

  private:
    static LRESULT CALLBACK OnCreation(int code, WPARAM wParam, LPARAM lParam)
    {
        HWND window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_CREATEWND && s_watch && s_watch->m_hook && IsDialog(window)) {
            (void)s_watch->m_boxHook.Attach(window, HandleBoxMessage, s_watch);
            s_watch->Unhook();
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    // A box that has been answered is hidden first, and another window becomes the active one.
    static LRESULT HandleBoxMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* watch = static_cast<BoxWatch*>(self);
        if (message == WM_NCDESTROY)
            return 0;
        if (message == WM_WINDOWPOSCHANGING &&
            (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_HIDEWINDOW))
            watch->m_behind.LetGo();
        return watch->m_boxHook.Next(message, wParam, lParam);
    }

    void Unhook()
    {
        if (m_hook)
            UnhookWindowsHookEx(m_hook);
        m_hook = nullptr;
    }

    static BoxWatch* s_watch; // the hook's procedure gets no other way to it

    DisabledWindows& m_behind;
    BoxWatch* m_outer;
    WindowHook m_boxHook;
    HHOOK m_hook = nullptr;
};

BoxWatch* BoxWatch::s_watch = nullptr;

} // namespace

int ShowOwnerlessBox(const wchar_t* text, const wchar_t* caption, UINT type)
{
    DisabledWindows behind;
    const BoxWatch watch(behind);
    return MessageBoxW(nullptr, text, caption, type);
}
