#include "util/text_cut.h"

#include <gtest/gtest.h>

namespace {

TEST(CutText, TakesTheFirstCharacters)
{
    EXPECT_EQ(CutText(L"", 0), L"");
    EXPECT_EQ(CutText(L"abc", 4), L"abc");
    EXPECT_EQ(CutText(L"abc", 3), L"abc");
    EXPECT_EQ(CutText(L"abc", 2), L"ab");
    EXPECT_EQ(CutText(L"abc", 0), L"");
}

TEST(CutText, CutsNoPairInHalf)
{
    EXPECT_EQ(CutText(L"a\xD83D\xDE00z", 1), L"a");
    EXPECT_EQ(CutText(L"a\xD83D\xDE00z", 2), L"a");
    EXPECT_EQ(CutText(L"a\xD83D\xDE00z", 3), L"a\xD83D\xDE00");
    EXPECT_EQ(CutText(L"\xD83D\xDE00", 1), L"");
}

TEST(CutText, LeavesHalfACharacterThatWasOneBefore)
{
    EXPECT_EQ(CutText(L"a\xD83Dz", 2), L"a\xD83D");
    EXPECT_EQ(CutText(L"a\xDE00\xD83D", 2), L"a\xDE00");
}

TEST(Shortened, TellsThatThereIsMore)
{
    EXPECT_EQ(Shortened(L"abc", 3), L"abc");
    EXPECT_EQ(Shortened(L"abcd", 3), L"abc...");
    EXPECT_EQ(Shortened(L"ab\xD83D\xDE00", 3), L"ab...");
}

} // namespace
