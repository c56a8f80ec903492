// What the commands make of a journal of which some entries are damaged: the others are done.
#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>

#include "find/find_command.h"
#include "list/entry_commands.h"
#include "mervane/db_categories.h"
#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/entry_list_fixture.h"
#include "support/lost_leaf.h"

namespace {

using List = std::vector<CEOID>;

constexpr size_t kPageSize = 4096;
constexpr const wchar_t* kBehind =
    L": the journal's file is damaged.\n\nNothing that was stored before is lost.";

std::wstring Mark(size_t index)
{
    return L"<mark of " + std::to_wstring(index) + L">";
}

// Five entries of one category, each with a body of several pages.
class DamagedEntries : public EntryListTest {
  protected:
    DamagedEntries()
    {
        EXPECT_EQ(m_categories.Open(), 1);
        m_category = m_categories.Add(L"Work");
        for (size_t i = 0; i < 5; ++i) {
            EXPECT_EQ(m_categories.IncUse(m_category), 1);
            m_ids.push_back(
                TestRecord()
                    .Time(kPropDate, Instant(2001, 1, static_cast<WORD>(i + 1)))
                    .Text(kPropSubject, L"entry " + std::to_wstring(i))
                    .Text(kPropBody, std::wstring(6000, L'a') + Mark(i) + std::wstring(6000, L'z') + L" end")
                    .Blob(kPropCategories, {1, m_category})
                    .Write());
        }
    }
    ~DamagedEntries() override { m_categories.Close(); }

    // Where the pages of their bodies lead on, they lead nowhere.
    void Damage(std::initializer_list<size_t> entries)
    {
        m_categories.Close();
        Own().Journal().Close();
        std::string bytes = ReadFileBytes(m_store.Path());
        for (const size_t entry : entries) {
            const std::wstring mark = Mark(entry);
            const size_t at = bytes.find(std::string(mark.begin(), mark.end()));
            ASSERT_NE(at, std::string::npos);
            bytes.replace(at / kPageSize * kPageSize, 4, 4, '\x7F');
        }
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
        ASSERT_EQ(Own().Journal().Open(nullptr), 1);
        ASSERT_EQ(m_categories.Open(), 1);
        CreateList();
        Paint();
    }
    // The categories of an entry as they are stored; nothing when they cannot be read.
    static bool HasCategories(CEOID id)
    {
        const CEPROPID wanted = kPropCategories;
        WORD count = 1;
        CEPROPVAL* property = nullptr;
        if (Own().Journal().SeekRecord(id) != id || !Own().Journal().ReadRecord(&count, &wanted, &property))
            return false;
        const LocalBlock<CEPROPVAL> owner(property);
        return !(property->wFlags & CEDB_PROPNOTFOUND);
    }
    void ExpectOnlyBox(const MessageBoxAnswerer& boxes, const std::wstring& what) const
    {
        ASSERT_EQ(boxes.Boxes().size(), 1u);
        EXPECT_EQ(boxes.Boxes()[0].text, what + kBehind);
        EXPECT_EQ(boxes.Boxes()[0].owner, m_parent.Handle());
    }

