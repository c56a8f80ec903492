#include "columns/columns_dialog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/test_session.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/screen/work_area.h"

namespace {

using Texts = std::vector<std::wstring>;

constexpr int kAvailable = 1177, kShown = 1175;
constexpr int kAdd = 1170, kRemove = 1171, kUp = 1172, kDown = 1173, kReset = 1174, kDefaults = 123;

class ColumnsWindow : public DialogWindow {
  public:
    using DialogWindow::DialogWindow;

    Texts Items(int list) const
    {
        Texts items;
        for (LRESULT i = 0; i < Ask(list, LB_GETCOUNT); ++i) {
            wchar_t text[64];
            Ask(list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            items.emplace_back(text);
        }
        return items;
    }
    // "-" when nothing is selected.
    std::wstring Selected(int list) const
    {
        const LRESULT item = Ask(list, LB_GETCURSEL);
        return item == LB_ERR ? L"-" : Items(list)[static_cast<size_t>(item)];
    }
    // A click on an item, or two.
    void Select(int list, const std::wstring& text, bool twice = false) const
    {
        const Texts items = Items(list);
        RECT rect{};
        for (size_t i = 0; i < items.size(); ++i)
            if (items[i] == text)
                Ask(list, LB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&rect));
        ASSERT_GT(rect.bottom, 0) << "no such item";
        const LPARAM point = MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
        Ask(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
        Ask(list, WM_LBUTTONUP, 0, point);
        if (!twice)
            return;
        Ask(list, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
        Ask(list, WM_LBUTTONUP, 0, point);
    }
    // Which can be used: the lists, Add, Remove, Up, Down, Reset: "VW ARUDS".
    std::string Enabled() const
    {
        std::string letters = "VW ARUDS";
        const int ids[] = {kAvailable, kShown, 0, kAdd, kRemove, kUp, kDown, kReset};
        for (size_t i = 0; i < std::size(ids); ++i)
            if (ids[i] && !IsEnabled(ids[i]))
                letters[i] = '-';
        return letters;
    }
};

class ColumnsDialogTest : public testing::Test {
  protected:
    ColumnsDialogTest() { ResetColumns(&m_columns, WorkArea().right); }

    // True after OK. What the action leaves open is closed with Cancel.
    bool Run(const std::function<void(ColumnsWindow&)>& action)
    {
        const auto work = [&](HWND window) {
            ColumnsWindow dialog(window);
            action(dialog);
        };
        return RunDialog([this] { return CustomizeColumns(nullptr, &m_columns) ? 1 : 0; }, work, 0) == 1;
    }
    // Shows the columns of these properties, in this order.
    void Show(const std::vector<WORD>& properties)
    {
        for (ZColumn& column : m_columns.columns)
            column.Remove(kColumnShown);
        m_columns.shownCount = 0;
        for (const WORD property : properties) {
            const int from = FindColumnByProperty(m_columns, property);
            m_columns.columns[static_cast<size_t>(from)].Add(kColumnShown);
            MoveColumn(&m_columns, from, m_columns.shownCount++);
        }
    }
    std::vector<int> Shown() const
    {
        std::vector<int> properties;
        for (int i = 0; i < m_columns.shownCount; ++i)
            properties.push_back(m_columns.columns[static_cast<size_t>(i)].Property());
        return properties;
    }

    TestRegistry m_registry;
    ColumnSet m_columns;
};

const Texts kOfferedByDefault{L"Body",        L"Categories", L"Type",     L"Priority",
                              L"Sensitivity", L"End Time",   L"Duration", L"Contacts"};

TEST_F(ColumnsDialogTest, ListsWhatIsShownAndWhatIsNot)
{
    Run([](ColumnsWindow& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Customize Columns");
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject"}));
        EXPECT_EQ(dialog.Items(kAvailable), kOfferedByDefault);
        EXPECT_EQ(dialog.Text(kAdd), L"&Add ->");
        EXPECT_EQ(dialog.Text(kRemove), L"<- &Remove");
        EXPECT_EQ(dialog.Text(kUp), L"Move &Up");
        EXPECT_EQ(dialog.Text(kDown), L"Move &Down");
        EXPECT_EQ(dialog.Text(kReset), L"Re&set");
        EXPECT_EQ(dialog.Text(kDefaults), L"Restore default column");
    });
}

TEST_F(ColumnsDialogTest, TheLabelsBelongToTheLists)
{
    Run([](ColumnsWindow& dialog) {
        EXPECT_EQ(WindowText(GetWindow(dialog.Item(kAvailable), GW_HWNDPREV)), L"A&vailable fields:");
        EXPECT_EQ(WindowText(GetWindow(dialog.Item(kShown), GW_HWNDPREV)), L"Sh&ow these fields:");
        for (const int list : {kAvailable, kShown}) {
            HWND label = GetWindow(dialog.Item(list), GW_HWNDPREV);
            HDC dc = GetDC(label);
            SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)));
            RECT needed{};
            DrawTextW(dc, WindowText(label).c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
            ReleaseDC(label, dc);
            EXPECT_LE(needed.right, dialog.RectOf(label).right - dialog.RectOf(label).left) << list;
        }
        dialog.AltKey('O');
        EXPECT_TRUE(dialog.HasFocus(kShown));
        dialog.AltKey('V');
        EXPECT_TRUE(dialog.HasFocus(kAvailable));
    });
}

TEST_F(ColumnsDialogTest, TheListsKeepTheOrderOfTheColumns)
{
    Show({107, 101, 104});
    Run([](ColumnsWindow& dialog) {
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Priority", L"Date", L"Categories"}));
        EXPECT_EQ(dialog.Items(kAvailable), (Texts{L"Subject", L"Body", L"Type", L"Sensitivity", L"End Time",
                                                   L"Duration", L"Contacts"}));
    });
}

TEST_F(ColumnsDialogTest, OpensInTheListOfFields)
{
    Run([](ColumnsWindow& dialog) {
        EXPECT_TRUE(dialog.HasFocus(kAvailable));
        EXPECT_EQ(dialog.Selected(kAvailable), L"Body");
        EXPECT_EQ(dialog.Selected(kShown), L"-");
        EXPECT_EQ(dialog.Enabled(), "VW A----");
    });
}

TEST_F(ColumnsDialogTest, WithAllFieldsShownOnlyTheirListCanBeUsed)
{
    Show({101, 102, 103, 104, 105, 107, 108, 109, 110, 111});
    Run([](ColumnsWindow& dialog) {
        EXPECT_EQ(dialog.Items(kAvailable), Texts{}) << "106 is in neither list";
        EXPECT_EQ(dialog.Items(kShown).size(), 10u);
        EXPECT_TRUE(dialog.HasFocus(kShown));
        EXPECT_EQ(dialog.Enabled(), "-W -R-D-");
    });
}

TEST_F(ColumnsDialogTest, AnAddedLastFieldHandsTheKeyboardOn)
{
    Show({101, 102, 103, 104, 105, 107, 108, 109, 110});
    Run([](ColumnsWindow& dialog) {
        EXPECT_EQ(dialog.Items(kAvailable), Texts{L"Contacts"});
        dialog.Click(kAdd);
        EXPECT_EQ(dialog.Items(kAvailable), Texts{});
        EXPECT_EQ(dialog.Items(kShown).back(), L"Contacts");
        EXPECT_TRUE(dialog.HasFocus(kShown));
        EXPECT_EQ(dialog.Enabled(), "-W -R-DS");
    });
}

TEST_F(ColumnsDialogTest, AddPutsTheFieldBehindTheShownOnes)
{
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Select(kAvailable, L"Duration");
        dialog.Click(kAdd);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject", L"Duration"}));
        EXPECT_EQ(dialog.Items(kAvailable), (Texts{L"Body", L"Categories", L"Type", L"Priority",
                                                   L"Sensitivity", L"End Time", L"Contacts"}));
        EXPECT_EQ(dialog.Selected(kAvailable), L"Contacts") << "the next one";
        EXPECT_EQ(dialog.Enabled(), "VW A---S");
        dialog.Ok();
    }));
    EXPECT_EQ(Shown(), (std::vector<int>{101, 102, 110}));
}

