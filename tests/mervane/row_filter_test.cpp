// Rows under a filter.
#include "mervane/row_filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "records.h"
#include "support/test_store.h"

namespace {

// Dates that divide by three.
bool IsThird(const CEPROPVAL* value)
{
    return value && CountOf(value->val.filetime) % 3 == 0;
}

// Whether a blob is a count and words of which one is the wanted one.
bool HasWord(const CEPROPVAL* value, DWORD wanted)
{
    if (!value || value->val.blob.dwCount < sizeof(DWORD))
        return false;
    std::vector<DWORD> words(value->val.blob.dwCount / sizeof(DWORD));
    memcpy(words.data(), value->val.blob.lpb, words.size() * sizeof(DWORD));
    return std::find(words.begin() + 1, words.end(), wanted) != words.end();
}

class RowFilters : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        ASSERT_EQ(m_plain.Open(nullptr), 1);
    }
    void AddDates(const std::vector<uint64_t>& dates)
    {
        for (const uint64_t date : dates)
            m_ids.push_back(AddEntry(m_journal, L"s", date));
    }
    void SortBy(CEPROPID property, DWORD flags = 0)
    {
        m_journal.SetSort({property, flags}, 1);
        m_plain.SetSort({property, flags}, 1);
    }
    CEOID Current() { return Received(m_journal).Id(); }
    std::vector<CEOID> Rest()
    {
        std::vector<CEOID> rest;
        while (m_journal.SeekNextRecord())
            rest.push_back(Current());
        return rest;
    }
    // The identifiers of the entries with these numbers, in the order of their making.
    std::vector<CEOID> Entries(const std::vector<size_t>& numbers) const
    {
        std::vector<CEOID> ids;
        for (const size_t number : numbers)
            ids.push_back(m_ids[number]);
        return ids;
    }
    // The plain order, parted by what each record's property reads as.
    std::vector<CEOID> Parted(const RowFilter& filter, uint32_t* passing)
    {
        std::vector<CEOID> first, others;
        for (const CEOID id : Walk(m_plain)) {
            const Received all(m_plain, id);
            const CEPROPVAL* value = all.Find(filter.property);
            const bool passes = filter.passes(value) || (filter.emptyPasses && all.Count() == 0);
            (passes ? first : others).push_back(id);
        }
        *passing = static_cast<uint32_t>(first.size());
        first.insert(first.end(), others.begin(), others.end());
        return first;
    }
    void ExpectRows(const std::vector<CEOID>& expected, uint32_t passing)
    {
        const CeDBase::ReadScope scope(m_journal);
        ASSERT_EQ(m_journal.PassingRows(), passing);
        ASSERT_EQ(Rows(m_journal), expected);
        for (size_t row = 0; row < expected.size(); ++row) {
            ASSERT_EQ(m_journal.RowOf(expected[row]), static_cast<int>(row));
            ASSERT_EQ(m_journal.IdOfRow(static_cast<uint32_t>(row)), expected[row]);
        }
        EXPECT_EQ(m_journal.IdOfRow(static_cast<uint32_t>(expected.size())), 0u);
        EXPECT_EQ(m_journal.RecordCount(), expected.size());
    }
    void ExpectPartedRows(const RowFilter& filter)
    {
        uint32_t passing = 0;
        const std::vector<CEOID> expected = Parted(filter, &passing);
        ExpectRows(expected, passing);
    }

    TestStore m_store;
    DbJournal m_journal;
    DbJournal m_plain; // never under a filter
    std::vector<CEOID> m_ids;
};

TEST_F(RowFilters, PutFirstWhatPassesEachGroupInTheSortOrder)
{
    AddDates({5, 3, 9, 4, 6, 1});
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    ExpectRows(Entries({1, 4, 2, 5, 3, 0}), 3);
    SortBy(kDate, CEDB_SORT_DESCENDING);
    ExpectRows(Entries({2, 4, 1, 0, 3, 5}), 3);
    m_journal.ClearRowFilter();
    ExpectRows(Entries({2, 4, 0, 3, 1, 5}), 6);
    EXPECT_EQ(Rows(m_plain), Entries({2, 4, 0, 3, 1, 5}));
}

