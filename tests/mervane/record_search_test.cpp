// The journal's searches: which record comes next, and what finding it costs.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "records.h"
#include "statement_log.h"
#include "support/test_store.h"

namespace {

constexpr uint64_t kSecond = 10'000'000;
constexpr uint64_t kDay = 24 * 60 * 60 * kSecond;

using Ids = std::vector<CEOID>;

class Searches : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(nullptr), 1); }
    CEOID Add(const std::wstring& subject, uint64_t date)
    {
        return Sent().Text(kSubject, subject).Text(kBody, L"body").Time(kDate, date).Write(m_journal);
    }
    // All that a search gives one after the other, until it comes round to the first.
    Ids AllOf(CEPROPID property, const wchar_t* text, bool matchCase = false)
    {
        Ids found;
        for (CEOID id = m_journal.FindText(property, text, matchCase);
             id && (found.empty() || id != found[0]);
             id = m_journal.FindTextAfter(id, property, text, matchCase))
            found.push_back(id);
        return found;
    }
    Ids AllOnDay(uint64_t date)
    {
        Ids found;
        for (CEOID id = m_journal.FindDate(kDate, TimeOf(date)); id && (found.empty() || id != found[0]);
             id = m_journal.FindDateAfter(id, kDate, TimeOf(date)))
            found.push_back(id);
        return found;
    }

    StatementLog m_log;
    TestStore m_store;
    DbJournal m_journal;
};

int CountReads(const std::vector<std::string>& statements, const std::string& column)
{
    return static_cast<int>(
        std::count_if(statements.begin(), statements.end(), [&](const std::string& statement) {
            return statement.starts_with("SELECT") && statement.find(column) != std::string::npos &&
                   statement.find("WHERE") == std::string::npos;
        }));
}

} // namespace

TEST_F(Searches, FindNothingInAnEmptyJournal)
{
    EXPECT_EQ(m_journal.FindText(kSubject, L"", false), 0u);
    EXPECT_EQ(m_journal.FindTextAfter(1, kSubject, L"x", false), 0u);
    EXPECT_EQ(m_journal.FindDate(kDate, TimeOf(0)), 0u);
    EXPECT_EQ(m_journal.FindDateAfter(1, kDate, TimeOf(0)), 0u);
}

TEST_F(Searches, FindNothingWhileClosed)
{
    Add(L"walk", 1);
    m_journal.Close();
    EXPECT_EQ(m_journal.FindText(kSubject, L"walk", false), 0u);
    EXPECT_EQ(m_journal.FindDate(kDate, TimeOf(1)), 0u);
}

TEST_F(Searches, GoThroughTheCurrentOrderAndRoundToTheTop)
{
    const CEOID late = Add(L"a walk", 30), other = Add(L"lunch", 20), early = Add(L"Walking", 10);
    EXPECT_EQ(m_journal.FindText(kSubject, L"walk", false), early);
    EXPECT_EQ(m_journal.FindTextAfter(early, kSubject, L"walk", false), late);
    EXPECT_EQ(m_journal.FindTextAfter(late, kSubject, L"walk", false), early);
    EXPECT_EQ(m_journal.FindTextAfter(other, kSubject, L"walk", false), late)
        << "behind a record that does not match itself";
    m_journal.SetSort({kDate, CEDB_SORT_DESCENDING}, 1);
    EXPECT_EQ(AllOf(kSubject, L"walk"), (Ids{late, early}));
    EXPECT_EQ(m_journal.FindTextAfter(other, kSubject, L"walk", false), early);
    m_journal.SetSort({kSubject, 0}, 1);
    EXPECT_EQ(AllOf(kSubject, L"walk"), (Ids{late, early}));
    EXPECT_EQ(AllOf(kSubject, L""), (Ids{late, other, early}));
}

TEST_F(Searches, BehindTheOnlyMatchFindItAgain)
{
    const CEOID only = Add(L"walk", 1);
    Add(L"lunch", 2);
    EXPECT_EQ(m_journal.FindTextAfter(only, kSubject, L"walk", false), only);
    EXPECT_EQ(m_journal.FindDateAfter(only, kDate, TimeOf(3)), only + 1);
}

TEST_F(Searches, BehindARecordThatIsNotThereBeginAtTheTop)
{
    const CEOID first = Add(L"walk", 1), second = Add(L"walk", 2);
    EXPECT_EQ(m_journal.FindTextAfter(0, kSubject, L"walk", false), first);
    EXPECT_EQ(m_journal.FindTextAfter(999, kSubject, L"walk", false), first);
    EXPECT_EQ(m_journal.FindTextAfter(0xFFFFFFFF, kSubject, L"walk", false), first);
    ASSERT_EQ(m_journal.DeleteRecord(first), 1);
    EXPECT_EQ(m_journal.FindTextAfter(first, kSubject, L"walk", false), second);
}

