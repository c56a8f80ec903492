#include "formats/text/lines.h"

#include <gtest/gtest.h>

#include "support/cards.h"

namespace text {

namespace {

std::vector<std::string> LinesIn(const std::string& text, size_t piece = 1 << 16)
{
    Lines lines(vcard::SourceOf(text, piece));
    std::vector<std::string> all;
    std::string_view line;
    while (lines.Next(&line)) {
        all.emplace_back(line);
        EXPECT_EQ(lines.Number(), all.size());
    }
    return all;
}

using Texts = std::vector<std::string>;

TEST(TextLines, EndInThreeWays)
{
    for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{1000}}) {
        EXPECT_EQ(LinesIn("a\r\nb\r\nc", piece), (Texts{"a", "b", "c"}));
        EXPECT_EQ(LinesIn("a\nb\nc\n", piece), (Texts{"a", "b", "c"}));
        EXPECT_EQ(LinesIn("a\rb\rc\r", piece), (Texts{"a", "b", "c"}));
        EXPECT_EQ(LinesIn("a\n\n\r\rb\r\n\r\n", piece), (Texts{"a", "", "", "", "b", ""}));
    }
}

TEST(TextLines, AreNoneInAnEmptyText)
{
    EXPECT_EQ(LinesIn(""), Texts());
    EXPECT_EQ(LinesIn("\xEF\xBB\xBF"), Texts());
    EXPECT_EQ(LinesIn("\n"), Texts{""});
}

TEST(TextLines, LeaveOutAByteOrderMarkAtTheStartOnly)
{
    EXPECT_EQ(LinesIn("\xEF\xBB\xBF"
                      "a\n\xEF\xBB\xBF"
                      "b",
                      1),
              (Texts{"a", "\xEF\xBB\xBF"
                          "b"}));
    EXPECT_EQ(LinesIn("\xEF\xBB"), Texts{"\xEF\xBB"});
}

TEST(TextLines, MayBeLongerThanTheBuffer)
{
    const std::string line(1'000'000, 'x');
    EXPECT_EQ(LinesIn("a\n" + line + "\nb"), (Texts{"a", line, "b"}));
}

TEST(TextLines, AreCutWhereTheyAreTooLong)
{
    const std::string line(Lines::kLongest + 5'000'000, 'x');
    const Texts lines = LinesIn("a\n" + line + "\nb", 1 << 20);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_GE(lines[1].size(), Lines::kLongest);
    EXPECT_LE(lines[1].size(), Lines::kLongest + (1u << 20));
    EXPECT_EQ(lines[2], "b");
}

} // namespace

} // namespace text
