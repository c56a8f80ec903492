// The end of the session and other programs' requests to the address book, with and without something open.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstdlib>

#include "e2e/addrbook/address_book_window.h"
#include "e2e/harness/remote_menu.h"
#include "e2e/harness/store_reader.h"
#include "support/locked_store.h"

namespace {

constexpr const wchar_t* kSettings = L"Software\\Quillmarsh\\Address Book\\Settings";
constexpr int kWritingFrom = 600; // of the bar's thousand

class BookClosing : public AddressBookTest {
  protected:
    // A new contact with a name that is not saved.
    HWND OpenUnsaved()
    {
        PressKeys({VK_CONTROL, 'N'});
        HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
        return dialog && Activate(dialog) && SetText(Control(dialog, IDC_FIRST_NAME), L"Jane") ? dialog
                                                                                               : nullptr;
    }
    LRESULT Query(HWND window) const { return Send(window, WM_QUERYENDSESSION, 0, 0, -1); }

    // One question stands, and answered with Cancel leaves the contact as it was.
    void ExpectOneQuestion(HWND dialog)
    {
        const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
        ASSERT_TRUE(box);
        EXPECT_EQ(box.Text(), L"Save the changes to this contact?");
        ASSERT_EQ(Send(dialog, WM_NULL, 0, 0, -1), 0);
        ASSERT_TRUE(IsWindowVisible(box.Handle())) << "it waits for a person";
        ASSERT_TRUE(box.Answer(IDCANCEL));
        EXPECT_EQ(WaitForInputIdle(m_book.Handle(), kRemoteLimit), 0u);
        EXPECT_FALSE(HasMessageBox(m_book.Id())) << "a second question";
        EXPECT_TRUE(IsWindowVisible(dialog));
        EXPECT_EQ(TextOf(Control(dialog, IDC_FIRST_NAME)), L"Jane");
        EXPECT_TRUE(m_book.IsRunning());
    }

