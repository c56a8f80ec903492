// The list under a filter: what a person sees in a row is what is selected, opened and deleted.
#include <sqlite3.h>

#include <algorithm>
#include <functional>

#include "list/entry_commands.h"
#include "mervane/db_categories.h"
#include "support/entry_list_fixture.h"

namespace {

using List = std::vector<CEOID>;

constexpr DWORD kJanuary = 0x1, kFebruary = 0x2, kMarch = 0x4;

bool Exists(CEOID id)
{
    return Own().Journal().SeekRecord(id) == id;
}

// Entry i of 120 is of the year 1900 + i, of January, February and March by turns, and of category "even" or
// "odd". The newest come first.
class FilteredList : public EntryListTest {
  protected:
    FilteredList()
    {
        DbCategories categories;
        EXPECT_EQ(categories.Open(), 1);
        for (const wchar_t* name : {L"even", L"odd"})
            m_categories.push_back(categories.Add(name));
        CeDBase::BulkScope bulk(Own().Journal());
        for (int i = 0; i < kEntries; ++i)
            m_ids.push_back(TestRecord()
                                .Time(kPropDate, DateOf(i))
                                .Text(kPropSubject, Subject(i))
                                .Blob(kPropCategories, {1, m_categories[static_cast<size_t>(i % 2)]})
                                .Write());
        EXPECT_EQ(bulk.Commit(), 1);
        CreateList();
        Paint();
    }

    static TimeCount DateOf(int entry)
    {
        return Instant(static_cast<WORD>(1900 + entry), static_cast<WORD>(entry % 3 + 1), 15);
    }
    static std::wstring Subject(int entry) { return L"entry " + std::to_wstring(entry); }
    CEOID Id(int entry) const { return m_ids[static_cast<size_t>(entry)]; }
    // The entries that are so, the newest first.
    static std::vector<int> Those(const std::function<bool(int)>& are)
    {
        std::vector<int> entries;
        for (int entry = kEntries - 1; entry >= 0; --entry)
            if (are(entry))
                entries.push_back(entry);
        return entries;
    }
    List IdsOf(const std::vector<int>& entries) const
    {
        List ids;
        for (const int entry : entries)
            ids.push_back(Id(entry));
        return ids;
    }

