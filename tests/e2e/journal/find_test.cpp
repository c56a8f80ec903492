// A person looks for entries, sees what was found, and opens it from there.
#include <gtest/gtest.h>

#include "e2e/harness/remote_date_picker.h"
#include "e2e/journal/journal_window.h"

namespace {

constexpr uint64_t kHour = 36'000'000'000;

class Find : public JournalWindowTest {
  protected:
    // With Tools > Find.
    HWND OpenFind() const
    {
        PressKeys({VK_MENU, 'T'});
        if (!WaitForPopup(m_journal.Id()))
            return nullptr;
        PressKey('F');
        HWND dialog = WaitForDialog(m_journal.Id(), L"Find");
        return dialog && Activate(dialog) ? dialog : nullptr;
    }
    HWND WaitForResults() const
    {
        HWND dialog = WaitForDialog(m_journal.Id(), L"Find Results...");
        return dialog && Activate(dialog) ? dialog : nullptr;
    }
    static RemoteListView Found(HWND results) { return RemoteListView(Control(results, IDC_FOUND_LIST)); }
    static std::wstring FoundText(HWND results, int row) { return Found(results).Text(row, 1); }
};

TEST_F(Find, ByKeyboardASubjectIsFoundAndOpenedFromTheResults)
{
    ASSERT_NE(AddEntry(L"Walk in the park", kNoon), 0u);
    ASSERT_NE(AddEntry(L"Lunch", kNoon + kHour), 0u);
    ASSERT_NE(AddEntry(L"a long wALk", kNoon + 2 * kHour), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(3));
    HWND find = OpenFind();
    ASSERT_NE(find, nullptr);
    PressKeys({VK_MENU, 'S'});
    ASSERT_TRUE(WaitFor([&] { return IsChecked(find, IDC_FIND_SUBJECT); }));
    HWND box = Control(find, IDC_FIND_TEXT);
    for (int i = 0; i < 3 && !IsChild(box, FocusOf(find)); ++i) {
        HWND before = FocusOf(find);
        PressKey(VK_TAB);
        ASSERT_TRUE(WaitFor([&] { return FocusOf(find) != before; }));
    }
    TypeText(L"walk");
    ASSERT_TRUE(WaitFor([&] { return TextOf(box) == L"walk"; }));
    PressKey(VK_RETURN);

    HWND results = WaitForResults();
    ASSERT_NE(results, nullptr);
    ASSERT_TRUE(WaitFor([&] { return Found(results).RowCount() == 2; }));
    EXPECT_EQ(TextOf(Control(results, IDC_FOUND_COUNT)), L"2");
    EXPECT_EQ(FoundText(results, 0), L"a long wALk");
    EXPECT_EQ(FoundText(results, 1), L"Walk in the park");
    EXPECT_EQ(List().SelectedRows(), (std::vector<int>{0, 2}));
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitFor([&] { return Found(results).FocusedRow() == 1; }));
    PressKey(VK_RETURN);
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(SetText(Control(editor, IDC_SUBJECT), L"Swim"));
    PressButton(editor, IDOK);
    ASSERT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(WaitFor([&] { return FoundText(results, 1) == L"Swim"; }));
    EXPECT_EQ(Found(results).SelectedRows(), (std::vector<int>{1}));

    ASSERT_TRUE(Activate(results));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitUntilGone(results));
    EXPECT_TRUE(WaitFor([&] { return List().Text(2, 1) == L"Swim"; }));
    EXPECT_EQ(List().SelectedRows(), (std::vector<int>{0, 2})) << "what was found stays selected";
    EXPECT_EQ(NumberSetting(L"Settings", L"SearchBy"), 1107u);
    EXPECT_EQ(TextSetting(L"Options", L"Find0"), L"walk");
}

TEST_F(Find, ByMouseADayIsFoundAndOpenedWithADoubleClick)
{
    constexpr uint64_t kDay = 24 * kHour;
    ASSERT_NE(AddEntry(L"the day before", kNoon - kDay), 0u);
    ASSERT_NE(AddEntry(L"on the day", kNoon), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(2));
    ASSERT_TRUE(Click(Buttons().BodyPoint(CMD_FIND)));
    HWND find = WaitForDialog(m_journal.Id(), L"Find");
    ASSERT_NE(find, nullptr);
    const SYSTEMTIME day{2026, 11, 6, 21, 0, 0, 0, 0}; // that of kNoon
    ASSERT_TRUE(RemoteDatePicker(ChildOfClass(find, L"SysDateTimePick32")).Change(day));
    ASSERT_TRUE(Activate(find));
    ASSERT_TRUE(Click(MiddleOf(Control(find, IDOK))));
    HWND results = WaitForResults();
    ASSERT_NE(results, nullptr);
    ASSERT_TRUE(WaitFor([&] { return Found(results).RowCount() == 1; }));
    ASSERT_TRUE(DoubleClick(Found(results).LabelPoint(0)));
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"on the day");
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitUntilGone(editor));
    ASSERT_TRUE(Activate(results));
    ASSERT_TRUE(Click(MiddleOf(Control(results, IDOK))));
    EXPECT_TRUE(WaitUntilGone(results));
    EXPECT_EQ(List().SelectedRows().size(), 1u);
}

} // namespace