    static bool HasSetting(const wchar_t* name)
    {
        return RegGetValueW(HKEY_CURRENT_USER, kSettings, name, RRF_RT_REG_DWORD, nullptr, nullptr,
                            nullptr) == ERROR_SUCCESS;
    }
    void ExpectStoredAsAtAClose()
    {
        for (const wchar_t* name : {L"wLeft", L"wBottom", L"wMax", L"ColumnWidth0", L"ColumnWidth3"})
            EXPECT_TRUE(HasSetting(name)) << name;
    }
    // The program has ended by itself, and nothing lies beside the store.
    void ExpectEnd()
    {
        ASSERT_TRUE(m_book.WaitForEnd());
        EXPECT_EQ(m_book.ExitCode(), 0u);
        EXPECT_EQ(GetFileAttributesW((m_store.Path() + L"-wal").c_str()), INVALID_FILE_ATTRIBUTES);
    }
    std::string StoredNames() const
    {
        return StoreReader(m_store.Path())
            .QueryOne("SELECT coalesce(group_concat(file_as, ' '), '') FROM contacts")
            .value_or("unread");
    }
    // What runs for some seconds after the command; its window, once the bar has come so far.
    HWND TransferAt(int command, int place)
    {
        PostCommand(Window(), command);
        HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
        if (!chooser || !SetText(Control(chooser, kFileName), m_file))
            return nullptr;
        PressButton(chooser, IDOK);
        HWND transfer = WaitForDialogWith(m_book.Id(), IDC_TRANSFER_BAR);
        const auto isThere = [&] {
            return Send(Control(transfer, IDC_TRANSFER_BAR), PBM_GETPOS, 0, 0, -1) >= place;
        };
        return transfer && WaitFor(isThere) ? transfer : nullptr;
    }
    // Those of another first number are other contacts.
    std::string Cards(int count, int first = 0) const
    {
        std::string cards;
        for (int i = first; i < first + count; ++i)
            cards += CardOf("FN:Name " + std::to_string(i) + "\r\nUID:u" + std::to_string(i));
        return cards;
    }
    int StoredCount() const
    {
        const auto count = StoreReader(m_store.Path()).QueryOne("SELECT count(*) FROM contacts");
        return count ? atoi(count->c_str()) : -1;
    }
};

TEST_F(BookClosing, ACloseFromOutsideAsksInTheContact)
{
    ASSERT_NE(m_book.Start(), nullptr);
    HWND dialog = OpenUnsaved();
    ASSERT_NE(dialog, nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ExpectOneQuestion(dialog);
    PostCommand(Window(), CMD_CLOSE);
    ExpectOneQuestion(dialog);
}

// It asks every window of the program.
TEST_F(BookClosing, TheTaskListAsksOnce)
{
    ASSERT_NE(m_book.Start(), nullptr);
    HWND dialog = OpenUnsaved();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(m_book.RunTaskKill());
    ExpectOneQuestion(dialog);
    PressButton(dialog, IDOK);
    ASSERT_TRUE(WaitUntilGone(dialog));
    ASSERT_TRUE(m_book.RunTaskKill());
    ExpectEnd();
    ExpectStoredAsAtAClose();
    EXPECT_EQ(StoredNames(), "Jane");
}

TEST_F(BookClosing, AContactThatNobodyHasChangedIsClosedUnasked)
{
    ASSERT_NE(m_book.Start(), nullptr);
    PressKeys({VK_CONTROL, 'N'});
    HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(Query(Window()), TRUE);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_TRUE(m_book.IsRunning());
    ASSERT_TRUE(m_book.Close());
}

TEST_F(BookClosing, TheSessionDoesNotEndOverAContactThatIsNotSaved)
{
    ASSERT_NE(m_book.Start(), nullptr);
    EXPECT_EQ(Query(Window()), TRUE);
    HWND dialog = OpenUnsaved();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(Query(Window()), FALSE);
    EXPECT_EQ(Query(dialog), FALSE);
    PostMessageW(dialog, WM_CLOSE, 0, 0);
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(Query(Window()), FALSE) << "behind the question too";
    ASSERT_TRUE(box.Answer(IDCANCEL));
    Send(Window(), WM_ENDSESSION, FALSE);
    EXPECT_TRUE(IsWindowVisible(dialog)) << "it did not end after all";
    PressButton(dialog, IDOK);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_EQ(Query(Window()), TRUE) << "and once it is saved, it may";
    ASSERT_TRUE(ShowsNames({L"Jane"}));
}

TEST_F(BookClosing, TheSessionsEndStoresWhatACloseStores)
{
    m_cards = CardOf("FN:Kept");
    ASSERT_TRUE(StartWithCards());
    EXPECT_FALSE(HasSetting(L"wLeft"));
    Send(Window(), WM_ENDSESSION, TRUE);
    ExpectStoredAsAtAClose();
    ExpectEnd();
    EXPECT_EQ(StoredNames(), "Kept");
}

// The system goes on whatever it was answered.
TEST_F(BookClosing, TheSessionsEndOverAContactStoresTheSettings)
{
    m_cards = CardOf("FN:Kept");
    ASSERT_TRUE(StartWithCards());
    ASSERT_NE(OpenUnsaved(), nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitForMessageBox(m_book.Id()));
    Send(Window(), WM_ENDSESSION, TRUE);
    ExpectStoredAsAtAClose();
    ExpectEnd();
    EXPECT_EQ(StoredNames(), "Kept");
}

// A quick machine may have written all of it before the end is heard of; then it is tried again.
TEST_F(BookClosing, TheSessionsEndTakesARunningImportBack)
{
    constexpr int kCards = 60'000, kTries = 10;
    m_cards = CardOf("FN:Kept");
    ASSERT_TRUE(StartWithCards());
    const auto isTakenBack = [&](int before) {
        EXPECT_TRUE(WriteFileBytes(m_file, Cards(kCards, before)));
        EXPECT_NE(TransferAt(CMD_IMPORT, kWritingFrom + 1), nullptr);
        EXPECT_EQ(Query(Window()), TRUE) << "an import can be done again";
        Send(Window(), WM_ENDSESSION, TRUE);
        ExpectStoredAsAtAClose();
        ExpectEnd();
        return StoredCount() == before;
    };
    int stored = 1, tries = 1;
    while (!isTakenBack(stored)) {
        ASSERT_EQ(StoredCount(), stored += kCards) << "a part of it stays";
        ASSERT_LT(++tries, kTries) << "all of it stays each time";
        ASSERT_NE(m_book.Start(), nullptr);
    }
}

// It waits for another program's write and hears of the end in the midst of that.
TEST_F(BookClosing, TheSessionsEndTakesAnImportBackThatWaits)
{
    ASSERT_NE(m_book.Start(), nullptr);
    ASSERT_TRUE(WriteFileBytes(m_file, Cards(1)));
    {
        const LockedStore locked(m_store.Path());
        PostCommand(Window(), CMD_IMPORT);
        HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
        ASSERT_TRUE(chooser && SetText(Control(chooser, kFileName), m_file));
        PressButton(chooser, IDOK);
        HWND transfer = WaitForDialogWith(m_book.Id(), IDC_TRANSFER_BAR);
        ASSERT_NE(transfer, nullptr);
        // A timer's message is not taken while it waits: what is posted stays in the queue.
        Send(Window(), WM_ENDSESSION, TRUE);
        ASSERT_TRUE(m_book.WaitForEnd());
        EXPECT_EQ(m_book.ExitCode(), 0u);
    }
    EXPECT_EQ(StoredNames(), "");
}

// A quick machine may have written the whole file before the end is heard of; then it is tried again.
TEST_F(BookClosing, TheSessionsEndLeavesNoHalfOfAnExport)
{
    m_cards = Cards(20'000);
    ASSERT_TRUE(StartWithCards());
    const auto isCutOff = [&] {
        EXPECT_TRUE(DeleteFileW(m_file.c_str()));
        EXPECT_NE(TransferAt(CMD_EXPORT_CARDS, 0), nullptr);
        Send(Window(), WM_ENDSESSION, TRUE);
        ExpectEnd();
        return GetFileAttributesW(m_file.c_str()) == INVALID_FILE_ATTRIBUTES;
    };
    constexpr int kTries = 10;
    int tries = 1;
    while (!isCutOff()) {
        ASSERT_LT(++tries, kTries) << "a file is left each time";
        ASSERT_NE(m_book.Start(), nullptr);
    }
    WIN32_FIND_DATAW found;
    HANDLE files = FindFirstFileW((m_file + L"*").c_str(), &found);
    if (files != INVALID_HANDLE_VALUE) {
        ADD_FAILURE() << std::wstring(found.cFileName);
        FindClose(files);
    }
}

TEST_F(BookClosing, TheSessionsEndAtAnImportsQuestionChangesNothing)
{
    m_cards = CardOf("FN:Anna\r\nUID:1");
    ASSERT_TRUE(StartWithCards());
    ASSERT_TRUE(WriteFileBytes(m_file, CardOf("FN:New") + CardOf("FN:Zoe\r\nUID:1")));
    ASSERT_NE(AskedByImport(), nullptr);
    EXPECT_EQ(Query(Window()), TRUE);
    Send(Window(), WM_ENDSESSION, TRUE);
    ExpectStoredAsAtAClose();
    ExpectEnd();
    EXPECT_EQ(StoredNames(), "Anna");
}

TEST_F(BookClosing, ACloseGoesToTheImportsQuestion)
{
    m_cards = CardOf("FN:Anna\r\nUID:1");
    ASSERT_TRUE(StartWithCards());
    ASSERT_TRUE(WriteFileBytes(m_file, CardOf("FN:Zoe\r\nUID:1") + CardOf("FN:New")));
    HWND question = AskedByImport();
    ASSERT_NE(question, nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntilGone(question));
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(Window()) != FALSE; }));
    EXPECT_TRUE(ShowsNames({L"Anna"}));
    EXPECT_TRUE(m_book.IsRunning());
}

