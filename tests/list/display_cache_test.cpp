#include "list/display_cache.h"

#include <algorithm>
#include <random>

#include "list/list_rows.h"
#include "support/journal_fixture.h"
#include "support/live_blocks.h"

namespace {

std::wstring SubjectOf(const DisplayCache& cache, int row)
{
    return CellText(cache.Row(row), PropertyNumber(kPropSubject));
}

// A hundred rows, "entry 0" to "entry 99". What a block holds is seen by changing the store behind its back.
class DisplayCacheTest : public JournalTest {
  protected:
    DisplayCacheTest()
    {
        m_ids = AddEntries(100);
        m_rowCount = 100;
    }

    std::wstring Subject(int row) const { return SubjectOf(m_cache, row); }
    static std::wstring Entry(int row) { return L"entry " + std::to_wstring(row); }

    void Rewrite(int row)
    {
        wchar_t text[] = L"changed";
        CEPROPVAL property{};
        property.propid = kPropSubject;
        property.val.lpwstr = text;
        ASSERT_NE(Own().Journal().WriteRecord(m_ids[static_cast<size_t>(row)], 1, &property), 0u);
    }

    // Whether a hint reads the rows anew. Row by row the cache shows what it did before when it does not.
    bool Refills(int from, int to, int watched, int capacity = 50)
    {
        Rewrite(watched);
        m_cache.OnHint(from, to, capacity);
        return Subject(watched) == L"changed";
    }

