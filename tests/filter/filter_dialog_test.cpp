#include <sqlite3.h>

#include "filter/filter_dialog_fixture.h"
#include "support/resolution.h"
#include "support/unreadable_table.h"
#include "ui/screen/scale.h"
#include "util/clock.h"

namespace {

constexpr int kByMonths = 1011;
constexpr int kByCategories = 1012;
constexpr int kStartLabel = 1014;
constexpr int kEndLabel = 1015;
constexpr int kFrame = 1016;
constexpr int kRange = 1201;
constexpr int kClear = 1408;
constexpr int kStart = 114;
constexpr int kEnd = 115;
constexpr int kMonthList = 116;

constexpr uint64_t kFirstOfMarch = 125'963'424'000'000'000; // 2000, in days since 1601
constexpr uint64_t kUnitsPerDay = 864'000'000'000;

using Names = std::vector<std::wstring>;

void StoreRange(uint64_t start, uint64_t end)
{
    Own().SetNumber(L"Filter", L"mLStart", static_cast<DWORD>(start));
    Own().SetNumber(L"Filter", L"mHStart", static_cast<DWORD>(start >> 32));
    Own().SetNumber(L"Filter", L"mLEnd", static_cast<DWORD>(end));
    Own().SetNumber(L"Filter", L"mHEnd", static_cast<DWORD>(end >> 32));
}

uint64_t StoredDay(const wchar_t* low, const wchar_t* high)
{
    const uint64_t time =
        uint64_t{Own().GetNumber(L"Filter", high, 0)} << 32 | Own().GetNumber(L"Filter", low, 0);
    return time / kUnitsPerDay;
}

void ExpectDay(const SYSTEMTIME& day, WORD year, WORD month, WORD dayOfMonth)
{
    EXPECT_EQ(day.wYear, year);
    EXPECT_EQ(day.wMonth, month);
    EXPECT_EQ(day.wDay, dayOfMonth);
}

TEST_F(FilterDialogTest, TheMonthsFollowAnotherResolution)
{
    Run(false, [](const OpenFilter& dialog) {
        TellResolution(dialog.Window(), 2);
        EXPECT_EQ(ListView_GetColumnWidth(dialog.Item(kMonthList), 0), 2 * Scale(76));
        TellResolution(dialog.Window(), 1, 2);
        EXPECT_EQ(ListView_GetColumnWidth(dialog.Item(kMonthList), 0), Scale(76));
    });
}

TEST_F(FilterDialogTest, ShowsTheMonthsInTheirOrder)
{
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Filter on Months...");
        EXPECT_TRUE(dialog.IsChecked(kByMonths));
        EXPECT_FALSE(dialog.IsChecked(kByCategories));
        Names names;
        for (int i = 0; i < dialog.Months().Count(); ++i) {
            names.push_back(dialog.Months().Text(i));
            EXPECT_EQ(dialog.Months().Box(i), 1) << i;
        }
        EXPECT_EQ(names, (Names{L"January", L"February", L"March", L"April", L"May", L"June", L"July",
                                L"August", L"September", L"October", L"November", L"December"}));
        EXPECT_EQ(ListView_GetColumnWidth(dialog.Item(kMonthList), 0), Scale(76));
        EXPECT_EQ(dialog.Months().ExtendedStyle(), DWORD{LVS_EX_CHECKBOXES});
        const LONG_PTR style = GetWindowLongPtrW(dialog.Item(kMonthList), GWL_STYLE);
        EXPECT_EQ(style & (LVS_TYPEMASK | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SORTASCENDING),
                  LVS_LIST | LVS_SINGLESEL | LVS_SHOWSELALWAYS);
        EXPECT_TRUE(GetWindowLongPtrW(dialog.Item(kMonthList), GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
        EXPECT_FALSE(GetWindowLongPtrW(dialog.Item(kMonthList), GWL_STYLE) & WS_HSCROLL)
            << "all are in sight";
    });
}

TEST_F(FilterDialogTest, InMonthsTheMonthsCount)
{
    Filter() = OnMonths(0x804);
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_FALSE(dialog.IsChecked(kRange));
        EXPECT_EQ(dialog.CheckedMonths(), (Names{L"March", L"December"}));
        for (const int id : {kMonthList, kClear, kRange, kByMonths, kByCategories})
            EXPECT_TRUE(dialog.IsEnabled(id)) << id;
        for (const int id : {kStart, kEnd, kStartLabel, kEndLabel})
            EXPECT_FALSE(dialog.IsEnabled(id)) << id;
        for (const int id : {kMonthList, kStart, kEnd, kStartLabel, kEndLabel, kFrame, kRange})
            EXPECT_TRUE(dialog.IsShown(id)) << id;
        EXPECT_FALSE(IsWindowVisible(dialog.Categories().Window()));
    });
}