TEST_F(BookClosing, ACloseCancelsARunningImport)
{
    ASSERT_NE(m_book.Start(), nullptr);
    ASSERT_TRUE(WriteFileBytes(m_file, Cards(60'000)));
    HWND transfer = TransferAt(CMD_IMPORT, kWritingFrom + 1);
    ASSERT_NE(transfer, nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntilGone(transfer));
    EXPECT_TRUE(ShowsNames({}));
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(Window()) != FALSE; }));
    ASSERT_TRUE(m_book.Close());
    EXPECT_EQ(StoredNames(), "");
}

TEST_F(BookClosing, ACloseGoesToTheChoiceOfAFile)
{
    ASSERT_NE(m_book.Start(), nullptr);
    PostCommand(Window(), CMD_IMPORT);
    HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
    ASSERT_NE(chooser, nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntilGone(chooser));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(Window()) != FALSE; }));
    EXPECT_TRUE(m_book.IsRunning());
}

TEST_F(BookClosing, ACloseEndsAnOpenMenuFirst)
{
    ASSERT_NE(m_book.Start(), nullptr);
    PressKeys({VK_MENU, 'F'});
    ASSERT_NE(WaitForPopup(m_book.Id()), nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ExpectEnd();
    ExpectStoredAsAtAClose();
}

TEST_F(BookClosing, ACommandWithAMenuOpenIsRunAndTheMenuGoes)
{
    ASSERT_NE(m_book.Start(), nullptr);
    PressKeys({VK_MENU, 'F'});
    HWND popup = WaitForPopup(m_book.Id());
    ASSERT_NE(popup, nullptr);
    PostCommand(Window(), CMD_NEW_CONTACT);
    HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(popup) || !IsWindowVisible(popup); }));
    PressButton(dialog, IDCANCEL);
    ASSERT_TRUE(WaitUntilGone(dialog));
    ASSERT_TRUE(m_book.Close());
}