TEST_F(ColumnsDialogTest, TwoQuickClicksAreTwo)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Click(kAdd);
        dialog.Ask(kAdd, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
        dialog.Ask(kAdd, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject", L"Body", L"Categories"}));
    });
}

TEST_F(ColumnsDialogTest, AddWithoutASelectionDoesNothing)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Ask(kAvailable, LB_SETCURSEL, static_cast<WPARAM>(-1));
        dialog.Click(kAdd);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject"}));
        EXPECT_FALSE(dialog.IsEnabled(kReset));
    });
}

TEST_F(ColumnsDialogTest, ADoubleClickAddsAndRemoves)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Select(kAvailable, L"Type", true);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject", L"Type"}));
        dialog.Select(kShown, L"Date", true);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Subject", L"Type"}));
        EXPECT_EQ(dialog.Items(kAvailable).front(), L"Date");
    });
}

TEST_F(ColumnsDialogTest, RemoveTakesTheSortMarkToo)
{
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Select(kShown, L"Date");
        dialog.Click(kRemove);
        EXPECT_EQ(dialog.Items(kShown), Texts{L"Subject"});
        EXPECT_EQ(dialog.Selected(kShown), L"Subject") << "what took its place";
        dialog.Ok();
    }));
    EXPECT_EQ(Shown(), std::vector<int>{102});
    EXPECT_EQ(GetSortColumn(m_columns), 0) << "Subject is the first that can be sorted by";
    EXPECT_EQ(m_columns.columns[1].Property(), 101) << "just behind the shown ones";
}

