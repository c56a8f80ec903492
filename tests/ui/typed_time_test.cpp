#include "ui/typed_time.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include "support/test_windows.h"

namespace {

constexpr int kPicker = 101;
constexpr int kEdit = 102;
constexpr SYSTEMTIME kMarch{2026, 3, 6, 21, 12, 0, 0, 0};

// A dialog with a picker whose first field is the day, and a text field.
class TypedTimeTest : public testing::Test {
  protected:
    TypedTimeTest()
    {
        m_picker = Child(DATETIMEPICK_CLASSW, kPicker);
        m_edit = Child(L"EDIT", kEdit);
        EXPECT_TRUE(DateTime_SetFormat(m_picker, L"dd'/'MM"));
        EXPECT_TRUE(DateTime_SetSystemtime(m_picker, GDT_VALID, &kMarch));
        TellTyping(m_picker, m_dialog.Handle());
        SetFocus(m_picker);
        PumpMessages();
        EXPECT_EQ(GetFocus(), m_picker);
        m_changes = 0;
    }
    HWND Child(const wchar_t* windowClass, int id)
    {
        HWND child = CreateWindowExW(0, windowClass, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10,
                                     (id - kPicker) * 40, 200, 24, m_dialog.Handle(),
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        EXPECT_NE(child, nullptr);
        return child;
    }
    int Day() const
    {
        SYSTEMTIME picked{};
        EXPECT_EQ(DateTime_GetSystemtime(m_picker, &picked), GDT_VALID);
        return picked.wDay;
    }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == kMsgTimeTyped)
            m_typedInto.push_back(static_cast<int>(wParam));
        if (message == WM_NOTIFY)
            m_changes += reinterpret_cast<const NMHDR*>(lParam)->code == DTN_DATETIMECHANGE;
        m_editLeft += message == WM_COMMAND && HIWORD(wParam) == EN_KILLFOCUS;
        return false;
    }

    std::vector<int> m_typedInto;
    int m_changes = 0;
    int m_editLeft = 0;
    TestParent m_dialog{[this](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
        return OnMessage(message, wParam, lParam);
    }};
    HWND m_picker = nullptr;
    HWND m_edit = nullptr;
};

TEST_F(TypedTimeTest, ADigitIsTakenAndToldAndTheKeyboardStays)
{
    SendMessageW(m_picker, WM_CHAR, L'3', 0);
    EXPECT_EQ(m_typedInto, std::vector<int>{kPicker});
    ASSERT_EQ(Day(), 21) << "the field is not full yet";
    TakeTypedTime(m_dialog.Handle());
    EXPECT_EQ(Day(), 3);
    EXPECT_EQ(m_changes, 1);
    EXPECT_EQ(GetFocus(), m_picker);
}

TEST_F(TypedTimeTest, OnlyDigitsAreTyping)
{
    for (const wchar_t other : {L'/', L':', L'a', L' '})
        SendMessageW(m_picker, WM_CHAR, other, 0);
    EXPECT_TRUE(m_typedInto.empty());
    for (const wchar_t digit : {L'0', L'9'})
        SendMessageW(m_picker, WM_CHAR, digit, 0);
    EXPECT_EQ(m_typedInto.size(), 2u);
}

TEST_F(TypedTimeTest, NothingElseLosesTheKeyboard)
{
    const TestParent other;
    SetFocus(m_picker);
    SendMessageW(m_picker, WM_CHAR, L'3', 0);
    TakeTypedTime(other.Handle());
    EXPECT_EQ(Day(), 21) << "another dialog's picker";
    SetFocus(m_edit);
    TakeTypedTime(m_dialog.Handle());
    EXPECT_EQ(m_editLeft, 0) << "a field that is no picker";
    EXPECT_EQ(GetFocus(), m_edit);
}

} // namespace
