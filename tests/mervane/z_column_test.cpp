#include "mervane/z_column.h"

#include <gtest/gtest.h>

namespace {

ZColumn Column(DWORD flags, int width = 100)
{
    ZColumn column;
    column.Copy(L"Subject", 102, flags, width);
    return column;
}

TEST(ZColumn, StartsEmpty)
{
    const ZColumn column;
    EXPECT_EQ(column.GetFlags(), 0u);
    EXPECT_EQ(column.Title(), L"");
}

TEST(ZColumn, PacksPropertyWidthAndFlags)
{
    ZColumn column;
    column.Copy(L"Priority", 107, 0x15, 10);
    EXPECT_EQ(column.GetFlags(), 0x6B00A015u);
    EXPECT_EQ(column.Title(), L"Priority");
    EXPECT_EQ(column.Property(), 107);
    EXPECT_EQ(column.Width(), 10);
}

TEST(ZColumn, CopyReplacesWhatWasThere)
{
    ZColumn column = Column(0xFF, 4095);
    column.Copy(L"Body", 103, 0, 100);
    EXPECT_EQ(column.GetFlags(), 0x67064000u);
    EXPECT_EQ(column.Title(), L"Body");
}

TEST(ZColumn, CopiesAnother)
{
    ZColumn column;
    column.Copy(Column(0x1D, 7));
    EXPECT_EQ(column.GetFlags(), 0x6600701Du);
    EXPECT_EQ(column.Title(), L"Subject");
}

TEST(ZColumn, KeepsFiftyNineCharactersOfTheTitle)
{
    ZColumn column;
    column.Copy(std::wstring(59, L'a').c_str(), 101, 0, 0);
    EXPECT_EQ(column.Title(), std::wstring(59, L'a'));
    column.Copy((std::wstring(59, L'b') + L"c").c_str(), 101, 0, 0);
    EXPECT_EQ(column.Title(), std::wstring(59, L'b'));
    column.Copy(nullptr, 101, 0, 0);
    EXPECT_EQ(column.Title(), L"");
}

TEST(ZColumn, PartsDoNotSpillIntoOneAnother)
{
    ZColumn column;
    column.Copy(L"", 111, 0xFFFFFFFF, 0);
    EXPECT_EQ(column.GetFlags(), 0x6F000FFFu);
    column.Copy(L"", 111, 0, 100000);
    EXPECT_EQ(column.GetFlags(), 0x6FFFF000u);
    column.Copy(L"", 111, 0, -1);
    EXPECT_EQ(column.GetFlags(), 0x6F000000u);
}

TEST(ZColumn, WidthIsClippedToTwelveBits)
{
    ZColumn column = Column(0xFFF, 50);
    for (const auto& [width, kept] :
         {std::pair{0, 0}, {4095, 4095}, {4096, 4095}, {INT_MAX, 4095}, {INT_MIN, 0}}) {
        column.SetWidth(width);
        EXPECT_EQ(column.Width(), kept);
        EXPECT_EQ(column.GetFlags() & 0xFF000FFF, 0x66000FFFu);
    }
}

TEST(ZColumn, FlagsAreTheWholeWord)
{
    ZColumn column = Column(0);
    column.SetFlags(0x6B00A01D);
    EXPECT_EQ(column.GetFlags(), 0x6B00A01Du);
    EXPECT_EQ(column.Property(), 107);
    EXPECT_EQ(column.Width(), 10);
    EXPECT_EQ(column.Title(), L"Subject");
}

TEST(ZColumn, AsksForAllTheBits)
{
    ZColumn column = Column(kColumnShown | kColumnSortable);
    EXPECT_TRUE(column.Has(kColumnShown));
    EXPECT_TRUE(column.Has(kColumnShown | kColumnSortable));
    EXPECT_FALSE(column.Has(kColumnShown | kColumnSort));
    column.Add(kColumnSort);
    EXPECT_TRUE(column.Has(kColumnShown | kColumnSort));
    column.Remove(kColumnShown | kColumnExport);
    EXPECT_EQ(column.GetFlags(), 0x66064014u);
}

TEST(ZColumn, SetActiveMakesTheSortColumnInItsDirection)
{
    ZColumn descending = Column(0x05);
    EXPECT_EQ(descending.SetActive(), 2);
    EXPECT_EQ(descending.GetFlags() & 0xFFF, 0x15u);
    ZColumn ascending = Column(0x06);
    EXPECT_EQ(ascending.SetActive(), 1);
    EXPECT_EQ(ascending.GetFlags() & 0xFFF, 0x16u);
}

TEST(ZColumn, SetDecendingFlipsAndMarksTheToggle)
{
    ZColumn column = Column(0x15);
    EXPECT_EQ(column.SetDecending(), 1);
    EXPECT_EQ(column.GetFlags() & 0xFFF, 0x16u);
    EXPECT_EQ(column.SetDecending(), 2);
    EXPECT_EQ(column.GetFlags() & 0xFFF, 0x17u);
}

TEST(ZColumn, SetAscendingFlipsAndClearsTheToggle)
{
    ZColumn column = Column(0x17);
    EXPECT_EQ(column.SetAscending(), 1);
    EXPECT_EQ(column.GetFlags() & 0xFFF, 0x14u);
    EXPECT_EQ(column.SetAscending(), 2);
    EXPECT_EQ(column.GetFlags() & 0xFFF, 0x15u);
}

// As the header click does: which of the two is called hangs on the toggle.
TEST(ZColumn, ClicksAlternateTheDirection)
{
    ZColumn column = Column(0x1D);
    int expected = 1;
    for (int click = 0; click < 6; ++click) {
        const int image = column.Has(kColumnToggled) ? column.SetAscending() : column.SetDecending();
        EXPECT_EQ(image, expected);
        EXPECT_EQ(column.GetSortOrder(), expected);
        EXPECT_EQ(column.GetFlags() & ~0x3u, 0x6606401Cu);
        expected = 3 - expected;
    }
}

TEST(ZColumn, SortOrderIsTheImageOfTheDirection)
{
    EXPECT_EQ(Column(0).GetSortOrder(), 1);
    EXPECT_EQ(Column(kColumnDescending).GetSortOrder(), 2);
    EXPECT_EQ(Column(kColumnToggled).GetSortOrder(), 1);
}

} // namespace