TEST_F(ColumnsDialogTest, TheLastColumnIsNotRemoved)
{
    Show({102});
    const MessageBoxAnswerer boxes;
    Run([](ColumnsWindow& dialog) {
        dialog.Select(kShown, L"Subject");
        EXPECT_EQ(dialog.Enabled(), "VW -R---");
        dialog.Click(kRemove);
        dialog.Select(kShown, L"Subject", true);
        EXPECT_EQ(dialog.Items(kShown), Texts{L"Subject"});
        EXPECT_FALSE(dialog.IsEnabled(kReset));
    });
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(boxes.Boxes()[0].text, L"At least one column must remain...");
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Warning");
    EXPECT_EQ(boxes.Boxes()[0].answers, std::vector<int>{IDOK});
    EXPECT_EQ(boxes.Boxes()[0].icon, LoadIconW(nullptr, IDI_EXCLAMATION));
}

TEST_F(ColumnsDialogTest, TheMovedEntryStaysSelected)
{
    Show({101, 102, 103});
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Select(kShown, L"Body");
        EXPECT_EQ(dialog.Enabled(), "VW -RU--") << "the last one";
        dialog.Click(kUp);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Body", L"Subject"}));
        EXPECT_EQ(dialog.Selected(kShown), L"Body");
        EXPECT_EQ(dialog.Enabled(), "VW -RUDS") << "between";
        dialog.Click(kUp);
        EXPECT_EQ(dialog.Selected(kShown), L"Body");
        EXPECT_EQ(dialog.Enabled(), "VW -R-DS") << "the first one";
        dialog.Click(kDown);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Body", L"Subject"}));
        EXPECT_EQ(dialog.Selected(kShown), L"Body");
        dialog.Ok();
    }));
    EXPECT_EQ(Shown(), (std::vector<int>{101, 103, 102}));
}

