// Walks: what happens to them when records change on the way.
#include <gtest/gtest.h>

#include "records.h"
#include "statement_log.h"
#include "support/test_store.h"

namespace {

class Walks : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        for (uint64_t i = 0; i < 5; ++i)
            m_ids.push_back(AddEntry(m_journal, L"s" + std::to_wstring(i), i + 1));
    }
    CEOID Current() { return Received(m_journal).Id(); }
    // What the walk still comes to.
    std::vector<CEOID> Rest()
    {
        std::vector<CEOID> rest;
        while (m_journal.SeekNextRecord())
            rest.push_back(Current());
        return rest;
    }
    std::vector<CEOID> From(size_t index) const
    {
        return {m_ids.begin() + static_cast<int>(index), m_ids.end()};
    }

    TestStore m_store;
    DbJournal m_journal;
    std::vector<CEOID> m_ids;
};

TEST_F(Walks, ReadNothingWhenThereAreNoRecords)
{
    for (const CEOID id : m_ids)
        EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    EXPECT_EQ(m_journal.SeekFirstRecord(), 0);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(Current(), 0u);
}

TEST_F(Walks, EndBehindTheLastRecord)
{
    EXPECT_NE(m_journal.SeekFirstRecord(), 0);
    EXPECT_EQ(Rest(), From(1));
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    EXPECT_NE(m_journal.SeekFirstRecord(), 0);
    EXPECT_EQ(Current(), m_ids[0]);
}

TEST_F(Walks, NeedAPlaceToGoOnFrom)
{
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(m_journal.SeekRecord(m_ids[2]), m_ids[2]);
    EXPECT_EQ(Rest(), From(3));
    EXPECT_EQ(m_journal.SeekRow(1), m_ids[1]);
    EXPECT_EQ(Current(), m_ids[1]);
    EXPECT_EQ(Rest(), From(2));
    EXPECT_EQ(m_journal.SeekRow(5), 0u);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
}

TEST_F(Walks, GoOnBehindADeletedRecord)
{
    for (const bool inScope : {false, true}) {
        std::optional<CeDBase::ReadScope> scope;
        if (inScope)
            scope.emplace(m_journal);
        m_ids = Rows(m_journal);
        ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
        EXPECT_EQ(m_journal.DeleteRecord(m_ids[1]), 1);
        EXPECT_EQ(Current(), 0u);
        EXPECT_EQ(Rest(), From(2));
    }
}

TEST_F(Walks, GoOnBehindADeletedRecordThatWasSought)
{
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(nullptr), 1); // no order yet
    ASSERT_EQ(m_journal.SeekRecord(m_ids[1]), m_ids[1]);
    EXPECT_EQ(m_journal.DeleteRecord(m_ids[1]), 1);
    EXPECT_EQ(Rest(), From(2));
}

TEST_F(Walks, PassOverAllThatIsDeletedAhead)
{
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    for (const size_t gone : {0u, 1u, 2u, 4u})
        EXPECT_EQ(m_journal.DeleteRecord(m_ids[gone]), 1);
    EXPECT_EQ(Rest(), std::vector<CEOID>{m_ids[3]});
}

TEST_F(Walks, EndWhenAllThatFollowedIsDeleted)
{
    ASSERT_EQ(m_journal.SeekRow(2), m_ids[2]);
    for (const size_t gone : {2u, 3u, 4u})
        EXPECT_EQ(m_journal.DeleteRecord(m_ids[gone]), 1);
    EXPECT_EQ(Rest(), std::vector<CEOID>{});
}

TEST_F(Walks, PassOverWhatAnotherProgramDeleted)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("DELETE FROM journal WHERE oid IN (2, 3)"));
    }
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(Rest(), From(3));
}

TEST_F(Walks, GoOnFromTheOldRowWhenTheRecordMoves)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    ASSERT_EQ(Sent().Time(kDate, 100).Write(m_journal, m_ids[1]), m_ids[1]);
    EXPECT_EQ(Current(), m_ids[1]);
    EXPECT_EQ(m_journal.RowOf(m_ids[1]), 4);
    EXPECT_EQ(Rest(), (std::vector<CEOID>{m_ids[2], m_ids[3], m_ids[4], m_ids[1]}));
}

