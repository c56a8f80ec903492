#include "formats/vcard/charset.h"

#include <gtest/gtest.h>

namespace vcard {

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

// A letter in each of the character sets.
struct CharsetSample {
    const char* charset;
    const char* bytes;
    const char* letter;
};
constexpr CharsetSample kCharsetSamples[] = {
    {"iso-8859-1", "\xFC", "\u00FC"},
    {"latin1", "\xDF", "\u00DF"},
    {"iso-8859-2", "\xB3", "\u0142"},
    {"iso-8859-3", "\xF8", "\u011D"},
    {"iso-8859-4", "\xF3", "\u0137"},
    {"iso-8859-5", "\xB6", "\u0416"},
    {"iso-8859-6", "\xD4", "\u0634"},
    {"iso-8859-7", "\xD9", "\u03A9"},
    {"iso-8859-8", "\xF9", "\u05E9"},
    {"iso-8859-9", "\xF0", "\u011F"},
    {"iso-8859-13", "\xF8", "\u0173"},
    {"iso-8859-15", "\xA4", "\u20AC"},
    {"koi8-r", "\xF6", "\u0416"},
    {"koi8-u", "\xA7", "\u0457"},
    {"shift_jis", "\x93\xFA", "\u65E5"},
    {"shift-jis", "\x96\x7B", "\u672C"},
    {"euc-jp", "\xC6\xFC", "\u65E5"},
    {"gb2312", "\xD6\xD0", "\u4E2D"},
    {"gbk", "\xE9\x46", "\u9555"},
    {"gb18030", "\xE9\x46", "\u9555"},
    {"big5", "\xBB\x4F", "\u81FA"},
    {"euc-kr", "\xC7\xD1", "\uD55C"},
    {"ks_c_5601-1987", "\xB1\xDB", "\uAE00"},
    {"windows-874", "\xA1", "\u0E01"},
    {"windows-1250", "\xB3", "\u0142"},
    {"Windows-1251", "\xC6", "\u0416"},
    {"windows-1252", "\x80", "\u20AC"},
    {"windows-1253", "\xD9", "\u03A9"},
    {"windows-1254", "\xF0", "\u011F"},
    {"windows-1255", "\xF9", "\u05E9"},
    {"windows-1256", "\xD4", "\u0634"},
    {"windows-1257", "\xF8", "\u0173"},
    {"windows-1258", "\xF5", "\u01A1"},
};

TEST(VCardCharset, IsKnownByItsName)
{
    for (const CharsetSample& sample : kCharsetSamples)
        EXPECT_EQ(ToUtf8(sample.bytes, sample.charset), sample.letter) << sample.charset;
}

// The letter is one of Windows' Western set then.
TEST(VCardCharset, IsNotGuessedFromAName)
{
    for (const char* charset : {"windows-1259", "windows-125", "windows-12511", "windows-125x",
                                "windows-125/", "xwindows-1251", "iso-8859", "iso-8859-70"})
        EXPECT_EQ(ToUtf8("\xC4", charset), "\xC3\x84") << charset;
}

TEST(VCardCharset, IsTakenAtItsWord)
{
    EXPECT_EQ(ToUtf8("\xC3\xBC", "ISO-8859-1"), "\xC3\x83\xC2\xBC") << "though it could be UTF-8";
}

TEST(VCardCharset, KnowsTheEndsOfUtf8)
{
    for (const char* text : {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                             "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF3\xBF\xBF\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(IsUtf8(text)) << text;
    for (const char* text :
         {"\xC1\xBF", "\xC2\x7F", "\xC2\xC0", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xEF\xBF\x7F",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"})
        EXPECT_FALSE(IsUtf8(text)) << text;
}

TEST(VCardCharset, LooksAtEachByte)
{
    for (size_t place = 0; place < 24; ++place) {
        std::string text(24, 'a');
        text[place] = '\xFC';
        EXPECT_FALSE(IsUtf8(text)) << place;
        EXPECT_EQ(ToUtf8(text, ""), text.substr(0, place) + "\xC3\xBC" + text.substr(place + 1));
    }
}

TEST(QuotedPrintable, IsDecoded)
{
    EXPECT_EQ(DecodeQuotedPrintable("J=C3=BCrgen=0D=0AB=c3=a4r"), "J\xC3\xBCrgen\r\nB\xC3\xA4r");
    EXPECT_EQ(DecodeQuotedPrintable("a=b =G1 =4 ="), "a=b =G1 =4 =");
    EXPECT_EQ(DecodeQuotedPrintable("=3D=3d"), "==");
    EXPECT_EQ(DecodeQuotedPrintable("=AF=af=Fa=09=90"), "\xAF\xAF\xFA\t\x90");
    EXPECT_EQ(DecodeQuotedPrintable("=4g=g4=4@=4/=4:=4`"), "=4g=g4=4@=4/=4:=4`");
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

} // namespace vcard
