// A store that is broken, and the backup that the program has made of it.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "e2e/journal/journal_window.h"

namespace {

class Restore : public JournalWindowTest {
  protected:
    // Two entries in the day's backup, which the program itself makes; a third one after it; then the file is
    // cut off, as a drive does that was pulled out.
    void BackUpAndBreak()
    {
        ASSERT_NE(AddEntry(L"One", kNoon), 0u);
        ASSERT_NE(AddEntry(L"Two", kNoon + 1), 0u);
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(WaitFor([&] {
            const auto found = BackupsOf(m_store.Path());
            return found.size() == 1 && found[0].ends_with(L".db");
        }));
        ASSERT_TRUE(m_journal.Close());
        ASSERT_NE(AddEntry(L"Three", kNoon + 2), 0u);
        m_broken = ReadFileBytes(m_store.Path());
        ASSERT_GT(m_broken.size(), 8192u);
        m_broken.resize(8192);
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), m_broken));
    }

    // The failed start's first box, answered.
    void AnswerFailure()
    {
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(box);
        EXPECT_EQ(box.Text(), L"Internal Main Window Creation Error");
        ASSERT_TRUE(box.Answer(IDOK));
    }
    std::wstring KeptAs(const RemoteMessageBox& box) const
    {
        const std::wstring text = box.Text();
        return text.substr(text.rfind(L"\n\n") + 2);
    }

    std::string m_broken;
};

TEST_F(Restore, YesOpensTheBackupAndKeepsTheFile)
{
    ASSERT_NO_FATAL_FAILURE(BackUpAndBreak());
    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(AnswerFailure());
    const RemoteMessageBox offer = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(offer);
    EXPECT_EQ(offer.Caption(), L"Journal");
    EXPECT_NE(offer.Text().find(m_store.Path() + L"\n\ncannot be opened: the journal's file is damaged."),
              std::wstring::npos);
    EXPECT_NE(offer.Text().find(L"It has 2 entries; "), std::wstring::npos);
    EXPECT_TRUE(offer.IsDefault(IDNO));
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == m_broken) << "nothing is done yet";
    const std::wstring keptAs = KeptAs(offer);
    ASSERT_TRUE(offer.Answer(IDYES));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(2));
    EXPECT_GE(List().FindRow(1, L"Two"), 0);
    EXPECT_TRUE(ReadFileBytes(keptAs) == m_broken);
    ASSERT_TRUE(m_journal.Close());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
    // From then on it is the store.
    ASSERT_NE(AddEntry(L"Four", kNoon + 3), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(3));
    EXPECT_TRUE(ReadFileBytes(keptAs) == m_broken);
}

TEST_F(Restore, NoLeavesEverythingAsItIs)
{
    ASSERT_NO_FATAL_FAILURE(BackUpAndBreak());
    const auto backups = BackupsOf(m_store.Path());
    for (int start = 0; start < 2; ++start) {
        ASSERT_TRUE(m_journal.Launch());
        ASSERT_NO_FATAL_FAILURE(AnswerFailure());
        const RemoteMessageBox offer = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(offer) << "offered again";
        const std::wstring keptAs = KeptAs(offer);
        ASSERT_TRUE(offer.Answer(IDNO));
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
        EXPECT_TRUE(ReadFileBytes(m_store.Path()) == m_broken);
        EXPECT_EQ(GetFileAttributesW(keptAs.c_str()), INVALID_FILE_ATTRIBUTES);
    }
    EXPECT_EQ(BackupsOf(m_store.Path()), backups);
}

// Ended by force while it asks.
TEST_F(Restore, WithoutAnAnswerEverythingStays)
{
    ASSERT_NO_FATAL_FAILURE(BackUpAndBreak());
    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(AnswerFailure());
    ASSERT_TRUE(WaitForMessageBox(m_journal.Id()));
    m_journal.Kill();
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == m_broken);
}

TEST_F(Restore, IsNotOfferedWithoutABackup)
{
    const std::string junk = "Dear diary";
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), junk));
    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(AnswerFailure());
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_NE(box.Text().find(L"There is no backup that could take its place."), std::wstring::npos);
    EXPECT_FALSE(box.Offers(IDYES));
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(ReadFileBytes(m_store.Path()), junk);
}

