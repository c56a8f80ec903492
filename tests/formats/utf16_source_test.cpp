#include "formats/text/utf16_source.h"

#include <gtest/gtest.h>

#include "support/cards.h"

namespace text {

namespace {

std::string Utf16(const std::u16string& text, bool isBigEndian)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        bytes.append({isBigEndian ? high : low, isBigEndian ? low : high});
    }
    return bytes;
}

std::string Decoded(const std::string& bytes, size_t piece, size_t wanted = 1000)
{
    const ByteSource source = WithUtf16Decoded(vcard::SourceOf(bytes, piece));
    std::string all, buffer(wanted, '\0');
    while (const size_t count = source(buffer.data(), wanted))
        all.append(buffer, 0, count);
    return all;
}

TEST(Utf16Source, BecomesUtf8)
{
    const std::u16string text = u"\uFEFFJ\u00FCrgen \u674E \U0001F600\r\n";
    const std::string expected = "J\xC3\xBCrgen \xE6\x9D\x8E \xF0\x9F\x98\x80\r\n";
    for (const bool isBigEndian : {false, true})
        for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{5}, size_t{100'000}})
            EXPECT_EQ(Decoded(Utf16(text, isBigEndian), piece, piece), expected);
}

TEST(Utf16Source, LeavesAllElseAsItIs)
{
    for (const std::string text : {"", "a", "\xFF", "ab",
                                   "\xEF\xBB\xBF"
                                   "abc",
                                   "\xFF\xFD\xFE", "B\xFF\xFE"})
        for (const size_t piece : {size_t{1}, size_t{2}, size_t{1000}})
            EXPECT_EQ(Decoded(text, piece), text);
}

TEST(Utf16Source, ReplacesWhatIsCut)
{
    EXPECT_EQ(Decoded("\xFF\xFE", 1), "");
    EXPECT_EQ(Decoded(std::string("\xFF\xFE"
                                  "a\0b",
                                  5),
                      1),
              "a\xEF\xBF\xBD");
    EXPECT_EQ(Decoded(std::string("\xFF\xFE"
                                  "a\0\x3D\xD8",
                                  6),
                      1),
              "a\xEF\xBF\xBD");
    EXPECT_EQ(Decoded(std::string("\xFF\xFE\x3D\xD8"
                                  "a\0",
                                  6),
                      1),
              "\xEF\xBF\xBD"
              "a");
}

TEST(Utf16Source, IsWhatCardsAreReadFrom)
{
    const vcard::ReadCards read =
        vcard::ReadAll(Utf16(u"\uFEFF"
                             u"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:\u674E\r\nEND:VCARD\r\n",
                             false),
                       3);
    ASSERT_EQ(read.contacts.size(), 1u);
    EXPECT_EQ(read.contacts[0][vcard::Field::FileAs], "\xE6\x9D\x8E");
    // Without a mark it is no text at all.
    const vcard::ReadCards none =
        vcard::ReadAll(Utf16(u"BEGIN:VCARD\nVERSION:3.0\nFN:x\nEND:VCARD\n", false));
    EXPECT_EQ(none.contacts.size(), 0u);
    EXPECT_EQ(none.errorLine, 1u);
}

} // namespace

} // namespace text
