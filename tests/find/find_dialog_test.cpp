#include "find/find_dialog.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "support/dialog_window.h"
#include "support/resolution.h"
#include "support/test_session.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "support/work_area_setting.h"
#include "ui/screen/scale.h"
#include "util/clock.h"

namespace {

constexpr int kDate = 1106, kSubject = 1107, kEntry = 1108, kTop = 1047, kCurrent = 1049, kMatch = 1407,
              kText = 1105;
constexpr SYSTEMTIME kToday{2024, 3, 2, 5, 14, 5, 30, 250};

class FindDialogTest : public testing::Test {
  protected:
    // Works the dialog; what the action leaves open is closed with Cancel.
    bool Run(const std::function<void(const DialogWindow&)>& action, bool hasCurrentEntry = true,
             HWND owner = nullptr)
    {
        ModalDriver driver([&](HWND window) {
            ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
            const DialogWindow dialog(window);
            action(dialog);
            if (IsWindowVisible(window))
                dialog.Cancel();
        });
        const bool accepted = RunFindDialog(owner, Own(), hasCurrentEntry, &m_request);
        EXPECT_TRUE(driver.Ran());
        return accepted;
    }
    bool RunAndAccept(const std::function<void(const DialogWindow&)>& action)
    {
        return Run([&](const DialogWindow& dialog) {
            action(dialog);
            dialog.Ok();
        });
    }
    bool FindText(int by, const std::wstring& text)
    {
        return RunAndAccept([&](const DialogWindow& dialog) {
            dialog.Click(by);
            dialog.SetText(kText, text);
        });
    }
    static HWND Picker(const DialogWindow& dialog)
    {
        return FindWindowExW(dialog.Window(), nullptr, L"SysDateTimePick32", nullptr);
    }
    static SYSTEMTIME Picked(const DialogWindow& dialog)
    {
        SYSTEMTIME day{};
        EXPECT_EQ(SendMessageW(Picker(dialog), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&day)),
                  GDT_VALID);
        return day;
    }
    static void Pick(const DialogWindow& dialog, const SYSTEMTIME& day)
    {
        SendMessageW(Picker(dialog), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&day));
    }
    static HWND EditOf(const DialogWindow& dialog)
    {
        return FindWindowExW(dialog.Item(kText), nullptr, L"Edit", nullptr);
    }
    static std::vector<std::wstring> History(const DialogWindow& dialog)
    {
        std::vector<std::wstring> texts;
        for (LRESULT i = 0; i < dialog.Ask(kText, CB_GETCOUNT); ++i) {
            wchar_t text[200];
            dialog.Ask(kText, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            texts.emplace_back(text);
        }
        return texts;
    }
    static std::wstring StoredText(int index)
    {
        wchar_t text[kSettingTextSize];
        Own().GetString(kOptions, (L"Find" + std::to_wstring(index)).c_str(), L"", text);
        return text;
    }
    static void StoreText(int index, const std::wstring& text)
    {
        Own().SetString(kOptions, (L"Find" + std::to_wstring(index)).c_str(), text.c_str());
    }
    static DWORD Stored(const wchar_t* name) { return Own().GetNumber(kSettings, name, 0xDEAD); }
    static void Store(const wchar_t* name, DWORD value) { Own().SetNumber(kSettings, name, value); }

    TestRegistry m_registry;
    ScopedClockForTesting m_clock{kToday};
    FindRequest m_request;
};

} // namespace

TEST_F(FindDialogTest, OpensWithTheDefaults)
{
    Run([](const DialogWindow& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Find");
        EXPECT_TRUE(dialog.IsChecked(kDate));
        EXPECT_FALSE(dialog.IsChecked(kSubject));
        EXPECT_FALSE(dialog.IsChecked(kEntry));
        EXPECT_TRUE(dialog.IsChecked(kTop));
        EXPECT_FALSE(dialog.IsChecked(kCurrent));
        EXPECT_FALSE(dialog.IsChecked(kMatch));
        EXPECT_EQ(dialog.Text(kText), L"<Search Text>");
        EXPECT_TRUE(History(dialog).empty());
    });
}