// Commands, keys and clicks that another program posts, or that were on their way.
TEST_F(BookClosing, NothingIsBegunBehindAQuestion)
{
    m_cards = CardOf("FN:Anna") + CardOf("FN:Bert");
    ASSERT_TRUE(StartWithCards());
    PostCommand(Window(), CMD_DELETE_CONTACT);
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    for (const int command :
         {CMD_NEW_CONTACT, CMD_EDIT_CONTACT, CMD_DELETE_CONTACT, CMD_IMPORT, CMD_EXPORT_CARDS, IDOK})
        PostCommand(Window(), command);
    PostMessageW(List().Handle(), WM_KEYDOWN, VK_DELETE, 0);
    PostMessageW(List().Handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, 30));
    PostMessageW(List().Handle(), WM_LBUTTONUP, 0, MAKELPARAM(20, 30));
    PostMessageW(Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List().Handle()), -1);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    // What is posted last has its effect last.
    PostMessageW(List().Handle(), LVM_SETTEXTCOLOR, 0, 0x123456);
    ASSERT_TRUE(WaitFor([&] { return Send(List().Handle(), LVM_GETTEXTCOLOR) == 0x123456; }));
    EXPECT_EQ(WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME, 0), nullptr);
    EXPECT_EQ(WaitForDialogWith(m_book.Id(), kFileName, 0), nullptr);
    ASSERT_TRUE(IsWindowVisible(box.Handle()));
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(ShowsNames({L"Bert"})) << "the one that was asked about";
    EXPECT_FALSE(HasMessageBox(m_book.Id()));
    ASSERT_TRUE(m_book.Close());
}

} // namespace
