// What the harness's own tests share: the sample program, started.
#pragma once

#include <gtest/gtest.h>

#include "e2e/harness/journal_process.h"
#include "e2e/harness/remote_window.h"
#include "e2e/sample/sample.h"

class SampleTest : public testing::Test {
  protected:
    void SetUp() override
    {
        m_window = m_program.Start();
        ASSERT_NE(m_window, nullptr);
    }

    // Whether the program has put this into its title.
    bool Tells(const std::wstring& title) const
    {
        return WaitFor([&] { return TextOf(m_window) == title; });
    }

    JournalProcess m_program{L"e2e_sample.exe", L"HarnessSample"};
    HWND m_window = nullptr;
};
