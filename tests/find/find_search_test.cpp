#include "find/find_search.h"

#include <chrono>

#include "support/journal_fixture.h"

namespace {

using Ids = std::vector<CEOID>;

class FindEntriesTest : public JournalTest {
  protected:
    static FindRequest TextRequest(CEPROPID by, const std::wstring& text)
    {
        FindRequest request;
        request.by = by;
        request.text = text;
        return request;
    }
    static FindRequest Current(FindRequest request)
    {
        request.from = SearchFrom::Current;
        return request;
    }
    static FindRequest Day(WORD year, WORD month, WORD day)
    {
        FindRequest request;
        request.date = {year, month, 0, day, 9, 30, 0, 0};
        return request;
    }
    static Ids Find(const FindRequest& request, CEOID current = 0)
    {
        return FindEntries(Own().Journal(), request, current);
    }
};

} // namespace

TEST_F(FindEntriesTest, FindNothingInAnEmptyJournal)
{
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"")), Ids{});
    EXPECT_EQ(Find(Current(TextRequest(kPropSubject, L"")), 1), Ids{});
    EXPECT_EQ(Find(Day(2000, 1, 1)), Ids{});
}

TEST_F(FindEntriesTest, FromTheTopFindsAllInTheirOrder)
{
    const CEOID late = AddEntry(30, L"walk"), other = AddEntry(20, L"lunch"), early = AddEntry(10, L"Walk");
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"walk")), (Ids{early, late}));
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"walk"), other), (Ids{early, late}));
    Own().Journal().SetSort({kPropDate, CEDB_SORT_DESCENDING}, 1);
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"walk")), (Ids{late, early}));
}

TEST_F(FindEntriesTest, TheCaseCountsWhenAsked)
{
    AddEntry(1, L"walk");
    const CEOID big = AddEntry(2, L"Walk");
    FindRequest request = TextRequest(kPropSubject, L"Walk");
    EXPECT_EQ(Find(request).size(), 2u);
    request.matchCase = true;
    EXPECT_EQ(Find(request), (Ids{big}));
    EXPECT_EQ(Find(Current(request), big - 1), (Ids{big}));
}

TEST_F(FindEntriesTest, ByEntryLooksAtTheBodyAndNotTheSubject)
{
    const CEOID subject = TestRecord().Text(kPropSubject, L"park").Text(kPropBody, L"lunch").Write();
    const CEOID body = TestRecord().Text(kPropSubject, L"lunch").Text(kPropBody, L"in the park").Write();
    EXPECT_EQ(Find(TextRequest(kPropBody, L"park")), (Ids{body}));
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"park")), (Ids{subject}));
}

TEST_F(FindEntriesTest, ByDateFindsTheDay)
{
    const CEOID morning = TestRecord().Time(kPropDate, Instant(2000, 3, 5, 0, 0)).Write();
    const CEOID night = TestRecord().Time(kPropDate, Instant(2000, 3, 5, 23, 59)).Write();
    TestRecord().Time(kPropDate, Instant(2000, 3, 6)).Write();
    TestRecord().Time(kPropDate, Instant(2000, 3, 4, 23, 59)).Write();
    TestRecord().Text(kPropSubject, L"no date").Write();
    EXPECT_EQ(Find(Day(2000, 3, 5)), (Ids{morning, night}));
    EXPECT_EQ(Find(Current(Day(2000, 3, 5)), morning), (Ids{night}));
}

TEST_F(FindEntriesTest, ADateThatIsNoneFindsNothing)
{
    TestRecord().Time(kPropDate, Instant(2000, 3, 1)).Write();
    EXPECT_EQ(Find(Day(2000, 13, 1)), Ids{});
    EXPECT_EQ(Find(Day(0, 0, 0)), Ids{});
}

TEST_F(FindEntriesTest, FromCurrentGoesOnBehindItAndComesRound)
{
    const CEOID a = AddEntry(1, L"walk"), b = AddEntry(2, L"walk"), c = AddEntry(3, L"walk");
    const FindRequest request = Current(TextRequest(kPropSubject, L"walk"));
    EXPECT_EQ(Find(request, a), (Ids{b, c})) << "it ends at the entry that it started from";
    EXPECT_EQ(Find(request, b), (Ids{c, a}));
    EXPECT_EQ(Find(request, c), (Ids{a, b}));
}

TEST_F(FindEntriesTest, FromACurrentEntryThatDoesNotMatchItEndsAsWell)
{
    const CEOID a = AddEntry(1, L"walk"), other = AddEntry(2, L"lunch"), c = AddEntry(3, L"walk");
    const FindRequest request = Current(TextRequest(kPropSubject, L"walk"));
    EXPECT_EQ(Find(request, other), (Ids{c, a}));
    EXPECT_EQ(Find(Current(TextRequest(kPropSubject, L"nowhere")), other), Ids{});
}

TEST_F(FindEntriesTest, FromTheOnlyMatchNothingElseIsFound)
{
    const CEOID only = AddEntry(1, L"walk");
    AddEntry(2, L"lunch");
    EXPECT_EQ(Find(Current(TextRequest(kPropSubject, L"walk")), only), Ids{});
}

TEST_F(FindEntriesTest, WithoutACurrentEntryItBeginsAtTheTop)
{
    const CEOID a = AddEntry(1, L"walk"), b = AddEntry(2, L"walk");
    const FindRequest request = Current(TextRequest(kPropSubject, L"walk"));
    EXPECT_EQ(Find(request, 0), (Ids{a, b}));
    EXPECT_EQ(Find(request, 777), (Ids{a, b}));
}

TEST_F(FindEntriesTest, TheEmptyTextFindsEveryEntryThatHasTheField)
{
    const CEOID a = AddEntry(1, L"walk");
    TestRecord().Time(kPropDate, Instant(2001, 1, 1)).Write();
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"")), (Ids{a}));
    EXPECT_EQ(Find(TextRequest(kPropBody, L"")), Ids{});
}

TEST_F(FindEntriesTest, ThousandsAreFoundInOneGo)
{
    const auto ids = AddEntries(20'000);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Find(TextRequest(kPropSubject, L"ENTRY")), ids);
    EXPECT_EQ(Find(Current(TextRequest(kPropSubject, L"entry")), ids[9'999]).size(), 19'999u);
    // A pass for each would take minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}
