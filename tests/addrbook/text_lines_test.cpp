#include "formats/text/text_lines.h"

#include <gtest/gtest.h>

#include "cards.h"

namespace addrbook {

namespace {

std::vector<std::string> LinesIn(const std::string& text, size_t piece = 1 << 16)
{
    TextLines lines(SourceOf(text, piece));
    std::vector<std::string> all;
    std::string_view line;
    while (lines.Next(&line)) {
        all.emplace_back(line);
        EXPECT_EQ(lines.Number(), all.size());
    }
    return all;
}

using Lines = std::vector<std::string>;

TEST(TextLines, EndInThreeWays)
{
    for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{1000}}) {
        EXPECT_EQ(LinesIn("a\r\nb\r\nc", piece), (Lines{"a", "b", "c"}));
        EXPECT_EQ(LinesIn("a\nb\nc\n", piece), (Lines{"a", "b", "c"}));
        EXPECT_EQ(LinesIn("a\rb\rc\r", piece), (Lines{"a", "b", "c"}));
        EXPECT_EQ(LinesIn("a\n\n\r\rb\r\n\r\n", piece), (Lines{"a", "", "", "", "b", ""}));
    }
}

TEST(TextLines, AreNoneInAnEmptyText)
{
    EXPECT_EQ(LinesIn(""), Lines());
    EXPECT_EQ(LinesIn("\xEF\xBB\xBF"), Lines());
    EXPECT_EQ(LinesIn("\n"), Lines{""});
}

TEST(TextLines, LeaveOutAByteOrderMarkAtTheStartOnly)
{
    EXPECT_EQ(LinesIn("\xEF\xBB\xBF"
                      "a\n\xEF\xBB\xBF"
                      "b",
                      1),
              (Lines{"a", "\xEF\xBB\xBF"
                          "b"}));
    EXPECT_EQ(LinesIn("\xEF\xBB"), Lines{"\xEF\xBB"});
}

TEST(TextLines, MayBeLongerThanTheBuffer)
{
    const std::string line(1'000'000, 'x');
    EXPECT_EQ(LinesIn("a\n" + line + "\nb"), (Lines{"a", line, "b"}));
}

TEST(TextLines, AreCutWhereTheyAreTooLong)
{
    const std::string line(TextLines::kLongest + 5'000'000, 'x');
    const Lines lines = LinesIn("a\n" + line + "\nb", 1 << 20);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_GE(lines[1].size(), TextLines::kLongest);
    EXPECT_LE(lines[1].size(), TextLines::kLongest + (1u << 20));
    EXPECT_EQ(lines[2], "b");
}

} // namespace

} // namespace addrbook
