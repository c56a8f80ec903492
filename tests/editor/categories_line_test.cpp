#include "editor/categories_line.h"

#include <gtest/gtest.h>

namespace {

TEST(CategoriesLine, NamesNoneWhenThereIsNone)
{
    EXPECT_EQ(CategoriesLineText({}, 40), L"<None>");
}

TEST(CategoriesLine, JoinsNamesWithACommaAndABlank)
{
    EXPECT_EQ(CategoriesLineText({L"Home"}, 40), L"Home");
    EXPECT_EQ(CategoriesLineText({L"Home", L"R&D", L"Work"}, 40), L"Home, R&D, Work");
}

TEST(CategoriesLine, CutsAtItsWidthInCharacters)
{
    EXPECT_EQ(CategoriesLineText({L"Alpha", L"Bravo", L"Charlie"}, 12), L"Alpha, Br...");
    EXPECT_EQ(CategoriesLineText({L"Alpha", L"Bravo"}, 12), L"Alpha, Bravo"); // exactly as wide
    EXPECT_EQ(CategoriesLineText({L"Alpha", L"Bravo"}, 11), L"Alpha, B...");
}

TEST(CategoriesLine, SixLongNamesEndExactlyAtTheWidth)
{
    const std::vector<std::wstring> names(6, std::wstring(30, L'n'));
    const std::wstring text = CategoriesLineText(names, 70);
    EXPECT_EQ(text.size(), 70u);
    EXPECT_EQ(text.substr(67), L"...");
}

TEST(CategoriesLine, TheFirstNameIsNeverCut)
{
    EXPECT_EQ(CategoriesLineText({L"A rather long name"}, 5), L"A rather long name");
}

TEST(CategoriesLine, ALineWithoutRoomIsStillALine)
{
    for (const int room : {-5, 0, 1, 3})
        EXPECT_EQ(CategoriesLineText({L"Alpha", L"Bravo"}, room), L"...");
}

} // namespace
