#include "help/page/table_columns.h"

#include <gtest/gtest.h>

#include "pages.h"

namespace help {
namespace {

std::vector<int> ColumnsOfPage(const std::wstring& page, int widest = 2900)
{
    return FirstColumnsOf(BlocksOf(page), widest);
}

// The widths that are told are those of letters that are as wide as most, and a gap.
TEST(TableColumns, TheWidestFirstCellMakesTheColumn)
{
    EXPECT_EQ(ColumnsOfPage(L"<p>x<table><tr><td>0123456789abcdef<td>b<tr><td>c<td>d</table><p>y"),
              (std::vector<int>{0, 1800, 1800, 0}));
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><td><code>0123456789</code>abcdef<td>b</table>"),
              std::vector<int>{2050});
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><td><b>0123456789</b>abcdef<td>b</table>"), std::vector<int>{1950});
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><th>0123456789<th>b</table>"), std::vector<int>{1350});
    EXPECT_EQ(ColumnsOfPage(L""), std::vector<int>{});
}

TEST(TableColumns, AColumnIsNeitherVeryNarrowNorVeryWide)
{
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><td>a<td>b</table>"), std::vector<int>{1200});
    const std::wstring widest(27, L'x');
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><td>" + widest + L"<td>b</table>"), std::vector<int>{2900});
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><td>" + widest + L"x<td>b<tr><td>0123456789abc<td>d</table>"),
              (std::vector<int>{1500, 1500}))
        << "one that is too wide does not count";
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><td>" + std::wstring(200'000, L'x') + L"<td>b</table>"),
              std::vector<int>{1200});
}

TEST(TableColumns, ARowOfTitlesBeginsATable)
{
    EXPECT_EQ(ColumnsOfPage(L"<table><tr><th>A<th>B<tr><td>0123456789abcdef<td>b</table>"
                            L"<table><tr><th>A<th>B<tr><td>c<td>d</table>"),
              (std::vector<int>{1800, 1800, 1200, 1200}));
}

TEST(TableColumns, NoColumnIsWiderThanThereIsRoom)
{
    const wchar_t* page = L"<table><tr><td>0123456789<td>b<tr><td>01234<td>d</table>";
    EXPECT_EQ(ColumnsOfPage(page, 1200), (std::vector<int>{1200, 1200}));
    EXPECT_EQ(ColumnsOfPage(page, 1199), (std::vector<int>{1199, 1199}));
    EXPECT_EQ(ColumnsOfPage(page, 580), (std::vector<int>{580, 580}));
}

TEST(TableColumns, TheWidestIsHalfOfTheTextInAFewSteps)
{
    EXPECT_EQ(WidestColumn(20'000), 2900);
    EXPECT_EQ(WidestColumn(5800), 2900);
    EXPECT_EQ(WidestColumn(5799), 2320);
    EXPECT_EQ(WidestColumn(2320), 1160);
    EXPECT_EQ(WidestColumn(100), 580);
    EXPECT_EQ(WidestColumn(0), 580);
}

TEST(TableColumns, TheLineEndsBehindACellThatDoesNotFit)
{
    const Block row = BlocksOf(L"<table><tr><td>0123456789abcdef<td>b</table>").front();
    EXPECT_FALSE(BreaksBehindFirst(row, 1800));
    EXPECT_TRUE(BreaksBehindFirst(row, 1799));
    const Block three = BlocksOf(L"<table><tr><td>0123456789abcdef<td>b<td>c</table>").front();
    EXPECT_FALSE(BreaksBehindFirst(three, 100)) << "with more cells the line goes on";
}

} // namespace
} // namespace help
