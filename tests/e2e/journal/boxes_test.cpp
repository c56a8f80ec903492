// What the program's boxes and dialogs leave to be done behind them, from outside.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"
#include "support/locked_store.h"

namespace {

class Boxes : public JournalWindowTest {
  protected:
    // Starts over three entries, the oldest of them in the last row, and asks whether to delete the middle
    // one.
    void AskToDelete()
    {
        for (const wchar_t* subject : {L"First", L"Second", L"Third"})
            ASSERT_NE(AddEntry(subject, kNoon + ++m_added), 0u);
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(ShowsRows(3));
        ASSERT_TRUE(Click(List().LabelPoint(1)));
        ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{1}; }));
        PressKey(VK_DELETE);
        m_box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(m_box);
    }

    void ExpectOnlySecondDeleted()
    {
        ASSERT_TRUE(m_box.Answer(IDYES));
        EXPECT_TRUE(ShowsRows(2));
        const StoreReader store(m_store.Path());
        EXPECT_EQ(store.QueryOne("SELECT group_concat(subject) FROM journal"), "First,Third");
        EXPECT_TRUE(IsWindowEnabled(Window()));
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == Window(); }));
        EXPECT_TRUE(WaitFor([&] { return FocusOf(Window()) == List().Handle(); }));
    }

    // Until the program has dealt with all that was posted to it before: what is posted last has its effect.
    void LetItWork()
    {
        const COLORREF last = ++m_color;
        PostMessageW(List().Handle(), LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(last));
        EXPECT_TRUE(
            WaitFor([&] { return Send(List().Handle(), LVM_GETTEXTCOLOR) == static_cast<LRESULT>(last); }));
    }

    COLORREF m_color = 0;
    uint64_t m_added = 0;
    RemoteMessageBox m_box{nullptr};
};

// Another program writes for longer than a save waits, which is 2.5 seconds.
TEST_F(Boxes, AWindowAnswersWhileASaveWaits)
{
    ASSERT_NE(AddEntry(L"First", kNoon), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_NEW_ENTRY);
    HWND editor = WaitForEditor();
    ASSERT_TRUE(editor && SetText(Control(editor, IDC_SUBJECT), L"Second"));
    const LockedStore locked(m_store.Path());
    PostCommand(editor, CMD_SAVE);
    EXPECT_LT(LongestAnswer(editor, [&] { return HasMessageBox(m_journal.Id()); }), 1500u);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_NE(box.Text().find(L"another program keeps the journal's file locked"), std::wstring::npos);
}

TEST_F(Boxes, AnotherRowCannotBeChosenBehindTheQuestion)
{
    AskToDelete();
    ASSERT_TRUE(m_box);
    EXPECT_FALSE(IsWindowEnabled(Window()));
    // Away from the box, which stands in the middle.
    ASSERT_TRUE(DoubleClick(List().LabelPoint(0)));
    LetItWork();
    EXPECT_EQ(List().SelectedRows(), std::vector{1});
    EXPECT_EQ(WaitForDialogWith(m_journal.Id(), IDC_BODY, 0), nullptr);
    ExpectOnlySecondDeleted();
}

TEST_F(Boxes, NoCommandRunsBehindTheQuestion)
{
    AskToDelete();
    ASSERT_TRUE(m_box);
    for (const int command : {CMD_NEW_ENTRY, CMD_EDIT_ENTRY, CMD_DELETE_ENTRY, CMD_PASTE,
                              CMD_CLEAR_CATEGORIES, CMD_OPTIONS, CMD_FIND, CMD_EXPORT, CMD_CATEGORIES_LIST})
        PostCommand(Window(), command);
    PressKeys({VK_CONTROL, 'N'});
    LetItWork();
    EXPECT_EQ(WaitForDialogWith(m_journal.Id(), IDC_BODY, 0), nullptr);
    ExpectOnlySecondDeleted();
}

TEST_F(Boxes, TheWindowDoesNotCloseOverTheQuestion)
{
    AskToDelete();
    ASSERT_TRUE(m_box);
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    PostMessageW(Window(), 1023, 0, 0);
    PostCommand(Window(), CMD_QUIT);
    LetItWork();
    EXPECT_TRUE(IsWindowVisible(m_box.Handle()));
    ExpectOnlySecondDeleted();
}

TEST_F(Boxes, AnotherProgramsChangeIsShownBehindTheQuestion)
{
    AskToDelete();
    ASSERT_TRUE(m_box);
    ASSERT_NE(AddEntry(L"From elsewhere", kNoon + 50), 0u);
    EXPECT_TRUE(ShowsRows(4));
    ASSERT_TRUE(m_box.Answer(IDYES));
    EXPECT_TRUE(ShowsRows(3));
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT group_concat(subject) FROM journal"), "First,Third,From elsewhere");
}

} // namespace
