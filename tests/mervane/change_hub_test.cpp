// What a store tells other programs, in the form that docs/store.md gives them to read.
#include "mervane/changes/change_hub.h"

#include <gtest/gtest.h>

#include "mervane/file/store_path.h"
#include "records.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

using Told = std::vector<std::pair<WPARAM, LPARAM>>;

// Another program's window: the class of that name belongs to another module, as it would there.
class Overhearer {
  public:
    explicit Overhearer(const std::wstring& title)
    {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(L"kernel32.dll");
        windowClass.lpszClassName = L"MervaneStore";
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, L"MervaneStore", title.c_str(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                   windowClass.hInstance, nullptr);
        EXPECT_NE(m_window, nullptr);
        s_told.clear();
    }
    ~Overhearer()
    {
        DestroyWindow(m_window);
        UnregisterClassW(L"MervaneStore", GetModuleHandleW(L"kernel32.dll"));
    }
    Overhearer(const Overhearer&) = delete;
    Overhearer& operator=(const Overhearer&) = delete;

    // What was posted since the last call.
    Told Take()
    {
        PumpMessages();
        return std::exchange(s_told, {});
    }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message != RegisterWindowMessageW(L"MervaneStoreChange"))
            return DefWindowProcW(window, message, wParam, lParam);
        s_told.emplace_back(wParam, lParam);
        return 0;
    }

    static Told s_told;
    HWND m_window;
};
Told Overhearer::s_told;

constexpr WPARAM kJournalTable = 0x000, kCategoriesTable = 0x100, kContactsTable = 0x200,
                 kNoNameTouched = 0x10000;

class Announced : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(nullptr), 1); }

    TestStore m_store;
    Overhearer m_overhearer{mervane::PathKey(m_store.Path())};
    DbJournal m_journal;
};

TEST_F(Announced, EachWriteWithItsCodeTableAndIdentifier)
{
    const CEOID id = AddEntry(m_journal, L"a");
    EXPECT_EQ(m_overhearer.Take(), (Told{{2 | kJournalTable, id}}));
    ASSERT_EQ(Sent().Text(kSubject, L"b").Write(m_journal, id), id);
    EXPECT_EQ(m_overhearer.Take(), (Told{{6 | kJournalTable, id}}));
    EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    EXPECT_EQ(m_overhearer.Take(), (Told{{8 | kJournalTable, id}}));
}

TEST_F(Announced, CategoriesContactsAndUses)
{
    DbCategories categories;
    DbContacts contacts;
    ASSERT_EQ(categories.Open(), 1);
    ASSERT_EQ(contacts.Open(), 1);
    const CEOID category = AddCategory(categories, L"Work");
    EXPECT_EQ(m_overhearer.Take(), (Told{{2 | kCategoriesTable, category}}));
    EXPECT_EQ(categories.IncUse(category), 1);
    EXPECT_EQ(categories.DecUse(category), 1);
    const std::pair<WPARAM, LPARAM> counted{6 | kCategoriesTable | kNoNameTouched, category};
    EXPECT_EQ(m_overhearer.Take(), (Told{counted, counted}));
    EXPECT_EQ(categories.Reset(), 1);
    EXPECT_EQ(m_overhearer.Take(), (Told{{15 | kCategoriesTable | kNoNameTouched, 0}}));
    const CEOID contact = AddContact(contacts, L"Doe");
    EXPECT_EQ(m_overhearer.Take(), (Told{{2 | kContactsTable, contact}}));
}

TEST_F(Announced, BulkWorkAsItsBeginAndItsEnd)
{
    CeDBase::BulkScope bulk(m_journal);
    ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
    EXPECT_EQ(m_overhearer.Take(), Told{});
    ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
    EXPECT_EQ(m_overhearer.Take(), (Told{{1, 0}}));
    ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
    {
        CeDBase::BulkScope inner(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"b"), 0u);
        EXPECT_EQ(inner.Commit(), 1);
    }
    EXPECT_EQ(m_overhearer.Take(), Told{});
    ASSERT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(m_overhearer.Take(), (Told{{15, 0}}));
}

TEST_F(Announced, TheEndOfBulkWorkAlsoWhenItIsGivenUp)
{
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
        ASSERT_NE(AddEntry(m_journal, L"b"), 0u);
    }
    EXPECT_EQ(m_overhearer.Take(), (Told{{1, 0}, {15, 0}}));
}

// A save that looks at the record first, in one transaction with the write.
TEST_F(Announced, ASingleWriteInABulkAsAnyOther)
{
    const CEOID id = AddEntry(m_journal, L"a");
    (void)m_overhearer.Take();
    {
        CeDBase::BulkScope bulk(m_journal);
        EXPECT_EQ(m_journal.SeekRecord(id), id);
        ASSERT_EQ(Sent().Text(kSubject, L"b").Write(m_journal, id), id);
        EXPECT_EQ(m_overhearer.Take(), Told{});
        ASSERT_EQ(bulk.Commit(), 1);
    }
    EXPECT_EQ(m_overhearer.Take(), (Told{{6 | kJournalTable, id}}));
}

TEST_F(Announced, NothingOfASingleWriteThatIsGivenUp)
{
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
    }
    EXPECT_EQ(m_overhearer.Take(), Told{});
}

TEST_F(Announced, NothingThatWasNotWritten)
{
    EXPECT_EQ(Sent().Text(kSubject, L"a").Write(m_journal, 99), 0u);
    EXPECT_EQ(m_journal.DeleteRecord(99), 0);
    EXPECT_EQ(Sent().Number(0x00990002, 1).Write(m_journal), 0u);
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    EXPECT_EQ(AddCategory(categories, L""), 0u);
    EXPECT_EQ(categories.IncUse(99), 0);
    EXPECT_EQ(m_overhearer.Take(), Told{});
}

TEST(AnnouncedReadOnly, BulkWorkThatCannotBeginHasNoEnd)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    journal.Close();
    ASSERT_TRUE(SetFileAttributesW(store.Path().c_str(), FILE_ATTRIBUTE_READONLY));
    Overhearer overhearer(mervane::PathKey(store.Path()));
    ASSERT_EQ(journal.Open(nullptr), 1);
    {
        CeDBase::BulkScope bulk(journal);
        EXPECT_EQ(AddEntry(journal, L"a"), 0u);
        EXPECT_EQ(bulk.Commit(), 0);
    }
    EXPECT_EQ(overhearer.Take(), Told{});
    journal.Close();
    SetFileAttributesW(store.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

} // namespace
