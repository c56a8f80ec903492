// The main job: a person records an entry, sees it in the list, changes it, copies it, deletes it, and finds
// all as it was left after a restart. Everything by mouse and keyboard.
#include <gtest/gtest.h>

#include "e2e/harness/remote_date_picker.h"
#include "e2e/journal/journal_window.h"

namespace {

class Spine : public JournalWindowTest {
  protected:
    // Gives a control of the editor the focus with a click. A window manager may still move a window that has
    // just come, so a click that went beside it is repeated.
    [[nodiscard]] bool ClickInto(HWND editor, HWND control)
    {
        const auto isFocused = [&] {
            HWND focus = FocusOf(editor);
            return focus == control || IsChild(control, focus);
        };
        constexpr int kTries = 5;
        for (int i = 0; i < kTries; ++i)
            if (Click(MiddleOf(control)) && WaitFor(isFocused, kRemoteLimit / kTries))
                return true;
        return false;
    }

    // Chooses an item of a drop-down button's menu with the mouse.
    [[nodiscard]] bool ChooseFromBar(HWND editor, int button, UINT item)
    {
        const RemoteToolbar bar(Control(editor, IDC_EDITOR_BAR));
        if (!Click(bar.ArrowPoint(button)))
            return false;
        HWND popup = WaitForPopup(m_journal.Id());
        return popup && ChooseFromPopup(popup, item);
    }

    [[nodiscard]] HWND OpenNew()
    {
        PressKeys({VK_CONTROL, 'N'});
        return WaitForEditor();
    }

    // A new entry with everything a person picks, left unsaved in the open editor.
    [[nodiscard]] HWND FillNewEntry()
    {
        HWND editor = OpenNew();
        if (!editor)
            return nullptr;
        EXPECT_TRUE(ClickInto(editor, Control(editor, IDC_SUBJECT)));
        PressKeys({VK_CONTROL, 'A'});
        TypeText(L"Call with Jörg");
        EXPECT_TRUE(ClickInto(editor, Control(editor, IDC_BODY)));
        TypeText(L"Agreed on the offer.\nSends it on Monday.");
        EXPECT_TRUE(ChooseComboItem(Control(editor, IDC_TYPE), 5));
        EXPECT_TRUE(ChooseFromBar(editor, CMD_PRIORITY, CMD_PRIORITY_HIGH));
        EXPECT_TRUE(ChooseFromBar(editor, CMD_SENSITIVITY, CMD_SENSITIVITY_PERSONAL));
        SYSTEMTIME date{};
        date.wYear = 2024;
        date.wMonth = 2;
        date.wDay = 29;
        date.wHour = 14;
        date.wMinute = 5;
        EXPECT_TRUE(RemoteDatePicker(Control(editor, IDC_START_DATE)).Change(date));
        EXPECT_TRUE(ClickInto(editor, Control(editor, IDC_DURATION)));
        PressKeys({VK_CONTROL, 'A'});
        TypeText(L"90");
        return editor;
    }

