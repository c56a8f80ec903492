#include <algorithm>
#include <random>

#include "support/entry_list_fixture.h"

namespace {

constexpr int kMany = 65'535;

// Row r shows the entry kMany - 1 - r.
class LargeList : public EntryListTest {
  protected:
    LargeList()
    {
        m_ids = AddEntries(kMany);
        std::reverse(m_ids.begin(), m_ids.end());
        CreateList();
    }

    static std::wstring Subject(int row) { return L"entry " + std::to_wstring(kMany - 1 - row); }

    // Every row on the screen has its text, the one cut off at the bottom included, and none was painted
    // blank.
    void ExpectPageShown()
    {
        const int top = ListView_GetTopIndex(Handle());
        const int end = std::min(RowCount(), top + ListView_GetCountPerPage(Handle()) + 1);
        for (int row = top; row < end; ++row)
            ASSERT_EQ(Cell(row, 1), Subject(row));
        ASSERT_TRUE(m_blankRows.empty()) << m_blankRows.front();
    }

    std::vector<CEOID> m_ids; // by row
};

TEST_F(LargeList, ShowsEveryPage)
{
    EXPECT_EQ(RowCount(), kMany);
    PumpMessages();
    ExpectPageShown();
    std::mt19937 random(65535);
    for (int i = 0; i < 100; ++i) {
        const int row = static_cast<int>(random() % kMany);
        ListView_EnsureVisible(Handle(), row, FALSE);
        UpdateWindow(Handle());
        ExpectPageShown();
    }
    for (const int key :
         {VK_END, VK_PRIOR, VK_PRIOR, VK_UP, VK_HOME, VK_NEXT, VK_DOWN, VK_NEXT, VK_END, VK_UP}) {
        PressKey(static_cast<UINT>(key));
        UpdateWindow(Handle());
        ExpectPageShown();
    }
}

TEST_F(LargeList, ScrollsLineByLine)
{
    for (const int start : {0, 30'000, kMany - 60}) {
        ListView_EnsureVisible(Handle(), start, FALSE);
        for (int i = 0; i < 120; ++i) {
            SendMessageW(Handle(), WM_VSCROLL, i < 70 ? SB_LINEDOWN : SB_LINEUP, 0);
            UpdateWindow(Handle());
            ExpectPageShown();
        }
    }
}

// A shift click selects rows that were never painted.
TEST_F(LargeList, ASelectionOfAnySizeIsComplete)
{
    PumpMessages();
    ClickRow(0);
    const ULONGLONG start = GetTickCount64();
    PressKey(VK_END, true);
    EXPECT_EQ(Selected(), m_ids);
    EXPECT_EQ(m_list.CurrentEntry(), m_ids.back());
    m_list.Refresh();
    EXPECT_EQ(Selected(), m_ids);
    EXPECT_EQ(ListView_GetSelectedCount(Handle()), UINT{kMany});
    EXPECT_EQ(m_list.CurrentEntry(), m_ids.back());
    EXPECT_LT(GetTickCount64() - start, 15'000u);
    UpdateWindow(Handle());
    ExpectPageShown();
}

TEST_F(LargeList, ThousandsInAnyOrderAreSelectedAgainQuickly)
{
    std::vector<CEOID> order;
    for (size_t row = 0; row < m_ids.size(); row += 3)
        order.push_back(m_ids[row]);
    std::shuffle(order.begin(), order.end(), std::mt19937(3));
    for (const CEOID id : order)
        m_list.Selection().Append(id);
    const ULONGLONG start = GetTickCount64();
    m_list.Refresh();
    EXPECT_LT(GetTickCount64() - start, 15'000u);
    EXPECT_EQ(ListView_GetSelectedCount(Handle()), static_cast<UINT>(order.size()));
    EXPECT_EQ(Selected(), order);
}

TEST_F(LargeList, TheCountSaturates)
{
    AddEntry(-5, L"one more, the oldest");
    m_list.Refresh();
    EXPECT_EQ(RowCount(), kMany);
    EXPECT_EQ(m_list.RowCount(), DWORD{kMany});
    Own().Filter().active = true;
    Own().Filter().monthMask = 0xFFF;
    m_list.Refresh();
    EXPECT_EQ(RowCount(), kMany);
}

// The oldest three are of another month than all that the list can count.
TEST_F(LargeList, AFilterSeesWhatLiesBehindTheCount)
{
    for (const WORD day : std::initializer_list<WORD>{1, 2, 3})
        TestRecord()
            .Time(kPropDate, Instant(1999, 5, day))
            .Text(kPropSubject, L"May " + std::to_wstring(day))
            .Write();
    Own().Filter().active = true;
    Own().Filter().monthMask = 1u << 4;
    m_list.Refresh();
    PumpMessages();
    ASSERT_EQ(RowCount(), 3);
    EXPECT_EQ(m_list.RowCount(), 3u);
    for (const int row : {0, 1, 2})
        EXPECT_EQ(Cell(row, 1), L"May " + std::to_wstring(3 - row));
    Own().Filter().monthMask = 0xFFF;
    m_list.Refresh();
    EXPECT_EQ(RowCount(), kMany);
}

// What lies behind the rows that the list shows is not reached by a command.
TEST_F(LargeList, ARecordBehindTheLastRowIsNotSelected)
{
    const CEOID behind = AddEntry(-5, L"one more, the oldest");
    m_list.Refresh();
    m_list.SelectRecord(behind);
    EXPECT_TRUE(Selected().empty());
    EXPECT_TRUE(SelectedRows().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    m_list.SelectRecord(m_ids.back());
    EXPECT_EQ(SelectedRows(), std::vector<int>{kMany - 1});
}

} // namespace
