// What is told and asked at a start whose store cannot be opened.
#include "app/restore_offer.h"

#include "app/main_window_fixture.h"
#include "support/preset_answer.h"
#include "util/clock.h"
#include "util/owners.h"

namespace {

class RestoreOffer : public MainWindowTest {
  protected:
    // A backup with so many entries, and a store that is cut off.
    void BreakWithBackup(int entries)
    {
        ASSERT_EQ(App().Journal().Open(nullptr), 1);
        for (int i = 0; i < entries; ++i)
            ASSERT_NE(AddEntry(L"kept", 5), 0u);
        App().Journal().Close();
        CreateDirectoryW(BackupFolderOf(Path()).c_str(), nullptr);
        ASSERT_TRUE(CopyFileW(Path().c_str(), Backup().c_str(), TRUE));
        Break();
    }
    void Break()
    {
        m_broken = ReadFileBytes(Backup()).substr(0, 4096) + "and no more";
        ASSERT_TRUE(WriteFileBytes(Path(), m_broken));
    }
    const std::wstring& Path() const { return m_store.Path(); }
    std::wstring Backup() const
    {
        const std::wstring name = Path().substr(Path().find_last_of(L'\\') + 1);
        return BackupFolderOf(Path()) + name.substr(0, name.size() - 3) + L"-2026-01-31.db";
    }
    bool Tell(StoreTrouble trouble = StoreTrouble::Damaged) { return TellUnopenedStore(Path(), trouble); }
    std::wstring NotOpened() const { return NotOpenedText(Path(), StoreTrouble::Damaged); }
    void ExpectUntouched() { EXPECT_TRUE(ReadFileBytes(Path()) == m_broken); }

    std::string m_broken;
};

TEST_F(RestoreOffer, IsNoneWhereTheFileIsNotBroken)
{
    BreakWithBackup(1);
    const MessageBoxAnswerer answerer;
    EXPECT_FALSE(Tell(StoreTrouble::Locked));
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, NotOpenedText(Path(), StoreTrouble::Locked));
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Journal");
    EXPECT_EQ(answerer.Boxes()[0].answers, std::vector<int>{IDOK});
    ExpectUntouched();
}

TEST_F(RestoreOffer, IsNoneWithoutABackup)
{
    m_broken = "no store at all";
    ASSERT_TRUE(WriteFileBytes(Path(), m_broken));
    const MessageBoxAnswerer answerer;
    EXPECT_FALSE(Tell(StoreTrouble::NotAStore));
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, NotOpenedText(Path(), StoreTrouble::NotAStore) +
                                            L"\n\nThere is no backup that could take its place.");
    ExpectUntouched();
}

// An older one is not offered as the newest.
TEST_F(RestoreOffer, IsNoneWhileTheNewestBackupCannotBeRead)
{
    BreakWithBackup(1);
    std::wstring older = Backup();
    older.replace(older.rfind(L"-31"), 3, L"-30");
    ASSERT_TRUE(CopyFileW(Backup().c_str(), older.c_str(), TRUE));
    const UniqueKernelHandle other(CreateFileW(Backup().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr));
    const MessageBoxAnswerer answerer;
    EXPECT_FALSE(Tell());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    const std::wstring& text = answerer.Boxes()[0].text;
    EXPECT_TRUE(text.starts_with(NotOpened() + L"\n\nA backup may be there, but\n\n" + Backup() +
                                 L"\n\ncannot be read: another program keeps it locked."))
        << "no such text";
    EXPECT_EQ(answerer.Boxes()[0].answers, std::vector<int>{IDOK});
    ExpectUntouched();
}

TEST_F(RestoreOffer, IsNoneWhileAnotherProgramHasTheFileOpen)
{
    BreakWithBackup(1);
    const UniqueKernelHandle other(CreateFileW(Path().c_str(), GENERIC_READ,
                                               FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr));
    const MessageBoxAnswerer answerer;
    EXPECT_FALSE(Tell());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text,
              NotOpened() + L"\n\nA backup can only take its place while no other program has it open.");
    EXPECT_EQ(answerer.Boxes()[0].answers, std::vector<int>{IDOK});
    ExpectUntouched();
}