    void FilterBy(const FilterState& filter)
    {
        Own().Filter() = filter;
        m_list.Refresh();
        Paint();
    }
    void FilterByMonths(DWORD mask)
    {
        FilterState filter;
        filter.active = true;
        filter.monthMask = mask;
        FilterBy(filter);
    }
    void FilterByCategory(CEOID category)
    {
        FilterState filter;
        filter.active = filter.categoriesMode = true;
        filter.categories.Push({category, 0});
        FilterBy(filter);
    }
    // What all rows show, each brought into sight.
    std::vector<std::wstring> Subjects()
    {
        std::vector<std::wstring> subjects;
        for (int row = 0; row < RowCount(); ++row) {
            ListView_EnsureVisible(Handle(), row, FALSE);
            UpdateWindow(Handle());
            subjects.push_back(Cell(row, 1));
        }
        return subjects;
    }
    void ExpectShown(const std::vector<int>& entries)
    {
        std::vector<std::wstring> expected;
        for (const int entry : entries)
            expected.push_back(Subject(entry));
        EXPECT_EQ(Subjects(), expected);
        EXPECT_EQ(m_list.RowCount(), entries.size());
    }
    void ExpectDeleted(const std::vector<int>& entries) const
    {
        for (int entry = 0; entry < kEntries; ++entry)
            EXPECT_EQ(Exists(Id(entry)), std::find(entries.begin(), entries.end(), entry) == entries.end())
                << entry;
    }
    void Execute(const std::string& sql)
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    static constexpr int kEntries = 120;
    List m_categories;
    List m_ids; // by entry
};

bool IsOfFebruary(int entry)
{
    return entry % 3 == 1;
}

TEST_F(FilteredList, ShowsWhatPassesAndNothingElse)
{
    FilterByMonths(kFebruary);
    ExpectShown(Those(IsOfFebruary));
    FilterByMonths(kJanuary | kMarch);
    ExpectShown(Those([](int entry) { return !IsOfFebruary(entry); }));
    FilterByCategory(m_categories[1]);
    ExpectShown(Those([](int entry) { return entry % 2 == 1; }));
    FilterState range;
    range.active = range.rangeMode = true;
    range.rangeStart = {1930, 1, 0, 15, 23, 0, 0, 0}; // the day of entry 30
    range.rangeEnd = {1940, 2, 0, 15, 1, 0, 0, 0};    // the day of entry 40
    FilterBy(range);
    ExpectShown(Those([](int entry) { return entry >= 30 && entry <= 40; }));
    FilterBy({});
    ExpectShown(Those([](int) { return true; }));
}

TEST_F(FilteredList, FollowsAFilterThatIsChangedInPlace)
{
    FilterByMonths(kFebruary);
    Own().Filter().monthMask = kMarch;
    m_list.Refresh();
    ExpectShown(Those([](int entry) { return entry % 3 == 2; }));
    Own().Filter().categoriesMode = true;
    Own().Filter().categories.Push({m_categories[0], 0});
    m_list.Refresh();
    ExpectShown(Those([](int entry) { return entry % 2 == 0; }));
    Own().Filter().categories.Push({m_categories[1], 0});
    m_list.Refresh();
    EXPECT_EQ(RowCount(), kEntries);
    Own().Filter().categories.DeleteStack();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(FilteredList, SaysSoWhenNothingPasses)
{
    FilterByMonths(0x800);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_NE(Notice(), nullptr);
    FilterByMonths(kFebruary);
    EXPECT_EQ(RowCount(), 40);
    EXPECT_EQ(Notice(), nullptr);
}

TEST_F(FilteredList, IsSortedInsideTheFilter)
{
    FilterByMonths(kFebruary);
    ClickHeader(1); // the subject, descending at first
    std::vector<int> entries = Those(IsOfFebruary);
    std::sort(entries.begin(), entries.end(), [](int a, int b) { return Subject(a) > Subject(b); });
    ExpectShown(entries);
    ClickHeader(1);
    std::reverse(entries.begin(), entries.end());
    ExpectShown(entries);
}

TEST_F(FilteredList, AClickSelectsTheEntryThatIsSeen)
{
    FilterByMonths(kFebruary);
    const std::vector<int> shown = Those(IsOfFebruary);
    ASSERT_EQ(Cell(7, 1), Subject(shown[7]));
    ClickRow(7);
    EXPECT_EQ(Selected(), List{Id(shown[7])});
    EXPECT_EQ(m_list.CurrentEntry(), Id(shown[7]));
    PressKey(VK_DOWN);
    EXPECT_EQ(Selected(), List{Id(shown[8])});
    PressKey(VK_END);
    EXPECT_EQ(Selected(), List{Id(shown.back())});
    EXPECT_EQ(Cell(RowCount() - 1, 1), Subject(shown.back()));
}

TEST_F(FilteredList, ADoubleClickOpensTheEntryThatIsSeen)
{
    FilterByMonths(kFebruary);
    DoubleClickRow(5);
    EXPECT_EQ(m_list.CurrentEntry(), Id(Those(IsOfFebruary)[5]));
    EXPECT_EQ(m_commands, std::vector<WPARAM>{101});
}

// Most of these rows were never painted.
TEST_F(FilteredList, ARangeIsOfWhatPassesOnly)
{
    FilterByMonths(kFebruary);
    ClickRow(0);
    PressKey(VK_END, true);
    EXPECT_EQ(Selected(), IdsOf(Those(IsOfFebruary)));
}

TEST_F(FilteredList, DeletesTheEntriesThatAreSeen)
{
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
    FilterByMonths(kFebruary);
    std::vector<int> shown = Those(IsOfFebruary);
    ClickRow(3);
    ClickRow(6, MK_CONTROL);
    DeleteEntries(m_list);
    ExpectDeleted({shown[3], shown[6]});
    shown.erase(shown.begin() + 6);
    shown.erase(shown.begin() + 3);
    ExpectShown(shown);
    ListView_EnsureVisible(Handle(), 0, FALSE);
    Paint();
    ClickRow(3);
    EXPECT_EQ(Selected(), List{Id(shown[3])});
}

TEST_F(FilteredList, DeletesAllThatPassesAndNothingElse)
{
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
    FilterByCategory(m_categories[0]);
    ClickRow(0);
    PressKey(VK_END, true);
    DeleteEntries(m_list);
    EXPECT_EQ(RowCount(), 0);
    ExpectDeleted(Those([](int entry) { return entry % 2 == 0; }));
}

TEST_F(FilteredList, SelectsTheRowOfARecord)
{
    FilterByMonths(kFebruary);
    const std::vector<int> shown = Those(IsOfFebruary);
    m_list.SelectRecord(Id(shown[33]));
    EXPECT_EQ(SelectedRows(), std::vector<int>{33});
    EXPECT_EQ(m_list.CurrentEntry(), Id(shown[33]));
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    Paint();
    EXPECT_EQ(Cell(33, 1), Subject(shown[33]));
}

TEST_F(FilteredList, DoesNotSelectARecordThatIsHidden)
{
    FilterByMonths(kFebruary);
    m_list.SelectRecord(Id(1));
    m_list.SelectRecord(Id(3)); // of January
    EXPECT_EQ(Selected(), List{Id(1)});
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(FilteredList, WhatTheFilterHidesLeavesTheSelection)
{
    for (const int entry : {10, 11, 12, 13, 14})
        m_list.Selection().Append(Id(entry));
    m_list.SetCurrentEntry(Id(14));
    FilterByMonths(kFebruary);
    EXPECT_EQ(Selected(), (List{Id(10), Id(13)}));
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    const std::vector<int> shown = Those(IsOfFebruary);
    std::vector<int> rows;
    for (const int row : SelectedRows())
        rows.push_back(shown[static_cast<size_t>(row)]);
    EXPECT_EQ(rows, (std::vector<int>{13, 10}));
    FilterBy({});
    EXPECT_EQ(Selected(), (List{Id(10), Id(13)})) << "it does not come back";
    EXPECT_EQ(SelectedRows(), (std::vector<int>{kEntries - 1 - 13, kEntries - 1 - 10}));
}

TEST_F(FilteredList, ADeletionReachesNothingThatIsHidden)
{
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
    for (const int entry : {10, 11, 12, 13})
        m_list.Selection().Append(Id(entry));
    FilterByMonths(kFebruary);
    DeleteEntries(m_list);
    ExpectDeleted({10, 13});
}

TEST_F(FilteredList, ANewEntryIsShownWhenItPasses)
{
    FilterByMonths(kFebruary);
    const CEOID hidden = TestRecord().Time(kPropDate, Instant(1950, 3, 1)).Text(kPropSubject, L"new").Write();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 40);
    const CEOID shown = TestRecord().Time(kPropDate, Instant(2050, 2, 1)).Text(kPropSubject, L"new").Write();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 41);
    m_list.SelectRecord(hidden);
    EXPECT_TRUE(SelectedRows().empty());
    m_list.SelectRecord(shown);
    EXPECT_EQ(SelectedRows(), std::vector<int>{0});
}

TEST_F(FilteredList, AnEntryThatCeasesToPassLeavesTheListAndTheSelection)
{
    FilterByMonths(kFebruary);
    std::vector<int> shown = Those(IsOfFebruary);
    ClickRow(4);
    ASSERT_EQ(m_list.CurrentEntry(), Id(shown[4]));
    TestRecord moved;
    moved.Time(kPropDate, Instant(1950, 7, 1));
    ASSERT_NE(Own().Journal().WriteRecord(Id(shown[4]), moved.Count(), moved.Properties()), 0u);
    m_list.Refresh();
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    shown.erase(shown.begin() + 4);
    ExpectShown(shown);
}

TEST_F(FilteredList, FollowsWhatAnotherProgramWrites)
{
    FilterByMonths(kFebruary);
    std::vector<int> shown = Those(IsOfFebruary);
    Execute("DELETE FROM journal WHERE oid = " + std::to_string(Id(shown[2])));
    m_list.Refresh();
    shown.erase(shown.begin() + 2);
    ExpectShown(shown);
}

TEST_F(FilteredList, ShowsARecordWithoutAnyPropertyUnderEveryFilter)
{
    Execute("INSERT INTO journal(oid) VALUES(999)");
    for (const auto& filter : {std::function<void()>([&] { FilterByCategory(m_categories[0]); }),
                               std::function<void()>([&] { FilterByMonths(kFebruary); })}) {
        filter();
        m_list.SelectRecord(999);
        EXPECT_EQ(SelectedRows(), std::vector<int>{RowCount() - 1}); // it has no date
    }
    Execute("INSERT INTO journal(oid, subject) VALUES(1000, 's')");
    FilterByCategory(m_categories[0]);
    m_list.SelectRecord(1000);
    EXPECT_FALSE(m_list.Selection().Contains(1000));
}

// The walk goes through all entries, and each write moves one out of the filter.
TEST_F(FilteredList, AllEntriesLoseTheirCategories)
{
    for (const CEPROPID sort : {kPropDate, kPropCategories}) {
        Own().Journal().SetSort({sort, 0}, 1);
        FilterByCategory(m_categories[1]);
        ASSERT_EQ(RowCount(), 60);
        ClearCategories(m_list);
        EXPECT_EQ(RowCount(), 0);
        FilterState none;
        none.active = none.categoriesMode = true;
        none.categories.Push({m_categories[0], 0});
        FilterBy(none);
        EXPECT_EQ(RowCount(), 0);
        CeDBase::BulkScope bulk(Own().Journal());
        for (int entry = 0; entry < kEntries; ++entry) {
            TestRecord again;
            again.Blob(kPropCategories, {1, m_categories[static_cast<size_t>(entry % 2)]});
            ASSERT_NE(Own().Journal().WriteRecord(Id(entry), again.Count(), again.Properties()), 0u);
        }
        ASSERT_EQ(bulk.Commit(), 1);
    }
}

// A refresh with the same filter tests nothing anew.
TEST_F(FilteredList, TheJournalKeepsItsRowFilterUntilTheFilterIsAnotherOne)
{
    DbJournal& journal = Own().Journal();
    EXPECT_EQ(journal.RowFilterStamp(), 0u);
    FilterByMonths(kFebruary);
    const uint32_t stamp = journal.RowFilterStamp();
    EXPECT_NE(stamp, 0u);
    m_list.Refresh();
    EXPECT_EQ(journal.RowFilterStamp(), stamp);
    FilterByMonths(kMarch);
    EXPECT_NE(journal.RowFilterStamp(), stamp);
    FilterBy({});
    EXPECT_EQ(journal.RowFilterStamp(), 0u);
}

TEST_F(FilteredList, PutsTheFilterBackWhereTheJournalHasLostIt)
{
    DbJournal& journal = Own().Journal();
    FilterByMonths(kFebruary);
    ASSERT_NE(journal.SetRowFilter({kPropDate, [](const CEPROPVAL*) { return false; }}), 0u);
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 40);
    journal.Close();
    ASSERT_EQ(journal.Open(nullptr, {kPropDate, CEDB_SORT_DESCENDING}), 1);
    m_list.Refresh();
    ExpectShown(Those(IsOfFebruary));
}

} // namespace
