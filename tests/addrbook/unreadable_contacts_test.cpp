// A failure is not a "no": nothing is written, deleted or left out in silence where the contacts cannot be
// read.
#include <commctrl.h>

#include <algorithm>

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "addrbook/transfer/count_text.h"
#include "address_window_fixture.h"
#include "mervane/file/trouble.h"
#include "support/fault_vfs.h"
#include "support/test_drive.h"
#include "support/test_windows.h"
#include "support/unreadable_table.h"
#include "transfers.h"

namespace addrbook {

namespace {

TEST_F(Transfers, KnowNoUidsWhereTheContactsCannotBeRead)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a\nUID:1")), State::Done);
    ContactUids uids;
    ASSERT_TRUE(uids.Load(m_contacts));
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        EXPECT_FALSE(uids.Load(m_contacts));
        EXPECT_TRUE(uids.IsEmpty());
        EXPECT_EQ(Import(vcard::CardOf("FN:a\nNOTE:n\nUID:1")), State::Failed);
        EXPECT_TRUE(m_report.starts_with(L"The contacts cannot be read: ")) << m_report;
        EXPECT_TRUE(m_report.ends_with(L". Nothing was imported.")) << m_report;
    }
    EXPECT_EQ(m_contacts.RecordCount(), 1u) << "no double";
    EXPECT_EQ(Import(vcard::CardOf("FN:a\nNOTE:n\nUID:1")), State::Done);
    EXPECT_EQ(m_report, L"1 contact was updated.");
}

TEST_F(Transfers, StopWhereTheContactsCannotBeReadAfterAQuestion)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a\nUID:1")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, vcard::CardOf("FN:a\nNOTE:n\nUID:1") + vcard::CardOf("FN:b")));
    ImportJob job(m_contacts, m_path, Asker());
    State state;
    while ((state = job.Step(20)) == State::Working) {
    }
    ASSERT_EQ(state, State::Asking);
    ASSERT_EQ(job.Ask(nullptr), State::Working);
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        EXPECT_EQ(RunToEnd(job), State::Failed);
    }
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
    EXPECT_EQ(vcard::LinesOf(Stored("a")), "FN:a\nUID:1\n");
}

TEST_F(Transfers, ExportTellsOfAContactThatCannotBeRead)
{
    ASSERT_EQ(Import(ManyCards(2000)), State::Done);
    ASSERT_EQ(Export(Ids()), State::Done) << "all have UIDs now, of which none is to be kept";
    ExportJob job(m_contacts, Ids(), m_path);
    while (job.PerMille() == 0)
        ASSERT_EQ(job.Step(1), State::Working);
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        ASSERT_EQ(RunToEnd(job), State::Done);
    }
    const size_t written = vcard::ReadAll(ReadFileBytes(m_path)).contacts.size();
    EXPECT_GT(written, 0u);
    EXPECT_LT(written, 2000u);
    EXPECT_TRUE(job.Report().starts_with(
        CountText(written, L"", L"contacts were exported.\r\n") +
        CountText(2000 - written, L"", L"contacts could not be read and are not in the file: ")))
        << job.Report();
}

// Where none can be read there is no file to be had: the one that was there stays.
TEST_F(Transfers, ExportOfNothingThatCanBeReadLeavesTheFile)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a") + vcard::CardOf("FN:b")), State::Done);
    const std::vector<CEOID> ids = Ids();
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        EXPECT_EQ(Export(ids), State::Failed);
    }
    EXPECT_TRUE(m_report.starts_with(L"The contacts cannot be read: ")) << m_report;
    EXPECT_EQ(ReadFileBytes(m_path), "before");
}

TEST_F(AddressWindowTest, ADeletionThatCannotBeDoneIsNotToldAsDone)
{
    Add("Anna");
    Add("Bert");
    Open();
    Command(CMD_SELECT_ALL);
    const MessageBoxAnswerer answerer({IDYES, IDOK});
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        PressInList(VK_DELETE);
        ASSERT_EQ(answerer.Boxes().size(), 2u);
        EXPECT_TRUE(answerer.Boxes()[1].text.starts_with(L"The contacts were not deleted: "))
            << answerer.Boxes()[1].text;
        EXPECT_EQ(answerer.Boxes()[1].owner, m_window->Handle());
    }
    TellOfAChange(kChangeWorkEnded);
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Bert"}));
}