TEST_F(RowFilters, MayPassNothingOrEverything)
{
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    ExpectRows({}, 0);
    AddDates({2, 1});
    ExpectRows(Entries({1, 0}), 0);
    ASSERT_NE(m_journal.SetRowFilter({kDate, [](const CEPROPVAL*) { return true; }}), 0u);
    ExpectRows(Entries({1, 0}), 2);
}

TEST_F(RowFilters, ThatMakeNoSenseAreRefused)
{
    AddDates({1, 3});
    const uint32_t stamp = m_journal.SetRowFilter({kDate, IsThird});
    ASSERT_NE(stamp, 0u);
    const auto always = [](const CEPROPVAL*) { return true; };
    for (const CEPROPID property : {CEPROPID{0}, kSubject, MakePropertyId(101, CEVT_I2), kCategoriesKey})
        EXPECT_EQ(m_journal.SetRowFilter({property, always}), 0u);
    EXPECT_EQ(m_journal.SetRowFilter({kDate, nullptr}), 0u);
    EXPECT_EQ(m_journal.RowFilterStamp(), stamp);
    ExpectRows(Entries({1, 0}), 1);
}

TEST_F(RowFilters, EndWithTheDatabaseAndHaveEachAStampOfTheirOwn)
{
    AddDates({1, 3});
    EXPECT_EQ(m_journal.RowFilterStamp(), 0u);
    const uint32_t first = m_journal.SetRowFilter({kDate, IsThird});
    EXPECT_EQ(m_journal.RowFilterStamp(), first);
    m_journal.ClearRowFilter();
    EXPECT_EQ(m_journal.RowFilterStamp(), 0u);
    const uint32_t second = m_journal.SetRowFilter({kDate, IsThird});
    EXPECT_NE(second, first);
    m_journal.Close();
    EXPECT_EQ(m_journal.RowFilterStamp(), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 0u);
    EXPECT_EQ(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    m_journal.ClearRowFilter();
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    ExpectRows(Entries({0, 1}), 2);
    const uint32_t third = m_journal.SetRowFilter({kDate, IsThird});
    EXPECT_NE(third, first);
    EXPECT_NE(third, second);
}

TEST_F(RowFilters, AreEachDatabaseObjectsOwn)
{
    AddDates({3, 4, 5, 6});
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    ASSERT_NE(m_plain.SetRowFilter({kDate, [](const CEPROPVAL* v) { return v && !IsThird(v); }}), 0u);
    EXPECT_EQ(Rows(m_journal), Entries({0, 3, 1, 2}));
    EXPECT_EQ(Rows(m_plain), Entries({1, 2, 0, 3}));
    ASSERT_EQ(Sent().Time(kDate, 7).Write(m_journal, m_ids[0]), m_ids[0]);
    EXPECT_EQ(Rows(m_journal), Entries({3, 1, 2, 0}));
    EXPECT_EQ(Rows(m_plain), Entries({1, 2, 0, 3}));
    EXPECT_EQ(m_plain.PassingRows(), 3u);
}

TEST_F(RowFilters, SeeNumbersAsReadsGiveThem)
{
    std::vector<int> seen;
    for (const int priority : {2, -5, 0, 32767, -32768})
        ASSERT_NE(Sent().Number(kPriority, priority).Write(m_journal), 0u);
    ASSERT_NE(Sent().Time(kDate, 1).Write(m_journal), 0u);
    ASSERT_NE(Sent().Number(kKind, 65535).Write(m_journal), 0u);
    const auto look = [&seen](const CEPROPVAL* value) {
        if (value)
            seen.push_back(PropertyType(value->propid) == CEVT_UI2 ? int{value->val.uiVal}
                                                                   : int{value->val.iVal});
        return true;
    };
    ASSERT_NE(m_journal.SetRowFilter({kPriority, look}), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 7u);
    EXPECT_EQ(seen, (std::vector<int>{2, -5, 0, 32767, -32768}));
    seen.clear();
    ASSERT_NE(m_journal.SetRowFilter({kKind, look}), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 7u);
    EXPECT_EQ(seen, std::vector<int>{65535});
}

TEST_F(RowFilters, SeeTimesWhole)
{
    const std::vector<uint64_t> dates = {0,           1, 0xFFFFFFFF, 0x1'0000'0000, 0x8000'0000'0000'0000,
                                         ~uint64_t{0}};
    AddDates(dates);
    std::vector<uint64_t> seen;
    ASSERT_NE(m_journal.SetRowFilter({kDate,
                                      [&](const CEPROPVAL* value) {
                                          EXPECT_EQ(value->propid, kDate);
                                          EXPECT_EQ(value->wFlags, 0);
                                          seen.push_back(CountOf(value->val.filetime));
                                          return true;
                                      }}),
              0u);
    EXPECT_EQ(m_journal.PassingRows(), dates.size());
    EXPECT_EQ(seen, dates);
}

TEST_F(RowFilters, TakeOddCellsAsMissing)
{
    AddDates({3, 3, 3, 3});
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("UPDATE journal SET date = 'three', categories = 'words' WHERE oid = 1;"
                            "UPDATE journal SET date = 2.5, categories = 7 WHERE oid = 2;"
                            "UPDATE journal SET date = NULL, categories = x'' WHERE oid = 3;"));
    }
    const auto lacks = [](const CEPROPVAL* value) { return !value; };
    ASSERT_NE(m_journal.SetRowFilter({kDate, lacks}), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 3u);
    EXPECT_EQ(m_journal.RowOf(m_ids[3]), 3);
    ASSERT_NE(m_journal.SetRowFilter({kCategories, lacks}), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 3u);
    EXPECT_EQ(m_journal.RowOf(m_ids[2]), 3) << "an empty blob is one";
}

