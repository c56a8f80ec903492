// A store that is closed while another file is in its place: what is kept of it.
#include <gtest/gtest.h>

#include "mervane/file/folder_files.h"
#include "open_fixture.h"
#include "support/fault_vfs.h"
#include "support/test_drive.h"
#include "util/owners.h"

namespace {

class Replaced : public Opening {
  protected:
    // A store with two entries, one of them in the log, over which another file comes while it is open.
    void OpenAndReplace()
    {
        MakeStore();
        const std::wstring other = Path() + L".other";
        ASSERT_TRUE(CopyFileW(Path().c_str(), other.c_str(), TRUE));
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        ASSERT_NE(AddEntry(m_journal, L"before"), 0u);
        ASSERT_TRUE(MoveUnix(Path(), m_away));
        ASSERT_TRUE(MoveUnix(other, Path()));
    }
    std::vector<std::wstring> Kept() const
    {
        std::vector<std::wstring> kept = mervane::FilesLike(Path() + L".replaced-*").value();
        for (std::wstring& file : kept)
            file = Path().substr(0, Path().rfind(L'\\') + 1) + file;
        return kept;
    }
    void ExpectWholeWithItsLog()
    {
        ASSERT_TRUE(MoveFileW(Beside(L"-wal").c_str(), (m_away + L"-wal").c_str()));
        EXPECT_EQ(RawStore(m_away).Integer("SELECT count(*) FROM journal"), 2);
    }
    ~Replaced() override
    {
        m_journal.Close();
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm"})
            DeleteFileW((m_away + suffix).c_str());
    }

    FaultVfs m_faults;
    DbJournal m_journal;
    const std::wstring m_away = Path() + L".away";
};

TEST_F(Replaced, KeepsItsLogAndAWholeCopyWhenItIsClosed)
{
    ASSERT_NO_FATAL_FAILURE(OpenAndReplace());
    EXPECT_EQ(m_journal.Close(), 1);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    ASSERT_EQ(Kept().size(), 1u);
    EXPECT_FALSE(Kept()[0].ends_with(L".part"));
    EXPECT_EQ(RawStore(Kept()[0]).Integer("SELECT count(*) FROM journal"), 2) << "where the file is deleted";
    ExpectWholeWithItsLog();
}

TEST_F(Replaced, SaysWhyThereIsNoWholeCopyAndKeepsItsLog)
{
    constexpr int kStaysFull = 1;
    ASSERT_STREQ(FaultVfs::FaultName(FileCall::Write, kStaysFull), "disk stays full");
    ASSERT_NO_FATAL_FAILURE(OpenAndReplace());
    {
        DbCategories second;
        ASSERT_TRUE(second.Open());
        m_faults.FailNth(FileCall::Write, 1, kStaysFull);
        EXPECT_EQ(second.Close(), 1);
        EXPECT_EQ(second.Trouble(), StoreTrouble::None) << "the store is still open";
    }
    EXPECT_EQ(m_journal.Close(), 1);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Full);
    m_faults.FailNone();
    EXPECT_TRUE(Kept().empty());
    ExpectWholeWithItsLog();
}

// What is no such name stays, and so does what somebody is just making.
TEST_F(Replaced, DeletesWhatAKilledProgramHasLeftOfACopy)
{
    const std::wstring start = Path() + L".replaced-";
    const std::vector<std::wstring> others = {start + L".x.part", start + L".part",
                                              start + L"20260131-184500", start + L"20260131.7.part"};
    for (const std::wstring& name : others)
        ASSERT_TRUE(WriteFileBytes(name, "other"));
    for (const bool byBackup : {true, false}) {
        const std::wstring left = start + L".77.part", open = start + L".78.part";
        ASSERT_TRUE(WriteFileBytes(left, "half"));
        ASSERT_TRUE(WriteFileBytes(open, "half"));
        const UniqueKernelHandle maker(CreateFileW(open.c_str(), GENERIC_WRITE,
                                                   FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                                   0, nullptr));
        if (byBackup) {
            ASSERT_EQ(m_journal.Open(nullptr), 1);
            EXPECT_NE(m_journal.BeginBackup({2026, 1, 6, 31, 0, 0, 0, 0}), 0u);
            m_journal.EndBackup();
        } else {
            ASSERT_NO_FATAL_FAILURE(OpenAndReplace());
        }
        EXPECT_EQ(m_journal.Close(), 1);
        EXPECT_FALSE(Exists(left)) << byBackup;
        EXPECT_TRUE(Exists(open)) << byBackup;
    }
    for (const std::wstring& name : others)
        EXPECT_TRUE(Exists(name));
}

} // namespace
