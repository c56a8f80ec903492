// The address book as a person works it.
#include <gtest/gtest.h>

#include "e2e/addrbook/address_book_window.h"
#include "e2e/harness/remote_menu.h"
#include "e2e/harness/store_reader.h"
#include "mervane/db_contacts.h"
#include "support/locked_store.h"

namespace {

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

// The question, the window that waits behind it, and what a person answers from the keyboard.
TEST_F(AddressBookTest, AsksBeforeACardChangesAContact)
{
    m_cards = CardOf("FN:Anna\r\nTEL:1\r\nUID:1") + CardOf("FN:Bert\r\nUID:2");
    ASSERT_TRUE(StartWithCards());
    ASSERT_TRUE(
        WriteFileBytes(m_file, CardOf("FN:Anna\r\nNOTE:n\r\nUID:1") + CardOf("FN:Bert\r\nNOTE:n\r\nUID:2")));
    HWND question = AskedByImport();
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(TextOf(Control(question, IDC_CARD_NAME)), L"A card in the file would change \"Anna\":");
    EXPECT_EQ(TextOf(Control(question, IDC_CARD_CHANGES)), L"Note\r\n    now\t(nothing)\r\n    then\tn\r\n");
    EXPECT_FALSE(IsWindowEnabled(Window()));
    PressKeys({VK_MENU, 'U'});
    ASSERT_TRUE(WaitUntilGone(question));
    question = WaitForDialogWith(m_book.Id(), IDC_CARD_UPDATE);
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(Activate(question));
    PressKey(VK_RETURN);
    EXPECT_EQ(EndOfTransfer(), L"1 contact was updated, 1 was skipped.");
}

// The window that waits is closed: that is the question's Cancel, which ends the import without a change.
TEST_F(AddressBookTest, ClosingTheImportWhileItAsksChangesNothing)
{
    m_cards = CardOf("FN:Anna\r\nUID:1");
    ASSERT_TRUE(StartWithCards());
    ASSERT_TRUE(WriteFileBytes(m_file, CardOf("FN:Zoe\r\nUID:1") + CardOf("FN:New")));
    HWND question = AskedByImport();
    ASSERT_NE(question, nullptr);
    HWND import = GetWindow(question, GW_OWNER);
    ASSERT_NE(import, nullptr);
    PostMessageW(import, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntilGone(question));
    EXPECT_TRUE(WaitUntilGone(import));
    EXPECT_TRUE(ShowsNames({L"Anna"}));
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
    EXPECT_EQ(Transfer(CMD_IMPORT), L"1 contact was unchanged.");
    EXPECT_TRUE(ShowsNames({L"\u674E, \u5C0F\u9F99"}));
}

// Another program writes for longer than that is waited for, which is 2.5 seconds.
TEST_F(AddressBookTest, AnswersWhileADeletionWaits)
{
    m_cards = CardOf("FN:Anna");
    ASSERT_TRUE(StartWithCards());
    PostCommand(Window(), CMD_DELETE_CONTACT);
    const RemoteMessageBox question = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(question);
    const LockedStore locked(m_store.Path());
    PostMessageW(question.Handle(), WM_COMMAND, IDYES, 0);
    const auto isTold = [&] {
        const RemoteMessageBox box = WaitForMessageBox(m_book.Id(), 0);
        return box && box.Handle() != question.Handle();
    };
    EXPECT_LT(LongestAnswer(Window(), isTold), 1500u);
    EXPECT_TRUE(isTold());
    EXPECT_TRUE(ShowsNames({L"Anna"}));
}

// What the mouse can reach the keyboard reaches too.
TEST_F(AddressBookTest, HasItsMenuAtTheContextMenuKey)
{
    for (const char* card : {"FN:Anna", "FN:Bert"})
        m_cards += CardOf(card);
    ASSERT_TRUE(StartWithCards());
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{1}; }));
    PressKey(VK_APPS);
    HWND popup = WaitForPopup(m_book.Id());
    ASSERT_NE(popup, nullptr);
    EXPECT_TRUE(MenuOfPopup(popup).Find(CMD_DELETE_CONTACT).enabled);
    EXPECT_TRUE(MenuOfPopup(popup).Find(CMD_EDIT_CONTACT).enabled);
    PressKey('D');
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Delete \"Bert\"?");
    ASSERT_TRUE(box.Answer(IDNO));

    ASSERT_TRUE(Click(List().LabelPoint(0), MouseButton::Right));
    popup = WaitForPopup(m_book.Id());
    ASSERT_NE(popup, nullptr);
    ASSERT_TRUE(ChooseFromPopup(popup, CMD_SELECT_ALL));
    EXPECT_TRUE(WaitFor([&] { return List().SelectedRows() == (std::vector{0, 1}); }));
}