TEST_F(RowFilters, SeeBlobsByteByByte)
{
    const std::vector<std::vector<BYTE>> blobs = {{1}, {}, {0, 0, 0, 0, 0}, std::vector<BYTE>(5000, 0xAB)};
    for (const auto& blob : blobs)
        ASSERT_NE(Sent().Blob(kCategories, blob).Write(m_journal), 0u);
    std::vector<std::vector<BYTE>> seen;
    ASSERT_NE(m_journal.SetRowFilter({kCategories,
                                      [&](const CEPROPVAL* value) {
                                          EXPECT_EQ(value->propid, kCategories);
                                          const CEBLOB& blob = value->val.blob;
                                          seen.emplace_back(blob.lpb, blob.lpb + blob.dwCount);
                                          return false;
                                      }}),
              0u);
    EXPECT_EQ(m_journal.PassingRows(), 0u);
    EXPECT_EQ(seen, blobs);
}

// Beyond what is kept of each in memory.
TEST_F(RowFilters, SeeLongBlobsWhole)
{
    std::vector<DWORD> words(20'000);
    for (DWORD i = 0; i < words.size(); ++i)
        words[i] = i + 10;
    for (const DWORD last : {5u, 6u}) {
        words.back() = last;
        m_ids.push_back(Sent().Ids(kCategories, words).Write(m_journal));
        ASSERT_NE(m_ids.back(), 0u);
    }
    ASSERT_NE(m_journal.SetRowFilter({kCategories, [](const CEPROPVAL* v) { return HasWord(v, 6); }}), 0u);
    ExpectRows(Entries({1, 0}), 1);
    ASSERT_EQ(Sent().Ids(kCategories, words).Write(m_journal, m_ids[0]), m_ids[0]);
    ExpectRows(Entries({0, 1}), 2);
}

// What was kept when there were few records is given up when many long ones have come.
TEST_F(RowFilters, FollowManyLongBlobs)
{
    const RowFilter filter{kCategories, [](const CEPROPVAL* v) { return HasWord(v, 6); }};
    ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 0u);
    for (DWORD i = 0; i < 900;) {
        CeDBase::BulkScope bulk(m_journal);
        for (const DWORD end = i + 150; i < end; ++i) {
            std::vector<DWORD> words(4000, 9);
            words.back() = i % 2 ? 6 : 5;
            ASSERT_NE(Sent().Time(kDate, i).Ids(kCategories, words).Write(m_journal), 0u);
        }
        ASSERT_EQ(bulk.Commit(), 1);
    }
    ExpectPartedRows(filter);
}

