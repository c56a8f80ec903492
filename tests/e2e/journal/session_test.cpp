// The end of the session and other programs' requests to close, with and without something open.
#include <gtest/gtest.h>

#include <functional>

#include "e2e/journal/journal_window.h"

namespace {

class Session : public JournalWindowTest {
  protected:
    // An editor over the journal with a subject that is not saved.
    HWND OpenUnsaved()
    {
        PressKeys({VK_CONTROL, 'N'});
        HWND editor = WaitForEditor();
        if (!editor || !SetText(Control(editor, IDC_SUBJECT), L"Not saved yet"))
            return nullptr;
        const RemoteToolbar bar(Control(editor, IDC_EDITOR_BAR));
        return WaitFor([&] { return bar.IsEnabled(CMD_SAVE); }) ? editor : nullptr;
    }

    LRESULT Query(HWND window) const { return Send(window, WM_QUERYENDSESSION, 0, 0, -1); }

    // One question stands, and answered with No leaves the editor as it was.
    void ExpectOneQuestion(HWND editor)
    {
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(box);
        EXPECT_EQ(box.Text(), L"Cancel changes?");
        ASSERT_TRUE(box.Answer(IDNO));
        EXPECT_EQ(WaitForInputIdle(m_journal.Handle(), kRemoteLimit), 0u);
        EXPECT_FALSE(HasMessageBox(m_journal.Id())) << "a second question";
        EXPECT_TRUE(IsWindowVisible(editor));
        EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"Not saved yet");
        EXPECT_TRUE(m_journal.IsRunning());
    }
};

TEST_F(Session, MayEndWhereNothingIsUnsaved)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_EQ(Query(Window()), TRUE);
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(Query(Window()), TRUE);
    EXPECT_EQ(Query(editor), TRUE);
    Send(Window(), WM_ENDSESSION, FALSE);
    EXPECT_TRUE(IsWindowVisible(editor)) << "it did not end after all";
}

TEST_F(Session, DoesNotEndOverAnEntryThatIsNotSaved)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = OpenUnsaved();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(Query(Window()), FALSE);
    EXPECT_EQ(Query(editor), FALSE);
    PostMessageW(editor, WM_CLOSE, 0, 0);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(Query(Window()), FALSE) << "behind the question too";
    ASSERT_TRUE(box.Answer(IDNO));
    Send(editor, WM_COMMAND, CMD_SAVE);
    EXPECT_EQ(Query(Window()), TRUE) << "and once it is on disk, it may";
}

// As it is closed: with all that is stored then, and nothing left beside the store.
TEST_F(Session, ItsEndStoresWhatAnEndOfTheProgramStores)
{
    ASSERT_NE(AddEntry(L"Kept"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_FALSE(NumberSetting(L"Settings", L"wLeft"));
    EXPECT_EQ(Query(Window()), TRUE);
    Send(Window(), WM_ENDSESSION, TRUE);
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
    for (const wchar_t* name : {L"iCols", L"Column0", L"mstyle", L"trestore", L"tmax", L"wLeft", L"wMax"})
        EXPECT_TRUE(NumberSetting(L"Settings", name)) << name;
    EXPECT_EQ(NumberSetting(L"Options", L"sort"), 0x00650040u);
    EXPECT_EQ(GetFileAttributesW((m_store.Path() + L"-wal").c_str()), INVALID_FILE_ATTRIBUTES);
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT subject FROM journal"), "Kept");
}

// The system goes on whatever it was answered.
TEST_F(Session, ItsEndWithAnEditorOpenStoresTheSettings)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = OpenUnsaved();
    ASSERT_NE(editor, nullptr);
    Send(Window(), WM_ENDSESSION, TRUE);
    EXPECT_TRUE(NumberSetting(L"Settings", L"wLeft")) << "before it answers";
    EXPECT_TRUE(NumberSetting(L"Options", L"sort"));
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
}

TEST_F(Session, ItsEndBehindAnOpenMenuEndsTheProgram)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    const std::function<void()> ways[] = {
        [] {
            PressKeys({VK_MENU, 'F'});
        },
        [] { PressKey(VK_F4); },
        [this] { EXPECT_TRUE(Click(Buttons().ArrowPoint(CMD_CONTACTS))); },
    };
    for (const auto& open : ways) {
        ASSERT_TRUE(m_journal.IsRunning() || m_journal.Start());
        open();
        ASSERT_NE(WaitForPopup(m_journal.Id()), nullptr);
        Send(Window(), WM_ENDSESSION, TRUE);
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
    }
}

