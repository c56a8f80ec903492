#include "addrbook/vcard_charset.h"

#include <gtest/gtest.h>

namespace addrbook {

namespace {

TEST(VCardCharset, KnowsUtf8)
{
    for (const char* text :
         {"", "plain text, long enough", "J\xC3\xBCrgen", "\xE6\x97\xA5\xE6\x9C\xAC", "\xF0\x9F\x98\x80"})
        EXPECT_TRUE(IsUtf8(text)) << text;
    for (const char* text :
         {"J\xFCrgen", "\xC3", "12345678\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
          "\xF8\x88\x80\x80\x80", "\x80", "\xE6\x97", "\xF0\x8F\xBF\xBF"})
        EXPECT_FALSE(IsUtf8(text)) << text;
}

TEST(VCardCharset, BecomesUtf8)
{
    EXPECT_EQ(ToUtf8("J\xFCrgen", "ISO-8859-1"), "J\xC3\xBCrgen");
    EXPECT_EQ(ToUtf8("J\xC3\xBCrgen", "utf-8"), "J\xC3\xBCrgen");
    EXPECT_EQ(ToUtf8("\xC1\xE8", "iso-8859-7"), "\xCE\x91\xCE\xB8");
    EXPECT_EQ(ToUtf8("\xCF\xF0\xE8", "Windows-1251"), "\xD0\x9F\xD1\x80\xD0\xB8");
    EXPECT_EQ(ToUtf8("\x93\xFA\x96\x7B", "SHIFT_JIS"), "\xE6\x97\xA5\xE6\x9C\xAC");
    EXPECT_EQ(ToUtf8("\xD6\xD0\xCE\xC4", "GB2312"), "\xE4\xB8\xAD\xE6\x96\x87");
}

TEST(VCardCharset, IsGuessedWhereItIsNotNamed)
{
    EXPECT_EQ(ToUtf8("J\xC3\xBCrgen", ""), "J\xC3\xBCrgen");
    EXPECT_EQ(ToUtf8("J\xFCrgen \x80", ""), "J\xC3\xBCrgen \xE2\x82\xAC");
    EXPECT_EQ(ToUtf8("J\xFCrgen", "utf-8"), "J\xC3\xBCrgen");
    EXPECT_EQ(ToUtf8("J\xFCrgen", "x-nobody-knows"), "J\xC3\xBCrgen");
    EXPECT_EQ(ToUtf8("", ""), "");
    EXPECT_EQ(ToUtf8("", "Big5"), "");
    EXPECT_EQ(ToUtf8("J\xC3\xBCrgen", "us-ascii"), "J\xC3\xBCrgen");
    EXPECT_EQ(ToUtf8("\x93x\x94", "ISO-8859-1"), "\xE2\x80\x9Cx\xE2\x80\x9D") << "its superset";
    // A text that some program has cut inside a character.
    EXPECT_EQ(ToUtf8("\xE6\x9D\x8E \xE6\x9D", ""), "\xE6\x9D\x8E \xC3\xA6\xC2\x9D");
}

TEST(QuotedPrintable, IsDecoded)
{
    EXPECT_EQ(DecodeQuotedPrintable("J=C3=BCrgen=0D=0AB=c3=a4r"), "J\xC3\xBCrgen\r\nB\xC3\xA4r");
    EXPECT_EQ(DecodeQuotedPrintable("a=b =G1 =4 ="), "a=b =G1 =4 =");
    EXPECT_EQ(DecodeQuotedPrintable("=3D=3d"), "==");
}

TEST(Base64, IsDecoded)
{
    EXPECT_EQ(DecodeBase64("TWFu"), "Man");
    EXPECT_EQ(DecodeBase64("TW E\t="), "Ma");
    EXPECT_EQ(DecodeBase64("TQ=="), "M");
    EXPECT_EQ(DecodeBase64("//79+A=="), "\xFF\xFE\xFD\xF8");
    EXPECT_EQ(DecodeBase64(""), "");
    EXPECT_EQ(DecodeBase64("not: base"), "not: base");
}

} // namespace

} // namespace addrbook