TEST_F(AddressWindowTest, AContactThatCannotBeReadIsNotOpenedAsAnEmptyOne)
{
    Add("Anna", "note");
    Open();
    const MessageBoxAnswerer answerer;
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        Command(CMD_EDIT_CONTACT);
        ASSERT_EQ(answerer.Boxes().size(), 1u);
        EXPECT_TRUE(answerer.Boxes()[0].text.starts_with(L"The contact cannot be opened: "))
            << answerer.Boxes()[0].text;
    }
    TellOfAChange(kChangeWorkEnded);
    EXPECT_EQ(Names(), Texts{L"Anna"});
}

void Press(HWND dialog, int id)
{
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

// As a damaged file may be: the index of the names is gone, and one page of the contacts.
class DamagedContacts : public AddressWindowTest {
  protected:
    static constexpr size_t kPageSize = 4096;

    void AddMany()
    {
        CeDBase::BulkScope bulk(m_contacts);
        for (int i = 0; i < 300; ++i)
            Add("name " + std::to_string(i),
                ("note of " + std::to_string(i) + " " + std::string(100, 'x')).c_str());
        ASSERT_EQ(bulk.Commit(), 1);
    }
    void Damage()
    {
        m_contacts.Close();
        std::string bytes = ReadFileBytes(m_store.Path());
        Clear(&bytes, RootOf("contacts_names"));
        const size_t at = bytes.find("note of 150");
        ASSERT_NE(at, std::string::npos);
        Clear(&bytes, at / kPageSize + 1);
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    }
    size_t RootOf(const char* name) const
    {
        sqlite3* database = nullptr;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_open16(m_store.Path().c_str(), &database), SQLITE_OK);
        sqlite3_prepare_v2(database, "SELECT rootpage FROM sqlite_schema WHERE name = ?", -1, &statement,
                           nullptr);
        sqlite3_bind_text(statement, 1, name, -1, SQLITE_STATIC);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        const int page = sqlite3_column_int(statement, 0);
        sqlite3_finalize(statement);
        sqlite3_close(database);
        return static_cast<size_t>(page);
    }
    static void Clear(std::string* bytes, size_t page)
    {
        std::fill_n(bytes->begin() + static_cast<std::ptrdiff_t>((page - 1) * kPageSize), kPageSize, '\0');
    }
};

TEST_F(DamagedContacts, ShowWhatCanBeReadAndSayThatThereIsMore)
{
    AddMany();
    Damage();
    Open();
    const int shown = ListView_GetItemCount(List());
    ASSERT_GT(shown, 200);
    EXPECT_LT(shown, 300);
    EXPECT_EQ(WindowText(Item(IDC_COUNT)),
              std::to_wstring(shown) + L" contacts. Not all can be read: the journal's file is damaged");
    EXPECT_EQ(Names()[0], L"name 0");
}