    std::vector<CEOID> m_ids;
    DWORD m_rowCount = 0;
    DisplayCache m_cache{Own().Journal(), m_rowCount};
};

TEST_F(DisplayCacheTest, HoldsTheRowsOfTheHint)
{
    m_cache.OnHint(10, 29, 50);
    for (int row = 10; row <= 29; ++row) {
        EXPECT_EQ(Subject(row), Entry(row));
        EXPECT_EQ(m_cache.Row(row).id, m_ids[static_cast<size_t>(row)]);
    }
    EXPECT_EQ(m_cache.Row(9).id, 0u);
    EXPECT_EQ(m_cache.Row(31).id, 0u);
    EXPECT_EQ(m_cache.Row(-1).id, 0u);
    EXPECT_EQ(m_cache.Row(INT_MAX).id, 0u);
}

TEST_F(DisplayCacheTest, ARowInNeitherBlockIsBlank)
{
    EXPECT_EQ(m_cache.Row(0).id, 0u);
    EXPECT_EQ(Subject(0), L"");
    EXPECT_EQ(m_cache.Row(0).image, -1);
}

TEST_F(DisplayCacheTest, AHintInsideTheMainBlockReadsNothing)
{
    m_cache.OnHint(10, 29, 50);
    EXPECT_FALSE(Refills(10, 29, 15));
    EXPECT_FALSE(Refills(12, 20, 16));
    EXPECT_FALSE(Refills(29, 29, 29));
}

// The test of the end is one row wider than that of the start.
TEST_F(DisplayCacheTest, TheEndOfAHintMayBeOneBehindTheMainBlock)
{
    m_cache.OnHint(10, 29, 50);
    EXPECT_FALSE(Refills(15, 30, 20));
    EXPECT_EQ(Subject(30), Entry(30)); // and it is no blank row
    EXPECT_TRUE(Refills(15, 31, 20));
}

TEST_F(DisplayCacheTest, TheStartOfAHintMayNot)
{
    m_cache.OnHint(10, 29, 50);
    EXPECT_TRUE(Refills(30, 30, 30));
    EXPECT_EQ(m_cache.Row(29).id, 0u); // the block is that of the last hint
    m_cache.OnHint(10, 29, 50);
    EXPECT_TRUE(Refills(9, 20, 12));
}

TEST_F(DisplayCacheTest, AShortHintThatReachesTheEndFillsTheTail)
{
    m_cache.OnHint(10, 29, 50);
    m_cache.OnHint(80, 99, 50);
    EXPECT_EQ(Subject(99), Entry(99));
    EXPECT_EQ(Subject(80), Entry(80));
    EXPECT_EQ(Subject(10), Entry(10)); // the main block is untouched
    EXPECT_FALSE(Refills(85, 99, 90));
    EXPECT_FALSE(Refills(80, 99, 91));
    EXPECT_TRUE(Refills(79, 99, 92));
    EXPECT_EQ(Subject(10), Entry(10));
}

TEST_F(DisplayCacheTest, ThirtyRowsAreTheMostOfATail)
{
    m_cache.OnHint(0, 9, 50);
    m_cache.OnHint(70, 99, 50); // 29 apart: the tail
    EXPECT_EQ(Subject(5), Entry(5));
    m_cache.OnHint(69, 99, 50); // 30 apart: the main block
    EXPECT_EQ(m_cache.Row(5).id, 0u);
    EXPECT_EQ(Subject(69), Entry(69));
    EXPECT_EQ(Subject(99), Entry(99));
}

TEST_F(DisplayCacheTest, AHintThatStopsShortOfTheEndIsNoTail)
{
    m_cache.OnHint(0, 9, 50);
    m_cache.OnHint(90, 98, 50);
    EXPECT_EQ(m_cache.Row(0).id, 0u);
    EXPECT_EQ(Subject(98), Entry(98));
}

TEST_F(DisplayCacheTest, TheMainBlockIsAskedFirst)
{
    m_cache.OnHint(80, 99, 50);
    Rewrite(85);
    m_cache.OnHint(60, 90, 50);
    EXPECT_EQ(Subject(85), L"changed");
    EXPECT_EQ(Subject(95), Entry(95));
}

TEST_F(DisplayCacheTest, AWiderHintIsClippedToTheBlock)
{
    m_cache.OnHint(5, 95, 50);
    EXPECT_EQ(Subject(5), Entry(5));
    EXPECT_EQ(Subject(54), Entry(54));
    EXPECT_EQ(m_cache.Row(56).id, 0u);
    m_cache.OnHint(0, INT_MAX, 50);
    EXPECT_EQ(Subject(49), Entry(49));
    EXPECT_EQ(m_cache.Row(51).id, 0u);
}

TEST_F(DisplayCacheTest, ABlockHoldsAPageWhereThatIsMore)
{
    m_cache.OnHint(0, 79, 80);
    EXPECT_EQ(Subject(79), Entry(79));
    m_cache.Clear();
    m_cache.OnHint(0, 79, 10); // and never fewer than fifty
    EXPECT_EQ(Subject(49), Entry(49));
    EXPECT_EQ(m_cache.Row(51).id, 0u);
}

TEST_F(DisplayCacheTest, RangesThatAreNoneChangeNothing)
{
    m_cache.OnHint(10, 29, 50);
    m_cache.OnHint(-1, -2, 50);
    m_cache.OnHint(20, 19, 50);
    m_cache.OnHint(-5, 5, 50);
    m_cache.OnHint(INT_MIN, INT_MAX, 50);
    m_cache.OnHint(INT_MAX, INT_MIN, 50);
    EXPECT_EQ(Subject(10), Entry(10));
    EXPECT_EQ(Subject(29), Entry(29));
    EXPECT_EQ(m_cache.Row(5).id, 0u);
}

TEST_F(DisplayCacheTest, RowsBehindTheJournalStayBlank)
{
    m_cache.OnHint(500, 520, 50);
    EXPECT_EQ(m_cache.Row(500).id, 0u);
    m_cache.OnHint(95, 104, 50);
    EXPECT_EQ(Subject(99), Entry(99));
    EXPECT_EQ(m_cache.Row(100).id, 0u);
}

TEST_F(DisplayCacheTest, ClearDropsBothBlocks)
{
    m_cache.OnHint(10, 29, 50);
    m_cache.OnHint(80, 99, 50);
    m_cache.Clear();
    EXPECT_EQ(m_cache.Row(10).id, 0u);
    EXPECT_EQ(m_cache.Row(99).id, 0u);
    EXPECT_TRUE(Refills(12, 14, 13)); // an empty block holds no row
}

TEST_F(DisplayCacheTest, EveryRowOfAHintIsThereAfterIt)
{
    std::mt19937 random(20000305);
    for (int i = 0; i < 3000; ++i) {
        const int from = static_cast<int>(random() % 100);
        const int to = std::min(99, from + static_cast<int>(random() % 50));
        m_cache.OnHint(from, to, 50);
        for (int row = from; row <= to; ++row)
            ASSERT_EQ(Subject(row), Entry(row)) << "hint " << i << ": " << from << ".." << to;
    }
}

// Forty entries, in their order now of January, now of February.
class FilteredCacheTest : public JournalTest {
  protected:
    FilteredCacheTest()
    {
        CeDBase::BulkScope bulk(Own().Journal());
        for (int i = 0; i < 40; ++i)
            TestRecord()
                .Time(kPropDate, Instant(static_cast<WORD>(1990 + i), i % 2 ? 2 : 1, 15))
                .Text(kPropSubject, L"entry " + std::to_wstring(i))
                .Write();
        EXPECT_EQ(bulk.Commit(), 1);
        m_filter.active = true;
        m_filter.monthMask = 0x2;
    }