    void Press(HWND editor, int button)
    {
        EXPECT_TRUE(Click(MiddleOf(Control(editor, button))));
        EXPECT_TRUE(WaitUntilGone(editor));
    }
};

TEST_F(Spine, APersonRecordsSeesChangesCopiesDeletesAndFindsAgain)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(0));

    HWND editor = FillNewEntry();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextOf(editor), L"Thursday");
    Press(editor, IDOK);

    ASSERT_TRUE(ShowsRows(1));
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 0) == L"2/29/2024 2:05 PM"; }));
    EXPECT_EQ(List().Text(0, 1), L"Call with Jörg");
    EXPECT_EQ(List().SelectedRows(), std::vector{0}) << "the new entry is the selected one";

    // Enter opens it again, with everything as it was saved.
    ASSERT_TRUE(Activate(Window()));
    PressKey(VK_RETURN);
    editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    const RemoteToolbar bar(Control(editor, IDC_EDITOR_BAR));
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"Call with Jörg");
    EXPECT_EQ(TextOf(Control(editor, IDC_BODY)), L"Agreed on the offer.\r\nSends it on Monday.");
    EXPECT_EQ(TextOf(Control(editor, IDC_TYPE)), L"Meeting");
    EXPECT_EQ(TextOf(Control(editor, IDC_DURATION)), L"1 hour 30 min");
    EXPECT_EQ(bar.Text(CMD_PRIORITY), L"High");
    EXPECT_EQ(bar.Text(CMD_SENSITIVITY), L"Personal");
    EXPECT_FALSE(bar.IsEnabled(CMD_SAVE));
    ASSERT_TRUE(ClickInto(editor, Control(editor, IDC_SUBJECT)));
    PressKey(VK_END);
    TypeText(L" (done)");
    EXPECT_TRUE(WaitFor([&] { return bar.IsEnabled(CMD_SAVE); }));
    PressKeys({VK_CONTROL, 'S'});
    EXPECT_TRUE(WaitFor([&] { return !bar.IsEnabled(CMD_SAVE); }));
    Press(editor, IDOK);
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"Call with Jörg (done)"; }));

    // Copy and Paste duplicate it.
    ASSERT_TRUE(WaitFor([&] { return Buttons().IsEnabled(CMD_COPY); }));
    ASSERT_TRUE(Click(Buttons().BodyPoint(CMD_COPY)));
    ASSERT_TRUE(WaitFor([&] { return Buttons().IsEnabled(CMD_PASTE); }));
    ASSERT_TRUE(Click(Buttons().BodyPoint(CMD_PASTE)));
    ASSERT_TRUE(ShowsRows(2));
    EXPECT_TRUE(WaitFor([&] { return !List().Text(1, 1).empty() && List().Row(0) == List().Row(1); }));

    // Delete asks, and removes one.
    ASSERT_TRUE(Click(List().LabelPoint(1)));
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{1}; }));
    PressKey(VK_DELETE);
    RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Delete record?");
    EXPECT_EQ(box.Caption(), L"Confirm");
    ASSERT_TRUE(box.Answer(IDNO));
    EXPECT_EQ(List().RowCount(), 2);
    PressKey(VK_DELETE);
    box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(ShowsRows(1));

    // After a restart everything is as it was left.
    ASSERT_TRUE(WaitFor([&] { return !List().Text(0, 1).empty(); })) << "the row is read when it is painted";
    const std::vector<std::wstring> row = List().Row(0);
    ASSERT_TRUE(m_journal.Close());
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_TRUE(WaitFor([&] { return List().Row(0) == row; }));

    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT count(*) FROM journal"), "1");
    EXPECT_EQ(store.QueryOne("SELECT subject FROM journal"), "Call with J\xC3\xB6rg (done)");
    EXPECT_EQ(store.QueryOne("SELECT body FROM journal"), "Agreed on the offer.\r\nSends it on Monday.");
    EXPECT_EQ(store.QueryOne("SELECT type FROM journal"), "Meeting");
    EXPECT_EQ(store.QueryOne("SELECT priority FROM journal"), "2");
    EXPECT_EQ(store.QueryOne("SELECT sensitivity FROM journal"), "1");
    EXPECT_EQ(store.QueryOne("SELECT kind FROM journal"), "3");
    EXPECT_EQ(store.QueryOne("SELECT duration FROM journal"), "54000000000");
    EXPECT_EQ(store.QueryOne("SELECT end_time - date FROM journal"), "54000000000");
    EXPECT_EQ(TextSetting(L"Settings", L"selType"), L"Meeting");
}

TEST_F(Spine, ASavedEntryOutlivesAKilledProgram)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = FillNewEntry();
    ASSERT_NE(editor, nullptr);
    PressKeys({VK_CONTROL, 'S'});
    ASSERT_TRUE(WaitFor([&] {
        const StoreReader store(m_store.Path());
        return store.QueryOne("SELECT count(*) FROM journal") == "1";
    }));
    Send(editor, WM_NULL); // the save has returned: nothing unsaved is offered
    m_journal.Kill();
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"Call with Jörg"; }));
}

TEST_F(Spine, CancelAsksAndLeavesNothing)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = FillNewEntry();
    ASSERT_NE(editor, nullptr);
    PressKey(VK_ESCAPE);
    RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Cancel changes?");
    EXPECT_EQ(box.Caption(), L"Warning");
    ASSERT_TRUE(box.Answer(IDNO));
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"Call with Jörg");
    PressKey(VK_ESCAPE);
    box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDYES));
    ASSERT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(ShowsRows(0));
}

TEST_F(Spine, ADoubleClickOpensTheEntry)
{
    ASSERT_NE(AddEntry(L"Lunch"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    ASSERT_TRUE(DoubleClick(List().LabelPoint(0)));
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"Lunch");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(editor));
}

} // namespace