TEST_F(FilterDialogTest, InARangeTheDaysCount)
{
    Filter().active = Filter().rangeMode = true;
    Filter().rangeStart = {2000, 3, 3, 1, 0, 0, 0, 0};
    Filter().rangeEnd = {2001, 12, 1, 31, 0, 0, 0, 0};
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_TRUE(dialog.IsChecked(kRange));
        ExpectDay(dialog.Day(kStart), 2000, 3, 1);
        ExpectDay(dialog.Day(kEnd), 2001, 12, 31);
        for (const int id : {kStart, kEnd, kStartLabel, kEndLabel})
            EXPECT_TRUE(dialog.IsEnabled(id)) << id;
        for (const int id : {kMonthList, kClear})
            EXPECT_FALSE(dialog.IsEnabled(id)) << id;
        dialog.Click(kRange);
        EXPECT_FALSE(dialog.IsEnabled(kStart));
        EXPECT_TRUE(dialog.IsEnabled(kMonthList));
        EXPECT_TRUE(dialog.IsEnabled(kClear));
        dialog.Click(kRange);
        EXPECT_TRUE(dialog.IsEnabled(kStart));
        EXPECT_FALSE(dialog.IsEnabled(kMonthList));
    });
}

TEST_F(FilterDialogTest, PickersShowShortDatesBesideTheirLabels)
{
    Run(false, [](const OpenFilter& dialog) {
        for (const auto& [picker, label] : {std::pair(kStart, kStartLabel), std::pair(kEnd, kEndLabel)}) {
            wchar_t name[40] = L"";
            GetClassNameW(dialog.Item(picker), name, 40);
            EXPECT_STREQ(name, L"SysDateTimePick32");
            constexpr LONG_PTR kFormats = DTS_LONGDATEFORMAT | DTS_TIMEFORMAT | DTS_SHOWNONE;
            EXPECT_EQ(GetWindowLongPtrW(dialog.Item(picker), GWL_STYLE) & kFormats, DTS_SHORTDATEFORMAT);
            RECT text{}, box{};
            GetWindowRect(dialog.Item(label), &text);
            GetWindowRect(dialog.Item(picker), &box);
            EXPECT_GE(box.left, text.right);
            EXPECT_LE(box.top, text.top);
            EXPECT_GE(box.bottom, text.bottom);
            EXPECT_EQ(GetWindow(dialog.Item(label), GW_HWNDNEXT), dialog.Item(picker));
        }
    });
}

TEST_F(FilterDialogTest, ARangeThatWasNeverSetShowsToday)
{
    const ScopedClockForTesting clock({2031, 7, 0, 9, 23, 59, 0, 0});
    Run(false, [](const OpenFilter& dialog) {
        ExpectDay(dialog.Day(kStart), 2031, 7, 9);
        ExpectDay(dialog.Day(kEnd), 2031, 7, 9);
    });
    Filter().rangeEnd = {2000, 3, 3, 1, 0, 0, 0, 0};
    Run(false, [](const OpenFilter& dialog) {
        ExpectDay(dialog.Day(kStart), 2031, 7, 9);
        ExpectDay(dialog.Day(kEnd), 2000, 3, 1);
    });
}

