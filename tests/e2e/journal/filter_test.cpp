// A journal narrowed to some months, days or categories, as a person does it.
#include <gtest/gtest.h>

#include "e2e/harness/remote_date_picker.h"
#include "e2e/journal/journal_window.h"

namespace {

constexpr uint64_t kFirstOfMarch = 125'963'424'000'000'000; // 2000, in days since 1601
constexpr uint64_t kDay = 864'000'000'000;
constexpr uint64_t kMinute = 600'000'000;

class Filter : public JournalWindowTest {
  protected:
    // "March" on the last minute of the month, filed under "Work", and "April" a minute later.
    void Start()
    {
        const CEOID march = AddEntry(L"March", kFirstOfMarch + 31 * kDay - kMinute);
        ASSERT_NE(march, 0u);
        ASSERT_NE(AddEntry(L"April", kFirstOfMarch + 31 * kDay), 0u);
        ASSERT_TRUE(
            ChangeStore(m_store.Path(),
                        "INSERT INTO categories(oid, name, uses) VALUES(1, 'Garden', 2), (2, 'Work', 1)"));
        ASSERT_TRUE(ChangeStore(m_store.Path(), "UPDATE journal SET categories = x'0100000002000000' WHERE "
                                                "oid = " +
                                                    std::to_string(march)));
        Restart();
    }
    void Restart() { ASSERT_NE(m_journal.Start(), nullptr); }
    std::wstring ButtonText() const { return Buttons().Text(CMD_CONTACTS); }
    // Once the rows are these subjects.
    bool Shows(const std::vector<std::wstring>& subjects) const
    {
        return WaitFor([&] {
            std::vector<std::wstring> shown;
            for (int row = 0; row < List().RowCount(); ++row)
                shown.push_back(List().Text(row, 1));
            return shown == subjects;
        });
    }
    HWND WaitForFilter() const
    {
        HWND dialog = WaitForDialogWith(m_journal.Id(), IDC_MONTH_LIST);
        return dialog && Activate(dialog) ? dialog : nullptr;
    }
    // When the focus has just come back, the display may tell late that no key is down, and so let go of an
    // Alt that is held that moment: then both are pressed again.
    HWND PopupByKeys(std::initializer_list<WORD> keys) const
    {
        constexpr DWORD kOneTry = 4'000;
        HWND popup = nullptr;
        for (DWORD waited = 0; !popup && waited < kRemoteLimit; waited += kOneTry) {
            PressKeys(keys);
            popup = WaitForPopup(m_journal.Id(), kOneTry);
        }
        return popup;
    }
    HWND OpenFromMenu(WORD letter) const
    {
        if (!PopupByKeys({VK_MENU, 'T'}))
            return nullptr;
        PressKey(letter);
        return WaitForFilter();
    }
};

TEST_F(Filter, TheArrowOpensTheMenuAndACategoryNarrowsTheList)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(Shows({L"April", L"March"}) || Shows({L"March", L"April"}));
    ASSERT_TRUE(Click(Buttons().ArrowPoint(CMD_CONTACTS)));
    HWND popup = WaitForPopup(m_journal.Id());
    ASSERT_NE(popup, nullptr);
    std::vector<std::wstring> texts;
    for (const RemoteMenuItem& item : MenuOfPopup(popup).Items())
        texts.push_back(item.text);
    EXPECT_EQ(texts,
              (std::vector<std::wstring>{L"Garden", L"Work", L"", L"<New Category>", L"Filter On Categories",
                                         L"Filter On Months", L"", L"Clear Filter"}));
    ASSERT_TRUE(ChooseFromPopup(popup, CMD_FIRST_CATEGORY + 1));
    EXPECT_TRUE(Shows({L"March"}));
    EXPECT_EQ(ButtonText(), L"Work");
    ASSERT_TRUE(Click(Buttons().ArrowPoint(CMD_CONTACTS)));
    popup = WaitForPopup(m_journal.Id());
    ASSERT_NE(popup, nullptr);
    EXPECT_TRUE(MenuOfPopup(popup).Find(CMD_FIRST_CATEGORY + 1).checked);
    ASSERT_TRUE(ChooseFromPopup(popup, CMD_CLEAR_FILTER));
    EXPECT_TRUE(ShowsRows(2));
    EXPECT_EQ(ButtonText(), L"None");
    ASSERT_TRUE(m_journal.Close());
}

