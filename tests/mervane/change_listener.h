// A window that is told of changes, for the tests with another program.
#pragma once

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "mervane/ce_dbase.h"
#include "support/test_windows.h"

using Heard = std::vector<std::pair<WPARAM, LPARAM>>;

// A window that keeps the change notifications it gets.
class Listener {
  public:
    HWND Window() const { return m_parent.Handle(); }
    // Once that many have come, and no more wait.
    Heard Hear(size_t count)
    {
        EXPECT_TRUE(PumpUntil([&] { return m_heard.size() >= count; })) << "heard " << m_heard.size();
        PumpMessages();
        return std::exchange(m_heard, {});
    }
    // What has come since the last call.
    Heard Take() { return std::exchange(m_heard, {}); }
    Heard HeardSoFar()
    {
        PumpMessages();
        return m_heard;
    }

  private:
    Heard m_heard;
    TestParent m_parent{[this](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
        if (message == kMsgDatabaseChange)
            m_heard.emplace_back(wParam, lParam);
        return message == kMsgDatabaseChange;
    }};
};
