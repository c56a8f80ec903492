#include <gtest/gtest.h>

#include <vector>

#include "e2e/journal/journal_window.h"

namespace {

class Keys : public JournalWindowTest {
  protected:
    void StartWithSelection()
    {
        ASSERT_NE(AddEntry(L"Lunch"), 0u);
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(ShowsRows(1));
        ASSERT_TRUE(Click(List().LabelPoint(0)));
        ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{0}; }));
    }

    // When the focus has just come back, the display may tell late that no key is down, and so let go of a
    // Ctrl that is held that moment: then the letter alone has come, which does nothing, and both are pressed
    // again.
    HWND OpenEditorByKey()
    {
        constexpr DWORD kOneTry = 4'000;
        HWND editor = nullptr;
        for (DWORD waited = 0; !editor && waited < kRemoteLimit; waited += kOneTry) {
            PressKeys({VK_CONTROL, 'E'});
            editor = WaitForDialogWith(m_journal.Id(), IDC_BODY, kOneTry);
        }
        return editor;
    }

    // After a key that does nothing, one that does something shows that both were taken.
    void ExpectNothingBefore(const char* what)
    {
        HWND editor = OpenEditorByKey();
        ASSERT_NE(editor, nullptr) << what;
        EXPECT_FALSE(HasMessageBox(m_journal.Id())) << what;
        EXPECT_EQ(List().RowCount(), 1) << what;
        PressKey(VK_ESCAPE);
        ASSERT_TRUE(WaitUntilGone(editor)) << what;
        ASSERT_TRUE(WaitFor([&] {
            return GetForegroundWindow() == Window() && FocusOf(Window()) == List().Handle();
        })) << what;
    }
};

TEST_F(Keys, TheClipboardKeysDoNothingInTheList)
{
    StartWithSelection();
    PressKeys({VK_CONTROL, 'X'});
    ExpectNothingBefore("Ctrl+X");
    PressKeys({VK_CONTROL, 'C'});
    ExpectNothingBefore("Ctrl+C");
    PressKeys({VK_CONTROL, 'V'});
    ExpectNothingBefore("Ctrl+V");
    PressKeys({VK_SHIFT, VK_DELETE});
    ExpectNothingBefore("Shift+Delete");
    PressKeys({VK_CONTROL, VK_INSERT});
    ExpectNothingBefore("Ctrl+Insert");
    PressKeys({VK_SHIFT, VK_INSERT});
    ExpectNothingBefore("Shift+Insert");
    PressKeys({VK_CONTROL, 'T'});
    ExpectNothingBefore("Ctrl+T");
    PressKeys({VK_MENU, VK_BACK});
    ExpectNothingBefore("Alt+Backspace");
}

class DeleteKeys : public Keys, public testing::WithParamInterface<std::vector<WORD>> {};

TEST_P(DeleteKeys, AskAndDelete)
{
    StartWithSelection();
    if (GetParam().size() == 2)
        PressKeys({GetParam()[0], GetParam()[1]});
    else
        PressKey(GetParam()[0]);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Delete record?");
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(ShowsRows(0));
}

INSTANTIATE_TEST_SUITE_P(Both, DeleteKeys,
                         testing::Values(std::vector<WORD>{VK_DELETE}, std::vector<WORD>{VK_CONTROL, 'D'}));

TEST_F(Keys, GreyCommandsDoNothingFromTheKeyboard)
{
    ASSERT_NE(AddEntry(L"Lunch"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_FALSE(Buttons().IsEnabled(CMD_EDIT_ENTRY));
    PressKey(VK_RETURN);
    PressKey(VK_DELETE);
    PressKeys({VK_CONTROL, 'E'});
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"<Entry Subject>") << "Ctrl+N opened it, no earlier key";
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitUntilGone(editor));
    EXPECT_EQ(List().RowCount(), 1);
}

TEST_F(Keys, TheKeyboardAloneSelectsAndOpens)
{
    ASSERT_NE(AddEntry(L"One", kNoon), 0u);
    ASSERT_NE(AddEntry(L"Two", kNoon - 1), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(2));
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitFor([&] { return !List().SelectedRows().empty(); }));
    PressKey(VK_END);
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{1}; }));
    PressKey(VK_RETURN);
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"Two");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(editor));
}

// Every field of the editor is reached and worked without the mouse.
TEST_F(Keys, AnEntryIsWrittenWithoutTheMouse)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(0));
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    const RemoteToolbar bar(Control(editor, IDC_EDITOR_BAR));
    ASSERT_TRUE(WaitFor([&] { return FocusOf(editor) == Control(editor, IDC_START_DATE); }));
    TypeText(L"\t\tWalk\tN\t90\t"); // past date and time to subject, type, duration and the bar
    ASSERT_TRUE(WaitFor([&] { return FocusOf(editor) == bar.Handle(); }));
    EXPECT_EQ(TextOf(Control(editor, IDC_DURATION)), L"1 hour 30 min");
    PressKey(VK_RIGHT);
    PressKey(VK_RIGHT); // from the timer past the sensitivity to the priority
    PressKey(VK_DOWN);
    HWND popup = WaitForPopup(m_journal.Id());
    ASSERT_NE(popup, nullptr);
    PressKey(VK_UP); // to the last item
    PressKey(VK_RETURN);
    EXPECT_TRUE(WaitFor([&] { return bar.Text(CMD_PRIORITY) == L"High"; }));
    TypeText(L"\tRound the lake");
    PressKeys({VK_CONTROL, 'T'});
    PressKeys({VK_CONTROL, VK_RETURN});
    const StoreReader store(m_store.Path());
    ASSERT_TRUE(WaitFor([&] { return store.QueryOne("SELECT count(*) FROM journal") == "1"; }));
    EXPECT_EQ(FocusOf(editor), Control(editor, IDC_BODY)) << "it saves and stays open";
    TypeText(L"\t\n"); // OK
    ASSERT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_EQ(store.QueryOne("SELECT count(*) FROM journal"), "1");
    EXPECT_EQ(store.QueryOne("SELECT subject FROM journal"), "Walk");
    EXPECT_EQ(store.QueryOne("SELECT type FROM journal"), "Note");
    EXPECT_EQ(store.QueryOne("SELECT duration FROM journal"), "54000000000");
    EXPECT_EQ(store.QueryOne("SELECT priority FROM journal"), "2");
    EXPECT_EQ(
        store.QueryOne("SELECT body LIKE 'Round the lake' || char(13, 10, 13, 10) || '%M - ' FROM journal"),
        "1");
}

} // namespace