    // Which entries the rows show after a hint on them; -1: a blank row.
    std::vector<int> Entries(int from, int to)
    {
        m_cache.Clear();
        m_cache.OnHint(from, to, 50);
        std::vector<int> entries;
        for (int row = from; row <= to; ++row) {
            const std::wstring subject = SubjectOf(m_cache, row);
            entries.push_back(subject.empty() ? -1 : std::stoi(subject.substr(6)));
        }
        return entries;
    }

    FilterState m_filter;
    DWORD m_rowCount = 20;
    DisplayCache m_cache{Own().Journal(), m_rowCount};
};

TEST_F(FilteredCacheTest, OnlyWhatPassesIsCounted)
{
    FilteredRows rows;
    rows.Apply(Own().Journal(), m_filter);
    EXPECT_EQ(CountRows(Own().Journal()), 20u);
    m_filter.active = false;
    rows.Apply(Own().Journal(), m_filter);
    EXPECT_EQ(CountRows(Own().Journal()), 40u);
}

TEST_F(FilteredCacheTest, RowsAreTheJournalsRowsUnderTheFilter)
{
    FilteredRows().Apply(Own().Journal(), m_filter);
    EXPECT_EQ(Entries(0, 4), (std::vector<int>{1, 3, 5, 7, 9}));
    EXPECT_EQ(Entries(10, 12), (std::vector<int>{21, 23, 25}));
    EXPECT_EQ(Entries(15, 19), (std::vector<int>{31, 33, 35, 37, 39})); // the tail
    EXPECT_EQ(Entries(18, 20), (std::vector<int>{37, 39, -1}));
}

// Of these a page of the file is lost, while the index still knows them.
class UnreadableRecords : public JournalTest {
  protected:
    UnreadableRecords()
    {
        CeDBase::BulkScope bulk(Own().Journal());
        for (int i = 0; i < kEntries; ++i)
            m_ids.push_back(TestRecord()
                                .Time(kPropDate, Instant(static_cast<WORD>(1990 + i), 1, 15))
                                .Text(kPropSubject, L"subject " + std::to_wstring(100 + i))
                                .Text(kPropBody, std::wstring(400, L'b'))
                                .Write());
        EXPECT_EQ(bulk.Commit(), 1);
        Own().Journal().Close();
        LosePageWith("subject 150");
        EXPECT_NE(Own().Journal().Open(nullptr), 0);
        m_rowCount = CountRows(Own().Journal());
    }

