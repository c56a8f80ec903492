#include "mervane/values/text_codec.h"

#include <gtest/gtest.h>

namespace {

using mervane::DecodeText;
using mervane::EncodeText;

TEST(TextCodec, WritesUtf8)
{
    EXPECT_EQ(EncodeText(L"A\u00e9\u20ac\U0001F600"), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(DecodeText("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), L"A\u00e9\u20ac\U0001F600");
    EXPECT_EQ(EncodeText(L""), "");
    EXPECT_EQ(DecodeText(""), L"");
}

TEST(TextCodec, KeepsEveryUnitOnItsOwn)
{
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        const std::wstring text{L'a', static_cast<wchar_t>(unit), L'b'};
        ASSERT_EQ(DecodeText(EncodeText(text)), text) << std::hex << unit;
    }
}

TEST(TextCodec, KeepsUnpairedSurrogates)
{
    const wchar_t high = 0xD83D, low = 0xDE00;
    for (const std::wstring& text :
         {std::wstring{high}, std::wstring{low}, std::wstring{low, high}, std::wstring{high, high, low},
          std::wstring{high, low, low}, std::wstring{high, L'x', low}, std::wstring{low, low, high, high}})
        EXPECT_EQ(DecodeText(EncodeText(text)), text);
}

TEST(TextCodec, EndsATextAtItsNul)
{
    EXPECT_EQ(DecodeText(std::string("ab\0cd", 5)), L"ab");
    EXPECT_EQ(DecodeText(std::string("\0", 1)), L"");
}

TEST(TextCodec, ReplacesWhatIsNoEncoding)
{
    EXPECT_EQ(DecodeText("a\xFF"
                         "b"),
              L"a\uFFFDb");
    EXPECT_EQ(DecodeText("\x80"), L"\uFFFD");
    EXPECT_EQ(DecodeText("\xC3"), L"\uFFFD");                               // cut off
    EXPECT_EQ(DecodeText("\xE2\x82"), L"\uFFFD\uFFFD");                     // cut off
    EXPECT_EQ(DecodeText("\xC0\xAF"), L"\uFFFD\uFFFD");                     // overlong
    EXPECT_EQ(DecodeText("\xE0\x80\xAF"), L"\uFFFD\uFFFD\uFFFD");           // overlong
    EXPECT_EQ(DecodeText("\xF4\x90\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD"); // past U+10FFFF
    EXPECT_EQ(DecodeText("\xC3(x"), L"\uFFFD(x");
}

TEST(TextCodec, TakesEveryLengthOfSequence)
{
    const auto isKept = [](char32_t code) {
        const std::wstring text =
            code < 0x10000 ? std::wstring{static_cast<wchar_t>(code)}
                           : std::wstring{static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)),
                                          static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
        return DecodeText(EncodeText(text)) == text;
    };
    for (char32_t code = 0x10000; code <= 0x10FFFF; code += 0x3F)
        ASSERT_TRUE(isKept(code)) << static_cast<uint32_t>(code);
    EXPECT_TRUE(isKept(0x10FFFF));
    EXPECT_EQ(DecodeText("\xF0\x8F\xBF\xBF"), L"\uFFFD\uFFFD\uFFFD\uFFFD"); // overlong
    EXPECT_EQ(DecodeText("\xF0\x9F\x98"), L"\uFFFD\uFFFD\uFFFD");           // cut off
    EXPECT_EQ(DecodeText("\xF5\x80\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD"); // no such lead
    EXPECT_EQ(DecodeText("\xF0\x9F(\x80"), L"\uFFFD\uFFFD(\uFFFD");
}

// Long runs of ASCII are taken many at once, whatever ends them and wherever.
TEST(TextCodec, TakesRunsOfEveryLength)
{
    const std::string letters = "The quick brown fox jumps over the lazy dog, again and again.";
    for (size_t length = 0; length <= letters.size(); ++length) {
        const std::string run = letters.substr(0, length);
        const std::wstring wide(run.begin(), run.end());
        ASSERT_EQ(DecodeText(run), wide);
        ASSERT_EQ(DecodeText(run + "\xC3\xA9" + letters), wide + L"\u00e9" + DecodeText(letters));
        ASSERT_EQ(DecodeText(run + '\x7F' + letters), wide + L'\x7F' + DecodeText(letters));
        ASSERT_EQ(DecodeText(run + '\0' + letters), wide);
    }
}

TEST(TextCodec, NeverWritesMoreUnitsThanBytes)
{
    for (unsigned first = 0; first < 256; ++first)
        for (unsigned second = 0; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second), '\x80', '\xBF'};
            ASSERT_LE(DecodeText(bytes).size(), bytes.size());
        }
}

} // namespace
