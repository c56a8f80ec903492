#include "formats/vcard/birthday.h"

#include <gtest/gtest.h>

namespace vcard {

namespace {

TEST(VCardBirthday, IsReadInBothForms)
{
    EXPECT_EQ(ReadableDate("19850415"), "1985-04-15");
    EXPECT_EQ(ReadableDate("1985-04-15"), "1985-04-15");
    EXPECT_EQ(ReadableDate("--0415"), "--04-15");
    EXPECT_EQ(ReadableDate("--04-15"), "--04-15");
    EXPECT_EQ(ReadableDate("1985-04"), "1985-04");
    EXPECT_EQ(ReadableDate("1985"), "1985");
    EXPECT_EQ(ReadableDate("--04"), "--04");
    EXPECT_EQ(ReadableDate("---15"), "---15");
    EXPECT_EQ(ReadableDate("19850415T102200Z"), "1985-04-15");
    EXPECT_EQ(ReadableDate("1985-04-15T10:22:00Z"), "1985-04-15");
    EXPECT_EQ(ReadableDate("circa 1800"), "circa 1800");
    EXPECT_EQ(ReadableDate("198504155"), "198504155");
    EXPECT_EQ(ReadableDate(""), "");
}

TEST(VCardBirthday, IsWrittenWithoutHyphens)
{
    EXPECT_EQ(CompactDate("1985-04-15"), "19850415");
    EXPECT_EQ(CompactDate("19850415"), "19850415");
    EXPECT_EQ(CompactDate("--04-15"), "--0415");
    EXPECT_EQ(CompactDate("1985-04"), "1985-04");
    EXPECT_EQ(CompactDate("1985-04-15T10:22:00-08:00"), "19850415T102200-0800");
    EXPECT_EQ(CompactDate("19850415T10:22:00Z"), "19850415T102200Z");
    EXPECT_EQ(CompactDate("soon"), "soon");
}

TEST(VCardBirthday, IsADateOrWords)
{
    for (const char* date :
         {"1985-04-15", "19850415", "--04-15", "--0415", "1985-04", "1985", "--04", "---15"})
        EXPECT_TRUE(IsDate(date)) << date;
    for (const char* text : {"", "spring", "1985-4-15", "1985-04-15T10", "-1985", "15.4.1985"})
        EXPECT_FALSE(IsDate(text)) << text;
}

} // namespace

} // namespace vcard