TEST_F(ColumnsDialogTest, AButtonThatHasDoneItsWorkHandsTheKeyboardOn)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Select(kShown, L"Subject");
        dialog.Click(kUp);
        EXPECT_FALSE(dialog.IsEnabled(kUp));
        EXPECT_TRUE(dialog.HasFocus(kShown));
        EXPECT_EQ(dialog.Selected(kShown), L"Subject");
        dialog.Click(kReset);
        EXPECT_FALSE(dialog.IsEnabled(kReset));
        EXPECT_TRUE(dialog.HasFocus(kAvailable));
    });
}

TEST_F(ColumnsDialogTest, ThereIsOneSelectionInBothLists)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Select(kAvailable, L"Type");
        dialog.Select(kShown, L"Subject");
        EXPECT_EQ(dialog.Selected(kAvailable), L"-");
        EXPECT_EQ(dialog.Enabled(), "VW -RU--");
        dialog.Select(kAvailable, L"Type");
        EXPECT_EQ(dialog.Selected(kShown), L"-");
        EXPECT_EQ(dialog.Enabled(), "VW A----");
    });
}

TEST_F(ColumnsDialogTest, LosingTheKeyboardDisablesTheButtonsOfAList)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Focus(kShown);
        EXPECT_EQ(dialog.Enabled(), "VW -R-D-");
        dialog.Focus(kDown);
        EXPECT_EQ(dialog.Enabled(), "VW -R-D-") << "its own buttons are for use";
        dialog.Focus(kDefaults);
        EXPECT_EQ(dialog.Enabled(), "VW -----");
        dialog.Focus(kAvailable);
        EXPECT_EQ(dialog.Enabled(), "VW A----");
        dialog.Focus(IDOK);
        EXPECT_EQ(dialog.Enabled(), "VW -----");
        dialog.Focus(kAvailable);
        dialog.Focus(kAdd);
        EXPECT_EQ(dialog.Enabled(), "VW A----");
        dialog.Focus(IDCANCEL);
        EXPECT_EQ(dialog.Enabled(), "VW -----");
    });
}

TEST_F(ColumnsDialogTest, AnotherProgramsTurnChangesNothing)
{
    Run([](ColumnsWindow& dialog) {
        dialog.Focus(kShown);
        SetFocus(nullptr);
        EXPECT_EQ(dialog.Enabled(), "VW -R-D-");
    });
}

TEST_F(ColumnsDialogTest, ResetGoesBackToTheOpening)
{
    Show({105, 101});
    m_columns.columns[0].SetWidth(99);
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Select(kAvailable, L"Subject", true);
        dialog.Select(kShown, L"Type", true);
        EXPECT_TRUE(dialog.IsEnabled(kReset));
        dialog.Click(kReset);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Type", L"Date"}));
        EXPECT_FALSE(dialog.IsEnabled(kReset));
        dialog.Ok();
    }));
    EXPECT_EQ(Shown(), (std::vector<int>{105, 101}));
    EXPECT_EQ(m_columns.columns[0].Width(), 99);
}

TEST_F(ColumnsDialogTest, RestoringTheDefaultsNeedsNoMoreChoice)
{
    Show({105, 101});
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Select(kAvailable, L"Subject", true);
        dialog.Click(kDefaults);
        EXPECT_EQ(dialog.Enabled(), "-- -----");
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject"}));
        EXPECT_EQ(dialog.Items(kAvailable), kOfferedByDefault);
        dialog.Ok();
    }));
    EXPECT_EQ(Shown(), (std::vector<int>{101, 102}));
    EXPECT_EQ(m_columns.columns[0].Width(), WorkArea().right / 3);
}

TEST_F(ColumnsDialogTest, TakenBackTheDefaultsLeaveTheOpening)
{
    Show({105, 101});
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Select(kAvailable, L"Subject", true);
        dialog.Click(kDefaults);
        dialog.Click(kDefaults);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Type", L"Date"}));
        EXPECT_EQ(dialog.Enabled(), "VW -----") << "nothing is changed";
        dialog.Ok();
    }));
    EXPECT_EQ(Shown(), (std::vector<int>{105, 101}));
}