// What no walk comes to is in no file. One that may have it is not given up for one that has not unasked.
TEST_F(DamagedContacts, AnExportSaysThatThereIsMoreAndAsksBeforeItTakesAFilesPlace)
{
    AddMany();
    Damage();
    Open();
    const std::wstring shown = std::to_wstring(ListView_GetItemCount(List()));
    std::wstring report;
    const auto take = [&](HWND dialog) {
        HWND ok = GetDlgItem(dialog, IDOK);
        EXPECT_TRUE(PumpUntil([ok] { return IsWindowEnabled(ok) != FALSE; }));
        report = WindowText(GetDlgItem(dialog, IDC_TRANSFER_TEXT));
        Press(dialog, IDCANCEL);
    };
    {
        const MessageBoxAnswerer answerer;
        const ModalDriver driver(take);
        m_window->Export(m_path);
        EXPECT_TRUE(driver.Ran());
        EXPECT_TRUE(answerer.Boxes().empty()) << "no file is there";
    }
    EXPECT_TRUE(report.starts_with(shown +
                                   L" contacts were exported.\r\nThere are more contacts, which could not "
                                   L"be read and are not in the file: the journal's file is damaged."))
        << report;
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    {
        const MessageBoxAnswerer answerer({IDNO});
        m_window->Export(m_path);
        ASSERT_EQ(answerer.Boxes().size(), 1u);
        EXPECT_EQ(answerer.Boxes()[0].text,
                  L"Not all contacts can be read: the journal's file is damaged.\n\n"
                  L"Replace the file by one that lacks them?");
        EXPECT_EQ(answerer.Boxes()[0].owner, m_window->Handle());
    }
    EXPECT_EQ(ReadFileBytes(m_path), "before");
    const MessageBoxAnswerer answerer({IDYES});
    const ModalDriver driver(take);
    m_window->Export(m_path);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(std::to_wstring(vcard::ReadAll(ReadFileBytes(m_path)).contacts.size()), shown);
}

// Where none can be read those that there were stay, and the window says so.
TEST_F(AddressWindowTest, ContactsThatCannotBeReadAreNotNone)
{
    Add("Anna");
    Open();
    {
        const UnreadableTable unreadable(m_store.Path(), "contacts");
        TellOfAChange(kChangeWorkEnded);
        EXPECT_EQ(ListView_GetItemCount(List()), 1);
        EXPECT_TRUE(WindowText(Item(IDC_COUNT)).starts_with(L"1 contact. Not all can be read: "))
            << WindowText(Item(IDC_COUNT));
    }
    EXPECT_TRUE(PumpUntil([&] { return WindowText(Item(IDC_COUNT)) == L"1 contact"; }));
    EXPECT_EQ(Names(), Texts{L"Anna"});
}

TEST_F(AddressWindowTest, SaysThatAnotherFileIsInTheStoresPlace)
{
    Add("Anna");
    Open();
    const std::wstring away = m_store.Path() + L".away";
    ASSERT_TRUE(MoveUnix(m_store.Path(), away));
    const auto says = [&](const wchar_t* text) {
        return PumpUntil([&] { return WindowText(Item(IDC_COUNT)) == text; });
    };
    EXPECT_TRUE(says(L"1 contact. Nothing can be saved: the journal's file cannot be reached"));
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "another"));
    EXPECT_TRUE(says(L"1 contact. Nothing can be saved: the journal's file was replaced or "
                     L"written over"));
    ASSERT_TRUE(DeleteFileW(m_store.Path().c_str()));
    ASSERT_TRUE(MoveUnix(away, m_store.Path()));
    EXPECT_TRUE(says(L"1 contact"));
}

// A tool has taken its file away, and the disk is full. At the session's end nobody would answer a box.
TEST_F(AddressWindowTest, TellsAtItsEndThatNoCopyOfAReplacedStoreWasKept)
{
    constexpr int kStaysFull = 1;
    ASSERT_STREQ(FaultVfs::FaultName(FileCall::Write, kStaysFull), "disk stays full");
    const std::wstring away = m_store.Path() + L".away";
    for (const bool isSession : {false, true}) {
        m_contacts.Close();
        FaultVfs faults;
        ASSERT_EQ(m_contacts.Open(), 1);
        Add("Anna");
        Open();
        m_contacts.Close();
        ASSERT_TRUE(MoveUnix(m_store.Path(), away));
        faults.FailNth(FileCall::Write, 1, kStaysFull);
        const MessageBoxAnswerer answerer;
        SendMessageW(m_window->Handle(), isSession ? WM_ENDSESSION : WM_CLOSE, TRUE, 0);
        EXPECT_EQ(m_window->Handle(), nullptr);
        EXPECT_TRUE(faults.HasFired());
        EXPECT_TRUE(answerer.Boxes().empty());
        m_window->TellNotKept();
        ASSERT_EQ(answerer.Boxes().size(), isSession ? 0u : 1u);
        if (!isSession) {
            EXPECT_EQ(answerer.Boxes()[0].text, NotKeptText(m_store.Path(), StoreTrouble::Full));
        }
        m_window.reset();
        EXPECT_TRUE(MoveFileW(away.c_str(), m_store.Path().c_str()));
    }
}

