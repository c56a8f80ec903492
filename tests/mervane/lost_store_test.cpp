// A store that is gone, or empty, while its backups are there.
#include "restoration_fixture.h"
#include "support/import_watch.h"

namespace {

using mervane::IsGone;
using mervane::NewestWholeBackup;
using mervane::Restoration;

class LostStore : public BrokenStore {
  protected:
    void Lose(bool isEmptied)
    {
        MakeStore(2);
        KeepAs(L"2026-02-09");
        ASSERT_TRUE(isEmptied ? WriteFileBytes(Path(), "") : DeleteFileW(Path().c_str()));
    }
    const std::wstring m_index = Path() + L"-shm"; // that a program which was killed has left
};

TEST_F(LostStore, IsOneThatIsMissingOrEmpty)
{
    EXPECT_TRUE(IsGone(Path()));
    MakeStore(1);
    EXPECT_FALSE(IsGone(Path()));
    const std::string whole = ReadFileBytes(Path());
    for (const std::string& bytes : {whole.substr(0, 4096), std::string("x"), std::string(4096, '\0')}) {
        ASSERT_TRUE(WriteFileBytes(Path(), bytes));
        EXPECT_FALSE(IsGone(Path())) << bytes.size();
    }
    ASSERT_TRUE(WriteFileBytes(Path(), ""));
    EXPECT_TRUE(IsGone(Path()));
    ASSERT_TRUE(WriteFileBytes(Path() + L"-wal", "what was saved last"));
    EXPECT_FALSE(IsGone(Path()));
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    EXPECT_FALSE(IsGone(Path()));
    ASSERT_TRUE(DeleteFileW((Path() + L"-wal").c_str()));
    ASSERT_TRUE(CreateDirectoryW(Path().c_str(), nullptr));
    EXPECT_FALSE(IsGone(Path()));
    ASSERT_TRUE(RemoveDirectoryW(Path().c_str()));
}

// The next start brings it to its end: there is nothing to ask.
TEST_F(LostStore, IsNoneWhereARestorationWasInterrupted)
{
    ASSERT_TRUE(WriteFileBytes(Path() + L".restoring-20260210-090000", "copy"));
    EXPECT_TRUE(IsGone(Path()));
    ASSERT_TRUE(WriteFileBytes(Path() + L".damaged-20260210-090000", "kept"));
    EXPECT_FALSE(IsGone(Path()));
}

TEST_F(LostStore, IsOneThatIsEmptyInAFolderThatCannotBeListed)
{
    ASSERT_TRUE(WriteFileBytes(Path(), ""));
    const ImportWatch<decltype(&FindFirstFileW)> watch(&__imp_FindFirstFileW, ListsNothing);
    EXPECT_TRUE(IsGone(Path()));
}

TEST_F(LostStore, HasItsBackupsWhateverTheCaseOfThePath)
{
    Lose(false);
    std::wstring path = Path();
    CharUpperBuffW(path.data() + 3, static_cast<DWORD>(path.size() - 3));
    EXPECT_TRUE(IsGone(path));
    const auto search = NewestWholeBackup(path, kToday);
    ASSERT_TRUE(search.found);
    EXPECT_EQ(search.found->entries, 2);
}

TEST_F(LostStore, IsReplacedByItsBackup)
{
    for (const bool isEmptied : {false, true}) {
        Lose(isEmptied);
        ASSERT_TRUE(WriteFileBytes(m_index, "an old index"));
        const Restoration restoration(Path());
        ASSERT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None) << isEmptied;
        EXPECT_TRUE(ReadFileBytes(Path()) == ReadFileBytes(BackupOf(L"2026-02-09")));
        EXPECT_EQ(ReadFileBytes(restoration.KeptAs() + L"-shm"), "an old index");
        EXPECT_EQ(Files().size(), isEmptied ? 3u : 2u) << "nothing else is left";
        ExpectOpens(2);
        for (const auto& [name, bytes] : Files())
            DeleteFileW((Path().substr(0, Path().find_last_of(L'\\') + 1) + name).c_str());
        DeleteFileW(BackupOf(L"2026-02-09").c_str());
    }
}

TEST_F(LostStore, StaysAsItIsWhereItCannotBeReplaced)
{
    Lose(false);
    ASSERT_TRUE(WriteFileBytes(m_index, "an old index"));
    const auto before = Files();
    {
        const HeldFile other = OpenElsewhere(m_index);
        EXPECT_EQ(Restoration(Path()).Run(BackupOf(L"2026-02-09")), StoreTrouble::Locked);
    }
    EXPECT_TRUE(Files() == before);
    EXPECT_EQ(Restoration(Path()).Run(BackupOf(L"2026-02-08")), StoreTrouble::Unreachable) << "no backup";
    EXPECT_TRUE(Files() == before);
}

TEST_F(LostStore, ThatHasComeBackByThenStays)
{
    Lose(false);
    const Restoration restoration(Path());
    EXPECT_FALSE(restoration.HasAnother());
    ASSERT_TRUE(WriteFileBytes(Path(), ""));
    EXPECT_FALSE(restoration.HasAnother()) << "a new journal would be begun in an empty one";
    ASSERT_TRUE(WriteFileBytes(Path(), "come back"));
    EXPECT_TRUE(restoration.HasAnother());
    const auto before = Files();
    EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::OtherFile);
    EXPECT_TRUE(Files() == before);
}

} // namespace
