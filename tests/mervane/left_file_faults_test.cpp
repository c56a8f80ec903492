// What lies beside a store's file is judged rightly or not at all, whichever call of the system fails.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "open_fixture.h"
#include "support/file_faults.h"

namespace {

constexpr const char* kInLog = "INSERT INTO journal(subject) VALUES('in the log only')";

class LeftFileFaults : public Opening {
  protected:
    using Files = std::map<std::wstring, std::string>; // by what follows the store's path

    Files FilesNow() const
    {
        Files files;
        const size_t start = Path().size() - Path().find_last_of(L'\\') - 1;
        WIN32_FIND_DATAW data;
        HANDLE search = FindFirstFileW((Path() + L"*").c_str(), &data);
        for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data)) {
            const std::wstring ending = std::wstring(data.cFileName).substr(start);
            files[ending] = ReadFileBytes(Path() + ending);
        }
        FindClose(search);
        return files;
    }
    void Put(const Files& files) const
    {
        for (const auto& [ending, bytes] : FilesNow())
            DeleteFileW((Path() + ending).c_str());
        for (const auto& [ending, bytes] : files)
            ASSERT_TRUE(WriteFileBytes(Path() + ending, bytes));
    }
    bool IsKept(const std::string& bytes) const
    {
        const Files now = FilesNow();
        return std::any_of(now.begin(), now.end(), [&](const auto& file) { return file.second == bytes; });
    }
    // The store with a log that has one entry more, as a killed program leaves it.
    Files WithLog()
    {
        MakeStore();
        RawStore raw(Path());
        EXPECT_TRUE(raw.Run(std::string("PRAGMA wal_autocheckpoint = 0; ") + kInLog));
        return {{L"", ReadFileBytes(Path())}, {L"-wal", ReadFileBytes(Beside(L"-wal"))}};
    }
    // The store in the midst of a change, with its journal.
    Files WithJournal()
    {
        MakeStore();
        RawStore raw(Path());
        EXPECT_TRUE(raw.Run("PRAGMA journal_mode = DELETE; PRAGMA cache_size = 1; PRAGMA cache_spill = 1; "
                            "BEGIN; UPDATE journal SET subject = 'half done'"));
        for (int i = 0; i < 60; ++i)
            EXPECT_TRUE(raw.Run("INSERT INTO journal(subject, body) VALUES('new', zeroblob(3000))"));
        return {{L"", ReadFileBytes(Path())}, {L"-journal", ReadFileBytes(Beside(L"-journal"))}};
    }
    // Opens the store while the nth call fails, for each n and, where SQLite has begun, for some, and then
    // while none does: so many entries are there, whatever the first has made of it. look is asked behind
    // both.
    void Sweep(
        const Files& files, uint32_t entries, const std::function<void()>& look = [] {})
    {
        bool fired = true;
        int n = 1;
        for (; fired; n += n < kJudged ? 1 : 9) {
            SCOPED_TRACE(n);
            Put(files);
            m_faults.FailNth(n);
            {
                DbJournal journal;
                if (journal.Open(nullptr)) {
                    const DWORD count = journal.RecordCount();
                    EXPECT_TRUE(count == entries || journal.Trouble() != StoreTrouble::None) << count;
                }
            }
            fired = m_faults.HasFired();
            m_faults.FailNone();
            SCOPED_TRACE(FileFaults::Failed());
            look();
            DbJournal journal;
            ASSERT_EQ(journal.Open(nullptr), 1);
            EXPECT_EQ(journal.RecordCount(), entries);
            EXPECT_EQ(RawStore(Path()).Text("PRAGMA integrity_check"), "ok");
            journal.Close();
            look();
        }
        EXPECT_GT(n, 20) << "or nothing was tried";
    }

    static constexpr int kJudged = 60;

    FileFaults m_faults;
};

TEST_F(LeftFileFaults, TheStoresOwnLogIsRead)
{
    Sweep(WithLog(), 2);
}

TEST_F(LeftFileFaults, TheStoresOwnJournalIsPutBack)
{
    const Files files = WithJournal();
    Sweep(files, 1);
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_STRNE(journal.GetSubject(1), L"half done");
}

// Of the store itself, beside an older copy of it.
TEST_F(LeftFileFaults, AnotherFilesLogIsKept)
{
    MakeStore();
    const std::wstring copy = Path() + L".copy";
    std::string log;
    {
        RawStore raw(Path());
        ASSERT_TRUE(raw.Run("PRAGMA wal_autocheckpoint = 0; VACUUM INTO '" +
                            std::string(copy.begin(), copy.end()) + "'"));
        for (int i = 0; i < 40; ++i)
            ASSERT_TRUE(raw.Run("INSERT INTO journal(subject, body) VALUES('later', zeroblob(3000))"));
        log = ReadFileBytes(Beside(L"-wal"));
    }
    Sweep({{L"", ReadFileBytes(copy)}, {L"-wal", log}}, 1, [&] { EXPECT_TRUE(IsKept(log)); });
}

TEST_F(LeftFileFaults, AnotherFilesJournalIsKept)
{
    const Files theirs = WithJournal();
    Put({});
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("INSERT INTO journal(subject, body) VALUES('own', zeroblob(90000))"));
    const std::string journal = theirs.at(L"-journal");
    Sweep({{L"", ReadFileBytes(Path())}, {L"-journal", journal}}, 2, [&] { EXPECT_TRUE(IsKept(journal)); });
}

// A new store in its place would do away with what is in the log alone.
TEST_F(LeftFileFaults, ALogWithoutItsFileIsLeftAlone)
{
    Files files = WithLog();
    const std::string store = files.at(L""), log = files.at(L"-wal");
    files.erase(L"");
    bool fired = true;
    for (int n = 1; fired; ++n) {
        SCOPED_TRACE(n);
        Put(files);
        m_faults.FailNth(n);
        {
            DbJournal journal;
            EXPECT_EQ(journal.Open(nullptr), 0);
        }
        fired = m_faults.HasFired();
        m_faults.FailNone();
        EXPECT_TRUE(FilesNow() == files) << FileFaults::Failed();
    }
    Put({{L"", store}, {L"-wal", log}});
    ExpectUsable(2);
}

} // namespace
