// The address book as a person works it, and the journal beside it.
#include <gtest/gtest.h>

#include "addrbook/resource.h"
#include "e2e/harness/input.h"
#include "e2e/harness/journal_test.h"
#include "e2e/harness/message_box.h"
#include "e2e/harness/remote_list_view.h"
#include "e2e/harness/remote_window.h"
#include "e2e/harness/settings.h"
#include "e2e/harness/store_reader.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "mervane/z_column.h"

namespace {

constexpr const wchar_t* kAddressBook = L"AddressBook";
constexpr int kGoContacts = 111;
constexpr int kFileName = 0x47C; // the system's box for a file's name
constexpr CEPROPID kSubject = 0x0066001F, kContactsOfEntry = 0x006F0041;

// As the journal stores that its list shows a column.
DWORD ShownColumn(CEPROPID property)
{
    constexpr int kWidth = 90;
    return DWORD{PropertyNumber(property)} << kColumnPropertyShift | kWidth << kColumnWidthShift |
           kColumnShown;
}

class AddressBookTest : public JournalTest {
  protected:
    ~AddressBookTest() override
    {
        DeleteFileW(m_file.c_str());
        EndStarted();
    }
    HWND Window() const { return m_book.MainWindow(); }
    RemoteListView List() const { return RemoteListView(Control(Window(), IDC_CONTACTS)); }
    bool ShowsNames(const std::vector<std::wstring>& names) const
    {
        return WaitFor([&] {
            std::vector<std::wstring> shown;
            for (int row = 0; row < List().RowCount(); ++row)
                shown.push_back(List().Text(row, 0));
            return shown == names;
        });
    }
    // Enters a contact into the window that Ctrl+N opens, from the keyboard alone.
    bool AddContact(const std::wstring& keys)
    {
        PressKeys({VK_CONTROL, 'N'});
        HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
        if (!dialog || !Activate(dialog))
            return false;
        TypeText(keys);
        PressKey(VK_RETURN);
        return WaitUntilGone(dialog) && WaitForForegroundOf(m_book.Id());
    }
    // Chooses the file in the system's window that the command opens; what the import or export says at its
    // end.
    std::wstring Transfer(int command)
    {
        PostCommand(Window(), command);
        HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
        if (!chooser || !SetText(Control(chooser, kFileName), m_file))
            return L"no box for a file's name";
        PressButton(chooser, IDOK);
        HWND dialog = WaitForDialogWith(m_book.Id(), IDC_TRANSFER_BAR);
        if (!dialog || !WaitFor([&] { return IsWindowEnabled(GetDlgItem(dialog, IDOK)) != FALSE; }))
            return L"no end";
        const std::wstring text = TextOf(GetDlgItem(dialog, IDC_TRANSFER_TEXT));
        PressButton(dialog, IDOK);
        return WaitUntilGone(dialog) ? text : L"still open";
    }
    // The one that the journal has started.
    HWND StartedWindow() const
    {
        return WaitForWindow([] { return FindWindowW(kAddressBook, nullptr); });
    }
    static void EndStarted()
    {
        if (HWND started = FindWindowW(kAddressBook, nullptr)) {
            PostMessageW(started, WM_CLOSE, 0, 0);
            (void)WaitUntilGone(started);
        }
    }

    JournalProcess m_book{L"addrbook.exe", kAddressBook};
    std::wstring m_file = m_store.Path() + L".\u4EBA.vcf";
};

using Names = std::vector<std::wstring>;

TEST_F(AddressBookTest, IsWorkedFromTheKeyboard)
{
    ASSERT_NE(m_book.Start(), nullptr);
    ASSERT_TRUE(AddContact(L"Jane\tDoe\tAcme"));
    ASSERT_TRUE(AddContact(L"Anna\tM\u00FCller"));
    ASSERT_TRUE(AddContact(L"\t\tZeta"));
    ASSERT_TRUE(ShowsNames({L"Doe, Jane", L"M\u00FCller, Anna", L"Zeta"}));

    // Find as one types, go down, open with Enter, change.
    PressKeys({VK_CONTROL, 'F'});
    TypeText(L"anna");
    ASSERT_TRUE(ShowsNames({L"M\u00FCller, Anna"}));
    PressKey(VK_RETURN);
    HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
    ASSERT_TRUE(dialog && Activate(dialog));
    EXPECT_EQ(TextOf(Control(dialog, IDC_LAST_NAME)), L"M\u00FCller");
    TypeText(L"Hanna");
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(dialog));
    ASSERT_TRUE(ShowsNames({L"M\u00FCller, Hanna"}));
    ASSERT_TRUE(WaitForForegroundOf(m_book.Id()));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(ShowsNames({L"Doe, Jane", L"M\u00FCller, Hanna", L"Zeta"}));

    // Esc again leaves the box for the list; Delete asks.
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(Window()) == List().Handle(); }));
    PressKey(VK_DELETE);
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Delete \"M\u00FCller, Hanna\"?");
    ASSERT_TRUE(box.Answer(IDYES));
    ASSERT_TRUE(ShowsNames({L"Doe, Jane", L"Zeta"}));
    ASSERT_TRUE(m_book.Close());
    EXPECT_EQ(StoreReader(m_store.Path())
                  .QueryOne("SELECT group_concat(file_as || '/' || company, ' ') FROM contacts"),
              "Doe, Jane/Acme Zeta/Zeta");
}