TEST_F(FilterDialogTest, InactiveAndRememberedItShowsWhatIsStored)
{
    Own().SetNumber(L"Options", L"RememberFilter", 1);
    Own().SetNumber(L"Filter", L"fRange", 1);
    Own().SetNumber(L"Filter", L"fMonths", 0x3);
    StoreRange(kFirstOfMarch, kFirstOfMarch + 30 * kUnitsPerDay);
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_TRUE(dialog.IsChecked(kRange));
        EXPECT_EQ(dialog.CheckedMonths(), (Names{L"January", L"February"}));
        ExpectDay(dialog.Day(kStart), 2000, 3, 1);
        ExpectDay(dialog.Day(kEnd), 2000, 3, 31);
    });
    Own().SetNumber(L"Filter", L"fRange", 0);
    Run(true, [](const OpenFilter& dialog) {
        dialog.Click(kByMonths);
        EXPECT_FALSE(dialog.IsChecked(kRange));
        EXPECT_EQ(dialog.CheckedMonths(), (Names{L"January", L"February"})) << "opened for categories too";
    });
}

TEST_F(FilterDialogTest, NotRememberedOrActiveItShowsTheFilterAsItIs)
{
    Own().SetNumber(L"Filter", L"fRange", 1);
    Own().SetNumber(L"Filter", L"fMonths", 0x3);
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_FALSE(dialog.IsChecked(kRange)) << "nothing is to be remembered unless it is stored";
        EXPECT_TRUE(dialog.CheckedMonths().empty());
    });
    Own().SetNumber(L"Options", L"RememberFilter", 1);
    Filter() = OnMonths(0x8);
    Run(false, [](const OpenFilter& dialog) {
        EXPECT_FALSE(dialog.IsChecked(kRange));
        EXPECT_EQ(dialog.CheckedMonths(), (Names{L"April"}));
    });
}

TEST_F(FilterDialogTest, MonthsAreTurnedByBoxAndByLabel)
{
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Months().ClickBox(2);
        EXPECT_EQ(dialog.Months().Box(2), 2);
        dialog.Months().ClickLabel(4);
        dialog.Months().ClickLabel(11);
        dialog.Months().ClickLabel(5);
        dialog.Months().ClickLabel(5);
        dialog.Months().ClickBelow();
        EXPECT_EQ(dialog.CheckedMonths(), (Names{L"March", L"May", L"December"}));
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().active);
    EXPECT_FALSE(Filter().categoriesMode);
    EXPECT_FALSE(Filter().rangeMode);
    EXPECT_EQ(Filter().monthMask, 0x814u);
    EXPECT_EQ(Stored(L"fMonths"), 0x814u);
    EXPECT_EQ(Stored(L"fRange"), 0u);
    EXPECT_EQ(Stored(L"Active"), 1u);
    EXPECT_EQ(Stored(L"mLStart"), 0xDEADu);
}

TEST_F(FilterDialogTest, WithoutAMonthTheFilterIsOutOfForce)
{
    Filter() = OnMonths(0x4);
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Months().ClickBox(2);
        dialog.Command(IDOK);
    }));
    EXPECT_FALSE(Filter().active);
    EXPECT_EQ(Stored(L"Active"), 0u);
    EXPECT_EQ(Stored(L"fMonths"), 0u);
}

TEST_F(FilterDialogTest, TheChosenRangeIsStored)
{
    Own().SetNumber(L"Filter", L"fMonths", 0x3);
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Click(kRange);
        dialog.SetDay(kStart, 2000, 3, 1);
        dialog.SetDay(kEnd, 2000, 3, 31);
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().active);
    EXPECT_TRUE(Filter().rangeMode);
    ExpectDay(Filter().rangeStart, 2000, 3, 1);
    ExpectDay(Filter().rangeEnd, 2000, 3, 31);
    EXPECT_EQ(StoredDay(L"mLStart", L"mHStart"), kFirstOfMarch / kUnitsPerDay);
    EXPECT_EQ(StoredDay(L"mLEnd", L"mHEnd"), kFirstOfMarch / kUnitsPerDay + 30);
    EXPECT_EQ(Stored(L"fRange"), 1u);
    EXPECT_EQ(Stored(L"fMonths"), 3u);
    EXPECT_EQ(Stored(L"Active"), 1u);
}