TEST_F(Filter, TheKeyboardAloneDoesItAll)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(ShowsRows(2));
    ASSERT_NE(PopupByKeys({VK_F4}), nullptr);
    PressKey(VK_DOWN);
    PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    EXPECT_TRUE(Shows({L"March"}));
    EXPECT_EQ(ButtonText(), L"Work");
    HWND dialog = OpenFromMenu('M');
    ASSERT_NE(dialog, nullptr);
    PressKeys({VK_MENU, 'R'}); // at a first start it is a range that counts
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(Control(dialog, IDC_MONTH_LIST)) != FALSE; }));
    PressKeys({VK_SHIFT, VK_TAB});
    ASSERT_TRUE(WaitFor([&] { return FocusOf(dialog) == Control(dialog, IDC_MONTH_LIST); }));
    for (int i = 0; i < 3; ++i)
        PressKey(VK_DOWN);
    PressKey(VK_SPACE);
    ASSERT_TRUE(WaitFor([&] { return RemoteListView(Control(dialog, IDC_MONTH_LIST)).CheckImage(3) == 2; }));
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_TRUE(Shows({L"April"}));
    EXPECT_EQ(ButtonText(), L"April");
    ASSERT_NE(PopupByKeys({VK_MENU, VK_DOWN}), nullptr);
    PressKey(VK_UP); // to the last item
    PressKey(VK_RETURN);
    EXPECT_TRUE(ShowsRows(2));
    EXPECT_TRUE(WaitFor([&] { return ButtonText() == L"None"; }));
}

TEST_F(Filter, ARangeComesBackAtTheNextStart)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(ShowsRows(2));
    HWND dialog = OpenFromMenu('M');
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(RemoteDatePicker(Control(dialog, IDC_RANGE_START)).Change({2000, 3, 3, 1, 12, 0, 0, 0}));
    ASSERT_TRUE(RemoteDatePicker(Control(dialog, IDC_RANGE_END)).Change({2000, 3, 5, 31, 8, 0, 0, 0}));
    PressButton(dialog, IDOK);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_TRUE(Shows({L"March"})) << "its last minute too";
    EXPECT_EQ(ButtonText(), L"Range...");
    ASSERT_TRUE(m_journal.Close());
    ASSERT_NO_FATAL_FAILURE(Restart());
    EXPECT_EQ(ButtonText(), L"Range...");
    EXPECT_TRUE(Shows({L"March"}));
    PostCommand(Window(), CMD_CLEAR_FILTER);
    EXPECT_TRUE(ShowsRows(2));
    ASSERT_TRUE(m_journal.Close());
    ASSERT_NO_FATAL_FAILURE(Restart());
    EXPECT_EQ(ButtonText(), L"None");
    EXPECT_TRUE(ShowsRows(2));
}

TEST_F(Filter, CategoriesLastUntilTheEnd)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(ShowsRows(2));
    HWND dialog = OpenFromMenu('C');
    ASSERT_NE(dialog, nullptr);
    const RemoteListView list(Control(dialog, IDC_FILTER_CATEGORY_LIST));
    ASSERT_TRUE(Click(list.CheckPoint(1)));
    ASSERT_TRUE(WaitFor([&] { return list.CheckImage(1) == 2; }));
    PressButton(dialog, IDOK);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_TRUE(Shows({L"March"}));
    EXPECT_EQ(ButtonText(), L"Work");
    EXPECT_EQ(NumberSetting(L"Filter", L"Active"), 1u);
    ASSERT_TRUE(m_journal.Close());
    ASSERT_NO_FATAL_FAILURE(Restart());
    EXPECT_EQ(ButtonText(), L"None") << "no date to filter by";
    EXPECT_TRUE(ShowsRows(2));
}

TEST_F(Filter, AnotherProgramsRenamingShowsOnTheButton)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(ShowsRows(2));
    HWND popup = PopupByKeys({VK_F4});
    ASSERT_NE(popup, nullptr);
    ASSERT_TRUE(ChooseFromPopup(popup, CMD_FIRST_CATEGORY + 1));
    ASSERT_TRUE(WaitFor([&] { return ButtonText() == L"Work"; }));
    ASSERT_TRUE(ChangeStore(m_store.Path(), "UPDATE categories SET name = 'Office' WHERE oid = 2"));
    EXPECT_TRUE(WaitFor([&] { return ButtonText() == L"Office"; }));
    ASSERT_TRUE(ChangeStore(m_store.Path(), "DELETE FROM categories WHERE oid = 2"));
    EXPECT_TRUE(WaitFor([&] { return ButtonText() == L"None"; }));
    EXPECT_TRUE(ShowsRows(2));
}

} // namespace