// How many entries a journal has, and of which day, is nobody's business who does not know its password.
TEST_F(Restore, IsOfferedBehindThePassword)
{
    ASSERT_NO_FATAL_FAILURE(BackUpAndBreak());
    ASSERT_TRUE(StoreSetting(L"Options", L"vacc", L"Secret"));
    ASSERT_TRUE(StoreSetting(L"Options", L"setpw", 1));
    ASSERT_TRUE(StoreSetting(L"Options", L"Password", 1));
    for (const bool known : {false, true}) {
        ASSERT_TRUE(m_journal.Launch());
        for (int attempt = known ? 3 : 1; attempt <= 3; ++attempt) {
            HWND prompt = WaitForDialog(m_journal.Id(), L"Enter Journal Password");
            ASSERT_NE(prompt, nullptr);
            ASSERT_TRUE(Activate(prompt));
            EXPECT_FALSE(HasMessageBox(m_journal.Id()));
            TypeText(known ? L"Secret\n" : L"secret\n");
            ASSERT_TRUE(WaitUntilGone(prompt));
        }
        if (known) {
            ASSERT_NO_FATAL_FAILURE(AnswerFailure());
            const RemoteMessageBox offer = WaitForMessageBox(m_journal.Id());
            ASSERT_TRUE(offer);
            ASSERT_TRUE(offer.Answer(IDYES));
            ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
            EXPECT_TRUE(ShowsRows(2));
        } else {
            ASSERT_TRUE(m_journal.WaitForEnd());
            EXPECT_TRUE(ReadFileBytes(m_store.Path()) == m_broken);
        }
    }
}

// The file opens, and only the check of its backup finds what is wrong.
TEST_F(Restore, DamageThatTheBackupFindsIsTold)
{
    ASSERT_NE(AddEntry(L"One", kNoon), 0u);
    ASSERT_TRUE(ChangeStore(m_store.Path(),
                            "INSERT INTO journal(subject, body) WITH RECURSIVE n(i) AS (VALUES(1) "
                            "UNION ALL SELECT i + 1 FROM n WHERE i < 100) "
                            "SELECT 'Entry ' || i, hex(zeroblob(9000)) FROM n"));
    std::string bytes = ReadFileBytes(m_store.Path());
    ASSERT_GT(bytes.size(), size_t{4096 * 400});
    bytes.replace(4096 * 200, 4096 * 20, 4096 * 20, '\x55');
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    ASSERT_NE(m_journal.Start(), nullptr);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_TRUE(box.Text().starts_with(L"The journal's file is damaged. "));
    EXPECT_EQ(GetWindow(box.Handle(), GW_OWNER), Window());
    ASSERT_TRUE(box.Answer(IDOK));
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty());
    ASSERT_TRUE(m_journal.Close());
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == bytes);
}

// Nothing of it without the password; then it is asked before a new store would be made, and ended by force
// it is asked again.
TEST_F(Restore, ThatTakesTheStoreAwayIsOfferedItsBackup)
{
    ASSERT_NO_FATAL_FAILURE(BackUpAndBreak());
    ASSERT_TRUE(DeleteFileW(m_store.Path().c_str()));
    ASSERT_TRUE(StoreSetting(L"Options", L"vacc", L"Secret"));
    ASSERT_TRUE(StoreSetting(L"Options", L"setpw", 1));
    ASSERT_TRUE(StoreSetting(L"Options", L"Password", 1));
    for (const bool ends : {true, false}) {
        ASSERT_TRUE(m_journal.Launch());
        HWND prompt = WaitForDialog(m_journal.Id(), L"Enter Journal Password");
        ASSERT_NE(prompt, nullptr);
        ASSERT_TRUE(Activate(prompt));
        EXPECT_FALSE(HasMessageBox(m_journal.Id()));
        TypeText(L"Secret\n");
        const RemoteMessageBox offer = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(offer);
        EXPECT_TRUE(offer.Text().starts_with(m_store.Path() + L"\n\nis not there"));
        EXPECT_NE(offer.Text().find(L"It has 2 entries; "), std::wstring::npos);
        EXPECT_TRUE(offer.IsDefault(IDYES));
        EXPECT_EQ(GetFileAttributesW(m_store.Path().c_str()), INVALID_FILE_ATTRIBUTES);
        if (ends) {
            m_journal.Kill();
        } else {
            ASSERT_TRUE(offer.Answer(IDYES));
        }
    }
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(2));
}