TEST_F(AddressBookTest, ImportsAndExports)
{
    ASSERT_TRUE(WriteFileBytes(
        m_file, "BEGIN:VCARD\nVERSION:3.0\nN:\xE6\x9D\x8E;\xE5\xB0\x8F\xE9\xBE\x99;;;\n"
                "FN:\xE5\xB0\x8F\xE9\xBE\x99 \xE6\x9D\x8E\nX-ODD;A=b:\xF0\x9F\x98\x80\nEND:VCARD\n"
                "BEGIN:VCARD\nVERSION:3.0\nbroken\nEND:VCARD\n"));
    ASSERT_NE(m_book.Start(), nullptr);
    EXPECT_EQ(
        Transfer(CMD_IMPORT),
        L"1 contact was imported.\r\n1 card could not be read.\r\nLine 9: the line is none of a card's.");
    ASSERT_TRUE(ShowsNames({L"\u674E, \u5C0F\u9F99"}));
    ASSERT_TRUE(DeleteFileW(m_file.c_str()));
    EXPECT_EQ(Transfer(CMD_EXPORT_CARDS), L"1 contact was exported.");
    const std::string written = ReadFileBytes(m_file);
    const size_t uid = written.find("UID:urn:uuid:");
    ASSERT_NE(uid, std::string::npos);
    EXPECT_EQ(written.substr(0, uid),
              "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:\xE5\xB0\x8F\xE9\xBE\x99 \xE6\x9D\x8E\r\n"
              "N:\xE6\x9D\x8E;\xE5\xB0\x8F\xE9\xBE\x99;;;\r\nX-ODD;A=b:\xF0\x9F\x98\x80\r\n");
    EXPECT_EQ(written.substr(written.find('\r', uid)), "\r\nEND:VCARD\r\n");
    EXPECT_EQ(Transfer(CMD_IMPORT), L"1 contact was updated.");
    EXPECT_TRUE(ShowsNames({L"\u674E, \u5C0F\u9F99"}));
}

// Go > Contacts starts it; what happens in it the open journal shows at once.
TEST_F(AddressBookTest, ADeletedContactIsNoLongerNamedInTheJournal)
{
    {
        DbContacts contacts;
        ASSERT_EQ(contacts.Open(), 1);
        std::wstring name = L"Doe, Jane";
        CEPROPVAL fileAs{kContactsKey, 0, 0, {}};
        fileAs.val.lpwstr = name.data();
        const CEOID id = contacts.WriteRecord(0, 1, &fileAs);
        ASSERT_NE(id, 0u);
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        contacts.Assign(id);
        std::wstring subject = L"Call";
        CEPROPVAL entry[2] = {{kSubject, 0, 0, {}}, {kContactsOfEntry, 0, 0, {}}};
        entry[0].val.lpwstr = subject.data();
        ASSERT_EQ(contacts.SetBlob(&entry[1].val.blob), 1);
        ASSERT_NE(journal.WriteRecord(0, 2, entry), 0u);
        LocalFree(entry[1].val.blob.lpb);
    }
    ASSERT_TRUE(StoreSetting(L"Settings", L"Column0", ShownColumn(kSubject)));
    ASSERT_TRUE(StoreSetting(L"Settings", L"Column1", ShownColumn(kContactsOfEntry)));
    ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", DWORD{2}));
    ASSERT_NE(m_journal.Start(), nullptr);
    const RemoteListView entries(ChildOfClass(m_journal.MainWindow(), L"SysListView32"));
    ASSERT_TRUE(WaitFor([&] { return entries.Text(0, 1) == L"Doe, Jane"; }));

    PostCommand(m_journal.MainWindow(), kGoContacts);
    HWND book = StartedWindow();
    ASSERT_NE(book, nullptr);
    ASSERT_TRUE(WaitFor([&] { return RemoteListView(Control(book, IDC_CONTACTS)).RowCount() == 1; }));
    DWORD process = 0;
    GetWindowThreadProcessId(book, &process);
    PostCommand(book, CMD_DELETE_CONTACT);
    const RemoteMessageBox box = WaitForMessageBox(process);
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(WaitFor([&] { return entries.Text(0, 1).empty(); }));
    EXPECT_EQ(entries.Text(0, 0), L"Call");
}

TEST_F(AddressBookTest, ASecondStartBringsTheFirstForward)
{
    ASSERT_NE(m_book.Start(), nullptr);
    JournalProcess second(L"addrbook.exe", kAddressBook);
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_EQ(second.ExitCode(), 0u);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == Window(); }));
}

TEST_F(AddressBookTest, SaysWhenTheContactsCannotBeOpened)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store"));
    ASSERT_TRUE(m_book.Launch());
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"The contacts cannot be opened.");
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_TRUE(m_book.WaitForEnd());
    EXPECT_EQ(m_book.ExitCode(), 1u);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), "no store");
}

} // namespace