TEST_F(AddressWindowTest, ASaveThatFailsSaysWhyAndKeepsWhatWasTyped)
{
    const CEOID anna = Add("Anna", "note");
    Open();
    const MessageBoxAnswerer answerer({IDOK, IDNO});
    const ModalDriver driver([&](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_NOTE, L"mine");
        {
            const UnreadableTable unreadable(m_store.Path(), "contacts");
            Press(dialog, IDOK);
        }
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_NOTE)), L"mine");
        Press(dialog, IDCANCEL);
    });
    Command(CMD_EDIT_CONTACT);
    EXPECT_TRUE(driver.Ran());
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_TRUE(answerer.Boxes()[0].text.starts_with(L"The contact was not saved: "))
        << answerer.Boxes()[0].text;
    EXPECT_NE(answerer.Boxes()[0].text.find(L"what you have typed is still there"), std::wstring::npos);
    EXPECT_EQ(m_contacts.RecordCount(), 1u) << "not written as another one";
    vcard::Contact contact;
    ASSERT_TRUE(LoadContact(m_contacts, anna, &contact));
    EXPECT_EQ(contact[vcard::Field::Note], "note");
}

// What another program has written since is not lost without a word.
TEST_F(AddressWindowTest, ASaveOverAnotherProgramsChangeAsks)
{
    for (const int answer : {IDYES, IDNO}) {
        const CEOID anna = Add("Anna", "note");
        Open();
        const MessageBoxAnswerer answerer({answer, IDNO});
        const ModalDriver driver([&](HWND dialog) {
            SetDlgItemTextW(dialog, IDC_COMPANY, L"mine");
            ASSERT_TRUE(SaveField(m_contacts, anna, vcard::Field::Note, "theirs"));
            Press(dialog, IDOK);
            if (answer == IDNO)
                Press(dialog, IDCANCEL);
        });
        Command(CMD_EDIT_CONTACT);
        EXPECT_TRUE(driver.Ran());
        ASSERT_FALSE(answerer.Boxes().empty());
        EXPECT_EQ(answerer.Boxes()[0].text,
                  L"Another program has changed this contact since it was opened.\n\n"
                  L"Save yours in its place?");
        vcard::Contact contact;
        ASSERT_TRUE(LoadContact(m_contacts, anna, &contact));
        EXPECT_EQ(contact[vcard::Field::Note], answer == IDYES ? "note" : "theirs");
        EXPECT_EQ(contact[vcard::Field::Company], answer == IDYES ? "mine" : "");
        ASSERT_EQ(m_contacts.DeleteRecord(anna), 1);
        Close();
    }
}

// Commands that another program posts while a dialog stands.
TEST_F(AddressWindowTest, BehindADialogNothingIsBegun)
{
    Add("Anna");
    Open();
    const MessageBoxAnswerer answerer({IDYES, IDYES});
    const ModalDriver driver([&](HWND dialog) {
        for (const int command :
             {CMD_NEW_CONTACT, CMD_EDIT_CONTACT, CMD_DELETE_CONTACT, CMD_SELECT_ALL, CMD_IMPORT,
              CMD_EXPORT_CARDS, CMD_FIND_CONTACT, static_cast<int>(IDOK), static_cast<int>(IDCANCEL)})
            PostMessageW(m_window->Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        PostMessageW(m_window->Handle(), kMsgDatabaseChange, kChangeWorkEnded, 0);
        PumpMessages();
        EXPECT_EQ(GetLastActivePopup(m_window->Handle()), dialog);
        EXPECT_TRUE(answerer.Boxes().empty());
        Press(dialog, IDCANCEL);
    });
    Command(CMD_EDIT_CONTACT);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(Names(), Texts{L"Anna"});
}

} // namespace

} // namespace addrbook
