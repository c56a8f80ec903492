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

// Shown beside the hovered item of a menu; no other command has one.
TEST(Strings, TellWhatTheGoMenuStarts)
{
    EXPECT_EQ(ResourceString(110), L"Start calendar");
    EXPECT_EQ(ResourceString(111), L"Start contacts");
    EXPECT_EQ(ResourceString(112), L"Start inbox");
    EXPECT_EQ(ResourceString(113), L"Start tasks");
    for (UINT id = 0; id <= 1100; ++id)
        if (id < 110 || id > 113) {
            EXPECT_EQ(ResourceString(id), L"") << id;
        }
}

TEST(Strings, TellTheLimits)
{
    EXPECT_EQ(ResourceString(61218), L"You have reached the limit of characters permitted for this field.");
    EXPECT_EQ(ResourceString(61219), L"Maximum number of quick subjects reached!\r\n\r\n"
                                     L"Please delete or change an existing quick subject!");
}

} // namespace
