#include "util/compare_text.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

TEST(CompareText, CaseCountsWhereItIsToldTo)
{
    for (const auto isSame : {IsSameForUser, IsSameForSystem}) {
        EXPECT_TRUE(isSame(L"Tea", L"Tea", Case::Matters));
        EXPECT_FALSE(isSame(L"Tea", L"tea", Case::Matters));
        EXPECT_TRUE(isSame(L"Tea", L"tea", Case::Ignored));
        EXPECT_TRUE(isSame(L"\u00C4hre", L"\u00E4hre", Case::Ignored));
        EXPECT_FALSE(isSame(L"Tea", L"Tea ", Case::Ignored));
    }
}

TEST(CompareText, NothingIsATextToo)
{
    for (const auto isSame : {IsSameForUser, IsSameForSystem}) {
        EXPECT_TRUE(isSame({}, L"", Case::Matters));
        EXPECT_FALSE(isSame({}, L"a", Case::Matters));
    }
    EXPECT_TRUE(IsSameName({}, L""));
    EXPECT_FALSE(IsSameName({}, L"a"));
    EXPECT_TRUE(NameStartsWith(L"a", {}));
    EXPECT_FALSE(IsBehindForUser({}, L"a"));
}

// A letter and its accent are two characters or one: the same to a person, not in a name.
TEST(CompareText, ALocaleKnowsLettersANameKnowsCharacters)
{
    EXPECT_TRUE(IsSameForUser(L"Caf\u00E9", L"Cafe\u0301", Case::Matters));
    EXPECT_FALSE(IsSameName(L"Caf\u00E9", L"Cafe\u0301"));
    EXPECT_TRUE(IsSameName(L"JOURNAL.DB", L"journal.db"));
}

TEST(CompareText, TheOrderIsThatOfLetters)
{
    EXPECT_TRUE(IsBehindForUser(L"b", L"A"));
    EXPECT_TRUE(IsBehindForUser(L"B", L"a"));
    EXPECT_FALSE(IsBehindForUser(L"a", L"A"));
    EXPECT_FALSE(IsBehindForUser(L"a", L"b"));
}

TEST(CompareText, ANamesStartAndEnd)
{
    EXPECT_TRUE(NameStartsWith(L"Journal.db", L"JOURNAL"));
    EXPECT_FALSE(NameStartsWith(L"Jour", L"Journal"));
    EXPECT_TRUE(NameEndsWith(L"Journal.DB", L".db"));
    EXPECT_FALSE(NameEndsWith(L"b", L".db"));
}

} // namespace