TEST_F(FindDialogTest, ThePickerHasItsPlaceAndTheFocus)
{
    Run([](const DialogWindow& dialog) {
        HWND picker = Picker(dialog);
        ASSERT_NE(picker, nullptr);
        const RECT place = dialog.RectOf(picker);
        EXPECT_EQ(place.left, Scale(18));
        EXPECT_EQ(place.top + GetScrollPos(dialog.Window(), SB_VERT), Scale(125));
        EXPECT_EQ(place.right - place.left, Scale(177));
        EXPECT_EQ(place.bottom - place.top, Scale(22));
        EXPECT_GT(dialog.Rect(1110).bottom, place.bottom) << "inside its frame";
        EXPECT_EQ(GetFocus(), picker);
        const auto style = GetWindowLongPtrW(picker, GWL_STYLE);
        EXPECT_EQ(style & (DTS_LONGDATEFORMAT | DTS_TIMEFORMAT | DTS_SHOWNONE), 0) << "the short date";
        EXPECT_EQ(SendMessageW(picker, WM_GETFONT, 0, 0), SendMessageW(dialog.Window(), WM_GETFONT, 0, 0));
    });
}

TEST_F(FindDialogTest, TheKeyboardComesFromTheOwner)
{
    const TestParent owner;
    HWND list = CreateWindowExW(0, L"Edit", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, owner.Handle(), nullptr,
                                nullptr, nullptr);
    SetFocus(list);
    Run([](const DialogWindow& dialog) { EXPECT_EQ(GetFocus(), Picker(dialog)); }, true, owner.Handle());
    SetFocus(list);
    Store(L"SearchBy", 1107);
    Run([](const DialogWindow& dialog) { EXPECT_EQ(GetFocus(), EditOf(dialog)); }, true, owner.Handle());
}

TEST_F(FindDialogTest, ThePickerStandsBehindTheBoxInTheTabOrder)
{
    Run([](const DialogWindow& dialog) {
        EXPECT_EQ(GetNextDlgTabItem(dialog.Window(), Picker(dialog), FALSE), dialog.Item(IDOK));
        dialog.Click(kSubject);
        EXPECT_EQ(GetNextDlgTabItem(dialog.Window(), dialog.Item(kMatch), FALSE), dialog.Item(kText));
    });
}

TEST_F(FindDialogTest, TheFirstDayIsTodayAndThenTheOneLookedForLast)
{
    Run([](const DialogWindow& dialog) { EXPECT_EQ(Picked(dialog).wDay, 5); });
    m_clock.Set({2024, 3, 3, 6, 0, 0, 0, 0});
    Run([](const DialogWindow& dialog) { EXPECT_EQ(Picked(dialog).wDay, 6); });
    EXPECT_TRUE(RunAndAccept([](const DialogWindow& dialog) {
        Pick(dialog, {1999, 12, 5, 31, 0, 0, 0, 0});
    }));
    EXPECT_EQ(m_request.date.wYear, 1999);
    EXPECT_EQ(m_request.date.wMonth, 12);
    EXPECT_EQ(m_request.date.wDay, 31);
    Run([](const DialogWindow& dialog) {
        EXPECT_EQ(Picked(dialog).wYear, 1999);
        EXPECT_EQ(Picked(dialog).wDay, 31);
    });
}

TEST_F(FindDialogTest, OnlyASearchByDateTakesTheDay)
{
    RunAndAccept([](const DialogWindow& dialog) {
        Pick(dialog, {1999, 12, 5, 31, 0, 0, 0, 0});
        dialog.Click(kSubject);
    });
    EXPECT_EQ(m_request.date.wYear, 0);
}

