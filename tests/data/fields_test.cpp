#include "data/fields.h"

#include <gtest/gtest.h>

#include "mervane/z_column.h"

namespace {

// Of each column: its number, property and name, and what it is before anybody has changed it. 0x1D: shown,
// sorted by, sortable, descending.
struct Expected {
    WORD number;
    CEPROPID id;
    UINT title;
    int thirds;
    int width;
    DWORD flags;
    bool sorts;
};
constexpr Expected kExpected[] = {
    {101, 0x00650040, 61300, 1, 0, 0x1D, true},  {102, 0x0066001F, 61301, 2, 0, 0x0D, true},
    {103, 0x0067001F, 61303, 0, 100, 0, false},  {104, 0x00680041, 61304, 0, 50, 0, true},
    {105, 0x0069001F, 61302, 0, 50, 0x05, true}, {107, 0x006B0002, 61310, 0, 16, 0x05, true},
    {108, 0x006C0002, 61309, 0, 40, 0x05, true}, {109, 0x006D0040, 61306, 0, 40, 0x05, true},
    {110, 0x006E0040, 61307, 0, 40, 0x05, true}, {111, 0x006F0041, 61308, 0, 60, 0, true},
};

TEST(FieldTable, HasTheFieldOfEachColumn)
{
    for (const Expected& expected : kExpected) {
        const Field* field = FieldOfColumn(expected.number);
        ASSERT_NE(field, nullptr) << expected.number;
        EXPECT_EQ(FieldOf(expected.id), field);
        EXPECT_EQ(field->id, expected.id);
        EXPECT_EQ(field->title, expected.title);
        EXPECT_EQ(field->column.thirds, expected.thirds) << expected.number;
        EXPECT_EQ(field->column.width, expected.width) << expected.number;
        EXPECT_EQ(field->column.flags, expected.flags) << expected.number;
        EXPECT_EQ(field->sorts, expected.sorts) << expected.number;
    }
    EXPECT_EQ(Fields().size(), std::size(kExpected) + 1);
}

TEST(FieldTable, KnowsNoOthers)
{
    for (const WORD number : std::initializer_list<WORD>{0, 100, 106, 200, 255, 0xFFFF})
        EXPECT_EQ(FieldOfColumn(number), nullptr) << number;
    for (const CEPROPID id : std::initializer_list<CEPROPID>{0, 0x0065001F, 0x0070001F, 0xFFFFFFFF})
        EXPECT_EQ(FieldOf(id), nullptr) << id;
}

TEST(FieldTable, TheKindIsCarriedAndNeverNamed)
{
    const Field* kind = FieldOf(0x006A0012);
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(TitleOf(*kind), L"");
    EXPECT_EQ(kind->column.flags, kColumnNeverOffered);
    EXPECT_EQ(kind->line.place, 0);
}

TEST(FieldTable, NamesItsFields)
{
    EXPECT_EQ(TitleOf(*FieldOfColumn(101)), L"Date");
    EXPECT_EQ(TitleOf(*FieldOfColumn(109)), L"End Time");
}

TEST(FieldTable, HasTheLinesOfTheTextFormat)
{
    const struct {
        WORD number;
        const wchar_t* label;
        const wchar_t* end;
        bool isAlways;
    } lines[] = {
        {101, L"Date: ", L"\r\n", false},
        {109, L"End Date: ", L"\r\n", false},
        {110, L"Duration: ", L"\r\n", false},
        {107, L"Priority: ", L"\r\n", true},
        {108, L"Sensitivity: ", L"\r\n", true},
        {102, L"Subject: ", L"\r\n", false},
        {105, L"Type: ", L"\r\n\r\n", false},
        {103, L"Entry:\r\n", L"\r\n\r\n", false},
        {104, L"Assigned Categories:\r\n", L"\r\n", false},
        {111, L"Assigned Contacts:\r\n", L"\r\n", false},
    };
    int place = 0;
    for (const auto& line : lines) {
        const Field* field = FieldOfLine(++place);
        ASSERT_NE(field, nullptr) << place;
        EXPECT_EQ(PropertyNumber(field->id), line.number) << place;
        EXPECT_STREQ(field->line.label, line.label);
        EXPECT_STREQ(field->line.end, line.end) << place;
        EXPECT_EQ(field->line.isAlways, line.isAlways) << place;
    }
    EXPECT_EQ(FieldOfLine(place + 1), nullptr);
    EXPECT_EQ(FieldOfLine(0), nullptr);
}

} // namespace
