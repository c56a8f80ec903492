// Rows under a filter.
#include "row_filter_fixture.h"
#include "statement_log.h"

namespace {

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

// One that is longer than what is kept in memory is read whole.
TEST_F(RowFilters, MayGoByAText)
{
    const std::wstring kept(3'000'000, L'x');
    for (const auto& subject :
         {std::wstring(L"In the park"), kept + L" park", std::wstring(), std::wstring(L"J\u00F6rg")})
        m_ids.push_back(AddEntry(m_journal, subject.c_str(), m_ids.size() + 1));
    const auto names = [](const CEPROPVAL* value) {
        return value && wcsstr(value->val.lpwstr, L"park") != nullptr;
    };
    ASSERT_NE(m_journal.SetRowFilter({kSubject, names}), 0u);
    ExpectRows(Entries({0, 1, 2, 3}), 2);
    m_ids.push_back(AddEntry(m_journal, L"A park", 5));
    ASSERT_NE(m_journal.SetRowFilter({kSubject,
                                      [](const CEPROPVAL* value) {
                                          return value && std::wstring(value->val.lpwstr) == L"J\u00F6rg";
                                      }}),
              0u);
    ExpectRows(Entries({3, 0, 1, 2, 4}), 1);
    ASSERT_EQ(Sent().Text(kSubject, L"J\u00F6rg").Write(m_journal, m_ids[4]), m_ids[4]);
    ExpectRows(Entries({3, 4, 0, 1, 2}), 2);
}

TEST_F(RowFilters, ThatMakeNoSenseAreRefused)
{
    AddDates({1, 3});
    const uint32_t stamp = m_journal.SetRowFilter({kDate, IsThird});
    ASSERT_NE(stamp, 0u);
    const auto always = [](const CEPROPVAL*) { return true; };
    for (const CEPROPID property : {CEPROPID{0}, MakePropertyId(101, CEVT_I2), kCategoriesKey})
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

class RowFilterStatements : public RowFilters {
  protected:
    // How many records the file was asked for whether they have any property.
    int EmptyTests()
    {
        const auto statements = m_log.Take();
        return static_cast<int>(
            std::count_if(statements.begin(), statements.end(), [](const std::string& sql) {
                return sql.find("WHERE oid = ? AND NOT (") != std::string::npos;
            }));
    }

  private:
    StatementLog m_log;
};

TEST_F(RowFilterStatements, AskTheFileForARecordWithoutAPropertyOnceBetweenWrites)
{
    const RowFilter filter{kCategories, [](const CEPROPVAL*) { return false; }, true};
    for (int i = 0; i < 3; ++i)
        m_ids.push_back(Sent().Number(kPriority, 1).Write(m_journal));
    (void)EmptyTests();
    ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
    ExpectRows(Entries({0, 1, 2}), 0);
    EXPECT_EQ(EmptyTests(), 3);
    ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
    ExpectRows(Entries({0, 1, 2}), 0);
    EXPECT_EQ(EmptyTests(), 0);
    ASSERT_EQ(Sent().Delete(kPriority).Write(m_journal, m_ids[1]), m_ids[1]);
    ExpectRows(Entries({1, 0, 2}), 1);
    EXPECT_EQ(EmptyTests(), 1);
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

} // namespace