TEST_F(Session, ACloseFromOutsideAsksInTheEditor)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = OpenUnsaved();
    ASSERT_NE(editor, nullptr);
    for (const UINT message : {UINT{WM_CLOSE}, 1023u}) {
        PostMessageW(Window(), message, 0, 0);
        ExpectOneQuestion(editor);
    }
    PostCommand(Window(), CMD_QUIT);
    ExpectOneQuestion(editor);
}

// It asks every window of the program.
TEST_F(Session, TheTaskListAsksOnce)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = OpenUnsaved();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(m_journal.RunTaskKill());
    ExpectOneQuestion(editor);
}

TEST_F(Session, TheTaskListClosesAWindowWithNothingOpen)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(m_journal.RunTaskKill());
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
    EXPECT_TRUE(NumberSetting(L"Settings", L"wLeft"));
}

TEST_F(Session, ACloseGoesToWhateverDialogIsInFront)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    for (const int command : {CMD_OPTIONS, CMD_FIND, CMD_FILTER_MONTHS, CMD_CUSTOMIZE_COLUMNS,
                              CMD_SUBJECTS_LIST, CMD_CATEGORIES_LIST, CMD_ABOUT, CMD_EXPORT}) {
        PostCommand(Window(), command);
        const auto isOpen = [&] { return !IsWindowEnabled(Window()) && GetForegroundWindow() != Window(); };
        ASSERT_TRUE(WaitFor(isOpen)) << command;
        EXPECT_EQ(WaitForInputIdle(m_journal.Handle(), kRemoteLimit), 0u);
        PostMessageW(Window(), WM_CLOSE, 0, 0);
        ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(Window()) != FALSE; })) << command;
        ASSERT_TRUE(Activate(Window())) << command;
    }
    EXPECT_TRUE(m_journal.IsRunning());
}

TEST_F(Session, ACloseEndsAnOpenMenuFirst)
{
    for (const bool isFilter : {false, true}) {
        ASSERT_NE(m_journal.Start(), nullptr);
        if (isFilter)
            PressKey(VK_F4);
        else
            PressKeys({VK_MENU, 'F'});
        ASSERT_NE(WaitForPopup(m_journal.Id()), nullptr);
        PostMessageW(Window(), WM_CLOSE, 0, 0);
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
    }
}

TEST_F(Session, ACloseWithAMenuOpenInTheEditorAsksThere)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = OpenUnsaved();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(Click(RemoteToolbar(Control(editor, IDC_EDITOR_BAR)).ArrowPoint(CMD_PRIORITY)));
    ASSERT_NE(WaitForPopup(m_journal.Id()), nullptr);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    ExpectOneQuestion(editor);
}

TEST_F(Session, ACommandWithAMenuOpenIsRunAndTheMenuGoes)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_MENU, 'F'});
    HWND popup = WaitForPopup(m_journal.Id());
    ASSERT_NE(popup, nullptr);
    PostCommand(Window(), CMD_NEW_ENTRY);
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    PostCommand(Window(), CMD_NEW_ENTRY);
    Send(Window(), WM_NULL);
    PostMessageW(editor, WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(popup) || !IsWindowVisible(popup); }));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(Window()) != FALSE; })) << "no second editor";
    ASSERT_TRUE(m_journal.Close());
}

} // namespace
