// The program is killed at moments that nobody chooses: whatever it was doing, the store opens, is whole, has
// all that was reported as done, and of what is done together all or nothing.
//
// KILLS in the environment is how often each work is killed, KILL_SEED where the moments begin. The moments
// are a seed's, but what the program is doing then is not: no verdict depends on it.
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>

#include "addrbook/resource.h"
#include "e2e/harness/input.h"
#include "e2e/harness/journal_process.h"
#include "e2e/harness/remote_list_view.h"
#include "e2e/harness/remote_window.h"
#include "e2e/harness/settings.h"
#include "e2e/harness/store_reader.h"
#include "faults/settings_of_run.h"
#include "faults/store_dump.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "res/resource.h"
#include "support/test_store.h"

namespace {

constexpr LRESULT kNoAnswer = -1;
constexpr int kFileName = 0x47C; // the system's box for a file's name

// Kills a process so many microseconds after it is made.
class Killer {
  public:
    Killer(JournalProcess& process, int64_t microseconds)
        : m_process(process.Handle()), m_microseconds(microseconds),
          m_thread(CreateThread(nullptr, 0, &Work, this, 0, nullptr))
    {}
    ~Killer() { WaitForSingleObject(m_thread.get(), INFINITE); }
    Killer(const Killer&) = delete;
    Killer& operator=(const Killer&) = delete;

  private:
    static int64_t Now()
    {
        LARGE_INTEGER count, frequency;
        QueryPerformanceCounter(&count);
        QueryPerformanceFrequency(&frequency);
        return count.QuadPart * 1'000'000 / frequency.QuadPart;
    }
    static DWORD WINAPI Work(void* self)
    {
        const auto* killer = static_cast<const Killer*>(self);
        const int64_t end = Now() + killer->m_microseconds;
        while (Now() < end)
            SwitchToThread();
        TerminateProcess(killer->m_process, ERROR_PROCESS_ABORTED);
        WaitForSingleObject(killer->m_process, kRemoteLimit);
        return 0;
    }

    HANDLE m_process; // borrowed
    int64_t m_microseconds;
    UniqueKernelHandle m_thread;
};

class Kills : public testing::Test {
  protected:
    using Round = std::function<void(std::mt19937& random, const std::wstring& path)>;

    // Each round has a store of its own.
    void Repeat(unsigned shortForm, const Round& round)
    {
        const unsigned times = NumberFromEnvironment("KILLS", shortForm);
        const unsigned seed = NumberFromEnvironment("KILL_SEED", 1);
        for (unsigned i = 0; i < times && !HasFailure(); ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", kill " + std::to_string(i));
            std::mt19937 random(seed * 100'003 + i);
            const TestRegistry registry;
            const TestStore store;
            ASSERT_TRUE(StoreSetting(L"Options", L"ConfirmDelete", DWORD{0}));
            round(random, store.Path());
            m_journal.Kill();
            m_book.Kill();
        }
        std::printf("  %u kills, seed %u, in the midst of it %d\n", times, seed, m_inTheMidst);
    }
    // What was done before stays; the store opens through the library too.
    static void ExpectWhole(const std::wstring& path)
    {
        {
            DbJournal journal;
            ASSERT_EQ(journal.Open(nullptr), 1);
            DbContacts contacts;
            ASSERT_EQ(contacts.Open(), 1);
        }
        EXPECT_EQ(CheckStore(path), "ok");
    }
    static std::string Ask(const std::wstring& path, const std::string& sql)
    {
        return StoreReader(path).QueryOne(sql).value_or("none");
    }
    // A store in which a statement was run.
    static void MakeStore(const std::wstring& path, const std::string& sql)
    {
        {
            DbJournal journal;
            ASSERT_EQ(journal.Open(nullptr), 1);
        }
        ASSERT_TRUE(RunInStore(path, sql));
    }
    static int64_t Within(std::mt19937& random, int milliseconds)
    {
        return static_cast<int64_t>(random() % static_cast<unsigned>(milliseconds * 1000));
    }
    void CountInTheMidst(bool isIt) { m_inTheMidst += isIt; }

    HWND Window() const { return m_journal.MainWindow(); }
    RemoteListView List() const { return RemoteListView(ChildOfClass(Window(), L"SysListView32")); }
    bool SelectAll(int rows);
    LRESULT Command(HWND window, int command)
    {
        return Send(window, WM_COMMAND, static_cast<WPARAM>(command), 0, kNoAnswer);
    }
    bool RenameFirst(HWND dialog, const std::wstring& name);

