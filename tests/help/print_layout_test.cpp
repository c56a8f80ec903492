#include "help/page/print_layout.h"

#include <gtest/gtest.h>

#include "pages.h"

namespace help {
namespace {

// Each character is as wide as a unit and as high as ten; headings are twice that high.
PrintSize Measure(const std::wstring& text, const PrintLook& look)
{
    return {static_cast<int>(text.size()), look.points > 12 ? 20 : 10};
}

constexpr PrintArea kArea{5, 7, 20, 100, 1};

std::vector<PlacedText> Placed(const std::wstring& page, const PrintArea& area = kArea)
{
    return LayOut(BlocksOf(page), area, Measure);
}

// The lines' texts, from left to right.
Texts LinesOf(const std::vector<PlacedText>& placed)
{
    Texts lines;
    for (size_t place = 0; place < placed.size(); ++place) {
        if (place == 0 || placed[place].y != placed[place - 1].y ||
            placed[place].page != placed[place - 1].page)
            lines.emplace_back();
        lines.back() += placed[place].text + L"|";
    }
    return lines;
}

TEST(PrintLayout, WrapsWordsIntoLines)
{
    const auto placed = Placed(L"<p>one two three <b>four</b> five six");
    EXPECT_EQ(LinesOf(placed), (Texts{L"one|two|three|four|", L"five|six|"}));
    EXPECT_EQ(placed[0].x, 5);
    EXPECT_EQ(placed[0].y, 7);
    EXPECT_EQ(placed[1].x, 5 + 4);
    EXPECT_TRUE(placed[3].look.isBold);
    EXPECT_EQ(placed[4].x, 5);
    EXPECT_EQ(placed[4].y, 17);
}

TEST(PrintLayout, NothingStandsOutsideTheArea)
{
    std::wstring page = L"<h1>A heading</h1>";
    for (int block = 0; block < 200; ++block)
        page +=
            L"<p>words and words and averyveryverylongwordthatfitsnowhere</p><ol><li>an item of a list</ol>"
            L"<table><tr><td>first cell</td><td>second cell</td></tr></table>";
    const auto placed = Placed(page);
    ASSERT_FALSE(placed.empty());
    int page0 = 0;
    for (const PlacedText& text : placed) {
        EXPECT_GE(text.x, 5);
        EXPECT_LE(text.x + static_cast<int>(text.text.size()), 25) << text.page;
        EXPECT_GE(text.y, 7);
        EXPECT_LE(text.y + 10, 107);
        EXPECT_TRUE(text.page == page0 || text.page == page0 + 1) << "no page is left empty";
        page0 = text.page;
    }
    EXPECT_GT(page0, 50);
}

TEST(PrintLayout, EveryWordIsPrintedOnce)
{
    std::wstring text, printed;
    for (int word = 0; word < 500; ++word)
        text += L"w" + std::to_wstring(word) + L" ";
    for (const PlacedText& placed : Placed(L"<p>" + text))
        printed += placed.text + L" ";
    EXPECT_EQ(printed, text);
}

TEST(PrintLayout, AHeadingIsNotLeftAtTheFootOfAPage)
{
    // Seven lines of ten units, then a heading of twenty and its text: three lines of it do not fit.
    const auto placed = Placed(L"<p>1<br>2<br>3<br>4<br>5<br>6<br>7<h1>Head</h1><p>text");
    ASSERT_EQ(placed.size(), 9u);
    EXPECT_EQ(placed[6].page, 0);
    EXPECT_EQ(placed[7].text, L"Head");
    EXPECT_EQ(placed[7].page, 1);
    EXPECT_EQ(placed[8].page, 1);
}

TEST(PrintLayout, AHeadingThatLacksOneUnitGoesToTheNextPage)
{
    const std::wstring page = L"<p>1<br>2<br>3<br>4<h1>Head</h1><p>text";
    EXPECT_EQ(Placed(page, {0, 0, 20, 100, 1})[4].page, 0);
    EXPECT_EQ(Placed(page, {0, 0, 20, 99, 1})[4].page, 1);
}

TEST(PrintLayout, LinesAndBlocksFollowEachOther)
{
    const auto placed =
        Placed(L"<h1>Head</h1><p>a<br>b<p>c<table><tr><td>d<tr><td>e</table>", {0, 0, 1000, 1000, 100});
    std::vector<int> tops;
    for (const PlacedText& text : placed)
        tops.push_back(text.y);
    // Twenty for the heading, ten for a line; eight behind a block, three behind a row.
    EXPECT_EQ(tops, (std::vector<int>{0, 28, 38, 56, 74, 87}));
}

TEST(PrintLayout, ATinyPageStillHoldsALine)
{
    const auto placed = Placed(L"<p>ab cd", {0, 0, 1, 1, 1});
    EXPECT_EQ(LinesOf(placed), (Texts{L"a|", L"b|", L"c|", L"d|"}));
    EXPECT_EQ(placed.back().page, 3);
}

TEST(PrintLayout, ItemsStandBehindTheirMarkers)
{
    const auto placed = Placed(L"<ol><li>item", {0, 0, 100, 100, 100});
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_EQ(placed[0].text, L"1.");
    EXPECT_EQ(placed[1].x, 18);
}

// At 1440 units to the inch a column of so many twips is as many units wide; a letter is one.
TEST(PrintLayout, CellsStandAtTheirColumn)
{
    const auto placed =
        Placed(L"<table><tr><td>a<td>b b<tr><td>c<td>d<td>e</table>", {10, 0, 9000, 100, 1440});
    ASSERT_EQ(placed.size(), 6u);
    EXPECT_EQ(placed[0].x, 10);
    EXPECT_EQ(placed[1].x, 10 + 1200);
    EXPECT_EQ(placed[4].x, 10 + 1200);
    EXPECT_EQ(placed[5].x, 10 + 1200 + 1900);
    EXPECT_EQ(placed[5].y, placed[3].y);
}

TEST(PrintLayout, ACellThatReachesTooFarPushesTheNextOneDown)
{
    const std::wstring page = L"<table><tr><td>0123456789<td>one two</table>";
    const auto placed = Placed(page, {0, 0, 21, 100, 6});
    EXPECT_EQ(LinesOf(placed), (Texts{L"0123456789|", L"one|two|"}));
    ASSERT_EQ(placed.size(), 3u);
    EXPECT_EQ(placed[1].x, 5) << "6 units to the inch, 1200 twips";
    EXPECT_EQ(placed[1].y, 10);
    EXPECT_EQ(LinesOf(Placed(L"<table><tr><td>0123<td>x</table>", {0, 0, 21, 100, 6})), (Texts{L"0123|x|"}));
    EXPECT_EQ(LinesOf(Placed(L"<table><tr><td>01234<td>x</table>", {0, 0, 21, 100, 6})),
              (Texts{L"01234|", L"x|"}))
        << "a blank is between them";
    EXPECT_EQ(Placed(page, {0, 0, 8, 100, 1440}).back().x, 4) << "on a narrow page in its left half";
}

} // namespace
} // namespace help
