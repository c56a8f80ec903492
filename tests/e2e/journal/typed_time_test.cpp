// Digits typed into a date or time picker count, although the control itself takes them only once its field
// is full or the keyboard leaves it.
#include <gtest/gtest.h>

#include <cstdlib>

#include "e2e/harness/remote_date_picker.h"
#include "e2e/journal/journal_window.h"

namespace {

constexpr uint64_t kHour = 36'000'000'000;
constexpr uint64_t kDay = 24 * kHour;
constexpr uint64_t kMarch = kNoon - 245 * kDay; // 21 March 2026, as kNoon is 21 November

enum class Way { Enter, Ok, CtrlS, CtrlEnter, SaveButton };

class TypedTime : public JournalWindowTest, public testing::WithParamInterface<Way> {
  protected:
    HWND OpenEditor()
    {
        m_id = AddEntry(L"Lunch", kNoon);
        if (!m_journal.Start() || !ShowsRows(1))
            return nullptr;
        PressKey(VK_DOWN);
        if (!WaitFor([&] { return !List().SelectedRows().empty(); }))
            return nullptr;
        PressKey(VK_RETURN);
        return WaitForEditor();
    }
    static void Type(HWND dialog, int picker, WORD digit)
    {
        ASSERT_TRUE(WaitFor([&] { return FocusOf(dialog) == Control(dialog, picker); }));
        PressKey(digit);
    }
    static bool SaveEnabled(HWND editor)
    {
        return RemoteToolbar(Control(editor, IDC_EDITOR_BAR)).IsEnabled(CMD_SAVE);
    }
    static void Take(HWND dialog, Way way)
    {
        switch (way) {
        case Way::Enter: PressKey(VK_RETURN); break;
        case Way::Ok: ASSERT_TRUE(Click(MiddleOf(Control(dialog, IDOK)))); break;
        case Way::CtrlS: PressKeys({VK_CONTROL, 'S'}); break;
        case Way::CtrlEnter: PressKeys({VK_CONTROL, VK_RETURN}); break;
        case Way::SaveButton:
            ASSERT_TRUE(WaitFor([&] { return SaveEnabled(dialog); }));
            ASSERT_TRUE(Click(RemoteToolbar(Control(dialog, IDC_EDITOR_BAR)).BodyPoint(CMD_SAVE)));
            break;
        }
    }
    uint64_t StoredDate() const
    {
        const auto value = StoreReader(m_store.Path())
                               .QueryOne("SELECT date FROM journal WHERE oid = " + std::to_string(m_id));
        return value ? std::strtoull(value->c_str(), nullptr, 10) : 0;
    }
    // Opens a dialog with the menu Tools and a letter.
    HWND OpenTool(WORD letter, int control) const
    {
        PressKeys({VK_MENU, 'T'});
        if (!WaitForPopup(m_journal.Id()))
            return nullptr;
        PressKey(letter);
        HWND dialog = WaitForDialogWith(m_journal.Id(), control);
        return dialog && Activate(dialog) ? dialog : nullptr;
    }

    CEOID m_id = 0;
};

using TypedInEditor = TypedTime;
using TypedInDialog = TypedTime;

TEST_P(TypedInEditor, ADateIsSaved)
{
    HWND editor = OpenEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_NO_FATAL_FAILURE(Type(editor, IDC_START_DATE, '3'));
    Take(editor, GetParam());
    EXPECT_TRUE(WaitFor([&] { return StoredDate() == kMarch; })) << StoredDate();
}

TEST_P(TypedInEditor, ATimeIsSaved)
{
    HWND editor = OpenEditor();
    ASSERT_NE(editor, nullptr);
    PressKey(VK_TAB);
    ASSERT_NO_FATAL_FAILURE(Type(editor, IDC_START_TIME, '5'));
    Take(editor, GetParam());
    EXPECT_TRUE(WaitFor([&] { return StoredDate() == kNoon + 5 * kHour; })) << StoredDate();
}

INSTANTIATE_TEST_SUITE_P(EveryWay, TypedInEditor,
                         testing::Values(Way::Enter, Way::Ok, Way::CtrlS, Way::CtrlEnter, Way::SaveButton));

TEST_F(TypedTime, ADigitModifiesTheEntry)
{
    HWND editor = OpenEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_NO_FATAL_FAILURE(Type(editor, IDC_START_DATE, '3'));
    EXPECT_TRUE(WaitFor([&] { return SaveEnabled(editor); }));
    PressKey(VK_ESCAPE);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Cancel changes?");
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_EQ(StoredDate(), kNoon);
}

TEST_P(TypedInDialog, ADayToFindCounts)
{
    ASSERT_NE(AddEntry(L"in March", kMarch), 0u);
    ASSERT_NE(AddEntry(L"in November", kNoon), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(2));
    HWND find = OpenTool('F', IDC_FIND_DAY);
    ASSERT_NE(find, nullptr);
    ASSERT_TRUE(RemoteDatePicker(Control(find, IDC_FIND_DAY)).Change({2026, 11, 6, 21, 0, 0, 0, 0}));
    ASSERT_NO_FATAL_FAILURE(Type(find, IDC_FIND_DAY, '3'));
    Take(find, GetParam());
    HWND results = WaitForDialog(m_journal.Id(), L"Find Results...");
    ASSERT_NE(results, nullptr);
    const RemoteListView found(Control(results, IDC_FOUND_LIST));
    ASSERT_TRUE(WaitFor([&] { return found.RowCount() == 1; }));
    EXPECT_EQ(found.Text(0, 1), L"in March");
}

// Both ends are in the year of the later entry; the typed month takes the earlier one in, or leaves it out.
TEST_P(TypedInDialog, ADayOfTheFiltersRangeCounts)
{
    ASSERT_NE(AddEntry(L"in March", kMarch), 0u);
    ASSERT_NE(AddEntry(L"in November", kNoon), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(2));
    HWND filter = OpenTool('M', IDC_RANGE_START);
    ASSERT_NE(filter, nullptr);
    for (const int end : {IDC_RANGE_START, IDC_RANGE_END})
        ASSERT_TRUE(RemoteDatePicker(Control(filter, end)).Change({2026, 11, 6, 22, 0, 0, 0, 0}));
    for (int i = 0; i < 8 && FocusOf(filter) != Control(filter, IDC_RANGE_START); ++i) {
        HWND before = FocusOf(filter);
        PressKey(VK_TAB);
        ASSERT_TRUE(WaitFor([&] { return FocusOf(filter) != before; }));
    }
    ASSERT_NO_FATAL_FAILURE(Type(filter, IDC_RANGE_START, '2'));
    Take(filter, GetParam());
    ASSERT_TRUE(WaitUntilGone(filter));
    EXPECT_TRUE(ShowsRows(2)) << "from February on";

    filter = OpenTool('M', IDC_RANGE_START);
    ASSERT_NE(filter, nullptr);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(filter) == Control(filter, IDC_RANGE_START); }));
    PressKey(VK_TAB);
    ASSERT_NO_FATAL_FAILURE(Type(filter, IDC_RANGE_END, '4'));
    Take(filter, GetParam());
    ASSERT_TRUE(WaitUntilGone(filter));
    EXPECT_TRUE(ShowsRows(1)) << "until April";
}

INSTANTIATE_TEST_SUITE_P(EveryWay, TypedInDialog, testing::Values(Way::Enter, Way::Ok));

} // namespace
