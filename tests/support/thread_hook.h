// What happens in the windows of this thread, seen while it happens.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

// A hook of the kind (WH_...) over this thread while it lives; the procedure hands on what it is called with.
class ThreadHook {
  public:
    ThreadHook(int kind, HOOKPROC procedure)
        : m_hook(SetWindowsHookExW(kind, procedure, nullptr, GetCurrentThreadId()))
    {
        EXPECT_NE(m_hook, nullptr);
    }
    ~ThreadHook() { UnhookWindowsHookEx(m_hook); }
    ThreadHook(const ThreadHook&) = delete;
    ThreadHook& operator=(const ThreadHook&) = delete;

  private:
    const HHOOK m_hook;
};
