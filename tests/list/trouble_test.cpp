// What the list and its commands make of a store that cannot be read or written: nothing is lost, and it is
// told.
#include <sqlite3.h>

#include "../mervane/watched_files.h"
#include "filter/filter_categories.h"
#include "filter/filter_text.h"
#include "list/entry_commands.h"
#include "mervane/db_categories.h"
#include "support/entry_list_fixture.h"
#include "support/unreadable_table.h"

namespace {

using List = std::vector<CEOID>;

// Made before the store is opened.
struct Watched {
    WatchedFiles files;
};

class ListTrouble : private Watched, public EntryListTest {
  protected:
    ListTrouble()
    {
        EXPECT_EQ(m_categories.Open(), 1);
        m_category = m_categories.Add(L"Work");
        EXPECT_NE(m_category, 0u);
        EXPECT_EQ(m_categories.IncUse(m_category), 1);
        m_ids = AddEntries(4);
        m_ids.push_back(TestRecord()
                            .Time(kPropDate, Instant(2001, 1, 1))
                            .Text(kPropSubject, L"filed")
                            .Blob(kPropCategories, {1, m_category})
                            .Write());
        CreateList();
        Own().SetNumber(kOptions, L"ConfirmDelete", 0);
        m_list.SelectRecord(m_ids[1]);
        m_list.Selection().Append(m_ids[3]);
        m_list.Refresh();
    }
    ~ListTrouble() override
    {
        Mend();
        m_categories.Close();
        Own().Journal().Close();
    }

    void FillDisk() { files.FillDisk(true); }
    void LoseFile()
    {
        // What is in memory does not hold any more.
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &other), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(other, "UPDATE journal SET kind = 3", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(other);
        files.FailReads(true);
    }
    void Mend()
    {
        files.FillDisk(false);
        files.FailReads(false);
    }

    // One box of the list's window, and nothing has changed.
    void ExpectTold(const MessageBoxAnswerer& answerer, const std::wstring& what)
    {
        ASSERT_EQ(answerer.Boxes().size(), 1u);
        EXPECT_EQ(answerer.Boxes()[0].text.substr(0, what.size() + 1), what + L":");
        EXPECT_NE(answerer.Boxes()[0].text.find(L"Nothing that was stored before is lost"),
                  std::wstring::npos);
        EXPECT_EQ(answerer.Boxes()[0].caption, L"Journal");
        EXPECT_EQ(answerer.Boxes()[0].owner, m_parent.Handle());
        Mend();
        EXPECT_EQ(Own().Journal().RecordCount(), 5u);
        for (const CEOID id : m_ids)
            EXPECT_EQ(Own().Journal().SeekRecord(id), id);
        EXPECT_EQ(Selected(), (List{m_ids[1], m_ids[3]}));
        EXPECT_EQ(m_list.CurrentEntry(), m_ids[1]);
    }

    DbCategories m_categories;
    CEOID m_category = 0;
    List m_ids;
};

TEST_F(ListTrouble, ADeletionThatFailsKeepsTheSelection)
{
    FillDisk();
    const MessageBoxAnswerer answerer;
    DeleteEntries(m_list);
    ExpectTold(answerer, L"Nothing was deleted");
}

TEST_F(ListTrouble, ADeletionOfWhatCannotBeReadIsNoDeletion)
{
    LoseFile();
    const MessageBoxAnswerer answerer;
    DeleteEntries(m_list);
    ExpectTold(answerer, L"Nothing was deleted");
}

TEST_F(ListTrouble, APasteThatFailsPastesNothing)
{
    FillDisk();
    const MessageBoxAnswerer answerer;
    PasteEntries(m_list);
    ExpectTold(answerer, L"Nothing was pasted");
}

TEST_F(ListTrouble, APasteOfWhatCannotBeReadPastesNothing)
{
    LoseFile();
    const MessageBoxAnswerer answerer;
    PasteEntries(m_list);
    ExpectTold(answerer, L"Nothing was pasted");
}

TEST_F(ListTrouble, CategoriesAreNotTakenAwayInPart)
{
    for (const bool isFull : {true, false}) {
        isFull ? FillDisk() : LoseFile();
        const MessageBoxAnswerer answerer;
        ClearCategories(m_list);
        ExpectTold(answerer, L"The categories were not taken from the entries");
        const CEPROPID wanted = kPropCategories;
        WORD count = 1;
        CEPROPVAL* property = nullptr;
        ASSERT_EQ(Own().Journal().SeekRecord(m_ids[4]), m_ids[4]);
        ASSERT_EQ(Own().Journal().ReadRecord(&count, &wanted, &property), m_ids[4]);
        const LocalBlock<CEPROPVAL> owner(property);
        EXPECT_FALSE(property->wFlags & CEDB_PROPNOTFOUND);
    }
}

TEST_F(ListTrouble, ARefreshThatReadsNothingKeepsRowsAndSelection)
{
    LoseFile();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 5);
    EXPECT_EQ(Notice(), nullptr);
    EXPECT_EQ(Selected(), (List{m_ids[1], m_ids[3]}));
    EXPECT_EQ(m_list.CurrentEntry(), m_ids[1]);
    Mend();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 5);
    EXPECT_EQ(SelectedRows().size(), 2u);
}

// A row is clicked of which nobody can tell the record.
TEST_F(ListTrouble, ABlankRowIsNoNewEntryAndNothingElseThatWasSelected)
{
    LoseFile();
    {
        const MessageBoxAnswerer answerer;
        DeleteEntries(m_list); // nothing in memory holds any more
        EXPECT_EQ(answerer.Boxes().size(), 1u);
    }
    ASSERT_EQ(RowCount(), 5);
    ClickRow(0);
    EXPECT_EQ(SelectedRows(), std::vector{0});
    EXPECT_EQ(Selected(), List{});
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    const MessageBoxAnswerer answerer;
    EditEntry(m_parent.Handle(), m_list);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text.substr(0, 25), L"The entry was not opened:");
    EXPECT_EQ(answerer.Boxes()[0].owner, m_parent.Handle());
}

TEST_F(ListTrouble, ABlankRowIsOpenedOnceItCanBeRead)
{
    LoseFile();
    {
        const MessageBoxAnswerer answerer;
        DeleteEntries(m_list);
    }
    ClickRow(0);
    Mend();
    EXPECT_EQ(m_list.TakeChosenRow(), StoreTrouble::None);
    EXPECT_EQ(m_list.CurrentEntry(), Own().Journal().IdOfRow(0));
    EXPECT_EQ(Selected(), List{Own().Journal().IdOfRow(0)});
}

TEST_F(ListTrouble, AFilterKeepsCategoriesThatCannotBeLookedFor)
{
    FilterState filter;
    FilterOnCategory(m_category, &filter);
    EXPECT_EQ(FilterText(filter), L"Work");
    LoseFile();
    EXPECT_FALSE(BringFilterUpToDate(&filter));
    EXPECT_EQ(filter.categories.Count(), 1u);
    EXPECT_EQ(FilterText(filter), L"Category...");
    EXPECT_TRUE(filter.active);
    Mend();
    EXPECT_EQ(FilterText(filter), L"Work");
    {
        const UnreadableTable none(m_store.Path(), "categories");
        EXPECT_FALSE(BringFilterUpToDate(&filter)) << "it may be there";
        EXPECT_EQ(filter.categories.Count(), 1u);
    }
    EXPECT_FALSE(BringFilterUpToDate(&filter));
    EXPECT_EQ(FilterText(filter), L"Work");
}

} // namespace
