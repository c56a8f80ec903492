// Help asked for in the journal.
#include <gtest/gtest.h>

#include "e2e/help/help_viewer.h"
#include "e2e/journal/journal_window.h"
#include "support/temporary_name.h"

namespace {

class HelpOfJournal : public JournalWindowTest {
  protected:
    void TearDown() override { EXPECT_TRUE(CloseHelp()); }

    // Asks for help in the dialog, then closes both.
    static void ExpectPageAlone(HWND dialog, const std::wstring& page)
    {
        ASSERT_TRUE(Activate(dialog));
        PressKey(VK_F1);
        ASSERT_TRUE(HelpShows(page)) << std::string(page.begin(), page.end());
        HWND help = HelpViewer();
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == help; }));
        EXPECT_FALSE(IsWindowEnabled(Control(help, IDC_BACK))) << "no other page was asked for before";
        ASSERT_TRUE(CloseHelp());
        PostMessageW(dialog, WM_CLOSE, 0, 0);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
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
    EXPECT_TRUE(HelpStaysInFront());
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
    EXPECT_FALSE(IsWindowEnabled(Control(help, IDC_BACK))) << "no other page was asked for before";
    ASSERT_TRUE(HelpStaysInFront());
    ASSERT_TRUE(Activate(results));
    ASSERT_TRUE(WaitFor([&] { return IsChild(results, FocusOf(results)); }));
    PressKey(VK_RETURN); // opens the entry
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"The entry window"));
    PostCommand(help, CMD_BACK);
    EXPECT_TRUE(HelpShows(L"Find Results")) << "nor one in between";
    ASSERT_TRUE(HelpStaysInFront());
    for (HWND dialog : {editor, results}) {
        ASSERT_TRUE(Activate(dialog));
        PressKey(VK_ESCAPE);
        ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    }
    EXPECT_TRUE(m_journal.Close());
}

TEST_F(HelpOfJournal, F1InADialogOpensItsPageAlone)
{
    struct {
        int command;
        const wchar_t* title;
        const wchar_t* page;
    } const dialogs[] = {{CMD_OPTIONS, L"Options", L"Options"},
                         {CMD_FIND, L"Find", L"Find\r"},
                         {CMD_FILTER_MONTHS, L"Filter on Months...", L"The filter window"},
                         {CMD_CUSTOMIZE_COLUMNS, L"Customize Columns", L"Customize Columns"},
                         {CMD_SUBJECTS_LIST, L"Quick Subjects", L"Quick subjects"},
                         {CMD_ABOUT, L"About Journal", L"About"}};
    ASSERT_NE(m_journal.Start(), nullptr);
    for (const auto& [command, title, page] : dialogs) {
        PostCommand(Window(), command);
        ExpectPageAlone(WaitForDialog(m_journal.Id(), title), page);
    }
    EXPECT_TRUE(m_journal.Close());
}

// Over the main window and over the editor, which each show their own page again afterwards.
TEST_F(HelpOfJournal, F1InTheListOfCategoriesOpensItsPageAlone)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_CATEGORIES_LIST);
    ExpectPageAlone(WaitForDialog(m_journal.Id(), L"Edit Categories"), L"Edit Categories");
    ASSERT_TRUE(Activate(Window()));
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"Your journal"));
    ASSERT_TRUE(CloseHelp());
    PostCommand(Window(), CMD_NEW_ENTRY);
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    PostCommand(editor, CMD_EDIT_CATEGORIES);
    ExpectPageAlone(WaitForDialog(m_journal.Id(), L"Edit Categories"), L"Edit Categories");
    ASSERT_TRUE(Activate(editor));
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"The entry window"));
    PressKey(VK_ESCAPE);
}

// The journal alone in a folder.
class WithoutViewer : public HelpOfJournal {
  protected:
    WithoutViewer()
    {
        wchar_t path[MAX_PATH] = L"";
        const std::wstring own(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
        m_copy = TemporaryFolder() + L"lonely journal.exe";
        EXPECT_TRUE(
            CopyFileW((own.substr(0, own.rfind(L'\\') + 1) + L"journal.exe").c_str(), m_copy.c_str(), FALSE));
    }
    ~WithoutViewer() override { DeleteFileW(m_copy.c_str()); }

    std::wstring m_copy;
};

// The menu's loop and the system both ask for help then; the menu goes, and the box can be answered.
TEST_F(WithoutViewer, F1InAnOpenMenuTellsItOnce)
{
    SetEnvironmentVariableW(L"JOURNAL_EXE", m_copy.c_str());
    JournalProcess journal;
    SetEnvironmentVariableW(L"JOURNAL_EXE", nullptr);
    ASSERT_NE(journal.Start(), nullptr);
    for (const bool ofFilter : {false, true}) {
        if (ofFilter)
            PressKey(VK_F4);
        else
            PressKeys({VK_MENU, 'F'});
        ASSERT_NE(WaitForPopup(journal.Id()), nullptr);
        PressKey(VK_F1);
        const RemoteMessageBox box = WaitForMessageBox(journal.Id());
        ASSERT_TRUE(box) << ofFilter;
        ASSERT_TRUE(box.Answer(IDOK));
        EXPECT_TRUE(WaitFor([&] { return !FindTopWindow(journal.Id(), L"#32768"); })) << ofFilter;
        PressKeys({VK_CONTROL, 'N'});
        HWND editor = WaitForDialogWith(journal.Id(), IDC_BODY);
        ASSERT_NE(editor, nullptr);
        EXPECT_FALSE(HasMessageBox(journal.Id())) << ofFilter;
        ASSERT_TRUE(Activate(editor));
        PressKey(VK_ESCAPE);
        EXPECT_TRUE(WaitUntilGone(editor));
    }
    EXPECT_TRUE(journal.Close());
}

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
