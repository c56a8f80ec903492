// The command that takes the categories from every entry.
#include "list/entry_commands.h"
#include "mervane/db_categories.h"
#include "support/entry_list_fixture.h"
#include "support/live_blocks.h"

namespace {

using List = std::vector<CEOID>;

// How many properties a record has, and its subject.
struct Content {
    WORD properties = 0;
    std::wstring subject;
    bool operator==(const Content&) const = default;
};

Content ContentOf(CEOID id)
{
    Content content;
    CEPROPVAL* properties = nullptr;
    EXPECT_EQ(Own().Journal().SeekRecord(id), id);
    EXPECT_EQ(Own().Journal().ReadRecord(&content.properties, nullptr, &properties), id);
    const LocalBlock<CEPROPVAL> owner(properties);
    content.subject = Own().Journal().GetSubject(id);
    return content;
}

// Twenty entries with one of two categories each, and one entry that has none.
class ClearedCategories : public EntryListTest {
  protected:
    ClearedCategories() : m_without(AddEntry(1, L"without"))
    {
        EXPECT_EQ(m_categories.Open(), 1);
        m_names = {AddCategory(L"Home"), AddCategory(L"Work")};
        for (size_t i = 0; i < 20; ++i)
            m_assigned.push_back(TestRecord()
                                     .Time(kPropDate, Instant(2001, 1, 1))
                                     .Text(kPropSubject, L"with")
                                     .Blob(kPropCategories, {1, m_names[i % 2]})
                                     .Write());
        CreateList();
    }

    CEOID AddCategory(std::wstring name)
    {
        CEPROPVAL property{};
        property.propid = kCategoriesKey;
        property.val.lpwstr = name.data();
        const CEOID id = m_categories.WriteRecord(0, 1, &property);
        EXPECT_EQ(m_categories.IncUse(id), 1);
        return id;
    }

    int Uses(CEOID id)
    {
        const CEPROPID wanted = kCategoryUses;
        WORD count = 1;
        CEPROPVAL* property = nullptr;
        EXPECT_EQ(m_categories.SeekRecord(id), id);
        EXPECT_EQ(m_categories.ReadRecord(&count, &wanted, &property), id);
        const LocalBlock<CEPROPVAL> owner(property);
        return property ? property->val.iVal : -1;
    }

    void ExpectAllCleared()
    {
        for (const CEOID id : m_assigned)
            EXPECT_EQ(ContentOf(id), (Content{2, L"with"})) << id;
        EXPECT_EQ(ContentOf(m_without), (Content{2, L"without"}));
        for (const CEOID id : m_names) {
            EXPECT_EQ(Uses(id), 0);
            EXPECT_EQ(m_categories.Exists(id), 1) << "the category itself stays";
        }
    }

    DbCategories m_categories;
    CEOID m_without;
    List m_names;
    List m_assigned;
};

// Taking the categories away moves the entries in this order; none may be missed for that.
class SortedByCategories : public ClearedCategories, public testing::WithParamInterface<DWORD> {};

TEST_P(SortedByCategories, EveryEntryLosesThem)
{
    Own().Journal().SetSort({kPropCategories, GetParam()}, 1);
    ASSERT_EQ(ContentOf(m_assigned[0]).properties, 3);
    ASSERT_EQ(Uses(m_names[0]), 1);
    const MessageBoxAnswerer answerer;
    ClearCategories(m_list);
    EXPECT_TRUE(answerer.Boxes().empty());
    ExpectAllCleared();
    EXPECT_EQ(RowCount(), 21);
}

INSTANTIATE_TEST_SUITE_P(BothWays, SortedByCategories, testing::Values(0u, DWORD{CEDB_SORT_DESCENDING}));

TEST_F(ClearedCategories, AreTakenFromEntriesThatTheFilterHides)
{
    Own().Filter().active = true;
    Own().Filter().monthMask = 0x800; // December
    m_list.Refresh();
    ASSERT_EQ(RowCount(), 0);
    ClearCategories(m_list);
    ExpectAllCleared();
}

TEST_F(ClearedCategories, AreGoneFromTheListToo)
{
    m_list.SelectRecord(m_assigned[3]);
    m_columns.columns[1].Copy(L"Categories", 104, kColumnShown, 100);
    ASSERT_TRUE(m_list.BuildColumns());
    Paint();
    ASSERT_NE(Cell(0, 1), L"");
    ClearCategories(m_list);
    Paint();
    for (int row = 0; row < 5; ++row)
        EXPECT_EQ(Cell(row, 1), L"") << row;
    EXPECT_EQ(Selected(), List{m_assigned[3]});
}

// Entries that are copied or deleted: only the editor's save counts.
TEST_F(ClearedCategories, AreCountedAsBeforeAfterAPasteAndADeletion)
{
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
    m_list.SelectRecord(m_assigned[0]);
    PasteEntries(m_list);
    ASSERT_EQ(RowCount(), 22);
    EXPECT_EQ(Uses(m_names[0]), 1);
    DeleteEntries(m_list);
    ASSERT_EQ(RowCount(), 21);
    EXPECT_EQ(Uses(m_names[0]), 1);
}

TEST_F(EntryListTest, ClearingTheCategoriesOfAnEmptyJournalDoesNothing)
{
    CreateList();
    ClearCategories(m_list);
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(ClearedCategories, GiveBackEachRecordThatWasRead)
{
    const MessageBoxAnswerer answerer({IDYES});
    const LiveBlocks blocks;
    ClearCategories(m_list);
    EXPECT_GE(blocks.Taken(), m_assigned.size());
    EXPECT_EQ(blocks.Count(), 0u);
    ExpectAllCleared();
}

} // namespace