TEST_F(FindDialogTest, OnlyASearchByTextTakesTheText)
{
    RunAndAccept([](const DialogWindow& dialog) {
        dialog.Click(kEntry);
        dialog.SetText(kText, L"walk");
        dialog.Click(kDate);
    });
    EXPECT_EQ(m_request.by, kPropDate);
    EXPECT_EQ(m_request.text, L"");
    EXPECT_EQ(StoredText(0), L"");
}

TEST_F(FindDialogTest, OkTakesAndStoresTheChoices)
{
    const std::pair<int, CEPROPID> kinds[] = {
        {kSubject, kPropSubject}, {kEntry, kPropBody}, {kDate, kPropDate}};
    for (const auto& [button, by] : kinds) {
        EXPECT_TRUE(RunAndAccept([&](const DialogWindow& dialog) {
            dialog.Click(kEntry);
            dialog.Click(kMatch);
            dialog.Click(button);
            dialog.Click(by == kPropSubject ? kCurrent : kTop);
        }));
        EXPECT_EQ(m_request.by, by);
        EXPECT_EQ(m_request.matchCase, by != kPropBody) << "every other time";
        EXPECT_EQ(m_request.from, by == kPropSubject ? SearchFrom::Current : SearchFrom::Top);
        EXPECT_EQ(Stored(L"SearchBy"), static_cast<DWORD>(button));
        EXPECT_EQ(Stored(L"MatchCase"), m_request.matchCase ? 1u : 0u);
        EXPECT_EQ(Stored(L"SearchFrom"), by == kPropSubject ? 1049u : 1047u);
    }
}

TEST_F(FindDialogTest, OpensWithTheStoredChoices)
{
    Store(L"SearchBy", 1108);
    Store(L"MatchCase", 1);
    Store(L"SearchFrom", 1049);
    Run([](const DialogWindow& dialog) {
        EXPECT_TRUE(dialog.IsChecked(kEntry));
        EXPECT_FALSE(dialog.IsChecked(kDate));
        EXPECT_TRUE(dialog.IsChecked(kMatch));
        EXPECT_TRUE(dialog.IsChecked(kCurrent));
        EXPECT_FALSE(dialog.IsChecked(kTop));
        EXPECT_EQ(GetFocus(), EditOf(dialog)) << "the day is grey";
    });
}

TEST_F(FindDialogTest, CancelChangesNothing)
{
    m_request.text = L"before";
    EXPECT_FALSE(Run([](const DialogWindow& dialog) {
        dialog.Click(kSubject);
        dialog.Click(kMatch);
        dialog.Click(kCurrent);
        dialog.SetText(kText, L"walk");
        Pick(dialog, {1999, 12, 5, 31, 0, 0, 0, 0});
        dialog.Key(VK_ESCAPE);
    }));
    EXPECT_EQ(m_request.text, L"before");
    EXPECT_EQ(m_request.by, kPropDate);
    EXPECT_EQ(m_request.date.wYear, 0);
    EXPECT_EQ(Stored(L"SearchBy"), 0xDEADu);
    EXPECT_EQ(Stored(L"MatchCase"), 0xDEADu);
    EXPECT_EQ(Stored(L"SearchFrom"), 0xDEADu);
    EXPECT_EQ(StoredText(0), L"");
}

TEST_F(FindDialogTest, EnterIsOk)
{
    EXPECT_TRUE(Run([](const DialogWindow& dialog) { dialog.Key(VK_RETURN); }));
    EXPECT_EQ(Stored(L"SearchBy"), 1106u);
}

