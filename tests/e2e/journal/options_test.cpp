// What the preferences do, each as soon as the Options are closed with OK.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class Options : public JournalWindowTest {
  protected:
    HWND Open()
    {
        PostCommand(Window(), CMD_OPTIONS);
        HWND options = WaitForDialog(m_journal.Id(), L"Options");
        return options && Activate(options) ? options : nullptr;
    }
    // Presses the boxes, then OK or Cancel.
    void Toggle(std::initializer_list<int> boxes, int close = IDOK)
    {
        HWND options = Open();
        ASSERT_NE(options, nullptr);
        for (const int box : boxes)
            PressButton(options, box);
        PressButton(options, close);
        ASSERT_TRUE(WaitUntilGone(options));
    }
    void SelectFirstRowAndPressDelete()
    {
        ASSERT_TRUE(Activate(Window()));
        PressKey(VK_HOME);
        PressKey(VK_DOWN);
        ASSERT_TRUE(WaitFor([&] { return List().SelectedRows().size() == 1; }));
        PressKey(VK_DELETE);
    }
    void ExpectCategoriesLine(bool isShown)
    {
        ASSERT_TRUE(Activate(Window()));
        PressKeys({VK_CONTROL, 'N'});
        HWND editor = WaitForEditor();
        ASSERT_NE(editor, nullptr);
        EXPECT_EQ(IsWindowVisible(Control(editor, IDC_CATEGORIES_LINE)) != 0, isShown);
        PressKey(VK_ESCAPE);
        ASSERT_TRUE(WaitUntilGone(editor));
    }
    // A filter on January and April, in force at the start.
    static void StoreMonths()
    {
        ASSERT_TRUE(StoreSetting(L"Filter", L"fMonths", 0x9));
        ASSERT_TRUE(StoreSetting(L"Filter", L"fRange", 0));
        ASSERT_TRUE(StoreSetting(L"Filter", L"Active", 1));
    }
    void ClearFilter()
    {
        PostCommand(Window(), CMD_CLEAR_FILTER);
        ASSERT_TRUE(WaitFor([] { return NumberSetting(L"Filter", L"Active") == 0u; }));
    }
};

TEST_F(Options, ConfirmSaysWhetherDeletingAsks)
{
    for (const wchar_t* subject : {L"One", L"Two", L"Three"})
        ASSERT_NE(AddEntry(subject), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(3));
    ASSERT_NO_FATAL_FAILURE(Toggle({IDC_CONFIRM_DELETE}));
    ASSERT_NO_FATAL_FAILURE(SelectFirstRowAndPressDelete());
    EXPECT_TRUE(ShowsRows(2)) << "without a question";

    ASSERT_NO_FATAL_FAILURE(Toggle({IDC_CONFIRM_DELETE}));
    ASSERT_NO_FATAL_FAILURE(SelectFirstRowAndPressDelete());
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDNO));
    EXPECT_TRUE(ShowsRows(2));
}

TEST_F(Options, DisplayCategoriesShowsTheirLineInTheNextEditor)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(ExpectCategoriesLine(true));
    ASSERT_NO_FATAL_FAILURE(Toggle({IDC_SHOW_CATEGORIES}));
    ASSERT_NO_FATAL_FAILURE(ExpectCategoriesLine(false));
    ASSERT_NO_FATAL_FAILURE(Toggle({IDC_SHOW_CATEGORIES}, IDCANCEL));
    ASSERT_NO_FATAL_FAILURE(ExpectCategoriesLine(false));
    ASSERT_NO_FATAL_FAILURE(Toggle({IDC_SHOW_CATEGORIES}));
    ASSERT_NO_FATAL_FAILURE(ExpectCategoriesLine(true));
}

// The box shows it as on while the filter takes it as off: OK alone makes them agree.
TEST_F(Options, RetainCountsOnceItIsStored)
{
    ASSERT_NO_FATAL_FAILURE(StoreMonths());
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(ClearFilter());
    EXPECT_EQ(NumberSetting(L"Filter", L"fMonths"), 0u) << "not stored, not kept";

    ASSERT_NO_FATAL_FAILURE(Toggle({}));
    ASSERT_NO_FATAL_FAILURE(StoreMonths());
    ASSERT_NO_FATAL_FAILURE(ClearFilter());
    EXPECT_EQ(NumberSetting(L"Filter", L"fMonths"), 0x9u);

    ASSERT_NO_FATAL_FAILURE(Toggle({IDC_REMEMBER_FILTER}));
    ASSERT_NO_FATAL_FAILURE(StoreMonths());
    ASSERT_NO_FATAL_FAILURE(ClearFilter());
    EXPECT_EQ(NumberSetting(L"Filter", L"fMonths"), 0u);
}

// A registry that takes nothing any more: told twice for each of the five values, that the subkey did not
// open and that nothing was written.
TEST_F(Options, WhatCannotBeStoredIsToldAndTheDialogCloses)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND options = Open();
    ASSERT_NE(options, nullptr);
    ASSERT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal"), ERROR_SUCCESS);
    PressButton(options, IDOK);
    for (int told = 0; told < 10; ++told) {
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(box) << told;
        EXPECT_EQ(box.Caption(), L"Error");
        ASSERT_TRUE(box.Answer(IDOK));
    }
    ASSERT_TRUE(WaitUntilGone(options));
    EXPECT_TRUE(Activate(Window()));
}

} // namespace