TEST_F(RowFilters, LetRecordsWithoutAnyPropertyPassWhereTheySaySo)
{
    const auto never = [](const CEPROPVAL*) { return false; };
    for (int i = 0; i < 4; ++i)
        m_ids.push_back(m_journal.WriteRecord(0, 0, nullptr));
    ASSERT_EQ(Sent().Text(kBody, L"").Write(m_journal, m_ids[1]), m_ids[1]);
    ASSERT_EQ(Sent().Blob(kContacts, {}).Write(m_journal, m_ids[2]), m_ids[2]);
    ASSERT_NE(m_journal.SetRowFilter({kCategories, never, true}), 0u);
    ExpectRows(Entries({0, 3, 1, 2}), 2);
    ASSERT_NE(m_journal.SetRowFilter({kCategories, never, false}), 0u);
    ExpectRows(Entries({0, 1, 2, 3}), 0);
}

TEST_F(RowFilters, NoticeThatARecordLosesOrGainsItsOnlyProperty)
{
    const RowFilter filter{kCategories, [](const CEPROPVAL*) { return false; }, true};
    ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
    for (int i = 0; i < 3; ++i)
        m_ids.push_back(Sent().Number(kPriority, 1).Write(m_journal));
    ExpectRows(Entries({0, 1, 2}), 0);
    ASSERT_EQ(Sent().Delete(kPriority).Write(m_journal, m_ids[1]), m_ids[1]);
    ExpectRows(Entries({1, 0, 2}), 1);
    ASSERT_EQ(Sent().Text(kSubject, L"s").Write(m_journal, m_ids[1]), m_ids[1]);
    ExpectRows(Entries({0, 1, 2}), 0);
    m_ids.push_back(m_journal.WriteRecord(0, 0, nullptr));
    ExpectRows(Entries({3, 0, 1, 2}), 1);
}

// What reads as absent is no property.
TEST_F(RowFilters, TakeARecordWithOddCellsOnlyAsEmpty)
{
    AddDates({1, 1, 1, 1});
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("UPDATE journal SET subject = x'00', date = NULL;"
                            "UPDATE journal SET priority = 32768, kind = -1, end_time = 'x' WHERE oid = 1;"
                            "UPDATE journal SET priority = -32768 WHERE oid = 2;"
                            "UPDATE journal SET kind = 65535 WHERE oid = 3;"
                            "UPDATE journal SET end_time = -1 WHERE oid = 4;"));
    }
    for (const CEOID id : m_ids)
        ASSERT_EQ(Received(m_plain, id).Count(), id == m_ids[0] ? 0 : 1);
    const RowFilter filter{kCategories, [](const CEPROPVAL*) { return false; }, true};
    ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
    ExpectRows(m_ids, 1);
}