TEST_F(FilterDialogTest, ARangeThatEndsBeforeItStartsIsAccepted)
{
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Click(kRange);
        dialog.SetDay(kStart, 2000, 3, 31);
        dialog.SetDay(kEnd, 2000, 3, 1);
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().active);
    ExpectDay(Filter().rangeStart, 2000, 3, 31);
    ExpectDay(Filter().rangeEnd, 2000, 3, 1);
}

TEST_F(FilterDialogTest, ClearUnchecksTheMonths)
{
    Filter() = OnMonths(0x900);
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Click(kClear);
        EXPECT_TRUE(dialog.CheckedMonths().empty());
        dialog.Months().ClickBox(1);
        dialog.Command(IDOK);
    }));
    EXPECT_EQ(Filter().monthMask, 0x2u);
}

TEST_F(FilterDialogTest, CancelLeavesTheFilterAsItWas)
{
    Own().SetNumber(L"Options", L"RememberFilter", 1);
    Own().SetNumber(L"Filter", L"fMonths", 0x7);
    const CEOID work = AddCategory(L"Work");
    Filter() = OnCategories({work});
    Filter().active = Filter().categoriesMode = false;
    EXPECT_FALSE(Run(false, [](const OpenFilter& dialog) {
        dialog.Months().ClickBox(3);
        dialog.Click(kRange);
        dialog.Click(kByCategories);
        dialog.Click(kClear);
        dialog.Command(IDCANCEL);
    }));
    EXPECT_FALSE(Filter().active);
    EXPECT_FALSE(Filter().categoriesMode);
    EXPECT_FALSE(Filter().rangeMode);
    EXPECT_EQ(Filter().monthMask, 0u);
    EXPECT_TRUE(Filter().categories.Find(work));
    EXPECT_EQ(Stored(L"fMonths"), 7u);
    EXPECT_EQ(Stored(L"Active"), 0xDEADu);
}

TEST_F(FilterDialogTest, ShowsTheCategoriesChecked)
{
    const CEOID work = AddCategory(L"Work");
    AddCategory(L"Garden", 0);
    Filter() = OnCategories({work});
    Run(true, [](const OpenFilter& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Filter on Categories...");
        EXPECT_TRUE(dialog.IsChecked(kByCategories));
        EXPECT_FALSE(dialog.IsChecked(kByMonths));
        for (const int id : {kStartLabel, kEndLabel, kFrame, kRange, kStart, kEnd, kMonthList})
            EXPECT_FALSE(dialog.IsShown(id)) << id;
        EXPECT_TRUE(dialog.IsEnabled(kClear));
        const ListInEditor list = dialog.Categories();
        EXPECT_TRUE(IsWindowVisible(list.Window()));
        ASSERT_EQ(list.Count(), 2) << "in use or not";
        EXPECT_EQ(list.Text(0), L"Garden");
        EXPECT_FALSE(list.IsChecked(L"Garden"));
        EXPECT_TRUE(list.IsChecked(L"Work"));
    });
}