// The deletion that comes too late is a true "no", and no step of the walk.
TEST_F(Walks, GoOnBehindARecordThatIsDeletedTwice)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    ASSERT_TRUE(RawStore(m_store.Path()).Run("DELETE FROM journal WHERE oid = 2"));
    EXPECT_EQ(m_journal.DeleteRecord(m_ids[1]), 0);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(Rest(), From(2));
}

// There was no order yet in which it had a place.
TEST_F(Walks, EndOnARecordThatWasSoughtAndIsGone)
{
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    ASSERT_EQ(m_journal.SeekRecord(m_ids[1]), m_ids[1]);
    ASSERT_TRUE(RawStore(m_store.Path()).Run("DELETE FROM journal WHERE oid = 2"));
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(Rest(), std::vector<CEOID>{});
    EXPECT_EQ(m_journal.SeekFirstRecord(), 1);
    EXPECT_EQ(Rest(), From(2));
}

// By a tool that keeps no ledger: what has become of each record is not known, only how they lie now.
class WalksInAnOrderThatAToolChanges : public Walks {
  protected:
    void Change(const std::string& sql) const { ASSERT_TRUE(RawStore(m_store.Path()).Run(sql)); }
    void SetDate(size_t index, int date) const
    {
        Change("UPDATE journal SET date = " + std::to_string(date) +
               " WHERE oid = " + std::to_string(m_ids[index]));
    }
};

TEST_F(WalksInAnOrderThatAToolChanges, LoseNothingWhereTheirRecordMovesAhead)
{
    for (const size_t from : {0u, 1u, 3u}) {
        ASSERT_EQ(m_journal.SeekRow(static_cast<uint32_t>(from)), m_ids[from]);
        SetDate(from, 100);
        std::vector<CEOID> expected = From(from + 1);
        expected.push_back(m_ids[from]);
        EXPECT_EQ(Rest(), expected) << "and come to it again";
        SetDate(from, static_cast<int>(from) + 1);
    }
}

TEST_F(WalksInAnOrderThatAToolChanges, DoNotBeginAnewWhereTheirRecordMovesBack)
{
    for (const size_t from : {1u, 3u, 4u}) {
        ASSERT_EQ(m_journal.SeekRow(static_cast<uint32_t>(from)), m_ids[from]);
        SetDate(from, 0);
        EXPECT_EQ(Rest(), From(from + 1));
        SetDate(from, static_cast<int>(from) + 1);
    }
}

TEST_F(WalksInAnOrderThatAToolChanges, GoOnBehindTheirRecordWhereAnotherOneMoves)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    SetDate(2, 0);
    EXPECT_EQ(Rest(), From(3)) << "the next one is behind the walk now";
    SetDate(2, 3);
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    SetDate(0, 100);
    EXPECT_EQ(Rest(), (std::vector<CEOID>{m_ids[2], m_ids[3], m_ids[4], m_ids[0]}))
        << "the one before is ahead";
}

TEST_F(WalksInAnOrderThatAToolChanges, ComeToWhatIsNewBehindTheirRecord)
{
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    Change("INSERT INTO journal(date) VALUES(2)");
    EXPECT_EQ(Rest(), (std::vector<CEOID>{6, m_ids[2], m_ids[3], m_ids[4]}));
}

// The one that moved is the walk's, and the ones on both sides of it are gone.
TEST_F(WalksInAnOrderThatAToolChanges, GoByTheNearestThatIsLeft)
{
    ASSERT_EQ(m_journal.SeekRow(2), m_ids[2]);
    Change("DELETE FROM journal WHERE oid IN (2, 4); UPDATE journal SET date = 100 WHERE oid = 3");
    EXPECT_EQ(Rest(), (std::vector<CEOID>{m_ids[4], m_ids[2]}));
}

TEST_F(Walks, ComeToEveryRecordWhileThePropertySortedByIsRemoved)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID category = AddCategory(categories, L"c");
    for (const CEOID id : m_ids)
        ASSERT_EQ(Sent().Ids(kCategories, {category}).Write(m_journal, id), id);
    m_journal.SetSort({kCategories, 0}, 1);
    for (int found = m_journal.SeekFirstRecord(); found; found = m_journal.SeekNextRecord()) {
        const Received read(m_journal, std::vector<CEPROPID>{kCategories});
        if (read.Find(kCategories)) {
            ASSERT_EQ(Sent().Delete(kCategories).Write(m_journal, read.Id()), read.Id());
        }
    }
    for (const CEOID id : m_ids)
        EXPECT_EQ(Received(m_journal, id).Find(kCategories), nullptr);
}