// Two starts ask at the same time, about the same file.
class TwoStarts : public Restore {
  protected:
    enum class File { Gone, Empty, Broken };
    void Lose(File file)
    {
        ASSERT_NO_FATAL_FAILURE(BackUpAndBreak());
        ASSERT_TRUE(file == File::Gone    ? DeleteFileW(m_store.Path().c_str())
                    : file == File::Empty ? WriteFileBytes(m_store.Path(), "")
                                          : true);
    }
    RemoteMessageBox Offer(JournalProcess& start, File file)
    {
        EXPECT_TRUE(start.Launch());
        RemoteMessageBox box = WaitForMessageBox(start.Id());
        if (file == File::Broken && box && box.Answer(IDOK))
            box = WaitForMessageBox(start.Id());
        EXPECT_TRUE(box && box.Offers(IDYES));
        return box;
    }
};

TEST_F(TwoStarts, OpenOneWindowWhereBothPutTheBackupInItsPlace)
{
    for (const File file : {File::Gone, File::Empty, File::Broken}) {
        SCOPED_TRACE(static_cast<int>(file));
        ASSERT_NO_FATAL_FAILURE(Lose(file));
        JournalProcess second;
        const RemoteMessageBox first = Offer(m_journal, file), other = Offer(second, file);
        ASSERT_TRUE(first && other);
        ASSERT_TRUE(first.Answer(IDYES));
        ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
        EXPECT_TRUE(ShowsRows(2));
        ShowWindowAsync(Window(), SW_MINIMIZE);
        ASSERT_TRUE(WaitFor([&] { return IsIconic(Window()); }));
        ASSERT_TRUE(other.Answer(IDYES));
        EXPECT_TRUE(second.WaitForEnd()) << "with a box: " << HasMessageBox(second.Id());
        EXPECT_EQ(second.ExitCode(), 0u);
        EXPECT_TRUE(WaitFor([&] { return !IsIconic(Window()); })) << "it has not come forward";
        ASSERT_TRUE(m_journal.Close());
        ASSERT_TRUE(DeleteFileW(m_store.Path().c_str()));
        for (const std::wstring& backup : BackupsOf(m_store.Path()))
            ASSERT_TRUE(DeleteFileW((BackupFolderOf(m_store.Path()) + backup).c_str()));
    }
}

TEST_F(TwoStarts, OpenOneWindowWhereBothAreAnsweredAtOnce)
{
    ASSERT_NO_FATAL_FAILURE(Lose(File::Gone));
    std::array<JournalProcess, 2> both;
    const RemoteMessageBox first = Offer(both[0], File::Gone), other = Offer(both[1], File::Gone);
    ASSERT_TRUE(first && other);
    for (const RemoteMessageBox& box : {first, other})
        PostMessageW(box.Handle(), WM_COMMAND, MAKEWPARAM(IDYES, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box.Handle(), IDYES)));
    EXPECT_TRUE(WaitFor([&] { return both[0].IsRunning() != both[1].IsRunning(); }));
    JournalProcess& open = both[both[0].IsRunning() ? 0 : 1];
    ASSERT_NE(open.WaitForMainWindow(), nullptr);
    EXPECT_EQ(VisibleWindows(L"Journal"), std::vector{open.MainWindow()});
    EXPECT_FALSE(HasMessageBox(open.Id()));
    ASSERT_TRUE(open.Close());
    EXPECT_EQ(StoreReader(m_store.Path()).QueryOne("SELECT count(*) FROM journal"), "2");
}

} // namespace