TEST_F(RestoreOffer, SaysWhatTheBackupHasAndWhereTheFileIsKept)
{
    BreakWithBackup(3);
    const MessageBoxAnswerer answerer({IDNO});
    const PresetAnswer preset;
    EXPECT_FALSE(Tell());
    EXPECT_EQ(preset.Id(), IDNO) << "a key that is still pressed puts nothing in the file's place";
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    const MessageBoxAnswerer::Box& box = answerer.Boxes()[0];
    EXPECT_EQ(box.answers, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_NE(box.icon, nullptr);
    EXPECT_TRUE(box.text.starts_with(NotOpened() + L"\n\nThe backup of Saturday, January 31, 2026 is whole. "
                                                   L"It has 3 entries; "))
        << "no such text";
    EXPECT_NE(box.text.find(L"\n\n" + Path() + L".damaged-2"), std::wstring::npos);
    ExpectUntouched();
}

TEST_F(RestoreOffer, CountsOneEntryAsOne)
{
    BreakWithBackup(1);
    const MessageBoxAnswerer answerer({IDNO});
    EXPECT_FALSE(Tell());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_NE(answerer.Boxes()[0].text.find(L"It has 1 entry; "), std::wstring::npos);
}

TEST_F(RestoreOffer, ThatIsTakenPutsTheBackupInTheStoresPlace)
{
    BreakWithBackup(3);
    const MessageBoxAnswerer answerer({IDYES});
    EXPECT_TRUE(Tell());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    const std::wstring& text = answerer.Boxes()[0].text;
    EXPECT_TRUE(ReadFileBytes(text.substr(text.rfind(L"\n\n") + 2)) == m_broken) << "kept where it was said";
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    EXPECT_EQ(App().Journal().RecordCount(), 3u);
}

TEST_F(RestoreOffer, ThatCannotBeCarriedOutSaysWhy)
{
    BreakWithBackup(1);
    ASSERT_TRUE(WriteFileBytes(Path() + L"-wal", "in use"));
    const UniqueKernelHandle other(CreateFileW((Path() + L"-wal").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const MessageBoxAnswerer answerer({IDYES, IDOK});
    EXPECT_FALSE(Tell());
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[1].text,
              NotDoneText(L"The backup was not put in its place", StoreTrouble::Locked));
    ExpectUntouched();
}

// The start goes on over the backup.
TEST_F(RestoreOffer, AtTheStartOpensTheBackup)
{
    BreakWithBackup(3);
    UnregisterClassW(kMainWindowClass, Instance());
    const MessageBoxAnswerer answerer({IDOK, IDYES});
    ASSERT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 1);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Internal Main Window Creation Error");
    HWND window = App().MainWindowHandle();
    ASSERT_TRUE(IsWindowVisible(window));
    HWND list = FindWindowExW(window, nullptr, L"SysListView32", nullptr);
    EXPECT_EQ(ListView_GetItemCount(list), 3);
    SendMessageW(window, WM_CLOSE, 0, 0);
}

TEST_F(RestoreOffer, ThatIsDeclinedEndsTheStart)
{
    BreakWithBackup(3);
    UnregisterClassW(kMainWindowClass, Instance());
    const MessageBoxAnswerer answerer({IDOK, IDNO});
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    EXPECT_EQ(answerer.Boxes().size(), 2u);
    ExpectUntouched();
}

// What is opened would be a new store, in silence.
class GoneStore : public RestoreOffer {
  protected:
    GoneStore() { UnregisterClassW(kMainWindowClass, Instance()); }
    ~GoneStore() override
    {
        if (HWND window = App().MainWindowHandle())
            DestroyWindow(window);
    }
    void LoseWithBackup(bool isEmptied)
    {
        ASSERT_NO_FATAL_FAILURE(BreakWithBackup(3));
        ASSERT_TRUE(isEmptied ? WriteFileBytes(Path(), "") : DeleteFileW(Path().c_str()));
    }
    static int ShownEntries()
    {
        HWND list = FindWindowExW(App().MainWindowHandle(), nullptr, L"SysListView32", nullptr);
        return list ? ListView_GetItemCount(list) : -1;
    }
    bool IsThere() const { return GetFileAttributesW(Path().c_str()) != INVALID_FILE_ATTRIBUTES; }
};

class GoneStoreEachWay : public GoneStore, public testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(Ways, GoneStoreEachWay, testing::Bool());

TEST_P(GoneStoreEachWay, IsOfferedItsBackupFirst)
{
    ASSERT_NO_FATAL_FAILURE(LoseWithBackup(GetParam()));
    const MessageBoxAnswerer answerer({IDYES});
    const PresetAnswer preset;
    ASSERT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 1);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(preset.Id(), IDYES) << "there is no file that it could take the place of";
    const MessageBoxAnswerer::Box& box = answerer.Boxes()[0];
    EXPECT_EQ(box.caption, L"Journal");
    EXPECT_EQ(box.answers, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(box.text,
              Path() +
                  (GetParam() ? L"\n\nis empty: nothing is left in the journal's file."
                              : L"\n\nis not there: the journal's file is gone.") +
                  L"\n\nThe backup of Saturday, January 31, 2026 is whole. It has 3 entries; what was "
                  L"written after it was made is not in it.\n\nPut the backup in its place, and open "
                  L"it? With No a new journal is begun.");
    EXPECT_EQ(ShownEntries(), 3);
}

TEST_P(GoneStoreEachWay, IsMadeAnewWithNo)
{
    ASSERT_NO_FATAL_FAILURE(LoseWithBackup(GetParam()));
    const std::string backup = ReadFileBytes(Backup());
    const MessageBoxAnswerer answerer({IDNO});
    ASSERT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 1);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(ShownEntries(), 0);
    EXPECT_TRUE(ReadFileBytes(Backup()) == backup);
}

