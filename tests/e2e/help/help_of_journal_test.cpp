// Help asked for in the journal.
#include <gtest/gtest.h>

#include "e2e/help/help_viewer.h"
#include "e2e/journal/journal_window.h"

namespace {

class HelpOfJournal : public JournalWindowTest {
  protected:
    void TearDown() override { EXPECT_TRUE(CloseHelp()); }
};

TEST_F(HelpOfJournal, F1OpensItAndTheNextRequestMovesIt)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKey(VK_F1);
    ASSERT_TRUE(HelpShows(L"Your journal"));
    HWND help = HelpViewer();
    ASSERT_TRUE(WaitFor([&] { return GetForegroundWindow() == help; })); // as a new window does, in its time
    PostCommand(Window(), CMD_NEW_ENTRY);
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"The entry window"));
    EXPECT_EQ(HelpViewer(), help);
    EXPECT_EQ(FindWindowExW(nullptr, help, kHelpViewer, nullptr), nullptr) << "one window";
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == help; }));
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
    ASSERT_TRUE(Activate(editor));
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(editor); }));
    EXPECT_TRUE(m_journal.Close());
    EXPECT_TRUE(IsWindow(help)) << "the help is a program of its own";
}

TEST_F(HelpOfJournal, TheMenuOpensIt)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_HELP_CONTENTS);
    EXPECT_TRUE(HelpShows(L"Your journal"));
}

TEST_F(HelpOfJournal, F1InFindResultsOpensTheirPageAlone)
{
    AddEntry(L"Tea");
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_CONTROL, 'F'});
    HWND find = WaitForDialogWith(m_journal.Id(), IDC_FIND_TEXT);
    ASSERT_NE(find, nullptr);
    ASSERT_TRUE(Activate(find));
    PressButton(find, IDC_FIND_SUBJECT);
    ASSERT_TRUE(WaitFor([&] { return IsChecked(find, IDC_FIND_SUBJECT); }));
    PressKey(VK_RETURN);
    HWND results = WaitForDialogWith(m_journal.Id(), IDC_FOUND_LIST);
    ASSERT_NE(results, nullptr);
    ASSERT_TRUE(Activate(results));
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"Find Results"));
    HWND help = HelpViewer();
    ASSERT_TRUE(WaitFor([&] { return GetForegroundWindow() == help; }));
    EXPECT_FALSE(IsWindowEnabled(Control(help, IDC_BACK))) << "no other page was asked for before";
    ASSERT_TRUE(Activate(results));
    PressKey(VK_RETURN); // opens the entry
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"The entry window"));
    PostCommand(help, CMD_BACK);
    EXPECT_TRUE(HelpShows(L"Find Results")) << "nor one in between";
    for (HWND dialog : {editor, results}) {
        ASSERT_TRUE(Activate(dialog));
        PressKey(VK_ESCAPE);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
    EXPECT_TRUE(m_journal.Close());
}

TEST_F(HelpOfJournal, F1InAnyOtherWindowOpensTheContents)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    for (const auto& [command, control] : {std::pair{CMD_OPTIONS, IDC_CONFIRM_DELETE},
                                           {CMD_FIND, IDC_FIND_TEXT},
                                           {CMD_ABOUT, IDC_ABOUT_BUILD}}) {
        PostCommand(Window(), command);
        HWND dialog = WaitForDialogWith(m_journal.Id(), control);
        ASSERT_NE(dialog, nullptr) << command;
        ASSERT_TRUE(Activate(dialog));
        PressKey(VK_F1);
        ASSERT_TRUE(HelpShows(L"Your journal")) << command;
        HWND help = HelpViewer();
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == help; }));
        EXPECT_FALSE(HasMessageBox(m_journal.Id()));
        ASSERT_TRUE(CloseHelp());
        PostMessageW(dialog, WM_CLOSE, 0, 0);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
    EXPECT_TRUE(m_journal.Close());
}

// The journal alone in a folder.
class WithoutViewer : public HelpOfJournal {
  protected:
    WithoutViewer()
    {
        wchar_t path[MAX_PATH] = L"", temporary[MAX_PATH] = L"";
        const std::wstring own(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
        GetTempPathW(MAX_PATH, temporary);
        m_copy = std::wstring(temporary) + L"lonely journal.exe";
        EXPECT_TRUE(
            CopyFileW((own.substr(0, own.rfind(L'\\') + 1) + L"journal.exe").c_str(), m_copy.c_str(), FALSE));
    }
    ~WithoutViewer() override { DeleteFileW(m_copy.c_str()); }

    std::wstring m_copy;
};

TEST_F(WithoutViewer, F1TellsOnceThatItIsMissing)
{
    SetEnvironmentVariableW(L"JOURNAL_EXE", m_copy.c_str());
    JournalProcess journal;
    SetEnvironmentVariableW(L"JOURNAL_EXE", nullptr);
    ASSERT_NE(journal.Start(), nullptr);
    PressKey(VK_F1);
    const RemoteMessageBox box = WaitForMessageBox(journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Error starting help");
    EXPECT_EQ(box.Caption(), L"PegHelp.exe not found");
    ASSERT_TRUE(box.Answer(IDOK));
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForDialogWith(journal.Id(), IDC_BODY);
    ASSERT_NE(editor, nullptr);
    EXPECT_FALSE(HasMessageBox(journal.Id()));
    ASSERT_TRUE(Activate(editor));
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(journal.Close());
}

} // namespace