TEST_F(ColumnsDialogTest, CancelLeavesTheColumns)
{
    const ColumnSet before = m_columns;
    for (const bool byKey : {true, false}) {
        EXPECT_FALSE(Run([=](ColumnsWindow& dialog) {
            dialog.Select(kShown, L"Date", true);
            dialog.Select(kAvailable, L"Type", true);
            if (byKey)
                dialog.Key(VK_ESCAPE);
            else
                dialog.Cancel();
        }));
        for (size_t i = 0; i < 11; ++i)
            EXPECT_EQ(m_columns.columns[i].GetFlags(), before.columns[i].GetFlags()) << i;
        EXPECT_EQ(m_columns.shownCount, 2);
    }
}

TEST_F(ColumnsDialogTest, TheKeyboardAloneDoesIt)
{
    EXPECT_TRUE(Run([](ColumnsWindow& dialog) {
        dialog.Key(VK_DOWN); // Categories
        dialog.AltKey('A');
        dialog.Key(VK_SPACE); // Add again: Type
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject", L"Categories", L"Type"}));
        dialog.Key(VK_TAB);
        EXPECT_TRUE(dialog.HasFocus(kShown));
        EXPECT_EQ(dialog.Selected(kShown), L"Date");
        dialog.AltKey('R');
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Subject", L"Categories", L"Type"}));
        dialog.AltKey('O');
        dialog.Key(VK_END);
        dialog.AltKey('U');
        dialog.AltKey('U');
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Type", L"Subject", L"Categories"}));
        dialog.AltKey('D');
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Subject", L"Type", L"Categories"}));
        dialog.AltKey('V');
        dialog.Key(VK_RETURN);
    }));
    EXPECT_EQ(Shown(), (std::vector<int>{102, 105, 104}));
}

TEST_F(ColumnsDialogTest, TheKeyboardResetsAndRestores)
{
    Show({105, 101});
    Run([](ColumnsWindow& dialog) {
        dialog.AltKey('A');
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Type", L"Date", L"Subject"}));
        dialog.AltKey('S');
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Type", L"Date"}));
        for (int i = 0; i < 8 && !dialog.HasFocus(kDefaults); ++i)
            dialog.Key(VK_TAB);
        ASSERT_TRUE(dialog.HasFocus(kDefaults));
        dialog.Key(VK_SPACE);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Date", L"Subject"}));
        EXPECT_TRUE(dialog.HasFocus(kDefaults));
        dialog.Key(VK_SPACE);
        EXPECT_EQ(dialog.Items(kShown), (Texts{L"Type", L"Date"}));
    });
}

TEST_F(ColumnsDialogTest, IsWholeOnTheScreen)
{
    Run([](ColumnsWindow& dialog) {
        const RECT area = WorkArea();
        // A window manager may still be placing it.
        EXPECT_TRUE(PumpUntil([&] {
            RECT window{};
            GetWindowRect(dialog.Window(), &window);
            return std::abs(window.left + window.right - area.left - area.right) <= 2 &&
                   std::abs(window.top + window.bottom - area.top - area.bottom) <= 2;
        })) << "in the middle";
        dialog.ExpectWholeOnScreen();
    });
}

// The upright layout has the same controls.
TEST(ColumnsUpright, HasTheSameControls)
{
    HWND upright = CreateDialogParamW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_CUSTOMIZE_COLUMNS_UPRIGHT), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_NE(upright, nullptr);
    for (const int id : {kAvailable, kShown, kAdd, kRemove, kUp, kDown, kReset, kDefaults, IDOK, IDCANCEL})
        EXPECT_NE(GetDlgItem(upright, id), nullptr) << id;
    DestroyWindow(upright);
}

} // namespace