// As the program clears all assignments: the property that was read, flagged, is sent back.
TEST_F(Walks, ClearAPropertyWithWhatTheyRead)
{
    for (const size_t with : {0u, 2u, 3u})
        ASSERT_EQ(Sent().Ids(kCategories, {1, 2}).Write(m_journal, m_ids[with]), m_ids[with]);
    std::vector<CEOID> cleared;
    for (int found = m_journal.SeekFirstRecord(); found; found = m_journal.SeekNextRecord()) {
        WORD count = 1;
        CEPROPVAL* read = nullptr;
        const CEOID id = m_journal.ReadRecord(&count, &kCategories, &read);
        ASSERT_NE(id, 0u);
        ASSERT_EQ(count, 1);
        if (!(read->wFlags & CEDB_PROPNOTFOUND)) {
            read->wFlags = CEDB_PROPDELETE;
            EXPECT_EQ(m_journal.WriteRecord(id, 1, read), id);
            cleared.push_back(id);
        }
        LocalFree(read);
    }
    EXPECT_EQ(cleared, (std::vector<CEOID>{m_ids[0], m_ids[2], m_ids[3]}));
    for (const CEOID id : m_ids)
        EXPECT_EQ(Received(m_journal, id).Ids(), (std::vector<CEPROPID>{kDate, kSubject}));
}

TEST_F(Walks, GoOnInTheNewSort)
{
    m_journal.SetSort({kDate, CEDB_SORT_DESCENDING}, 1);
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[3]);
    m_journal.SetSort({kDate, 0}, 1);
    EXPECT_EQ(Rest(), std::vector<CEOID>{m_ids[4]});
}

TEST_F(Walks, ComeToWhatIsAddedAhead)
{
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    const CEOID added = AddEntry(m_journal, L"new", 99);
    std::vector<CEOID> expected = From(1);
    expected.push_back(added);
    EXPECT_EQ(Rest(), expected);
}

TEST_F(Walks, DoNotDisturbEachOther)
{
    DbJournal other;
    ASSERT_EQ(other.Open(nullptr), 1);
    ASSERT_EQ(m_journal.SeekRow(1), m_ids[1]);
    ASSERT_EQ(other.SeekRow(3), m_ids[3]);
    EXPECT_EQ(m_journal.DeleteRecord(m_ids[3]), 1);
    EXPECT_EQ(other.SeekNextRecord(), 1);
    EXPECT_EQ(Received(other).Id(), m_ids[4]);
    EXPECT_EQ(Rest(), (std::vector<CEOID>{m_ids[2], m_ids[4]}));
}

TEST_F(Walks, SeeOneStateInsideAScope)
{
    const CeDBase::ReadScope scope(m_journal);
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("DELETE FROM journal"));
    }
    EXPECT_EQ(Rest(), From(1));
    EXPECT_EQ(m_journal.RecordCount(), 5u);
}

TEST_F(Walks, AllowWritesInsideAScopeAlsoWhenAnotherProgramHasWritten)
{
    const CeDBase::ReadScope scope(m_journal);
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("DELETE FROM journal WHERE oid = 4"));
    }
    // The write renews the view.
    ASSERT_EQ(Sent().Text(kSubject, L"new").Write(m_journal, m_ids[0]), m_ids[0]);
    EXPECT_STREQ(m_journal.GetSubject(m_ids[0]), L"new");
    EXPECT_EQ(m_journal.RecordCount(), 4u);
    EXPECT_EQ(Rest(), (std::vector<CEOID>{m_ids[1], m_ids[2], m_ids[4]}));
    EXPECT_EQ(Sent().Text(kSubject, L"x").Write(m_journal, m_ids[3]), 0u);
    EXPECT_NE(AddEntry(m_journal, L"more"), 0u);
}

TEST_F(Walks, NoticeOutsideAScopeWhatAnotherProgramWrites)
{
    EXPECT_EQ(m_journal.RecordCount(), 5u);
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("INSERT INTO journal(date) VALUES(0)"));
    EXPECT_EQ(m_journal.RecordCount(), 6u);
    EXPECT_EQ(m_journal.IdOfRow(0), 6u);
    ASSERT_TRUE(raw.Run("UPDATE journal SET date = 1000 WHERE oid = 6"));
    EXPECT_EQ(m_journal.RowOf(6), 5);
    ASSERT_TRUE(raw.Run("DELETE FROM journal WHERE oid = 6"));
    EXPECT_EQ(m_journal.RowOf(6), -1);
}

