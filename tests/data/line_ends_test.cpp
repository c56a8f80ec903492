#include "data/line_ends.h"

#include <gtest/gtest.h>

namespace {

TEST(LineEnds, LoneOnesAreCompleted)
{
    const struct {
        const wchar_t* text;
        const wchar_t* expected;
    } cases[] = {
        {L"", L""},
        {L"one", L"one"},
        {L"a\r\nb\r\n", L"a\r\nb\r\n"},
        {L"\r\n", L"\r\n"},
        {L"\r\n\r\n", L"\r\n\r\n"},
        {L"a\nb", L"a\r\nb"},
        {L"a\rb", L"a\r\nb"},
        {L"\n", L"\r\n"},
        {L"\r", L"\r\n"},
        {L"a\n\nb", L"a\r\n\r\nb"},
        {L"a\r\rb", L"a\r\n\r\nb"},
        {L"a\n\rb", L"a\r\n\r\nb"},
        {L"a\r\r\nb", L"a\r\n\r\nb"},
        {L"a\r\n\nb", L"a\r\n\r\nb"},
        {L"a\r\nb\nc\rd\r\n", L"a\r\nb\r\nc\r\nd\r\n"},
        {L"tab\t\xD83D\xDE00\xD800\n", L"tab\t\xD83D\xDE00\xD800\r\n"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(WithLineEnds(c.text), c.expected) << testing::PrintToString(std::wstring(c.text));
        EXPECT_EQ(HasLoneLineEnd(c.text), std::wstring(c.text) != c.expected)
            << testing::PrintToString(std::wstring(c.text));
        EXPECT_EQ(WithLineEnds(WithLineEnds(c.text)), c.expected) << "once is enough";
    }
}

} // namespace
