#include "ui/window_hook.h"

#include <unordered_map>

namespace {

struct Entry {
    WNDPROC next;
    WindowHook* hook; // null: taken off while another procedure stood in front
};

// A window's procedure gets nothing but the handle to find its own by. Never freed: a window may outlive what
// the program frees at its end.
std::unordered_map<HWND, Entry>& Entries()
{
    static auto& s_entries = *new std::unordered_map<HWND, Entry>;
    return s_entries;
}

WNDPROC ProcedureOf(HWND window)
{
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

WindowHook* FindHook(HWND window)
{
    const auto found = Entries().find(window);
    return found == Entries().end() ? nullptr : found->second.hook;
}

} // namespace

bool WindowHook::Attach(HWND window, Handler handler, void* self)
{
    if (m_window || !IsWindow(window) || FindHook(window))
        return false;
    m_window = window;
    m_handler = handler;
    m_self = self;
    const auto [entry, isNew] = Entries().try_emplace(window, Entry{ProcedureOf(window), nullptr});
    entry->second.hook = this;
    m_next = entry->second.next;
    if (isNew)
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure));
    return true;
}

void WindowHook::Detach()
{
    if (!m_window)
        return;
    if (ProcedureOf(m_window) == Procedure) {
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_next));
        Entries().erase(m_window);
    } else {
        Entries()[m_window].hook = nullptr;
    }
    m_window = nullptr;
}

LRESULT WindowHook::Next(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return CallWindowProcW(m_next, m_window, message, wParam, lParam);
}

void* WindowHook::SelfOf(HWND window, Handler handler)
{
    const WindowHook* hook = FindHook(window);
    return hook && hook->m_handler == handler ? hook->m_self : nullptr;
}

LRESULT CALLBACK WindowHook::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto found = Entries().find(window);
    if (found == Entries().end())
        return DefWindowProcW(window, message, wParam, lParam);
    const auto [next, hook] = found->second;
    if (!hook)
        return CallWindowProcW(next, window, message, wParam, lParam);
    const Handler handler = hook->m_handler;
    void* const self = hook->m_self;
    if (message != WM_NCDESTROY)
        return handler(self, message, wParam, lParam);
    hook->Detach();
    Entries().erase(window);
    handler(self, message, wParam, lParam);
    return CallWindowProcW(next, window, message, wParam, lParam);
}