    JournalProcess m_journal;
    JournalProcess m_book{L"addrbook.exe", L"AddressBook"};
    int m_inTheMidst = 0;
};

bool Kills::SelectAll(int rows)
{
    HWND list = List().Handle();
    if (!Activate(Window()) || !WaitFor([&] { return Send(list, LVM_GETITEMCOUNT) == rows; }))
        return false;
    SetFocus(list);
    PressKey(VK_HOME);
    PressKeys({VK_SHIFT, VK_END});
    return WaitFor([&] { return Send(list, LVM_GETSELECTEDCOUNT) == rows; });
}

constexpr const char* kManyEntries =
    "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 400) INSERT INTO "
    "journal(date, "
    "subject, body) SELECT 134397360000000000, 'Entry ' || i, hex(zeroblob(1000)) FROM n";

TEST_F(Kills, WhileAnEntryIsSavedAgainAndAgain)
{
    Repeat(4, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NE(m_journal.Start(), nullptr);
        PostCommand(Window(), CMD_NEW_ENTRY);
        HWND editor = WaitForDialogWith(m_journal.Id(), IDC_BODY);
        ASSERT_NE(editor, nullptr);
        HWND body = Control(editor, IDC_BODY);
        std::string acknowledged = "none", sent = "none";
        {
            const Killer killer(m_journal, Within(random, 600));
            for (int i = 1; m_journal.IsRunning(); ++i) {
                const std::string text = std::to_string(i) + std::string(random() % 20'000, 'x');
                if (!SetText(body, std::wstring(text.begin(), text.end())))
                    break;
                sent = text;
                if (Command(editor, CMD_SAVE) != kNoAnswer)
                    acknowledged = text;
            }
        }
        ExpectWhole(path);
        const std::string stored = Ask(path, "SELECT body FROM journal");
        EXPECT_TRUE(stored == acknowledged || stored == sent)
            << stored.substr(0, 6) << " is stored, " << acknowledged.substr(0, 6) << " was saved";
        EXPECT_EQ(Ask(path, "SELECT count(*) > 1 FROM journal"), "0");
        CountInTheMidst(stored != "none" && sent != acknowledged);
    });
}

TEST_F(Kills, WhileManyEntriesArePasted)
{
    Repeat(5, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, kManyEntries));
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(SelectAll(400));
        ASSERT_NE(Command(Window(), CMD_COPY), kNoAnswer);
        bool acknowledged = false;
        {
            const Killer killer(m_journal, Within(random, 200));
            acknowledged = Command(Window(), CMD_PASTE) != kNoAnswer;
        }
        ExpectWhole(path);
        const std::string count = Ask(path, "SELECT count(*) FROM journal");
        EXPECT_TRUE(count == "800" || (count == "400" && !acknowledged)) << count;
        CountInTheMidst(!acknowledged);
    });
}

TEST_F(Kills, WhileManyEntriesAreDeleted)
{
    Repeat(5, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, kManyEntries));
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(SelectAll(400));
        bool acknowledged = false;
        {
            const Killer killer(m_journal, Within(random, 100));
            acknowledged = Command(Window(), CMD_DELETE_ENTRY) != kNoAnswer;
        }
        ExpectWhole(path);
        const std::string count = Ask(path, "SELECT count(*) FROM journal");
        EXPECT_TRUE(count == "0" || (count == "400" && !acknowledged)) << count;
        CountInTheMidst(!acknowledged);
    });
}

// By the keys that the dialog of categories knows.
bool Kills::RenameFirst(HWND dialog, const std::wstring& name)
{
    if (!Activate(dialog))
        return false;
    PressKey(VK_HOME);
    PressKey(VK_F2);
    HWND naming = WaitForDialog(m_journal.Id(), L"Rename Category");
    if (!naming || !SetText(ChildOfClass(naming, L"Edit"), name))
        return false;
    PressButton(naming, IDOK);
    return WaitUntilGone(naming);
}

TEST_F(Kills, WhileCategoriesAreRenamed)
{
    Repeat(2, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, "INSERT INTO categories(name) VALUES('A'), ('B')"));
        ASSERT_NE(m_journal.Start(), nullptr);
        PostCommand(Window(), CMD_CATEGORIES_LIST);
        HWND dialog = WaitForDialog(m_journal.Id(), L"Edit Categories");
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(RenameFirst(dialog, L"Y")); // sorts behind the other one
        ASSERT_TRUE(RenameFirst(dialog, L"Z"));
        bool acknowledged = false;
        {
            const Killer killer(m_journal, Within(random, 15));
            acknowledged = Command(dialog, IDOK) != kNoAnswer;
        }
        ExpectWhole(path);
        const std::string names =
            Ask(path, "SELECT group_concat(name) FROM (SELECT name FROM categories ORDER BY oid)");
        EXPECT_TRUE(names == "Y,Z" || (names == "A,B" && !acknowledged)) << names;
        CountInTheMidst(!acknowledged);
    });
}

TEST_F(Kills, WhileCardsAreImported)
{
    Repeat(4, [this](std::mt19937& random, const std::wstring& path) {
        const std::wstring cards = path + L".vcf";
        std::string text;
        for (int i = 0; i < 3000; ++i)
            text += "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Contact " + std::to_string(i) +
                    "\r\nUID:" + std::to_string(i) + "\r\nEND:VCARD\r\n";
        ASSERT_TRUE(WriteFileBytes(cards, text));
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, "INSERT INTO contacts(file_as) VALUES('before')"));
        ASSERT_NE(m_book.Start(), nullptr);
        PostCommand(m_book.MainWindow(), CMD_IMPORT);
        HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
        ASSERT_NE(chooser, nullptr);
        ASSERT_TRUE(SetText(Control(chooser, kFileName), cards));
        PressButton(chooser, IDOK);
        HWND transfer = WaitForDialogWith(m_book.Id(), IDC_TRANSFER_BAR);
        ASSERT_NE(transfer, nullptr);
        bool acknowledged = false;
        {
            const Killer killer(m_book, Within(random, 500));
            while (m_book.IsRunning() && !acknowledged)
                acknowledged = TextOf(GetDlgItem(transfer, IDC_TRANSFER_TEXT)).starts_with(L"3000");
        }
        DeleteFileW(cards.c_str());
        ExpectWhole(path);
        const std::string count = Ask(path, "SELECT count(*) FROM contacts");
        EXPECT_TRUE(count == "3001" || (count == "1" && !acknowledged)) << count;
        CountInTheMidst(!acknowledged);
    });
}

} // namespace
