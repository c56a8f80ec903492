#include "mervane/list_windows.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

using mervane::FindRow;

class FindRowTest : public testing::Test {
  protected:
    int Find(const wchar_t* text, int start, UINT flags = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP) const
    {
        NMLVFINDITEMW wanted{};
        wanted.iStart = start;
        wanted.lvfi.flags = flags;
        wanted.lvfi.psz = text;
        return FindRow(wanted, static_cast<int>(m_names.size()),
                       [this](int row) { return std::wstring_view(m_names[static_cast<size_t>(row)]); });
    }

    std::vector<std::wstring> m_names{L"", L"Adams", L"adler", L"B\u00f6hm", L"Zo\u00eb", L"ada"};
};

TEST_F(FindRowTest, FindsTheBeginningWithoutRegardToCase)
{
    EXPECT_EQ(Find(L"ADL", 0), 2);
    EXPECT_EQ(Find(L"b\u00d6", 0), 3);
    EXPECT_EQ(Find(L"zo\u00cb", 0), 4);
    EXPECT_EQ(Find(L"dams", 0), -1) << "only the beginning";
    EXPECT_EQ(Find(L"Adamson", 0), -1);
}

TEST_F(FindRowTest, BeginsAtTheStartAndGoesRound)
{
    EXPECT_EQ(Find(L"a", 1), 1);
    EXPECT_EQ(Find(L"a", 2), 2);
    EXPECT_EQ(Find(L"a", 3), 5);
    EXPECT_EQ(Find(L"adl", 3), 2) << "round the end";
    EXPECT_EQ(Find(L"adl", 3, LVFI_STRING | LVFI_PARTIAL), -1) << "only where that is asked for";
}

TEST_F(FindRowTest, FindsTheWholeText)
{
    EXPECT_EQ(Find(L"ada", 0, LVFI_STRING), 5);
    EXPECT_EQ(Find(L"ada", 0), 1);
    EXPECT_EQ(Find(L"", 0, LVFI_STRING), 0);
}

TEST_F(FindRowTest, TakesAnyStart)
{
    for (const int start : {-1, INT_MIN, 6, INT_MAX})
        EXPECT_EQ(Find(L"adams", start), 1) << start;
}

TEST_F(FindRowTest, FindsNothingByAnythingElse)
{
    EXPECT_EQ(Find(nullptr, 0), -1);
    EXPECT_EQ(Find(L"a", 0, LVFI_PARAM), -1);
    EXPECT_EQ(Find(L"a", 0, 0), -1);
    m_names.clear();
    EXPECT_EQ(Find(L"a", 0), -1);
    EXPECT_EQ(Find(L"", 0), -1);
}

TEST(AnswerText, CutsToTheRoomThereIs)
{
    wchar_t room[4] = {L'x', L'x', L'x', L'x'};
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.pszText = room;
    item.cchTextMax = 3;
    mervane::AnswerText(item, L"abcdef");
    EXPECT_EQ(std::wstring(room, 4), std::wstring(L"ab\0x", 4));
    mervane::AnswerText(item, {});
    EXPECT_STREQ(room, L"");
    item.cchTextMax = 0;
    mervane::AnswerText(item, L"abc");
    EXPECT_STREQ(room, L"");
    item.mask = 0;
    item.cchTextMax = 3;
    mervane::AnswerText(item, L"abc");
    EXPECT_STREQ(room, L"");
}

} // namespace
