// The address book and the journal over one store: what happens in one the other shows at once.
#include <gtest/gtest.h>

#include "e2e/addrbook/address_book_window.h"
#include "e2e/harness/settings.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "mervane/z_column.h"
#include "res/resource.h"
#include "util/owners.h"

namespace {

constexpr CEPROPID kSubject = 0x0066001F, kContactsOfEntry = 0x006F0041;

// As the journal stores that its list shows a column.
DWORD ShownColumn(CEPROPID property)
{
    constexpr int kWidth = 90;
    return DWORD{PropertyNumber(property)} << kColumnPropertyShift | kWidth << kColumnWidthShift |
           kColumnShown;
}

// A new one, or the one with the identifier.
CEOID WriteContact(DbContacts& contacts, const wchar_t* name, CEOID id = 0)
{
    CEPROPVAL fileAs{kContactsKey, 0, 0, {}};
    fileAs.val.lpwstr = const_cast<wchar_t*>(name);
    return contacts.WriteRecord(id, 1, &fileAs);
}

CEOID WriteCall(DbContacts& contacts)
{
    DbJournal journal;
    CEPROPVAL entry[2] = {{kSubject, 0, 0, {}}, {kContactsOfEntry, 0, 0, {}}};
    entry[0].val.lpwstr = const_cast<wchar_t*>(L"Call");
    if (!journal.Open(nullptr) || !contacts.SetBlob(&entry[1].val.blob))
        return 0;
    const LocalBlock<BYTE> blob(entry[1].val.blob.lpb);
    return journal.WriteRecord(0, 2, entry);
}

// A journal with a call that is linked to Jane, and the address book that Go > Contacts has started.
class BesideTheJournal : public JournalTest {
  protected:
    void SetUp() override
    {
        {
            DbContacts contacts;
            ASSERT_EQ(contacts.Open(), 1);
            m_jane = WriteContact(contacts, L"Doe, Jane");
            ASSERT_NE(m_jane, 0u);
            contacts.Assign(m_jane);
            ASSERT_NE(WriteCall(contacts), 0u);
        }
        ASSERT_TRUE(StoreSetting(L"Settings", L"Column0", ShownColumn(kSubject)));
        ASSERT_TRUE(StoreSetting(L"Settings", L"Column1", ShownColumn(kContactsOfEntry)));
        ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", DWORD{2}));
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(JournalNames(L"Doe, Jane"));
        PostCommand(m_journal.MainWindow(), CMD_CONTACTS);
        m_book = WaitForWindow([] { return FindWindowW(kAddressBook, nullptr); });
        ASSERT_NE(m_book, nullptr);
        ASSERT_TRUE(WaitFor([&] { return Book().RowCount() == 1; }));
        GetWindowThreadProcessId(m_book, &m_bookProcess);
        ASSERT_TRUE(Activate(m_book)) << "two programs' windows come up side by side";
    }
    void TearDown() override
    {
        if (HWND started = FindWindowW(kAddressBook, nullptr)) {
            PostMessageW(started, WM_CLOSE, 0, 0);
            (void)WaitUntilGone(started);
        }
    }
    RemoteListView Entries() const
    {
        return RemoteListView(ChildOfClass(m_journal.MainWindow(), L"SysListView32"));
    }
    RemoteListView Book() const { return RemoteListView(Control(m_book, IDC_CONTACTS)); }
    bool JournalNames(const wchar_t* contacts) const
    {
        return WaitFor([&] { return Entries().Text(0, 1) == contacts; });
    }
    // In the address book's first contact.
    bool Rename(const wchar_t* fileAs)
    {
        if (!Activate(m_book))
            return false;
        PostCommand(m_book, CMD_EDIT_CONTACT);
        HWND dialog = WaitForDialogWith(m_bookProcess, IDC_FIRST_NAME);
        if (!dialog || !Activate(dialog) || !SetText(Control(dialog, IDC_FILE_AS), fileAs))
            return false;
        PressButton(dialog, IDOK);
        return WaitUntilGone(dialog);
    }

    CEOID m_jane = 0;
    HWND m_book = nullptr;
    DWORD m_bookProcess = 0;
};

TEST_F(BesideTheJournal, ADeletedContactIsNoLongerNamed)
{
    PostCommand(m_book, CMD_DELETE_CONTACT);
    const RemoteMessageBox box = WaitForMessageBox(m_bookProcess);
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(JournalNames(L""));
    EXPECT_EQ(Entries().Text(0, 0), L"Call");
}

TEST_F(BesideTheJournal, ARenamedContactIsNamedAnew)
{
    ASSERT_TRUE(Rename(L"Smith, Jane"));
    EXPECT_TRUE(JournalNames(L"Smith, Jane"));
}

TEST_F(BesideTheJournal, AnOpenEditorsListFollows)
{
    PostCommand(m_journal.MainWindow(), CMD_NEW_ENTRY);
    HWND editor = WaitForDialogWith(m_journal.Id(), IDC_EDITOR_BAR);
    ASSERT_NE(editor, nullptr);
    PostCommand(editor, CMD_ASSIGN_CONTACTS);
    ASSERT_TRUE(WaitFor([&] { return Control(editor, IDC_CONTACT_LIST) != nullptr; }));
    const RemoteListView list(Control(editor, IDC_CONTACT_LIST));
    ASSERT_TRUE(WaitFor([&] { return list.RowCount() == 1 && list.Text(0, 0) == L"Doe, Jane"; }));
    DbContacts contacts;
    ASSERT_EQ(contacts.Open(), 1);
    ASSERT_EQ(WriteContact(contacts, L"Smith, Jane", m_jane), m_jane);
    EXPECT_TRUE(WaitFor([&] { return list.Text(0, 0) == L"Smith, Jane"; }));
    EXPECT_TRUE(WaitFor([&] { return Book().Text(0, 0) == L"Smith, Jane"; }));
}

TEST_F(BesideTheJournal, TheMenuBringsAnOpenAddressBookForward)
{
    ASSERT_TRUE(Activate(m_journal.MainWindow()));
    PostCommand(m_journal.MainWindow(), CMD_CONTACTS);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == m_book; }));
    EXPECT_EQ(VisibleWindows(kAddressBook), std::vector{m_book});
}

// The other way: whoever else writes a contact, the open address book shows it.
TEST_F(BesideTheJournal, TheAddressBookFollowsAnotherProgram)
{
    DbContacts contacts;
    ASSERT_EQ(contacts.Open(), 1);
    const CEOID adam = WriteContact(contacts, L"Adam");
    ASSERT_NE(adam, 0u);
    EXPECT_TRUE(WaitFor([&] { return Book().RowCount() == 2 && Book().Text(0, 0) == L"Adam"; }));
    EXPECT_EQ(Book().FocusedRow(), 1) << "Jane stays the current one";
    EXPECT_EQ(contacts.DeleteRecord(adam), 1);
    EXPECT_TRUE(WaitFor([&] { return Book().RowCount() == 1 && Book().Text(0, 0) == L"Doe, Jane"; }));
}

} // namespace