TEST_F(FilterDialogTest, CheckedCategoriesAreTheFilter)
{
    const CEOID work = AddCategory(L"Work"), garden = AddCategory(L"Garden"), home = AddCategory(L"Home");
    Filter() = OnCategories({work});
    EXPECT_TRUE(Run(true, [](const OpenFilter& dialog) {
        dialog.Categories().ClickBox(0);
        dialog.Categories().ClickLabel(1);
        dialog.Categories().ClickBox(2);
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().active);
    EXPECT_TRUE(Filter().categoriesMode);
    EXPECT_EQ(Filter().categories.Count(), 2u);
    EXPECT_TRUE(Filter().categories.Find(garden));
    EXPECT_TRUE(Filter().categories.Find(home));
    EXPECT_EQ(Stored(L"Active"), 1u);
    EXPECT_EQ(Stored(L"fRange"), 0xDEADu);
}

TEST_F(FilterDialogTest, WithoutACategoryTheFilterIsOutOfForce)
{
    Filter() = OnCategories({AddCategory(L"Work"), AddCategory(L"Garden")});
    EXPECT_TRUE(Run(true, [](const OpenFilter& dialog) {
        dialog.Click(kClear);
        EXPECT_FALSE(dialog.Categories().IsChecked(L"Work"));
        EXPECT_FALSE(dialog.Categories().IsChecked(L"Garden"));
        dialog.Command(IDOK);
    }));
    EXPECT_FALSE(Filter().active);
    EXPECT_TRUE(Filter().categories.IsEmpty());
    EXPECT_EQ(Stored(L"Active"), 0u);
}

TEST_F(FilterDialogTest, WhatIsNotListedLeavesTheFilter)
{
    const CEOID old = AddCategory(L"Old"), work = AddCategory(L"Work");
    Hide(old);
    Filter() = OnCategories({old, work, 999});
    Run(true, [](const OpenFilter& dialog) {
        EXPECT_EQ(dialog.Categories().Count(), 1);
        dialog.Command(IDCANCEL);
    });
    EXPECT_EQ(Filter().categories.Count(), 3u);
    EXPECT_TRUE(Run(true, [](const OpenFilter& dialog) { dialog.Command(IDOK); }));
    EXPECT_EQ(Filter().categories.Count(), 1u);
    EXPECT_TRUE(Filter().categories.Find(work));
}

TEST_F(FilterDialogTest, WhatCannotBeReadStaysInTheFilter)
{
    const CEOID work = AddCategory(L"Work");
    AddCategory(L"Garden");
    Filter() = OnCategories({work});
    EXPECT_TRUE(Run(true, [&](const OpenFilter& dialog) {
        EXPECT_EQ(dialog.Categories().Count(), 2);
        const UnreadableTable none(m_store.Path(), "categories");
        SendMessageW(dialog.Window(), kMsgDatabaseChange, kChangeWorkEnded, 0);
        ASSERT_EQ(dialog.Categories().Count(), 1);
        EXPECT_EQ(dialog.Categories().Text(0), L"<The categories cannot be read>");
        EXPECT_EQ(dialog.Categories().Box(0), 0);
        dialog.Ok();
    }));
    ASSERT_EQ(Filter().categories.Count(), 1u);
    EXPECT_TRUE(Filter().categories.Find(work));
    EXPECT_TRUE(Filter().active);
}

TEST_F(FilterDialogTest, AnEmptyListSaysNoneWithoutABox)
{
    Hide(AddCategory(L"Old"));
    EXPECT_TRUE(Run(true, [](const OpenFilter& dialog) {
        const ListInEditor list = dialog.Categories();
        ASSERT_EQ(list.Count(), 1);
        EXPECT_EQ(list.Text(0), L"< None >");
        EXPECT_EQ(list.ExtendedStyle() & LVS_EX_CHECKBOXES, 0u);
        list.ClickLabel(0);
        SendMessageW(list.Window(), WM_KEYDOWN, VK_SPACE, 0);
        dialog.Click(kClear);
        dialog.Command(IDOK);
    }));
    EXPECT_FALSE(Filter().active);
    EXPECT_TRUE(Filter().categories.IsEmpty());
}

TEST_F(FilterDialogTest, ChangesOfTheCategoriesShowWhileItIsOpen)
{
    Run(true, [this](const OpenFilter& dialog) {
        EXPECT_EQ(dialog.Categories().Text(0), L"< None >");
        const CEOID work = AddCategory(L"Work");
        SendMessageW(dialog.Window(), WM_USER + 101, 2, static_cast<LPARAM>(work));
        ASSERT_TRUE(PumpUntil([&] { return dialog.Categories().Text(0) == L"Work"; }));
        dialog.Categories().ClickBox(0);
        AddCategory(L"Garden");
        SendMessageW(dialog.Window(), WM_USER + 101, 15, 0);
        ASSERT_TRUE(PumpUntil([&] { return dialog.Categories().Count() == 2; }));
        EXPECT_TRUE(dialog.Categories().IsChecked(L"Work"));
        EXPECT_FALSE(dialog.Categories().IsChecked(L"Garden"));
        dialog.Command(IDOK);
    });
    EXPECT_EQ(Filter().categories.Count(), 1u);
}

// Nobody but the dialog is told of it here.
TEST_F(FilterDialogTest, HearsOfWhatAnotherProgramWrites)
{
    AddCategory(L"Work");
    Run(true, [this](const OpenFilter& dialog) {
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &other), SQLITE_OK);
        EXPECT_EQ(
            sqlite3_exec(other, "INSERT INTO categories(name) VALUES('Garden')", nullptr, nullptr, nullptr),
            SQLITE_OK);
        sqlite3_close(other);
        EXPECT_TRUE(PumpUntil([&] { return dialog.Categories().Count() == 2; }));
        EXPECT_EQ(dialog.Categories().Text(0), L"Garden");
        dialog.Command(IDCANCEL);
    });
}