TEST_F(Walks, ScopesNestAndOutliveTheirDatabase)
{
    const CeDBase::ReadScope outer(m_journal);
    {
        const CeDBase::ReadScope inner(m_journal);
        EXPECT_EQ(m_journal.RecordCount(), 5u);
    }
    EXPECT_EQ(m_journal.RecordCount(), 5u);
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    EXPECT_EQ(m_journal.RecordCount(), 5u);
}

class Bulk : public Walks {};

TEST_F(Bulk, IsAllOrNothing)
{
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"a", 50), 0u);
        EXPECT_EQ(m_journal.DeleteRecord(m_ids[0]), 1);
        EXPECT_EQ(m_journal.RecordCount(), 5u);
        EXPECT_EQ(m_journal.RowOf(m_ids[1]), 0);
    }
    EXPECT_EQ(Rows(m_journal), m_ids);
    CeDBase::BulkScope bulk(m_journal);
    const CEOID added = AddEntry(m_journal, L"a", 50);
    EXPECT_EQ(m_journal.DeleteRecord(m_ids[0]), 1);
    EXPECT_EQ(RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal WHERE oid = 1"), 1) << "not yet";
    ASSERT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(bulk.Commit(), 0);
    std::vector<CEOID> expected = From(1);
    expected.push_back(added);
    EXPECT_EQ(Rows(m_journal), expected);
    EXPECT_EQ(RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal WHERE oid = 1"), 0);
}

TEST_F(Bulk, NestsAndFailsAsAWhole)
{
    CeDBase::BulkScope outer(m_journal);
    ASSERT_NE(AddEntry(m_journal, L"outer"), 0u);
    {
        CeDBase::BulkScope inner(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"kept inside"), 0u);
        EXPECT_EQ(inner.Commit(), 1);
    }
    {
        CeDBase::BulkScope inner(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"given up"), 0u);
    }
    EXPECT_EQ(AddEntry(m_journal, L"too late"), 0u);
    EXPECT_EQ(outer.Commit(), 0);
    EXPECT_EQ(Rows(m_journal), m_ids);
    EXPECT_NE(AddEntry(m_journal, L"as ever"), 0u);
}

TEST_F(Bulk, WorksInsideAScopeAndAroundOne)
{
    {
        const CeDBase::ReadScope scope(m_journal);
        ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
        CeDBase::BulkScope bulk(m_journal);
        for (const CEOID id : m_ids)
            ASSERT_EQ(Sent().Number(kPriority, 1).Write(m_journal, id), id);
        ASSERT_EQ(bulk.Commit(), 1);
        EXPECT_EQ(Rest(), From(1));
    }
    CeDBase::BulkScope bulk(m_journal);
    {
        const CeDBase::ReadScope scope(m_journal);
        EXPECT_EQ(m_journal.RecordCount(), 5u);
    }
    ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
    ASSERT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal"), 6);
}

TEST_F(Bulk, GivesUpWhatAWalkSaw)
{
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"a", 0), 0u);
        ASSERT_EQ(m_journal.SeekFirstRecord(), 1); // the new one, which goes again
    }
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(Rest(), m_ids);
}

// A row is a place in an order that is in memory: a page costs the same wherever it is.
TEST(Rows, CostNoStatementOnceTheirOrderIsThere)
{
    constexpr uint32_t kMany = 2'000;
    StatementLog log;
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    std::vector<CEOID> ids;
    {
        CeDBase::BulkScope bulk(journal);
        for (uint64_t i = 0; i < kMany; ++i)
            ids.push_back(AddEntry(journal, L"s", i + 1));
        ASSERT_EQ(bulk.Commit(), 1);
    }
    const CeDBase::ReadScope scope(journal);
    ASSERT_EQ(journal.IdOfRow(0), ids[0]);
    ASSERT_FALSE(log.Take().empty());
    for (const uint32_t row : {0u, kMany / 2, kMany - 1}) {
        EXPECT_EQ(journal.IdOfRow(row), ids[row]);
        EXPECT_EQ(journal.RowOf(ids[row]), static_cast<int>(row));
    }
    EXPECT_EQ(log.Take(), std::vector<std::string>{});
}

} // namespace
