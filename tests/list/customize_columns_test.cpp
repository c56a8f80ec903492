#include "list/entry_commands.h"

#include <functional>

#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/entry_list_fixture.h"

namespace {

// Three entries, whose subjects run against their dates.
class CustomizeColumnsTest : public EntryListTest {
  protected:
    CustomizeColumnsTest()
    {
        AddEntry(1, L"Cherry");
        AddEntry(2, L"Banana");
        AddEntry(3, L"Apple");
        CreateList();
        Paint();
    }

    void Run(const std::function<void(DialogWindow&)>& action)
    {
        const auto work = [&](HWND window) {
            DialogWindow dialog(window);
            action(dialog);
        };
        const auto call = [this]() -> INT_PTR {
            CustomizeListColumns(m_parent.Handle(), m_list);
            return 0;
        };
        RunDialog(call, work, 0);
        Paint();
    }
    static void RemoveTheFirst(DialogWindow& dialog)
    {
        dialog.Focus(IDC_SHOWN_FIELDS);
        dialog.Key(VK_HOME);
        dialog.Click(IDC_REMOVE_FIELD);
    }
    std::vector<std::wstring> Subjects(int column) const
    {
        return {Cell(0, column), Cell(1, column), Cell(2, column)};
    }
    static SORTORDERSPEC Sort()
    {
        SORTORDERSPEC sort{};
        Own().Journal().GetSort(&sort);
        return sort;
    }
    void ClearSettings()
    {
        for (int i = 0; i < 11; ++i)
            Own().RemoveValue(kSettings, (L"Column" + std::to_wstring(i)).c_str());
        Own().RemoveValue(kSettings, L"iCols");
    }
};

TEST_F(CustomizeColumnsTest, BelongsToTheMainWindow)
{
    SetFocus(Handle());
    Run([this](DialogWindow& dialog) {
        EXPECT_TRUE(dialog.HasFocus(IDC_AVAILABLE_FIELDS));
        EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), m_parent.Handle());
        EXPECT_FALSE(IsWindowEnabled(m_parent.Handle()));
    });
}

TEST_F(CustomizeColumnsTest, OkShowsTheChosenColumns)
{
    Run([](DialogWindow& dialog) {
        dialog.Key(VK_HOME); // Body
        dialog.Click(IDC_ADD_FIELD);
        dialog.Ok();
    });
    EXPECT_EQ(HeaderText(0), L"Date");
    EXPECT_EQ(HeaderText(1), L"Subject");
    EXPECT_EQ(HeaderText(2), L"Body");
    EXPECT_EQ(Header_GetItemCount(Header()), 3);
    EXPECT_EQ(Stored(L"iCols"), 3u);
    EXPECT_EQ(Stored(L"Column2") >> 24, 103u);
    EXPECT_EQ(Stored(L"Column2") & 0xFFF, 0x08u);
    EXPECT_EQ(Stored(L"Column10") >> 24, 111u);
}

TEST_F(CustomizeColumnsTest, OkSortsByTheColumnThatIsMarkedThen)
{
    EXPECT_EQ(Subjects(1), (std::vector<std::wstring>{L"Apple", L"Banana", L"Cherry"})) << "the newest first";
    Run([](DialogWindow& dialog) {
        RemoveTheFirst(dialog);
        dialog.Ok();
    });
    EXPECT_EQ(Subjects(0), (std::vector<std::wstring>{L"Cherry", L"Banana", L"Apple"}))
        << "by the subject, descending as its column has it";
    EXPECT_EQ(Column(0).iImage, 2);
}

TEST_F(CustomizeColumnsTest, CancelSavesAndRebuildsToo)
{
    ListView_DeleteColumn(Handle(), 1);
    ClearSettings();
    Run([](DialogWindow& dialog) {
        RemoveTheFirst(dialog);
        dialog.Cancel();
    });
    EXPECT_EQ(Header_GetItemCount(Header()), 2);
    EXPECT_EQ(HeaderText(0), L"Date");
    EXPECT_EQ(Stored(L"iCols"), 2u);
    EXPECT_EQ(Stored(L"Column0") & 0xFFF, 0x1Du) << "still sorted by";
    EXPECT_EQ(Stored(L"Column10") >> 24, 111u);
    EXPECT_EQ(Subjects(1), (std::vector<std::wstring>{L"Apple", L"Banana", L"Cherry"}));
}

// As after a click on the header of a column that does not get the mark.
TEST_F(CustomizeColumnsTest, AnUnchangedMarkLeavesTheSortThatWasClicked)
{
    Own().Journal().SetSort({kPropSubject, 0}, 1);
    Run([](DialogWindow& dialog) { dialog.Cancel(); });
    EXPECT_EQ(Sort().propid, kPropSubject);
    Run([](DialogWindow& dialog) {
        dialog.Key(VK_HOME); // Body
        dialog.Click(IDC_ADD_FIELD);
        dialog.Ok();
    });
    EXPECT_EQ(Sort().propid, kPropSubject);
    Run([](DialogWindow& dialog) {
        RemoveTheFirst(dialog);
        dialog.Ok();
    });
    EXPECT_EQ(Sort().propid, kPropSubject);
    EXPECT_EQ(Sort().dwFlags, DWORD{CEDB_SORT_DESCENDING})
        << "sorted anew, by the column that has the mark now";
}

TEST_F(CustomizeColumnsTest, AnotherDirectionOfTheMarkSortsAnew)
{
    m_list.Columns().columns[0].SetAscending();
    Own().Journal().SetSort({kPropSubject, 0}, 1);
    Run([](DialogWindow& dialog) {
        dialog.Click(IDC_DEFAULT_COLUMNS);
        dialog.Ok();
    });
    EXPECT_EQ(Sort().propid, kPropDate);
    EXPECT_EQ(Sort().dwFlags, DWORD{CEDB_SORT_DESCENDING});
}

TEST_F(CustomizeColumnsTest, TheSelectionStays)
{
    ClickRow(1);
    const std::vector<CEOID> selected = Selected();
    Run([](DialogWindow& dialog) {
        RemoveTheFirst(dialog);
        dialog.Ok();
    });
    EXPECT_EQ(Selected(), selected);
    EXPECT_EQ(SelectedRows(), std::vector<int>{1});
}

TEST_F(CustomizeColumnsTest, ThePriorityIsAnIconWhenItComesFirst)
{
    Run([](DialogWindow& dialog) {
        dialog.Key(VK_HOME);
        for (int i = 0; i < 3; ++i)
            dialog.Key(VK_DOWN); // Body, Categories, Type, Priority
        dialog.Click(IDC_ADD_FIELD);
        dialog.Focus(IDC_SHOWN_FIELDS);
        dialog.Key(VK_END);
        dialog.Click(IDC_FIELD_UP);
        dialog.Click(IDC_FIELD_UP);
        dialog.Ok();
    });
    EXPECT_EQ(HeaderText(0), L"");
    EXPECT_EQ(Column(0).iImage, 3);
    EXPECT_EQ(HeaderText(1), L"Date");
}

} // namespace