TEST_F(FilterDialogTest, ChangingTheModeKeepsWhatWasChosen)
{
    const CEOID work = AddCategory(L"Work");
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Months().ClickBox(3);
        dialog.Click(kRange);
        dialog.SetDay(kStart, 2000, 3, 1);
        dialog.Click(kByCategories);
        EXPECT_EQ(WindowText(dialog.Window()), L"Filter on Categories...");
        EXPECT_FALSE(dialog.IsShown(kMonthList));
        EXPECT_FALSE(dialog.IsShown(kStart));
        EXPECT_TRUE(IsWindowVisible(dialog.Categories().Window()));
        EXPECT_TRUE(dialog.IsEnabled(kClear)) << "though it was not for the range";
        dialog.Categories().ClickBox(0);
        dialog.Click(kByMonths);
        EXPECT_EQ(WindowText(dialog.Window()), L"Filter on Months...");
        EXPECT_TRUE(dialog.IsShown(kMonthList));
        EXPECT_FALSE(IsWindowVisible(dialog.Categories().Window()));
        EXPECT_FALSE(dialog.IsEnabled(kClear));
        EXPECT_TRUE(dialog.IsChecked(kRange));
        EXPECT_EQ(dialog.CheckedMonths(), Names{L"April"});
        ExpectDay(dialog.Day(kStart), 2000, 3, 1);
        dialog.Click(kByCategories);
        EXPECT_TRUE(dialog.Categories().IsChecked(L"Work"));
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().active);
    EXPECT_TRUE(Filter().categoriesMode) << "the mode that was shown last";
    EXPECT_TRUE(Filter().categories.Find(work));
    EXPECT_EQ(Stored(L"fMonths"), 0xDEADu);
}

TEST_F(FilterDialogTest, ClearIsForTheModeThatIsShown)
{
    Filter() = OnCategories({AddCategory(L"Work")});
    Filter().monthMask = 1;
    EXPECT_TRUE(Run(false, [](const OpenFilter& dialog) {
        dialog.Click(kClear);
        dialog.Command(IDOK);
    }));
    EXPECT_EQ(Filter().monthMask, 0u);
    EXPECT_EQ(Filter().categories.Count(), 1u);
    EXPECT_FALSE(Filter().active) << "a filter on dates without a month";
    EXPECT_FALSE(Filter().categoriesMode);
}

TEST_F(FilterDialogTest, CategoriesThatCannotBeOpenedAreNotListed)
{
    m_categories.Close();
    Own().Journal().Close();
    const NoStore none;
    Filter() = OnCategories({7});
    EXPECT_TRUE(Run(true, [](const OpenFilter& dialog) {
        EXPECT_EQ(dialog.Categories().Window(), nullptr);
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().active);
    EXPECT_TRUE(Filter().categories.Find(7));
    EXPECT_TRUE(Run(true, [](const OpenFilter& dialog) {
        dialog.Click(kClear);
        dialog.Command(IDOK);
    }));
    EXPECT_TRUE(Filter().categories.IsEmpty());
}

TEST_F(FilterDialogTest, IsWholeOnTheScreen)
{
    for (const bool byCategories : {false, true})
        Run(byCategories, [](const OpenFilter& dialog) { dialog.ExpectWholeOnScreen(); });
}

TEST_F(FilterDialogTest, ABadOwnerIsNoAnswer)
{
    EXPECT_FALSE(OpenFilterDialog(Own(), reinterpret_cast<HWND>(INT_PTR{0x7FFF0001}), false));
}

} // namespace
