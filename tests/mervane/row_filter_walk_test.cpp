// Walks through a journal under a filter.
#include "row_filter_fixture.h"

namespace {

class FilteredWalks : public RowFilters {
  protected:
    void SetUp() override
    {
        RowFilters::SetUp();
        AddDates({1, 2, 3, 4, 5, 6});
        ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u); // rows: 3 6 1 2 4 5
    }
};

TEST_F(FilteredWalks, FromTheFirstRecordComeToAllInTheSortOrder)
{
    EXPECT_EQ(Walk(m_journal), m_ids);
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    EXPECT_EQ(Current(), m_ids[0]);
}

TEST_F(FilteredWalks, FromARecordGoOnInTheSortOrder)
{
    ASSERT_EQ(m_journal.SeekRecord(m_ids[2]), m_ids[2]);
    EXPECT_EQ(Rest(), Entries({3, 4, 5}));
    // Also from one that was come to by its row.
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[5]);
    ASSERT_EQ(m_journal.SeekRecord(m_ids[0]), m_ids[0]);
    EXPECT_EQ(Rest(), Entries({1, 2, 3, 4, 5}));
}

TEST_F(FilteredWalks, FromARowGoOnRowByRow)
{
    ASSERT_EQ(m_journal.SeekRow(0), m_ids[2]);
    EXPECT_EQ(Rest(), Entries({5, 0, 1, 3, 4}));
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[5]);
    EXPECT_EQ(Rest(), Entries({0, 1, 3, 4}));
    EXPECT_EQ(m_journal.SeekRow(6), 0u);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
}

TEST_F(FilteredWalks, LookingUpRowsDisturbsNone)
{
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    EXPECT_EQ(m_journal.IdOfRow(0), m_ids[2]);
    EXPECT_EQ(m_journal.RowOf(m_ids[0]), 2);
    EXPECT_EQ(m_journal.PassingRows(), 2u);
    EXPECT_EQ(Rest(), Entries({1, 2, 3, 4, 5}));
}

TEST_F(FilteredWalks, RowByRowGoOnBehindARecordThatChangesGroups)
{
    ASSERT_EQ(m_journal.SeekRow(0), m_ids[2]);
    ASSERT_EQ(Sent().Time(kDate, 100).Write(m_journal, m_ids[2]), m_ids[2]);
    EXPECT_EQ(Current(), m_ids[2]);
    EXPECT_EQ(Rest(), Entries({5, 0, 1, 3, 4, 2}));
}

TEST_F(FilteredWalks, RowByRowGoOnBehindOneThatIsMovedByItsGroupAlone)
{
    SortBy(kSubject);
    ASSERT_EQ(m_journal.SeekRow(3), m_ids[1]);
    ASSERT_EQ(Sent().Time(kDate, 30).Write(m_journal, m_ids[1]), m_ids[1]);
    EXPECT_EQ(Rows(m_plain), m_ids); // as before
    EXPECT_EQ(Rest(), Entries({3, 4}));
}

TEST_F(FilteredWalks, RowByRowGoOnBehindOneThatBecomesEmpty)
{
    m_ids.push_back(Sent().Text(kSubject, L"only").Write(m_journal));
    ASSERT_NE(m_journal.SetRowFilter({kCategories, [](const CEPROPVAL*) { return false; }, true}), 0u);
    ASSERT_EQ(m_journal.SeekRow(6), m_ids[6]);
    ASSERT_EQ(Sent().Delete(kSubject).Write(m_journal, m_ids[6]), m_ids[6]);
    EXPECT_EQ(m_journal.RowOf(m_ids[6]), 0);
    EXPECT_EQ(Rest(), std::vector<CEOID>{});
}

TEST_F(FilteredWalks, InTheSortOrderAreNotMovedByGroups)
{
    ASSERT_EQ(m_journal.SeekRecord(m_ids[1]), m_ids[1]);
    ASSERT_NE(m_journal.SetRowFilter({kPriority, [](const CEPROPVAL* v) { return v != nullptr; }}), 0u);
    ASSERT_EQ(m_journal.PassingRows(), 0u);
    ASSERT_EQ(Sent().Number(kPriority, 1).Write(m_journal, m_ids[1]), m_ids[1]);
    const CEOID between = AddEntry(m_journal, L"n", 2);
    EXPECT_EQ(m_journal.RowOf(m_ids[1]), 0);
    EXPECT_EQ(Rest(), (std::vector<CEOID>{between, m_ids[2], m_ids[3], m_ids[4], m_ids[5]}));
}

TEST_F(FilteredWalks, RowByRowGoOnBehindDeletedRecords)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[5]);
    ASSERT_EQ(m_journal.DeleteRecord(m_ids[5]), 1);
    ASSERT_EQ(m_journal.DeleteRecord(m_ids[0]), 1); // which would have followed
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(Rest(), Entries({1, 3, 4}));
}

TEST_F(FilteredWalks, RowByRowPassOverWhatAnotherProgramDeleted)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[5]);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("DELETE FROM journal WHERE oid IN (1, 6)"));
    }
    EXPECT_EQ(Rest(), Entries({1, 3, 4}));
}

TEST_F(FilteredWalks, InTheSortOrderPassOverWhatAnotherProgramDeleted)
{
    ASSERT_EQ(m_journal.SeekRecord(m_ids[2]), m_ids[2]);
    ASSERT_EQ(m_journal.RowOf(m_ids[2]), 0);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("DELETE FROM journal WHERE oid IN (3, 4)"));
    }
    EXPECT_EQ(Rest(), Entries({4, 5}));
}

TEST_F(FilteredWalks, RowByRowGoOnByTheRowsOfANewFilter)
{
    ASSERT_EQ(m_journal.SeekRow(0), m_ids[2]);
    ASSERT_NE(m_journal.SetRowFilter({kDate, [](const CEPROPVAL* v) { return v && !IsThird(v); }}), 0u);
    EXPECT_EQ(Current(), m_ids[2]);
    EXPECT_EQ(Rest(), Entries({5})); // rows: 1 2 4 5 3 6
    ASSERT_EQ(m_journal.SeekRow(0), m_ids[0]);
    m_journal.ClearRowFilter();
    EXPECT_EQ(Rest(), Entries({1, 2, 3, 4, 5}));
    ASSERT_EQ(m_journal.SeekRow(3), m_ids[3]);
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    EXPECT_EQ(Rest(), Entries({4}));
}

TEST_F(FilteredWalks, InTheSortOrderGoOnWhateverTheFilterBecomes)
{
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    std::vector<CEOID> met = {Current()};
    for (int step = 0; m_journal.SeekNextRecord(); ++step) {
        met.push_back(Current());
        if (step % 2)
            m_journal.ClearRowFilter();
        else
            ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
        EXPECT_EQ(m_journal.IdOfRow(0), step % 2 ? m_ids[0] : m_ids[2]);
    }
    EXPECT_EQ(met, m_ids);
}

} // namespace
