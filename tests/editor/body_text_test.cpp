#include "editor/body_text.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"

namespace {

constexpr SYSTEMTIME kFivePast{2024, 3, 2, 5, 14, 5, 30, 250};

std::wstring TimeText(const SYSTEMTIME& time)
{
    wchar_t text[80];
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text, 80);
    return text;
}

class BodyTextTest : public testing::Test {
  protected:
    BodyTextTest()
        : m_body(CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                                 WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL |
                                     WS_VSCROLL,
                                 0, 0, 300, 100, m_parent.Handle(), nullptr, nullptr, nullptr))
    {
        EXPECT_NE(m_body, nullptr);
    }
    void Select(int from, int to) { SendMessageW(m_body, EM_SETSEL, static_cast<WPARAM>(from), to); }
    std::pair<DWORD, DWORD> Selection()
    {
        DWORD from = 0, to = 0;
        SendMessageW(m_body, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return {from, to};
    }

    TestParent m_parent;
    HWND m_body;
};

TEST_F(BodyTextTest, TellsThePlaceholderAsAWhole)
{
    const std::pair<const wchar_t*, bool> texts[] = {
        {L"<Entry Body>", true}, {L"<entry body>", false}, {L"<Entry Body> and more", false}, {L"", false},
        {L"<Entry Body", false}, {L"<Entry Bodz>", false},
    };
    for (const auto& [text, expected] : texts) {
        SetWindowTextW(m_body, text);
        EXPECT_EQ(HasBodyPlaceholder(m_body), expected) << testing::PrintToString(std::wstring(text));
    }
}

TEST_F(BodyTextTest, SelectsThePlaceholderAndNothingElse)
{
    SetWindowTextW(m_body, L"<Entry Body>");
    Select(3, 3);
    SelectBodyPlaceholder(m_body);
    EXPECT_EQ(Selection(), (std::pair<DWORD, DWORD>{0, 12}));
    SetWindowTextW(m_body, L"Real text");
    Select(3, 3);
    SelectBodyPlaceholder(m_body);
    EXPECT_EQ(Selection(), (std::pair<DWORD, DWORD>{3, 3}));
}

TEST_F(BodyTextTest, AnEmptyBodyShowsThePlaceholderAgain)
{
    RestoreBodyPlaceholder(m_body);
    EXPECT_EQ(TextOf(m_body), L"<Entry Body>");
    SetWindowTextW(m_body, L" ");
    RestoreBodyPlaceholder(m_body);
    EXPECT_EQ(TextOf(m_body), L" ");
}

TEST_F(BodyTextTest, ATimeStampReplacesThePlaceholder)
{
    SetWindowTextW(m_body, L"<Entry Body>");
    InsertTimeStamp(m_body, kFivePast);
    EXPECT_EQ(TextOf(m_body), TimeText(kFivePast) + L" - ");
    EXPECT_EQ(GetFocus(), m_body);
    const DWORD end = static_cast<DWORD>(TextOf(m_body).size());
    EXPECT_EQ(Selection(), (std::pair<DWORD, DWORD>{end, end}));
}

TEST_F(BodyTextTest, ATimeStampStandsBehindABlankLineAtTheCaret)
{
    SetWindowTextW(m_body, L"onetwo");
    Select(3, 3);
    InsertTimeStamp(m_body, kFivePast);
    EXPECT_EQ(TextOf(m_body), L"one\r\n\r\n" + TimeText(kFivePast) + L" - two");
}

TEST_F(BodyTextTest, ATimeStampReplacesNoSelection)
{
    SetWindowTextW(m_body, L"onetwo");
    Select(1, 3);
    InsertTimeStamp(m_body, kFivePast);
    EXPECT_EQ(TextOf(m_body), L"one\r\n\r\n" + TimeText(kFivePast) + L" - two");
}

TEST_F(BodyTextTest, ATimeStampCanBeUndone)
{
    SetWindowTextW(m_body, L"one");
    Select(3, 3);
    InsertTimeStamp(m_body, kFivePast);
    ASSERT_TRUE(SendMessageW(m_body, EM_CANUNDO, 0, 0));
    SendMessageW(m_body, EM_UNDO, 0, 0);
    EXPECT_EQ(TextOf(m_body), L"one");
}

TEST_F(BodyTextTest, ATimeStampScrollsIntoSight)
{
    std::wstring lines;
    for (int i = 0; i < 60; ++i)
        lines += L"line\r\n";
    SetWindowTextW(m_body, lines.c_str());
    const int end = static_cast<int>(lines.size());
    Select(end, end);
    SendMessageW(m_body, EM_LINESCROLL, 0, -100);
    ASSERT_EQ(SendMessageW(m_body, EM_GETFIRSTVISIBLELINE, 0, 0), 0);
    InsertTimeStamp(m_body, kFivePast);
    EXPECT_GT(SendMessageW(m_body, EM_GETFIRSTVISIBLELINE, 0, 0), 40);
}

TEST_F(BodyTextTest, TheTimeIsTheLocalesWithoutSeconds)
{
    EXPECT_EQ(TimeStampText(kFivePast, true), TimeText(kFivePast) + L" - ");
    EXPECT_EQ(TimeStampText(kFivePast, false), L"\r\n\r\n" + TimeText(kFivePast) + L" - ");
    EXPECT_EQ(TimeText(kFivePast).find(L"30"), std::wstring::npos);
}

TEST_F(BodyTextTest, TakesTheWholeTextOfAControl)
{
    std::wstring text;
    while (text.size() < 70000)
        text += L"One of the many lines of a long body.\r\n";
    text += L"\xD800\n\ttail";
    SetWindowTextW(m_body, text.c_str());
    EXPECT_EQ(TextOf(m_body), text);
}

} // namespace
