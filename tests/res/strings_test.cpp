#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring ResourceString(UINT id)
{
    wchar_t text[256];
    const int length = LoadStringW(GetModuleHandleW(nullptr), id, text, 256);
    return {text, static_cast<size_t>(length)};
}

TEST(Strings, NameTheFieldsInTheirOrder)
{
    const wchar_t* const expected[] = {L"Date",       L"Subject",     L"Type",     L"Body",
                                       L"Categories", L"Start Time",  L"End Time", L"Duration",
                                       L"Contacts",   L"Sensitivity", L"Priority"};
    UINT id = 61300;
    for (const wchar_t* name : expected)
        EXPECT_EQ(ResourceString(id++), name);
    EXPECT_EQ(id, 61311u);
}

TEST(Strings, TellTheLimits)
{
    EXPECT_EQ(ResourceString(61218), L"You have reached the limit of characters permitted for this field.");
    EXPECT_EQ(ResourceString(61219), L"Maximum number of quick subjects reached!\r\n\r\n"
                                     L"Please delete or change an existing quick subject!");
}

} // namespace