TEST_F(Searches, LookAtTheGivenPropertyAlone)
{
    const CEOID inBody = Sent().Text(kSubject, L"lunch").Text(kBody, L"the park").Write(m_journal);
    const CEOID inSubject = Sent().Text(kSubject, L"Park").Text(kBody, L"lunch").Write(m_journal);
    EXPECT_EQ(AllOf(kBody, L"park"), (Ids{inBody}));
    EXPECT_EQ(AllOf(kSubject, L"park"), (Ids{inSubject}));
    EXPECT_EQ(AllOf(kType, L"park"), Ids{});
}

TEST_F(Searches, TakeTheCaseIntoAccountWhenAsked)
{
    const CEOID big = Add(L"Walk", 1), small = Add(L"walk", 2);
    EXPECT_EQ(AllOf(kSubject, L"walk", true), (Ids{small}));
    EXPECT_EQ(AllOf(kSubject, L"Walk", true), (Ids{big}));
    EXPECT_EQ(AllOf(kSubject, L"wALK", false), (Ids{big, small}));
}

TEST_F(Searches, TheEmptyTextIsInEveryRecordThatHasTheProperty)
{
    const CEOID with = Add(L"walk", 1);
    const CEOID empty = Add(L"", 2);
    Sent().Time(kDate, 3).Write(m_journal);
    EXPECT_EQ(AllOf(kSubject, L""), (Ids{with, empty}));
    EXPECT_EQ(AllOf(kSubject, L"", true), (Ids{with, empty}));
    EXPECT_EQ(AllOf(kBody, L""), (Ids{with, empty}));
}

TEST_F(Searches, ADateIsFoundByItsDay)
{
    constexpr uint64_t kMidnight = 145'000 * kDay;
    const CEOID first = Add(L"midnight", kMidnight);
    const CEOID last = Add(L"the day's last moment", kMidnight + kDay - 1);
    Add(L"just before", kMidnight - 1);
    Add(L"just after", kMidnight + kDay);
    Sent().Text(kSubject, L"no date").Write(m_journal);
    for (const uint64_t asked : {kMidnight, kMidnight + kDay / 2, kMidnight + kDay - 1})
        EXPECT_EQ(AllOnDay(asked), (Ids{first, last}));
    EXPECT_EQ(AllOnDay(kMidnight + 5 * kDay), Ids{});
}

TEST_F(Searches, FindOtherTimesToo)
{
    const CEOID id = Sent().Time(kEndTime, 5 * kDay + 1).Write(m_journal);
    EXPECT_EQ(m_journal.FindDate(kEndTime, TimeOf(5 * kDay)), id);
    EXPECT_EQ(m_journal.FindDate(kDate, TimeOf(5 * kDay)), 0u);
}

TEST_F(Searches, APropertyOfAnotherKindFindsNothing)
{
    Add(L"walk", 1);
    for (const CEPROPID property : {kDate, kCategories, kPriority, CEPROPID{0}, CEPROPID{0x0999001F}})
        EXPECT_EQ(m_journal.FindText(property, L"", false), 0u) << property;
    for (const CEPROPID property : {kSubject, kCategories, CEPROPID{0x09990040}})
        EXPECT_EQ(m_journal.FindDate(property, TimeOf(1)), 0u) << property;
    EXPECT_EQ(m_journal.FindText(kSubject, nullptr, false), 0u);
}

TEST_F(Searches, LeaveTheCurrentRecordAsItIs)
{
    const CEOID first = Add(L"walk", 1), second = Add(L"walk", 2);
    ASSERT_EQ(m_journal.SeekRecord(first), first);
    EXPECT_EQ(AllOf(kSubject, L"walk").size(), 2u);
    EXPECT_EQ(Received(m_journal).Id(), first);
    ASSERT_EQ(m_journal.SeekNextRecord(), 1);
    EXPECT_EQ(Received(m_journal).Id(), second);
}

TEST_F(Searches, SeeWhatHasChangedMeanwhile)
{
    const CEOID a = Add(L"walk", 1), b = Add(L"lunch", 2), c = Add(L"walk", 3);
    ASSERT_EQ(m_journal.FindText(kSubject, L"walk", false), a);
    ASSERT_NE(Sent().Text(kSubject, L"a walk").Write(m_journal, b), 0u);
    EXPECT_EQ(m_journal.FindTextAfter(a, kSubject, L"walk", false), b);
    ASSERT_EQ(m_journal.DeleteRecord(b), 1);
    EXPECT_EQ(m_journal.FindTextAfter(a, kSubject, L"walk", false), c);
    const CEOID d = Add(L"walk", 2);
    EXPECT_EQ(m_journal.FindTextAfter(a, kSubject, L"walk", false), d);
    ASSERT_NE(Sent().Time(kDate, 5).Write(m_journal, a), 0u);
    EXPECT_EQ(AllOf(kSubject, L"walk"), (Ids{d, c, a}));
}

TEST_F(Searches, SeeWhatOthersChange)
{
    const CEOID a = Add(L"walk", 1), b = Add(L"lunch", 2), c = Add(L"walk", 3);
    ASSERT_EQ(m_journal.FindText(kSubject, L"walk", false), a);
    ASSERT_TRUE(
        RawStore(m_store.Path()).Run("UPDATE journal SET subject = 'WALK' WHERE oid = " + std::to_string(b)));
    EXPECT_EQ(m_journal.FindTextAfter(a, kSubject, L"walk", false), b);
    ASSERT_TRUE(RawStore(m_store.Path()).Run("DELETE FROM journal WHERE oid = " + std::to_string(b)));
    EXPECT_EQ(m_journal.FindTextAfter(a, kSubject, L"walk", false), c);
}

