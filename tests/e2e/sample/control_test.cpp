#include <windows.h>
#include <commctrl.h>

#include <gmock/gmock.h>

#include "e2e/harness/input.h"
#include "e2e/harness/message_box.h"
#include "e2e/harness/remote_date_picker.h"
#include "e2e/harness/remote_list_view.h"
#include "e2e/harness/remote_toolbar.h"
#include "e2e/sample/sample_test.h"

namespace {

using testing::ElementsAre;

using ControlTest = SampleTest;

class DialogTest : public SampleTest {
  protected:
    void SetUp() override
    {
        SampleTest::SetUp();
        PostCommand(m_window, SAMPLE_CMD_DIALOG);
        m_dialog = WaitForDialog(m_program.Id(), L"Sample Dialog");
        ASSERT_NE(m_dialog, nullptr);
    }

    HWND Item(int id) const { return Control(m_dialog, id); }
    bool Echoes(const std::wstring& text) const
    {
        return WaitFor([&] { return TextOf(Item(SAMPLE_ECHO)) == text; });
    }

    HWND m_dialog = nullptr;
};

TEST_F(ControlTest, ReadsAListView)
{
    const RemoteListView list(Control(m_window, SAMPLE_LIST));
    EXPECT_EQ(list.RowCount(), 1000);
    EXPECT_EQ(list.ColumnCount(), 2);
    EXPECT_EQ(list.ColumnTitle(0), L"Number");
    EXPECT_EQ(list.ColumnTitle(1), L"Square");
    EXPECT_EQ(list.ColumnWidth(1), 120);
    EXPECT_EQ(list.Text(12, 1), L"144");
    EXPECT_THAT(list.Row(30), ElementsAre(L"30", L"900"));
    EXPECT_EQ(list.FindRow(1, L"49"), 7);
    EXPECT_EQ(list.FindRow(1, L"50"), -1);
    EXPECT_THAT(list.SelectedRows(), ElementsAre());
}

TEST_F(ControlTest, SelectsRowsWithTheMouse)
{
    const RemoteListView list(Control(m_window, SAMPLE_LIST));
    ASSERT_TRUE(Click(list.LabelPoint(3)));
    EXPECT_TRUE(WaitFor([&] { return list.SelectedRows() == std::vector{3}; }));
    ASSERT_TRUE(ClickWith({VK_CONTROL}, list.LabelPoint(5)));
    EXPECT_TRUE(WaitFor([&] { return list.SelectedRows() == std::vector{3, 5}; }));
    EXPECT_EQ(list.FocusedRow(), 5);
    ASSERT_TRUE(Click(list.LabelPoint(900)));
    EXPECT_TRUE(WaitFor([&] { return list.SelectedRows() == std::vector{900}; }));
    EXPECT_GT(list.TopRow(), 800);
}

TEST_F(ControlTest, DoubleClicksARowAndClicksAHeader)
{
    const RemoteListView list(Control(m_window, SAMPLE_LIST));
    ASSERT_TRUE(DoubleClick(list.LabelPoint(2)));
    EXPECT_TRUE(Tells(L"double click"));
    ASSERT_TRUE(Click(list.HeaderPoint(1)));
    EXPECT_TRUE(Tells(L"column click"));
}

TEST_F(ControlTest, WorksAListWithTheKeyboard)
{
    const RemoteListView list(Control(m_window, SAMPLE_LIST));
    ASSERT_TRUE(Click(list.LabelPoint(0)));
    ASSERT_TRUE(WaitFor([&] { return FocusOf(m_window) == list.Handle(); }));
    PressKey(VK_DOWN);
    EXPECT_TRUE(WaitFor([&] { return list.SelectedRows() == std::vector{1}; }));
    PressKeys({VK_SHIFT, VK_DOWN});
    EXPECT_TRUE(WaitFor([&] { return list.SelectedRows() == std::vector{1, 2}; }));
    PressKey(VK_END);
    EXPECT_TRUE(WaitFor([&] { return list.FocusedRow() == 999; }));
}

TEST_F(ControlTest, ReadsAndPressesATool)
{
    const RemoteToolbar bar(Control(m_window, SAMPLE_BAR));
    EXPECT_THAT(bar.Commands(), ElementsAre(SAMPLE_CMD_DIALOG, 0, SAMPLE_CMD_CHECKED, SAMPLE_CMD_GREY));
    EXPECT_EQ(bar.Text(SAMPLE_CMD_CHECKED), L"Checked");
    EXPECT_TRUE(bar.IsEnabled(SAMPLE_CMD_CHECKED));
    EXPECT_FALSE(bar.IsEnabled(SAMPLE_CMD_GREY));
    EXPECT_FALSE(bar.IsChecked(SAMPLE_CMD_CHECKED));
    ASSERT_TRUE(Click(bar.BodyPoint(SAMPLE_CMD_CHECKED)));
    EXPECT_TRUE(Tells(L"checked"));
    EXPECT_TRUE(bar.IsChecked(SAMPLE_CMD_CHECKED));
}

TEST_F(ControlTest, PressesTheBodyOfADropDownTool)
{
    const RemoteToolbar bar(Control(m_window, SAMPLE_BAR));
    ASSERT_TRUE(Click(bar.BodyPoint(SAMPLE_CMD_DIALOG)));
    EXPECT_NE(WaitForDialogWith(m_program.Id(), SAMPLE_EDIT), nullptr);
}

TEST_F(ControlTest, ReadsAndAnswersAMessageBox)
{
    EXPECT_FALSE(HasMessageBox(m_program.Id()));
    PostCommand(m_window, SAMPLE_CMD_BOX);
    const RemoteMessageBox box = WaitForMessageBox(m_program.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Yes or no?");
    EXPECT_EQ(box.Caption(), L"Question");
    EXPECT_TRUE(box.Offers(IDYES));
    EXPECT_FALSE(box.Offers(IDOK));
    EXPECT_TRUE(box.IsDefault(IDNO));
    EXPECT_FALSE(box.IsDefault(IDYES));
    EXPECT_FALSE(box.Answer(IDOK));
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(Tells(L"yes"));
}

TEST_F(DialogTest, IsNoMessageBox)
{
    EXPECT_FALSE(HasMessageBox(m_program.Id()));
    PressButton(m_dialog, IDCANCEL);
    EXPECT_TRUE(WaitUntilGone(m_dialog));
}

TEST_F(DialogTest, FillsEditsCombosAndChecks)
{
    ASSERT_TRUE(SetText(Item(SAMPLE_EDIT), L"Grün, 日本"));
    EXPECT_EQ(TextOf(Item(SAMPLE_EDIT)), L"Grün, 日本");
    EXPECT_THAT(ComboItems(Item(SAMPLE_COMBO)), ElementsAre(L"One", L"Two", L"Three"));
    EXPECT_FALSE(ChooseComboItem(Item(SAMPLE_COMBO), 3));
    ASSERT_TRUE(ChooseComboItem(Item(SAMPLE_COMBO), 1));
    EXPECT_TRUE(Echoes(L"combo"));
    EXPECT_FALSE(IsChecked(m_dialog, SAMPLE_CHECK));
    PressButton(m_dialog, SAMPLE_CHECK);
    EXPECT_TRUE(WaitFor([&] { return IsChecked(m_dialog, SAMPLE_CHECK); }));
    PressButton(m_dialog, IDOK);
    EXPECT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_TRUE(Tells(L"Grün, 日本|Two|checked|none"));
}

TEST_F(DialogTest, TypesAsAPersonDoes)
{
    ASSERT_TRUE(Activate(m_dialog));
    ASSERT_TRUE(Click(MiddleOf(Item(SAMPLE_EDIT))));
    ASSERT_TRUE(WaitFor([&] { return FocusOf(m_dialog) == Item(SAMPLE_EDIT); }));
    TypeText(L"Ab, ü€\tTwo\t\t\n");
    EXPECT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_TRUE(Tells(L"Ab, ü€|Two|empty|none"));
}

TEST_F(DialogTest, ChangesADatePicker)
{
    const RemoteDatePicker picker(Item(SAMPLE_DATE));
    EXPECT_EQ(picker.Value(), std::nullopt);
    SYSTEMTIME date{};
    date.wYear = 2024;
    date.wMonth = 2;
    date.wDay = 29;
    ASSERT_TRUE(picker.Change(date));
    EXPECT_TRUE(Echoes(L"date 2024-2-29"));
    ASSERT_TRUE(picker.Value().has_value());
    EXPECT_EQ(picker.Value()->wDay, 29);
    ASSERT_TRUE(picker.Clear());
    EXPECT_TRUE(Echoes(L"date none"));
    EXPECT_EQ(picker.Value(), std::nullopt);
}

} // namespace