TEST_F(FindDialogTest, TheTabKeyGoesThroughWhatCanBeUsed)
{
    const auto expectStops = [](const DialogWindow& dialog, const std::vector<HWND>& stops) {
        EXPECT_EQ(GetFocus(), stops[0]);
        for (size_t i = 1; i <= stops.size(); ++i) {
            dialog.Key(VK_TAB);
            EXPECT_EQ(GetFocus(), stops[i % stops.size()]) << i;
        }
    };
    Run([&](const DialogWindow& dialog) {
        expectStops(dialog, {Picker(dialog), dialog.Item(IDOK), dialog.Item(IDCANCEL), dialog.Item(kDate),
                             dialog.Item(kTop)});
    });
    Store(L"SearchBy", 1107);
    Store(L"SearchFrom", 1049);
    Run([&](const DialogWindow& dialog) {
        expectStops(dialog, {EditOf(dialog), dialog.Item(IDOK), dialog.Item(IDCANCEL), dialog.Item(kSubject),
                             dialog.Item(kCurrent), dialog.Item(kMatch)});
    });
    Run(
        [&](const DialogWindow& dialog) {
            expectStops(dialog, {EditOf(dialog), dialog.Item(IDOK), dialog.Item(IDCANCEL),
                                 dialog.Item(kSubject), dialog.Item(kTop), dialog.Item(kMatch)});
        },
        false);
}

TEST_F(FindDialogTest, ArrowsChooseAndKeepTheFocus)
{
    Run([](const DialogWindow& dialog) {
        dialog.Focus(kDate);
        for (const int by : {kSubject, kEntry, kDate}) {
            dialog.Key(VK_DOWN);
            EXPECT_TRUE(dialog.IsChecked(by)) << by;
            EXPECT_TRUE(dialog.HasFocus(by)) << by;
            EXPECT_EQ(dialog.IsEnabled(kText), by != kDate) << by;
        }
        dialog.Key(VK_UP);
        EXPECT_TRUE(dialog.IsChecked(kEntry));
        dialog.Key(VK_TAB);
        dialog.Key(VK_DOWN);
        EXPECT_TRUE(dialog.IsChecked(kCurrent));
        EXPECT_FALSE(dialog.IsChecked(kTop));
    });
}

TEST_F(FindDialogTest, ASearchIsChosenAndTypedByTheKeyboardAlone)
{
    EXPECT_TRUE(Run([](const DialogWindow& dialog) {
        dialog.AltKey('E');
        dialog.AltKey('C');
        dialog.AltKey('M');
        EXPECT_TRUE(dialog.IsChecked(kMatch));
        dialog.Key(VK_TAB);
        EXPECT_TRUE(dialog.HasFocus(kText));
        dialog.Type(L"Park");
        EXPECT_EQ(dialog.Text(kText), L"Park") << "the placeholder was selected";
        dialog.Key(VK_RETURN);
    }));
    EXPECT_EQ(m_request.by, kPropBody);
    EXPECT_EQ(m_request.from, SearchFrom::Current);
    EXPECT_TRUE(m_request.matchCase);
    EXPECT_EQ(m_request.text, L"Park");
    EXPECT_EQ(StoredText(0), L"Park");
}

TEST_F(FindDialogTest, ATextOfTheHistoryIsChosenByTheKeyboard)
{
    StoreText(0, L"park");
    StoreText(1, L"walk");
    Store(L"SearchBy", 1107);
    EXPECT_TRUE(Run([](const DialogWindow& dialog) {
        dialog.Key(VK_F4);
        dialog.Key(VK_DOWN);
        dialog.Key(VK_DOWN);
        dialog.Key(VK_RETURN);
        EXPECT_TRUE(IsWindowVisible(dialog.Window())) << "it closes the list alone";
        EXPECT_EQ(dialog.Text(kText), L"walk");
        dialog.Key(VK_RETURN);
    }));
    EXPECT_EQ(m_request.text, L"walk");
    EXPECT_EQ(StoredText(0), L"park");
}

TEST_F(FindDialogTest, AfterASearchByDateTheTextComesBack)
{
    EXPECT_TRUE(FindText(kSubject, L"walk"));
    EXPECT_TRUE(RunAndAccept([](const DialogWindow& dialog) { dialog.Click(kDate); }));
    Run([](const DialogWindow& dialog) { EXPECT_EQ(dialog.Text(kText), L"walk"); });
    EXPECT_TRUE(FindText(kSubject, L"<Search Text>"));
    Run([](const DialogWindow& dialog) { EXPECT_EQ(dialog.Text(kText), L"<Search Text>"); });
}

