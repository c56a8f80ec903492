#include "ui/control_text.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"

namespace {

WNDPROC g_edit = nullptr;
bool g_withholds = false;

// An edit control that has failed in something of its own, or does not hand out its text.
LRESULT CALLBACK OddEdit(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = CallWindowProcW(g_edit, window, message, wParam, lParam);
    if (message == WM_GETTEXTLENGTH)
        SetLastError(ERROR_FILE_NOT_FOUND);
    return message == WM_GETTEXT && g_withholds ? 0 : result;
}

class ControlText : public testing::Test {
  protected:
    void SetUp() override
    {
        m_edit = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | ES_MULTILINE, 0, 0, 100, 100, m_parent.Handle(),
                                 nullptr, nullptr, nullptr);
        ASSERT_NE(m_edit, nullptr);
        g_withholds = false;
        g_edit = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(m_edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OddEdit)));
    }

    TestParent m_parent;
    HWND m_edit = nullptr;
};

TEST_F(ControlText, IsWhatTheControlHas)
{
    EXPECT_EQ(ReadText(m_edit), L"") << "whatever else has failed meanwhile";
    const std::wstring text = L"one\r\ntwo" + std::wstring(70'000, L'x');
    ASSERT_TRUE(SetWindowTextW(m_edit, text.c_str()));
    EXPECT_EQ(ReadText(m_edit), text);
}

TEST_F(ControlText, IsNotEmptyWhereItCannotBeHad)
{
    ASSERT_TRUE(SetWindowTextW(m_edit, L"text"));
    g_withholds = true;
    EXPECT_EQ(ReadText(m_edit), std::nullopt);
    DestroyWindow(m_edit);
    EXPECT_EQ(ReadText(m_edit), std::nullopt);
    EXPECT_EQ(ReadText(nullptr), std::nullopt);
}

} // namespace