TEST_F(Searches, SeeAnotherStoreAfterItWasOpened)
{
    ASSERT_NE(Add(L"walk", 1), 0u);
    const CEOID second = Add(L"walk", 2);
    ASSERT_EQ(AllOf(kSubject, L"walk").size(), 2u);
    m_journal.Close();
    const TestStore other;
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    ASSERT_NE(Add(L"lunch", 1), 0u); // as many changes as the other store has seen
    ASSERT_EQ(Add(L"a walk", 3), second);
    EXPECT_EQ(AllOf(kSubject, L"walk"), (Ids{second}));
}

TEST_F(Searches, ABulkThatIsGivenUpIsForgotten)
{
    const CEOID a = Add(L"walk", 1), b = Add(L"lunch", 2);
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(Sent().Text(kSubject, L"walk").Write(m_journal, b), 0u);
        EXPECT_EQ(AllOf(kSubject, L"walk"), (Ids{a, b}));
    }
    EXPECT_EQ(AllOf(kSubject, L"walk"), (Ids{a}));
}

TEST_F(Searches, ValuesOfAnotherTypeCountAsMissing)
{
    const CEOID good = Add(L"1", 5 * kDay);
    for (int i = 0; i < 3; ++i)
        Add(L"x", 1);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("UPDATE journal SET subject = x'31', date = 'text' WHERE oid = 2"));
        ASSERT_TRUE(raw.Run("UPDATE journal SET subject = NULL, date = 1.5 WHERE oid = 3"));
        ASSERT_TRUE(raw.Run("UPDATE journal SET subject = CAST(x'31FF00' AS TEXT), date = -1 WHERE oid = 4"));
    }
    EXPECT_EQ(AllOf(kSubject, L""), (Ids{good, 4}));
    EXPECT_EQ(AllOf(kSubject, L"1\xFFFD"), (Ids{4}));
    EXPECT_EQ(AllOnDay(5 * kDay), (Ids{good}));
    EXPECT_EQ(AllOnDay(0), Ids{}) << "what is no time is not the first day";
    EXPECT_EQ(AllOnDay(UINT64_MAX), (Ids{4}));
}

TEST_F(Searches, GoingOnReadsNothing)
{
    {
        CeDBase::BulkScope bulk(m_journal);
        for (uint64_t i = 0; i < 500; ++i)
            ASSERT_NE(Add(i % 2 ? L"walk" : L"lunch", i), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    const CeDBase::ReadScope scope(m_journal);
    ASSERT_EQ(m_journal.FindText(kSubject, L"walk", false), 2u);
    m_log.Take();
    EXPECT_EQ(AllOf(kSubject, L"walk").size(), 250u);
    EXPECT_EQ(m_log.Take(), std::vector<std::string>{});
    EXPECT_EQ(AllOf(kSubject, L"lunch").size(), 250u);
    EXPECT_EQ(CountReads(m_log.Take(), "subject"), 1) << "another search is one pass";
}

TEST_F(Searches, ReadNoBodiesThatTheyDoNotNeed)
{
    Add(L"walk", 1);
    m_log.Take();
    EXPECT_EQ(AllOf(kSubject, L"w").size(), 1u);
    EXPECT_EQ(AllOnDay(1).size(), 1u);
    auto statements = m_log.Take();
    EXPECT_EQ(CountReads(statements, "body"), 0);
    EXPECT_EQ(CountReads(statements, "subject"), 1);
    EXPECT_EQ(AllOf(kBody, L"b").size(), 1u);
    statements = m_log.Take();
    EXPECT_EQ(CountReads(statements, "body"), 1);
    EXPECT_EQ(CountReads(statements, "subject"), 0);
}

TEST_F(Searches, BehindAnyRecordFindWhatComesNextInItsOrder)
{
    std::mt19937 random(7);
    {
        CeDBase::BulkScope bulk(m_journal);
        for (int i = 0; i < 300; ++i)
            ASSERT_NE(Add(random() % 3 ? L"lunch" : L"walk", random() % 100), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    const CeDBase::ReadScope scope(m_journal);
    for (const CEPROPID sort : {kDate, kSubject})
        for (const DWORD flags : {DWORD{0}, CEDB_SORT_DESCENDING}) {
            m_journal.SetSort({sort, flags}, 1);
            const Ids rows = Walk(m_journal);
            const Ids walks = AllOf(kSubject, L"walk");
            for (size_t row = 0; row < rows.size(); ++row) {
                CEOID expected = 0;
                for (size_t i = 1; !expected && i <= rows.size(); ++i)
                    if (const CEOID id = rows[(row + i) % rows.size()];
                        std::find(walks.begin(), walks.end(), id) != walks.end())
                        expected = id;
                ASSERT_EQ(m_journal.FindTextAfter(rows[row], kSubject, L"walk", false), expected);
            }
        }
}