TEST_F(AddressBookTest, TabAndLettersLeadToEveryControl)
{
    ASSERT_NE(m_book.Start(), nullptr);
    HWND find = Control(Window(), IDC_FIND);
    const auto hasFocus = [&](HWND top, HWND control) {
        return WaitFor([&] { return FocusOf(top) == control; });
    };
    ASSERT_TRUE(hasFocus(Window(), List().Handle()));
    PressKey(VK_TAB);
    EXPECT_TRUE(hasFocus(Window(), find));
    PressKey(VK_TAB);
    EXPECT_TRUE(hasFocus(Window(), List().Handle()));
    PressKeys({VK_MENU, 'N'});
    EXPECT_TRUE(hasFocus(Window(), find));

    PressKeys({VK_CONTROL, 'N'});
    HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
    ASSERT_TRUE(dialog && Activate(dialog));
    constexpr std::pair<WORD, int> kLetters[] = {
        {'L', IDC_LAST_NAME}, {'C', IDC_COMPANY},   {'J', IDC_JOB_TITLE}, {'I', IDC_FILE_AS},
        {'B', IDC_BIRTHDAY},  {'E', IDC_EMAILS},    {'P', IDC_PHONES},    {'A', IDC_ADDRESS},
        {'N', IDC_NOTE},      {'F', IDC_FIRST_NAME}};
    for (const auto& [letter, id] : kLetters) {
        PressKeys({VK_MENU, letter});
        EXPECT_TRUE(hasFocus(dialog, Control(dialog, id))) << id;
    }
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(dialog));
}

// In a box of several lines Enter begins the next one; Tab goes on.
TEST_F(AddressBookTest, EnterBreaksALineWhereThereAreSeveral)
{
    ASSERT_NE(m_book.Start(), nullptr);
    ASSERT_TRUE(AddContact(L"Jane\tDoe\t\t\t\t\tj@one\nj@two\t1\n2\t\tfriend\t"));
    ASSERT_TRUE(ShowsNames({L"Doe, Jane"}));
    ASSERT_TRUE(m_book.Close());
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT emails FROM contacts"), "j@one\r\nj@two");
    EXPECT_EQ(store.QueryOne("SELECT phones FROM contacts"), "1\r\n2");
    EXPECT_EQ(store.QueryOne("SELECT note FROM contacts"), "friend");
}

TEST_F(AddressBookTest, EscAsksForWhatWasTypedAndTheKeyboardGoesOn)
{
    ASSERT_NE(m_book.Start(), nullptr);
    PressKeys({VK_CONTROL, 'N'});
    HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
    ASSERT_TRUE(dialog && Activate(dialog));
    TypeText(L"Jane");
    ASSERT_TRUE(WaitFor([&] { return TextOf(Control(dialog, IDC_FIRST_NAME)) == L"Jane"; }));
    PressKey(VK_ESCAPE);
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Save the changes to this contact?");
    EXPECT_TRUE(box.Offers(IDCANCEL));
    ASSERT_TRUE(box.Answer(IDNO));
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_TRUE(AddContact(L"Anna"));
    EXPECT_TRUE(ShowsNames({L"Anna"}));
}