// Whoever has backups has had a store.
TEST_P(GoneStoreEachWay, IsMadeAnewWhereNoBackupIsWholeIfThePersonSaysSo)
{
    ASSERT_NO_FATAL_FAILURE(LoseWithBackup(GetParam()));
    ASSERT_TRUE(WriteFileBytes(Backup(), m_broken));
    {
        const MessageBoxAnswerer answerer({IDNO});
        const PresetAnswer preset;
        EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
        EXPECT_EQ(preset.Id(), IDNO);
        ASSERT_EQ(answerer.Boxes().size(), 1u);
        EXPECT_EQ(answerer.Boxes()[0].text,
                  GoneText(Path(), GetParam()) +
                      L"\n\nThere are backups of it, but none is whole. They are in the folder\n\n" +
                      BackupFolderOf(Path()) +
                      L"\n\nBegin a new journal? With No nothing is done, so that you can look for a copy "
                      L"first.");
    }
    EXPECT_EQ(IsThere(), GetParam());
    EXPECT_TRUE(ReadFileBytes(Path()).empty());
    UnregisterClassW(kMainWindowClass, Instance());
    const MessageBoxAnswerer answerer({IDYES});
    ASSERT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 1);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(ShownEntries(), 0);
    EXPECT_TRUE(ReadFileBytes(Backup()) == m_broken);
}

// Nothing is begun anew over a backup that nobody could look into.
TEST_P(GoneStoreEachWay, IsLeftWhileItsBackupCannotBeRead)
{
    ASSERT_NO_FATAL_FAILURE(LoseWithBackup(GetParam()));
    const UniqueKernelHandle other(CreateFileW(Backup().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr));
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(
        answerer.Boxes()[0].text,
        GoneText(Path(), GetParam()) + L"\n\nA backup may be there, but\n\n" + Backup() +
            L"\n\ncannot be read: another program keeps it locked.\n\nNothing was changed, and no new "
            L"journal was begun. Start the journal again when that can be read; where it never will be, "
            L"move it to another folder first.");
    EXPECT_EQ(answerer.Boxes()[0].answers, std::vector<int>{IDOK});
    EXPECT_EQ(IsThere(), GetParam());
    EXPECT_TRUE(ReadFileBytes(Path()).empty());
}

// The first start of all.
TEST_F(GoneStore, ThatNeverWasIsMadeWithoutAWord)
{
    const MessageBoxAnswerer answerer;
    ASSERT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 1);
    EXPECT_TRUE(answerer.Boxes().empty());
}

// Another program has the empty file open, or puts one there while it is asked.
TEST_F(GoneStore, ThatCannotBeReplacedIsSaidAndLeft)
{
    ASSERT_NO_FATAL_FAILURE(LoseWithBackup(true));
    const UniqueKernelHandle other(CreateFileW(Path().c_str(), GENERIC_READ,
                                               FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                               FILE_ATTRIBUTE_NORMAL, nullptr));
    const MessageBoxAnswerer answerer({IDYES, IDOK});
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[1].text,
              NotDoneText(L"The backup was not put in its place", StoreTrouble::Locked));
    EXPECT_TRUE(IsThere());
    EXPECT_TRUE(ReadFileBytes(Path()).empty());
}

// It would be refused for its log, which may have what was saved last.
TEST_F(GoneStore, ThatHasLeftItsLogIsRefused)
{
    ASSERT_NO_FATAL_FAILURE(LoseWithBackup(false));
    ASSERT_TRUE(WriteFileBytes(Path() + L"-wal", "what was saved last"));
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 0);
    EXPECT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_FALSE(IsThere());
    EXPECT_EQ(ReadFileBytes(Path() + L"-wal"), "what was saved last");
}

} // namespace
