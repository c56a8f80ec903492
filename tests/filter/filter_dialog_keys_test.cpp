// The filter's dialog worked with the keyboard alone.
#include <set>

#include "filter/filter_dialog_fixture.h"
#include "ui/bars/menu_keys.h"

namespace {

int Focused()
{
    return GetDlgCtrlID(GetFocus());
}

std::vector<int> TabOrder(const OpenFilter& dialog)
{
    std::vector<int> order;
    HWND first = GetFocus();
    HWND item = first;
    do {
        order.push_back(GetDlgCtrlID(item));
        item = GetNextDlgTabItem(dialog.Window(), item, FALSE);
    } while (item != first && order.size() < 20);
    return order;
}

using FilterDialogKeys = FilterDialogTest;

TEST_F(FilterDialogKeys, MnemonicsAreUnique)
{
    Run(false, [](const OpenFilter& dialog) {
        std::set<wchar_t> letters;
        size_t count = 0;
        for (HWND item = GetWindow(dialog.Window(), GW_CHILD); item; item = GetWindow(item, GW_HWNDNEXT))
            if (const wchar_t letter = MnemonicOf(WindowText(item))) {
                letters.insert(letter);
                ++count;
            }
        EXPECT_EQ(letters, (std::set<wchar_t>{L'C', L'E', L'M', L'R', L'S', L'l'}));
        EXPECT_EQ(letters.size(), count);
    });
}

TEST_F(FilterDialogKeys, TabGoesThroughTheMonths)
{
    Filter() = OnMonths(1);
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_EQ(Focused(), 116);
        EXPECT_EQ(TabOrder(dialog), (std::vector{116, 1201, 1408, IDOK, IDCANCEL, 1011}));
        dialog.Click(1201);
        SetFocus(dialog.Item(1201));
        EXPECT_EQ(TabOrder(dialog), (std::vector{1201, 114, 115, IDOK, IDCANCEL, 1011}));
    });
}

TEST_F(FilterDialogKeys, BeginsWhereTheChoiceIs)
{
    AddCategory(L"Work");
    Filter().active = Filter().rangeMode = true;
    Run(false, [](const OpenFilter&) { EXPECT_EQ(Focused(), 114); });
    Run(true, [](const OpenFilter& dialog) {
        EXPECT_EQ(GetFocus(), dialog.Categories().Window());
        EXPECT_EQ(TabOrder(dialog), (std::vector{Focused(), 1408, int{IDOK}, int{IDCANCEL}, 1012}));
    });
}

TEST_F(FilterDialogKeys, SpaceTurnsMonthsAndEnterAccepts)
{
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Key(VK_SPACE);
        dialog.Key(VK_DOWN);
        dialog.Key(VK_DOWN);
        dialog.Key(VK_SPACE);
        EXPECT_EQ(dialog.CheckedMonths(), (std::vector<std::wstring>{L"January", L"March"}));
        dialog.Key(VK_SPACE);
        dialog.Key(VK_RETURN);
    }));
    EXPECT_EQ(Filter().monthMask, 1u);
}

TEST_F(FilterDialogKeys, ArrowsGoBetweenTheModes)
{
    const CEOID work = AddCategory(L"Work");
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.AltKey('M');
        EXPECT_EQ(Focused(), 1011);
        dialog.Key(VK_RIGHT);
        EXPECT_EQ(Focused(), 1012);
        EXPECT_TRUE(dialog.IsChecked(1012));
        EXPECT_EQ(WindowText(dialog.Window()), L"Filter on Categories...");
        dialog.Key(VK_RIGHT);
        EXPECT_EQ(Focused(), 1011) << "and round";
        dialog.Key(VK_LEFT);
        dialog.Key(VK_TAB);
        EXPECT_EQ(GetFocus(), dialog.Categories().Window());
        dialog.Key(VK_SPACE);
        dialog.Key(VK_RETURN);
    }));
    EXPECT_TRUE(Filter().categoriesMode);
    EXPECT_TRUE(Filter().categories.Find(work));
}

TEST_F(FilterDialogKeys, LettersWithAltReachEverything)
{
    Run(false, [](const OpenFilter& dialog) {
        dialog.Key(VK_SPACE);
        dialog.AltKey('L');
        EXPECT_TRUE(dialog.CheckedMonths().empty());
        dialog.AltKey('R');
        EXPECT_TRUE(dialog.IsChecked(1201));
        dialog.AltKey('E');
        EXPECT_EQ(Focused(), 115);
        dialog.AltKey('S');
        EXPECT_EQ(Focused(), 114);
        dialog.AltKey('C');
        EXPECT_TRUE(dialog.IsChecked(1012));
        dialog.AltKey('M');
        EXPECT_TRUE(dialog.IsChecked(1011));
    });
}

TEST_F(FilterDialogKeys, EscapeCancels)
{
    EXPECT_FALSE(Run(false, [](const OpenFilter& dialog) {
        dialog.Key(VK_SPACE);
        dialog.Key(VK_ESCAPE);
    }));
    EXPECT_FALSE(Filter().active);
}

} // namespace
