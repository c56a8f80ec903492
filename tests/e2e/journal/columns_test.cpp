// The columns of the list as a person chooses them.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class Columns : public JournalWindowTest {
  protected:
    void Open()
    {
        PostCommand(Window(), CMD_CUSTOMIZE_COLUMNS);
        m_dialog = WaitForDialog(m_journal.Id(), L"Customize Columns");
        ASSERT_NE(m_dialog, nullptr);
        ASSERT_TRUE(Activate(m_dialog));
    }
    HWND Control(int id) const { return GetDlgItem(m_dialog, id); }
    int CountOf(int list) const { return static_cast<int>(SendMessageW(Control(list), LB_GETCOUNT, 0, 0)); }
    bool ShowsColumns(int count) const
    {
        return WaitFor([=, this] { return List().ColumnCount() == count; });
    }

    HWND m_dialog = nullptr;
};

TEST_F(Columns, AreChosenWithTheMouseAndKept)
{
    ASSERT_NE(AddEntry(L"One"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsColumns(2));
    ASSERT_NO_FATAL_FAILURE(Open());
    ASSERT_TRUE(Click(MiddleOf(Control(IDC_ADD_FIELD))));
    EXPECT_TRUE(WaitFor([this] { return CountOf(IDC_SHOWN_FIELDS) == 3; }));
    ASSERT_TRUE(Click(MiddleOf(Control(IDC_ADD_FIELD))));
    EXPECT_TRUE(WaitFor([this] { return CountOf(IDC_SHOWN_FIELDS) == 4; }));
    ASSERT_TRUE(Click(MiddleOf(Control(IDOK))));
    ASSERT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_TRUE(ShowsColumns(4));
    ASSERT_TRUE(m_journal.Close());

    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsColumns(4));
    ASSERT_NO_FATAL_FAILURE(Open());
    ASSERT_TRUE(Click(MiddleOf(Control(IDC_DEFAULT_COLUMNS))));
    EXPECT_TRUE(WaitFor([this] { return CountOf(IDC_SHOWN_FIELDS) == 2; }));
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_TRUE(ShowsColumns(2));
}

} // namespace