TEST_F(FindDialogTest, WhatBelongsToTheChoiceIsEnabled)
{
    Run([](const DialogWindow& dialog) {
        EXPECT_TRUE(IsWindowEnabled(Picker(dialog)));
        EXPECT_FALSE(dialog.IsEnabled(kText));
        EXPECT_FALSE(dialog.IsEnabled(kMatch));
        for (const int by : {kSubject, kEntry}) {
            dialog.Click(by);
            EXPECT_FALSE(IsWindowEnabled(Picker(dialog)));
            EXPECT_TRUE(dialog.IsEnabled(kText));
            EXPECT_TRUE(dialog.IsEnabled(kMatch));
        }
        dialog.Click(kDate);
        EXPECT_TRUE(IsWindowEnabled(Picker(dialog)));
        EXPECT_FALSE(dialog.IsEnabled(kText));
    });
}

TEST_F(FindDialogTest, CurrentIsGreyWithoutACurrentEntry)
{
    Run([](const DialogWindow& dialog) { EXPECT_FALSE(dialog.IsEnabled(kCurrent)); }, false);
    Run([](const DialogWindow& dialog) { EXPECT_TRUE(dialog.IsEnabled(kCurrent)); }, true);
    Store(L"SearchFrom", 1049);
    EXPECT_TRUE(Run(
        [](const DialogWindow& dialog) {
            EXPECT_FALSE(dialog.IsEnabled(kCurrent));
            EXPECT_TRUE(dialog.IsChecked(kCurrent)) << "as it was stored";
            dialog.Ok();
        },
        false));
    EXPECT_EQ(Stored(L"SearchFrom"), 1049u);
}

TEST_F(FindDialogTest, ThirteenCharactersAreTaken)
{
    EXPECT_TRUE(FindText(kSubject, L"12345678901234567890"));
    EXPECT_EQ(m_request.text, L"1234567890123");
    EXPECT_EQ(StoredText(0), L"1234567890123");
}

TEST_F(FindDialogTest, ALongTextCanBeTyped)
{
    Run([](const DialogWindow& dialog) {
        dialog.Click(kSubject);
        SetFocus(dialog.Item(kText));
        for (const wchar_t character : std::wstring(L"12345678901234567890123456789012345678901234567890"))
            SendMessageW(EditOf(dialog), WM_CHAR, character, 0);
        EXPECT_EQ(dialog.Text(kText).size(), 50u);
    });
}

TEST_F(FindDialogTest, ThePlaceholderIsTheEmptyTextAndNotRemembered)
{
    m_request.text = L"before";
    StoreText(0, L"before");
    EXPECT_TRUE(FindText(kEntry, L"<Search Text>"));
    EXPECT_EQ(m_request.text, L"");
    EXPECT_EQ(StoredText(0), L"before");
    EXPECT_EQ(StoredText(1), L"");
}

TEST_F(FindDialogTest, AnEmptiedTextIsNotRemembered)
{
    StoreText(0, L"before");
    EXPECT_TRUE(FindText(kEntry, L""));
    EXPECT_EQ(m_request.text, L"");
    EXPECT_EQ(StoredText(0), L"before");
}

TEST_F(FindDialogTest, TheBoxShowsTheHistoryNewestFirst)
{
    for (const wchar_t* text : {L"one", L"two", L"three", L"four", L"five", L"six", L"four"})
        FindText(kSubject, text);
    Run([](const DialogWindow& dialog) {
        EXPECT_EQ(History(dialog), (std::vector<std::wstring>{L"six", L"five", L"four", L"three", L"two"}));
        EXPECT_EQ(dialog.Text(kText), L"four");
        EXPECT_EQ(dialog.Ask(kText, CB_GETCURSEL), 2);
    });
}

