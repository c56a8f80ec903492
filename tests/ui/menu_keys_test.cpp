#include "ui/bars/menu_keys.h"

#include <gtest/gtest.h>

TEST(MenuKeys, MnemonicFollowsTheFirstSingleAmpersand)
{
    EXPECT_EQ(MnemonicOf(L"&File"), L'F');
    EXPECT_EQ(MnemonicOf(L"C&ustomize &Columns..."), L'u');
    EXPECT_EQ(MnemonicOf(L"Salt && &Pepper"), L'P');
    EXPECT_EQ(MnemonicOf(L"&&&x"), L'x');
}

TEST(MenuKeys, TextMayHaveNoMnemonic)
{
    EXPECT_EQ(MnemonicOf(L"Copy\tCtrl+C"), 0);
    EXPECT_EQ(MnemonicOf(L"this && that"), 0);
    EXPECT_EQ(MnemonicOf(L"at the end&"), 0);
    EXPECT_EQ(MnemonicOf(L""), 0);
}

TEST(MenuKeys, FindsTheFirstTextWithTheMnemonicInEitherCase)
{
    const std::vector<std::wstring> texts = {L"File", L"&Edit", L"&Ende", L"\x00c4&\x00c4"};
    EXPECT_EQ(FindMnemonic(texts, L'e'), 1);
    EXPECT_EQ(FindMnemonic(texts, L'E'), 1);
    EXPECT_EQ(FindMnemonic(texts, L'\x00e4'), 3);
    EXPECT_EQ(FindMnemonic(texts, L'F'), -1);
    EXPECT_EQ(FindMnemonic({}, L'F'), -1);
}

TEST(MenuKeys, NextItemWrapsRoundAndSkipsWhatIsGrey)
{
    const std::vector<bool> enabled = {true, false, true, true};
    EXPECT_EQ(NextItem(enabled, 0, 1), 2);
    EXPECT_EQ(NextItem(enabled, 3, 1), 0);
    EXPECT_EQ(NextItem(enabled, 0, -1), 3);
    EXPECT_EQ(NextItem(enabled, 2, -1), 0);
}

TEST(MenuKeys, NextItemFromNowhereIsTheFirstOrLastOne)
{
    EXPECT_EQ(NextItem({true, true, true}, -1, 1), 0);
    EXPECT_EQ(NextItem({false, true, true}, -1, 1), 1);
    EXPECT_EQ(NextItem({true, true, true}, -1, -1), 2);
}

TEST(MenuKeys, OnlyItemIsItsOwnNext)
{
    EXPECT_EQ(NextItem({false, true, false}, 1, 1), 1);
    EXPECT_EQ(NextItem({false, true, false}, 1, -1), 1);
    EXPECT_EQ(NextItem({false, false}, 0, 1), -1);
    EXPECT_EQ(NextItem({}, -1, 1), -1);
}