    void LosePageWith(const std::string& text)
    {
        constexpr size_t kPageSize = 4096;
        std::string bytes = ReadFileBytes(m_store.Path());
        const size_t at = bytes.find(text);
        ASSERT_NE(at, std::string::npos);
        std::fill_n(bytes.begin() + static_cast<int>(at / kPageSize * kPageSize), kPageSize, '\0');
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    }

    bool IsReadable(int row)
    {
        const CEOID id = m_ids[static_cast<size_t>(row)];
        return Own().Journal().SeekRecord(id) == id;
    }

    static constexpr int kEntries = 100;
    std::vector<CEOID> m_ids;
    FilterState m_filter;
    DWORD m_rowCount = 0;
    DisplayCache m_cache{Own().Journal(), m_rowCount};
};

TEST_F(UnreadableRecords, AreBlankRowsAmongTheOthers)
{
    ASSERT_EQ(m_rowCount, DWORD{kEntries});
    ASSERT_FALSE(IsReadable(50));
    for (const int from : {0, 45, 60}) {
        m_cache.OnHint(from, from + 39, 50);
        for (int row = from; row < from + 40; ++row) {
            const bool readable = IsReadable(row);
            EXPECT_EQ(m_cache.Row(row).id, readable ? m_ids[static_cast<size_t>(row)] : 0) << row;
            EXPECT_EQ(SubjectOf(m_cache, row), readable ? L"subject " + std::to_wstring(100 + row) : L"");
        }
    }
}

// Their dates are known from the index.
TEST_F(UnreadableRecords, AreBlankRowsUnderAFilterToo)
{
    m_filter.active = true;
    m_filter.rangeMode = true;
    m_filter.rangeStart = {2030, 1, 0, 1, 0, 0, 0, 0}; // entries 40 to 89
    m_filter.rangeEnd = {2079, 12, 0, 31, 0, 0, 0, 0};
    FilteredRows().Apply(Own().Journal(), m_filter);
    m_rowCount = CountRows(Own().Journal());
    EXPECT_EQ(m_rowCount, 50u);
    m_cache.OnHint(0, 39, 50);
    for (int row = 0; row < 40; ++row) {
        const bool readable = IsReadable(row + 40);
        EXPECT_EQ(SubjectOf(m_cache, row), readable ? L"subject " + std::to_wstring(140 + row) : L"");
    }
}

// A walk goes on where it was when a paint comes in between.
TEST_F(DisplayCacheTest, FillingLeavesTheJournalsPositionAlone)
{
    DbJournal& journal = Own().Journal();
    ASSERT_NE(journal.SeekFirstRecord(), 0);
    ASSERT_NE(journal.SeekNextRecord(), 0);
    m_cache.OnHint(50, 70, 50);
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    EXPECT_EQ(journal.ReadRecord(&count, nullptr, &properties), m_ids[1]);
    LocalFree(properties);
    ASSERT_NE(journal.SeekNextRecord(), 0);
    FilterState filter;
    filter.active = true;
    filter.monthMask = 1;
    FilteredRows().Apply(journal, filter);
    EXPECT_EQ(CountRows(journal), 100u);
    count = 0;
    EXPECT_EQ(journal.ReadRecord(&count, nullptr, &properties), m_ids[2]);
    LocalFree(properties);
}

TEST_F(DisplayCacheTest, AClosedJournalGivesBlankRows)
{
    Own().Journal().Close();
    m_cache.OnHint(0, 9, 50);
    EXPECT_EQ(m_cache.Row(0).id, 0u);
    EXPECT_EQ(CountRows(Own().Journal()), 0u);
}

TEST_F(DisplayCacheTest, GivesBackEachRecordThatItReads)
{
    const LiveBlocks blocks;
    m_cache.OnHint(0, 49, 50);
    ASSERT_EQ(Subject(49), Entry(49));
    EXPECT_GE(blocks.Taken(), 50u);
    EXPECT_EQ(blocks.Count(), 0u);
}

} // namespace