TEST_F(FindDialogTest, ThePreviousTextComesBackAsItWasTyped)
{
    StoreText(0, L"walking");
    StoreText(1, L"walk");
    EXPECT_TRUE(FindText(kSubject, L"WALK"));
    EXPECT_EQ(StoredText(0), L"walking") << "it is in the history";
    Run([](const DialogWindow& dialog) {
        EXPECT_EQ(dialog.Text(kText), L"WALK");
        EXPECT_EQ(dialog.Ask(kText, CB_GETCURSEL), 1);
    });
}

TEST_F(FindDialogTest, APreviousTextThatIsInNoHistoryComesBack)
{
    m_request.text = L"walk";
    Run([](const DialogWindow& dialog) { EXPECT_EQ(dialog.Text(kText), L"walk"); });
}

TEST_F(FindDialogTest, TheDropDownIsTallerThanInTheTemplate)
{
    HWND plain = CreateDialogParamW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(102), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_NE(plain, nullptr);
    RECT before{};
    SendDlgItemMessageW(plain, kText, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&before));
    DestroyWindow(plain);
    Run([&](const DialogWindow& dialog) {
        RECT now{};
        dialog.Ask(kText, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&now));
        EXPECT_EQ((now.bottom - now.top) - (before.bottom - before.top), Scale(70));
        EXPECT_EQ(now.right - now.left, before.right - before.left);
    });
}

TEST_F(FindDialogTest, AClickIntoThePlaceholderSelectsIt)
{
    Run([](const DialogWindow& dialog) {
        dialog.Click(kSubject);
        SendMessageW(EditOf(dialog), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
        SendMessageW(EditOf(dialog), WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
        SendMessageW(EditOf(dialog), WM_CHAR, L'x', 0);
        EXPECT_EQ(dialog.Text(kText), L"x");
    });
}

TEST_F(FindDialogTest, EveryControlIsInReachOnTheScreen)
{
    Run([](const DialogWindow& dialog) {
        dialog.ExpectOnScreen();
        RECT seen{}, inside{};
        GetClientRect(dialog.Window(), &inside);
        dialog.Click(kSubject);
        for (const int id : {kDate, kSubject, kEntry, kTop, kCurrent, kMatch, kText, IDOK, IDCANCEL}) {
            SetFocus(dialog.Item(id));
            const RECT place = dialog.Rect(id);
            IntersectRect(&seen, &place, &inside);
            EXPECT_TRUE(EqualRect(&seen, &place)) << id;
        }
        dialog.Click(kDate);
        SetFocus(Picker(dialog));
        const RECT place = dialog.RectOf(Picker(dialog));
        IntersectRect(&seen, &place, &inside);
        EXPECT_TRUE(EqualRect(&seen, &place));
    });
}

TEST_F(FindDialogTest, EveryControlIsInReachAtAnotherResolutionWhileOpen)
{
    Run([](const DialogWindow& dialog) {
        const ScopedWorkArea area(dialog.Window(), {0, 0, Scale(300), Scale(160)});
        TellDialogResolution(dialog.Window(), 2);
        dialog.ExpectInReach();
        TellDialogResolution(dialog.Window(), 1, 2);
        dialog.ExpectInReach();
    });
}

TEST_F(FindDialogTest, HostileSettingsOpenIt)
{
    Store(L"SearchBy", 0xFFFFFFFF);
    Store(L"SearchFrom", 1);
    Store(L"MatchCase", 0x80000000);
    for (int i = 0; i < 5; ++i)
        StoreText(i, std::wstring(155, static_cast<wchar_t>(L'a' + i)));
    EXPECT_TRUE(RunAndAccept([](const DialogWindow& dialog) {
        EXPECT_TRUE(dialog.IsChecked(kDate));
        EXPECT_TRUE(dialog.IsChecked(kTop));
        EXPECT_TRUE(dialog.IsChecked(kMatch));
        EXPECT_EQ(History(dialog).size(), 5u);
        dialog.Click(kSubject);
        dialog.Ask(kText, CB_SETCURSEL, 1);
    }));
    EXPECT_EQ(m_request.text, std::wstring(13, L'b'));
}