TEST_F(RowFilters, FollowARecordThatBeginsOrCeasesToPass)
{
    AddDates({1, 3, 4, 6, 7});
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    SortBy(kSubject);
    ExpectRows(Entries({1, 3, 0, 2, 4}), 2);
    ASSERT_EQ(Sent().Time(kDate, 9).Write(m_journal, m_ids[2]), m_ids[2]);
    ExpectRows(Entries({1, 2, 3, 0, 4}), 3);
    ASSERT_EQ(Sent().Delete(kDate).Write(m_journal, m_ids[1]), m_ids[1]);
    ExpectRows(Entries({2, 3, 0, 1, 4}), 2);
    ASSERT_EQ(m_journal.DeleteRecord(m_ids[2]), 1);
    ExpectRows(Entries({3, 0, 1, 4}), 1);
    AddDates({12, 13});
    ExpectRows(Entries({3, 5, 0, 1, 4, 6}), 2);
    // The text that is sorted by moves it inside its group.
    ASSERT_EQ(Sent().Text(kSubject, L"a").Write(m_journal, m_ids[5]), m_ids[5]);
    ASSERT_EQ(Sent().Text(kSubject, L"t").Write(m_journal, m_ids[0]), m_ids[0]);
    ExpectRows(Entries({5, 3, 1, 4, 6, 0}), 2);
}

TEST_F(RowFilters, TestARecordOnceAndAgainOnlyWhenItIsWritten)
{
    AddDates({1, 3, 4, 6, 7});
    int tests = 0;
    const auto counted = [&tests](const CEPROPVAL* value) {
        ++tests;
        return IsThird(value);
    };
    ASSERT_NE(m_journal.SetRowFilter({kDate, counted}), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 2u);
    EXPECT_EQ(tests, 5);
    SortBy(kSubject, CEDB_SORT_DESCENDING);
    EXPECT_EQ(Rows(m_journal).size(), 5u);
    EXPECT_EQ(Walk(m_journal).size(), 5u);
    EXPECT_EQ(tests, 5);
    ASSERT_EQ(Sent().Time(kDate, 9).Write(m_journal, m_ids[0]), m_ids[0]);
    EXPECT_EQ(tests, 6);
    ASSERT_EQ(Sent().Text(kSubject, L"other").Write(m_journal, m_ids[0]), m_ids[0]);
    ASSERT_EQ(m_journal.DeleteRecord(m_ids[0]), 1);
    EXPECT_EQ(tests, 6);
    AddDates({1});
    EXPECT_EQ(m_journal.PassingRows(), 2u);
    EXPECT_EQ(tests, 7);
}

TEST_F(RowFilters, NoticeWhatAnotherProgramWrites)
{
    AddDates({1, 3, 4, 6});
    const auto ofSix = [](const CEPROPVAL* v) { return HasWord(v, 6); };
    ASSERT_NE(m_journal.SetRowFilter({kCategories, ofSix}), 0u);
    ExpectRows(Entries({0, 1, 2, 3}), 0);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("UPDATE journal SET categories = x'0100000006000000' WHERE oid = 3"));
    }
    ExpectRows(Entries({2, 0, 1, 3}), 1);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("DELETE FROM journal WHERE oid = 3; INSERT INTO journal(oid, date, categories) "
                            "VALUES(9, 5, x'0100000006000000')"));
    }
    m_ids.push_back(9);
    ExpectRows(Entries({4, 0, 1, 3}), 1);
}

TEST_F(RowFilters, AreAsBeforeWhenABulkFails)
{
    AddDates({1, 3, 4, 6});
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    ExpectRows(Entries({1, 3, 0, 2}), 2);
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_EQ(Sent().Time(kDate, 9).Write(m_journal, m_ids[0]), m_ids[0]);
        ASSERT_EQ(m_journal.DeleteRecord(m_ids[1]), 1);
        ASSERT_NE(AddEntry(m_journal, L"n", 30), 0u);
        EXPECT_EQ(m_journal.PassingRows(), 3u);
    }
    ExpectRows(Entries({1, 3, 0, 2}), 2);
}