TEST_F(AddressBookTest, AFileThatIsThereIsNotReplacedUnasked)
{
    m_cards = CardOf("FN:Anna\r\nUID:anna-1");
    ASSERT_TRUE(StartWithCards());
    PressKeys({VK_CONTROL, 'E'});
    HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
    ASSERT_NE(chooser, nullptr);
    ASSERT_TRUE(SetText(Control(chooser, kFileName), m_file));
    PressButton(chooser, IDOK);
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDNO));
    EXPECT_EQ(ReadFileBytes(m_file), m_cards);

    // A name without an extension gets the one of the files that are offered.
    const std::wstring name = m_store.Path().substr(0, m_store.Path().rfind(L'.')) + L"-bare";
    ASSERT_TRUE(SetText(Control(chooser, kFileName), name));
    PressButton(chooser, IDOK);
    EXPECT_EQ(EndOfTransfer(), L"1 contact was exported.");
    EXPECT_EQ(ReadFileBytes(name + L".vcf"),
              "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Anna\r\nUID:anna-1\r\nEND:VCARD\r\n");
    DeleteFileW((name + L".vcf").c_str());
}

TEST_F(AddressBookTest, OpensWhereItWasClosed)
{
    ASSERT_NE(m_book.Start(), nullptr);
    ASSERT_TRUE(MoveWindow(Window(), 90, 60, 420, 300, TRUE));
    ASSERT_TRUE(m_book.Close());
    ASSERT_NE(m_book.Start(), nullptr);
    RECT place{};
    EXPECT_TRUE(WaitFor([&] {
        GetWindowRect(Window(), &place);
        return place.left == 90 && place.top == 60 && place.right == 510 && place.bottom == 360;
    })) << place.left
        << " " << place.top << " " << place.right << " " << place.bottom;
    ShowWindow(Window(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(WaitFor([&] { return IsZoomed(Window()) != FALSE; }));
    ASSERT_TRUE(m_book.Close());
    ASSERT_NE(m_book.Start(), nullptr);
    EXPECT_TRUE(WaitFor([&] { return IsZoomed(Window()) != FALSE; }));
}

TEST_F(AddressBookTest, ASecondStartBringsTheFirstForward)
{
    ASSERT_NE(m_book.Start(), nullptr);
    JournalProcess second(L"addrbook.exe", kAddressBook);
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_EQ(second.ExitCode(), 0u);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == Window(); }));

    // One that lies in the task bar comes back, with what it has open in front.
    PressKeys({VK_CONTROL, 'N'});
    HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == dialog; }));
    PressButton(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilGone(dialog));
    ShowWindow(Window(), SW_MINIMIZE);
    ASSERT_TRUE(WaitFor([&] { return IsIconic(Window()) != FALSE; }));
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitFor([&] { return IsIconic(Window()) == FALSE; }));
}

TEST_F(AddressBookTest, SaysWhenTheContactsCannotBeOpened)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store"));
    ASSERT_TRUE(m_book.Launch());
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_TRUE(
        box.Text().ends_with(L"\n\ncannot be opened: the file is not a journal.\n\nNothing in it has been "
                             L"changed.\n\nStart the journal: it offers a backup, where one is whole."))
        << box.Text();
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_TRUE(m_book.WaitForEnd());
    EXPECT_EQ(m_book.ExitCode(), 1u);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), "no store");
}

TEST_F(AddressBookTest, TellsWhatWasSetAside)
{
    ASSERT_TRUE(DbContacts().Open());
    ASSERT_TRUE(WriteFileBytes(m_store.Path() + L"-wal", std::string(5000, 'x')));
    ASSERT_TRUE(m_book.Launch());
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_TRUE(IsWindowVisible(GetWindow(box.Handle(), GW_OWNER)));
    EXPECT_NE(box.Text().find(m_store.Path() + L"-wal.set-aside-2"), std::wstring::npos);
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_NE(m_book.WaitForMainWindow(), nullptr);
    ASSERT_TRUE(m_book.Close());
}

} // namespace
