// The program is killed at moments that nobody chooses: whatever it was doing, the store opens, is whole, has
// all that was reported as done, and of what is done together all or nothing.
//
// KILLS in the environment is how often each work is killed, KILL_SEED where the moments begin. A moment is
// the seed's part of the time that the work takes on this machine, so what the program is doing then is not
// the seed's: no verdict depends on it, but for the one that among many kills some come before the work is
// done.
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

int64_t Now() // microseconds
{
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return count.QuadPart * 1'000'000 / frequency.QuadPart;
}

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

    // Each round has a store of its own. The work takes so many milliseconds, as far as is known before it
    // was done.
    void Repeat(unsigned shortForm, int milliseconds, const Round& round);
    // Kills the process while the work is done, which says whether it was reported as done.
    bool IsReported(JournalProcess& process, std::mt19937& random, const std::function<bool()>& work);
    // For the figures: what is stored of a work that was not reported.
    void Count(bool isReported, bool isStored)
    {
        m_unreported += !isReported;
        m_storedUnreported += !isReported && isStored;
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

  private:
    int64_t m_range = 0; // the kills fall into so many microseconds from the work's beginning
    int m_unreported = 0, m_storedUnreported = 0;
};

void Kills::Repeat(unsigned shortForm, int milliseconds, const Round& round)
{
    constexpr unsigned kMany = 20;
    const unsigned times = NumberFromEnvironment("KILLS", shortForm);
    const unsigned seed = NumberFromEnvironment("KILL_SEED", 1);
    m_range = milliseconds * 1000;
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
    EXPECT_TRUE(times < kMany || m_unreported > 0 || HasFailure()) << "none was killed in the midst of it";
    std::printf("  %u kills, seed %u: %d before it was reported as done, of which %d found it stored\n",
                times, seed, m_unreported, m_storedUnreported);
}

// The range follows what the work takes here: a kill that came too late has measured it.
bool Kills::IsReported(JournalProcess& process, std::mt19937& random, const std::function<bool()>& work)
{
    const int64_t start = Now();
    // More of them early: at the end it is stored and only shown.
    const auto latest = static_cast<uint64_t>(m_range) * (random() % 1000) / 1000;
    const Killer killer(process, static_cast<int64_t>(random() % (latest + 1)));
    const bool isReported = work();
    m_range = (isReported ? Now() - start : m_range) * 5 / 4;
    return isReported;
}

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

// The last of several saves is the one that is killed.
TEST_F(Kills, WhileAnEntryIsSavedAgain)
{
    Repeat(4, 10, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NE(m_journal.Start(), nullptr);
        PostCommand(Window(), CMD_NEW_ENTRY);
        HWND editor = WaitForDialogWith(m_journal.Id(), IDC_BODY);
        ASSERT_NE(editor, nullptr);
        std::string saved = "none", text;
        const auto change = [&](unsigned number) {
            text = std::to_string(number) + std::string(random() % 20'000, 'x');
            return SetText(Control(editor, IDC_BODY), std::wstring(text.begin(), text.end()));
        };
        const auto save = [&] { return Command(editor, CMD_SAVE) != kNoAnswer; };
        for (unsigned left = static_cast<unsigned>(random() % 4); left; --left) {
            ASSERT_TRUE(change(left) && save());
            saved = text;
        }
        ASSERT_TRUE(change(9));
        const bool isReported = IsReported(m_journal, random, save);
        ExpectWhole(path);
        const std::string stored = Ask(path, "SELECT body FROM journal");
        EXPECT_TRUE(stored == text || (stored == saved && !isReported))
            << stored.substr(0, 6) << " is stored, " << saved.substr(0, 6) << " was saved";
        EXPECT_EQ(Ask(path, "SELECT count(*) > 1 FROM journal"), "0");
        Count(isReported, stored == text);
    });
}

TEST_F(Kills, WhileManyEntriesArePasted)
{
    Repeat(5, 200, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, kManyEntries));
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(SelectAll(400));
        ASSERT_NE(Command(Window(), CMD_COPY), kNoAnswer);
        const bool isReported =
            IsReported(m_journal, random, [&] { return Command(Window(), CMD_PASTE) != kNoAnswer; });
        ExpectWhole(path);
        const std::string count = Ask(path, "SELECT count(*) FROM journal");
        EXPECT_TRUE(count == "800" || (count == "400" && !isReported)) << count;
        Count(isReported, count == "800");
    });
}

TEST_F(Kills, WhileManyEntriesAreDeleted)
{
    Repeat(5, 200, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, kManyEntries));
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(SelectAll(400));
        const bool isReported =
            IsReported(m_journal, random, [&] { return Command(Window(), CMD_DELETE_ENTRY) != kNoAnswer; });
        ExpectWhole(path);
        const std::string count = Ask(path, "SELECT count(*) FROM journal");
        EXPECT_TRUE(count == "0" || (count == "400" && !isReported)) << count;
        Count(isReported, count == "0");
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
    Repeat(2, 15, [this](std::mt19937& random, const std::wstring& path) {
        ASSERT_NO_FATAL_FAILURE(MakeStore(path, "INSERT INTO categories(name) VALUES('A'), ('B')"));
        ASSERT_NE(m_journal.Start(), nullptr);
        PostCommand(Window(), CMD_CATEGORIES_LIST);
        HWND dialog = WaitForDialog(m_journal.Id(), L"Edit Categories");
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(RenameFirst(dialog, L"Y")); // sorts behind the other one
        ASSERT_TRUE(RenameFirst(dialog, L"Z"));
        const bool isReported =
            IsReported(m_journal, random, [&] { return Command(dialog, IDOK) != kNoAnswer; });
        ExpectWhole(path);
        const std::string names =
            Ask(path, "SELECT group_concat(name) FROM (SELECT name FROM categories ORDER BY oid)");
        EXPECT_TRUE(names == "Y,Z" || (names == "A,B" && !isReported)) << names;
        Count(isReported, names == "Y,Z");
    });
}

TEST_F(Kills, WhileCardsAreImported)
{
    Repeat(4, 500, [this](std::mt19937& random, const std::wstring& path) {
        const std::wstring cards = path + L".vcf";
        std::string text;
        for (int i = 0; i < 10'000; ++i)
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
        const bool isReported = IsReported(m_book, random, [&] {
            bool told = false;
            WaitFor([&] {
                told = IsWindowEnabled(GetDlgItem(transfer, IDOK)) != FALSE;
                return told || !m_book.IsRunning();
            });
            return told;
        });
        DeleteFileW(cards.c_str());
        ExpectWhole(path);
        const std::string count = Ask(path, "SELECT count(*) FROM contacts");
        EXPECT_TRUE(count == "10001" || (count == "1" && !isReported)) << count;
        Count(isReported, count == "10001");
    });
}

} // namespace