TEST_F(RowFilters, FollowABulkOfManyNewRecords)
{
    ASSERT_NE(m_journal.SetRowFilter({kDate, IsThird}), 0u);
    EXPECT_EQ(m_journal.PassingRows(), 0u);
    {
        CeDBase::BulkScope bulk(m_journal);
        for (uint64_t i = 0; i < 600; ++i)
            ASSERT_NE(AddEntry(m_journal, L"n", 1000 - i), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    ExpectPartedRows({kDate, IsThird});
}

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

// Random stores, filters, sorts and writes, beside the plain order parted by what is read of each record.
class RandomRowFilters : public RowFilters, public testing::WithParamInterface<unsigned> {
  protected:
    unsigned Random(unsigned below) { return static_cast<unsigned>(m_random() % below); }

    Sent RandomValues(bool isNew)
    {
        Sent sent;
        if (isNew ? Random(5) != 0 : Random(2) != 0)
            Random(6) ? sent.Time(kDate, Random(40)) : sent.Delete(kDate);
        if (Random(2))
            RandomBlob(&sent);
        if (Random(3) == 0)
            sent.Number(kPriority, static_cast<int>(Random(4)) - 1);
        if (Random(3) == 0)
            sent.Text(kSubject, std::wstring(1, L'a' + static_cast<wchar_t>(Random(4))));
        return sent;
    }
    void RandomBlob(Sent* sent)
    {
        const unsigned kind = Random(6);
        if (kind == 0)
            sent->Delete(kCategories);
        else if (kind == 1)
            sent->Blob(kCategories, std::vector<BYTE>(Random(9), static_cast<BYTE>(Random(3))));
        else
            sent->Ids(kCategories, {Random(4), Random(4), Random(4)});
    }
    RowFilter RandomFilter()
    {
        const bool empties = Random(2) != 0;
        const unsigned word = Random(4);
        switch (Random(4)) {
        case 0: return {kDate, IsThird, empties};
        case 1:
            return {kDate, [word](const CEPROPVAL* v) { return !v || CountOf(v->val.filetime) % 4 == word; }};
        case 2:
            return {kPriority, [word](const CEPROPVAL* v) { return v && v->val.iVal < int(word); }, empties};
        default: return {kCategories, [word](const CEPROPVAL* v) { return HasWord(v, word); }, empties};
        }
    }
    void WriteSomething()
    {
        const CEOID id = m_ids.empty() ? 0 : m_ids[Random(static_cast<unsigned>(m_ids.size()))];
        const unsigned action = Random(8);
        if (action == 0 && id) {
            ASSERT_EQ(m_journal.DeleteRecord(id), 1);
            std::erase(m_ids, id);
        } else if (action < 5 && id) {
            ASSERT_EQ(RandomValues(false).Write(m_journal, id), id);
        } else {
            m_ids.push_back(RandomValues(true).Write(m_journal));
            ASSERT_NE(m_ids.back(), 0u);
        }
    }
    void WriteFromOutside()
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(
            raw.Run("UPDATE journal SET date = abs(random() % 40), categories = NULL WHERE oid % 7 = 3"));
    }
    void SortSomehow()
    {
        constexpr CEPROPID kSorts[] = {kDate, kSubject, kPriority, kCategories};
        SortBy(kSorts[Random(4)], Random(2));
    }

    std::mt19937 m_random{GetParam()};
};

TEST_P(RandomRowFilters, AreThePlainOrderParted)
{
    constexpr int kRounds = 8, kSteps = 60;
    for (int round = 0; round < kRounds; ++round) {
        SortSomehow();
        const RowFilter filter = RandomFilter();
        ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
        ExpectPartedRows(filter);
        {
            CeDBase::BulkScope bulk(m_journal);
            for (int step = 0; step < kSteps; ++step) {
                WriteSomething();
                if (step % 20 == 0)
                    SortSomehow();
                (void)m_journal.PassingRows(); // the rows are there and follow
            }
            ExpectPartedRows(filter);
            ASSERT_EQ(bulk.Commit(), 1);
        }
        WriteSomething();
        ExpectPartedRows(filter);
        WriteFromOutside();
        ExpectPartedRows(filter);
        EXPECT_EQ(Walk(m_journal), Walk(m_plain));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRowFilters, testing::Range(1u, 7u));

} // namespace