    DbCategories m_categories;
    CEOID m_category = 0;
    List m_ids;
};

// A row reads what its columns show, and no more.
TEST_F(DamagedEntries, ShowTheirSubjectsUntilTheirBodiesAreShownToo)
{
    Damage({2});
    EXPECT_EQ(Cell(2, 1), L"entry 2");
    const int body = FindColumnByProperty(m_columns, PropertyNumber(kPropBody));
    m_columns.columns[static_cast<size_t>(body)].Add(kColumnShown);
    MoveColumn(&m_columns, body, m_columns.shownCount++);
    ASSERT_TRUE(m_list.BuildColumns());
    Paint();
    EXPECT_EQ(Cell(2, 1), L"");
    EXPECT_EQ(Cell(1, 1), L"entry 3");
    EXPECT_EQ(Cell(1, 2), std::wstring(119, L'a'));
}

TEST_F(DamagedEntries, LoseTheirCategoriesWithoutTheOnesThatCannotBeRead)
{
    Damage({2});
    const MessageBoxAnswerer boxes;
    ClearCategories(m_list);
    ExpectOnlyBox(boxes, L"The categories were not taken from 1 entry");
    for (const size_t entry : {0u, 1u, 3u, 4u})
        EXPECT_FALSE(HasCategories(m_ids[entry])) << entry;
    EXPECT_EQ(Own().Journal().RecordCount(), 5u);
}

TEST_F(DamagedEntries, ArePastedWithoutTheOnesThatCannotBeRead)
{
    Damage({1, 2});
    for (const CEOID id : m_ids)
        m_list.Selection().Append(id);
    const MessageBoxAnswerer boxes;
    PasteEntries(m_list);
    ExpectOnlyBox(boxes, L"2 entries were not pasted");
    EXPECT_EQ(Own().Journal().RecordCount(), 8u);
    EXPECT_EQ(Selected(), m_ids);
}

TEST_F(DamagedEntries, OneThatIsNotPastedIsCountedAsOne)
{
    Damage({3});
    for (const CEOID id : m_ids)
        m_list.Selection().Append(id);
    const MessageBoxAnswerer boxes;
    PasteEntries(m_list);
    ExpectOnlyBox(boxes, L"1 entry was not pasted");
    EXPECT_EQ(Own().Journal().RecordCount(), 9u);
}

TEST_F(DamagedEntries, ASearchThatFindsSomethingTellsThatItDidNotSeeAll)
{
    Damage({2});
    std::unique_ptr<ModalDriver> results;
    std::wstring found;
    ModalDriver find([&](HWND window) {
        results = std::make_unique<ModalDriver>([&](HWND resultsWindow) {
            const DialogWindow dialog(resultsWindow);
            found = dialog.Text(IDC_FOUND_COUNT);
            dialog.Ok();
        });
        const DialogWindow dialog(window);
        dialog.Click(IDC_FIND_ENTRY);
        dialog.Click(IDC_FIND_FROM_TOP);
        dialog.SetText(IDC_FIND_TEXT, L" end");
        dialog.Ok();
    });
    const MessageBoxAnswerer boxes;
    FindRequest request;
    RunFind(m_parent.Handle(), m_list, &request);
    ASSERT_TRUE(results && results->Ran());
    EXPECT_EQ(found, L"4");
    ExpectOnlyBox(boxes, L"Not every entry was looked at");
}

// A journal of which a leaf of the table and the index are broken: what the leaf has is there for nobody.
class MissingEntries : public EntryListTest {
  protected:
    MissingEntries() : m_ids(AddEntries(300))
    {
        EXPECT_EQ(Own().Journal().DeleteRecord(Gone()), 1);
        Own().Journal().Close();
        LoseLeafOf(m_store.Path(), "entry 100");
        EXPECT_EQ(Own().Journal().Open(nullptr), 1);
        CreateList();
    }

    CEOID There() const { return m_ids[250]; }
    CEOID Unread() const { return m_ids[100]; }
    CEOID Gone() const { return m_ids[290]; }

    void SelectAndRefresh(const List& ids)
    {
        for (const CEOID id : ids)
            m_list.Selection().Append(id);
        m_list.SetSelectionFlag(1);
        m_list.Refresh();
    }

  private:
    List m_ids;
};

TEST_F(MissingEntries, StaySelectedAndTheOnesThatAreGoneDoNot)
{
    ASSERT_LT(RowCount(), 299);
    ASSERT_GT(RowCount(), 0);
    SelectAndRefresh({Gone(), Unread(), There()});
    EXPECT_EQ(Selected(), (List{Unread(), There()}));
}

TEST_F(MissingEntries, LeaveTheSelectionWithTheNextClick)
{
    for (const UINT keys : {0u, UINT{MK_CONTROL}}) {
        m_list.ClearSelection();
        SelectAndRefresh({Unread()});
        ClickRow(2, keys);
        EXPECT_EQ(Selected(), List{Own().Journal().IdOfRow(2)}) << keys;
    }
}

// It may be readable again, and be selected by what comes between.
TEST_F(MissingEntries, StayWhereTheyWereSelectedAnew)
{
    NMLVODSTATECHANGE range{};
    range.hdr = {Handle(), static_cast<UINT_PTR>(GetDlgCtrlID(Handle())),
                 static_cast<UINT>(LVN_ODSTATECHANGED)};
    range.iTo = 1;
    range.uNewState = LVIS_SELECTED;
    const std::function<void()> waysOut[] = {
        [&] { m_list.ClearSelection(); },
        [&] {
            SendMessageW(m_parent.Handle(), WM_NOTIFY, range.hdr.idFrom, reinterpret_cast<LPARAM>(&range));
        },
    };
    for (const auto& way : waysOut) {
        SelectAndRefresh({Unread()});
        way();
        m_list.Selection().Append(Unread());
        ClickRow(2, MK_CONTROL);
        const List selected = Selected();
        EXPECT_EQ(std::count(selected.begin(), selected.end(), Unread()), 1);
        m_list.ClearSelection();
    }
}

TEST_F(MissingEntries, AreToldOfWithoutACount)
{
    const MessageBoxAnswerer boxes;
    ClearCategories(m_list);
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text,
              std::wstring(L"The categories were not taken from some entries") + kBehind);
    EXPECT_EQ(boxes.Boxes()[0].owner, m_parent.Handle());
}

TEST_F(MissingEntries, LeaveTheFlagAsItIs)
{
    SelectAndRefresh({There(), Unread()});
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    m_list.SetSelectionFlag(0);
    m_list.ClearSelection();
    SelectAndRefresh({Unread()});
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    SelectAndRefresh({There(), Gone()});
    EXPECT_EQ(m_list.SelectionFlag(), 0) << "the last one is known not to be there";
}

} // namespace
