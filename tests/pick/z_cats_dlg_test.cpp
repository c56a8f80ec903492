#include "pick/z_cats_dlg.h"

#include <commctrl.h>

#include <algorithm>

#include <gtest/gtest.h>

#include "mervane/records.h"
#include "support/help_requests.h"
#include "support/resolution.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "support/while_waiting.h"
#include "support/work_area_setting.h"

namespace {

// The dialog's buttons as its user reads them.
constexpr const wchar_t* kAdd = L"&Add...";
constexpr const wchar_t* kRename = L"&Rename...";
constexpr const wchar_t* kDelete = L"&Delete";
constexpr const wchar_t* kHide = L"&Hide";
constexpr const wchar_t* kUnhide = L"Un&hide";

class CategoryDialog : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_categories.Open(), 1); }

    // Runs the dialog and works it; the work ends it, or it is cancelled.
    INT_PTR Run(const std::function<void()>& work, HWND owner = nullptr)
    {
        const ModalDriver driver([&](HWND dialog) {
            m_dialog = dialog;
            work();
            if (IsWindow(dialog))
                PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        const INT_PTR result = ZCatsDlg(owner ? owner : m_parent.Handle()).DoModal();
        EXPECT_TRUE(driver.Ran());
        m_dialog = nullptr;
        return result;
    }
    void End(int id) const { SendMessageW(m_dialog, WM_COMMAND, static_cast<WPARAM>(id), 0); }

    HWND List() const { return FindWindowExW(m_dialog, nullptr, WC_LISTVIEWW, nullptr); }
    HWND Button(const wchar_t* text) const { return FindWindowExW(m_dialog, nullptr, L"Button", text); }
    bool Enabled(const wchar_t* text) const
    {
        EXPECT_NE(Button(text), nullptr) << text;
        return IsWindowEnabled(Button(text)) != FALSE;
    }
    void Click(const wchar_t* text) const { SendMessageW(Button(text), BM_CLICK, 0, 0); }
    // A key as the dialog's loop has it: the dialog manager first.
    static void PressIn(HWND dialog, int key)
    {
        MSG message{GetFocus(), WM_KEYDOWN, static_cast<WPARAM>(key), 1, 0, {}};
        if (!IsDialogMessageW(dialog, &message))
            SendMessageW(message.hwnd, message.message, message.wParam, message.lParam);
    }
    void Press(int key) const { PressIn(m_dialog, key); }
    void PressAlt(wchar_t letter) const
    {
        MSG message{GetFocus(), WM_SYSCHAR, letter, 1 << 29, 0, {}};
        IsDialogMessageW(m_dialog, &message);
    }

    void ExpectControlsInside() const
    {
        RECT client{};
        GetClientRect(m_dialog, &client);
        for (HWND child = GetWindow(m_dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            RECT place{}, both{};
            GetWindowRect(child, &place);
            MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&place), 2);
            UnionRect(&both, &client, &place);
            EXPECT_TRUE(EqualRect(&both, &client)) << GetDlgCtrlID(child);
        }
    }

    int Count() const { return ListView_GetItemCount(List()); }
    std::wstring Text(int row, int column = 0) const
    {
        wchar_t text[300] = L"";
        ListView_GetItemText(List(), row, column, text, 300);
        return text;
    }
    std::vector<std::wstring> Names() const
    {
        std::vector<std::wstring> names;
        for (int row = 0; row < Count(); ++row)
            names.push_back(Text(row));
        return names;
    }
    int Selected() const { return ListView_GetNextItem(List(), -1, LVNI_SELECTED); }
    void Select(int row) const
    {
        ListView_SetItemState(List(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    }

    static HWND NameEdit(HWND nameDialog) { return FindWindowExW(nameDialog, nullptr, L"Edit", nullptr); }
    // Does what opens the dialog for a name, and works that.
    template <typename Open, typename Work> void WithNameDialog(Open open, Work work) const
    {
        const ModalDriver driver([&](HWND dialog) {
            work(dialog);
            if (IsWindow(dialog))
                PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        open();
        EXPECT_TRUE(driver.Ran());
    }
    void Name(const wchar_t* button, const std::wstring& name) const
    {
        WithNameDialog([&] { Click(button); },
                       [&](HWND dialog) {
                           SetWindowTextW(NameEdit(dialog), name.c_str());
                           SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                       });
    }
    std::wstring Stored(CEOID id)
    {
        wchar_t name[kCategoryNameSize];
        m_categories.GetStr(id, name, kCategoryNameSize, kCategoriesKey);
        return name;
    }

    TestStore m_store;
    DbCategories m_categories;
    TestParent m_parent;
    HWND m_dialog = nullptr;
};

using Texts = std::vector<std::wstring>;

// The system scales the controls, as a template has them, before the layout is the dialog's own again.
TEST_F(CategoryDialog, LaysItselfOutAgainAtAnotherResolution)
{
    Run([this] {
        // In the dialog, which a window manager may still move.
        const auto place = [this] {
            RECT rect{};
            GetWindowRect(List(), &rect);
            MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&rect), 2);
            return rect;
        };
        const RECT before = place();
        MoveWindow(List(), 3, 3, 40, 40, TRUE);
        TellResolution(m_dialog, 2);
        EXPECT_TRUE(PumpUntil([&] {
            const RECT now = place();
            return EqualRect(&now, &before) != FALSE;
        }));
        EXPECT_EQ(mervane::DpiOf(List()), 2 * mervane::SystemDpi());
    });
}

// With no bar: what it shows is laid out in the room that there is, and scrolls in the list.
TEST_F(CategoryDialog, LaysItselfOutInASmallerWorkArea)
{
    Run([this] {
        ShowWindow(m_dialog, SW_SHOW);
        RECT before{}, now{};
        GetWindowRect(m_dialog, &before);
        const RECT area{before.left, before.top, before.right - 20, before.bottom - 30};
        MINMAXINFO least{};
        SendMessageW(m_dialog, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&least));
        const SIZE wanted{std::max(area.right - area.left, least.ptMinTrackSize.x),
                          std::max(area.bottom - area.top, least.ptMinTrackSize.y)};
        const ScopedWorkArea smaller(m_dialog, area);
        EXPECT_TRUE(PumpUntil([&] {
            GetWindowRect(m_dialog, &now);
            return now.right - now.left == wanted.cx && now.bottom - now.top == wanted.cy;
        }));
        EXPECT_EQ(now.left, area.left);
        EXPECT_EQ(now.top, area.top);
        EXPECT_EQ(GetWindowLongPtrW(m_dialog, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL), 0);
        ExpectControlsInside();
    });
}

TEST_F(CategoryDialog, ShowsNamesUsesAndWhatIsHidden)
{
    const CEOID work = AddCategory(m_categories, L"Work"), art = AddCategory(m_categories, L"art");
    ASSERT_EQ(m_categories.IncUse(work), 1);
    ASSERT_EQ(m_categories.SetHidden(art, true), 1);
    EXPECT_EQ(Run([&] {
                  EXPECT_EQ(GetWindow(m_dialog, GW_OWNER), m_parent.Handle());
                  EXPECT_FALSE(IsWindowEnabled(m_parent.Handle()));
                  ASSERT_EQ(Count(), 2);
                  EXPECT_EQ(Text(0), L"art");
                  EXPECT_EQ(Text(0, 1), L"0");
                  EXPECT_EQ(Text(0, 2), L"Yes");
                  EXPECT_EQ(Text(1), L"Work");
                  EXPECT_EQ(Text(1, 1), L"1");
                  EXPECT_EQ(Text(1, 2), L"");
                  EXPECT_EQ(GetFocus(), List());
                  EXPECT_EQ(Selected(), 0);
              }),
              0);
    EXPECT_TRUE(IsWindowEnabled(m_parent.Handle()));
}

TEST_F(CategoryDialog, OffersOnlyAddingToAnEmptyList)
{
    Run([&] {
        EXPECT_EQ(Count(), 0);
        EXPECT_TRUE(Enabled(kAdd));
        for (const wchar_t* text : {kRename, kDelete, kHide})
            EXPECT_FALSE(Enabled(text)) << text;
        for (const int key : {VK_F2, VK_DELETE, VK_UP, VK_SPACE})
            Press(key);
        EXPECT_TRUE(IsWindow(m_dialog));
    });
}

TEST_F(CategoryDialog, AddsAndStoresWithOk)
{
    ASSERT_NE(AddCategory(m_categories, L"Home"), 0u);
    EXPECT_EQ(Run([&] {
                  Name(kAdd, L"  Work \t");
                  EXPECT_EQ(Names(), (Texts{L"Home", L"Work"})) << "without the blanks around it";
                  EXPECT_EQ(Selected(), 1) << "the new one";
                  Name(kAdd, L"Art");
                  EXPECT_EQ(Names(), (Texts{L"Art", L"Home", L"Work"}));
                  EXPECT_EQ(m_categories.RecordCount(), 1u) << "not stored yet";
                  End(IDOK);
              }),
              1);
    EXPECT_EQ(m_categories.RecordCount(), 3u);
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 3);
}

TEST_F(CategoryDialog, StoresNothingWithCancel)
{
    const CEOID work = AddCategory(m_categories, L"Work");
    EXPECT_EQ(Run([&] {
                  Name(kAdd, L"New");
                  Select(1);
                  Name(kRename, L"Office");
                  Click(kHide);
                  End(IDCANCEL);
              }),
              0);
    EXPECT_EQ(m_categories.RecordCount(), 1u);
    EXPECT_EQ(Stored(work), L"Work");
    EXPECT_EQ(m_categories.IsHidden(work), 0);
}

TEST_F(CategoryDialog, ARenamedCategoryKeepsItsAssignments)
{
    const CEOID work = AddCategory(m_categories, L"Work");
    ASSERT_EQ(m_categories.IncUse(work), 1);
    EXPECT_EQ(JoinedNames(m_categories, {1, work}, L','), L"Work");
    EXPECT_EQ(Run([&] {
                  WithNameDialog([&] { Click(kRename); },
                                 [&](HWND dialog) {
                                     EXPECT_EQ(WindowText(dialog), L"Rename Category");
                                     EXPECT_EQ(WindowText(NameEdit(dialog)), L"Work");
                                     SetWindowTextW(NameEdit(dialog), L"work");
                                     SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                                 });
                  EXPECT_EQ(Names(), Texts{L"work"}) << "its own name in other letters";
                  Name(kRename, L"Office");
                  End(IDOK);
              }),
              1);
    EXPECT_EQ(JoinedNames(m_categories, {1, work}, L','), L"Office");
    EXPECT_EQ(Received(m_categories, work).Number(kCategoryUses), 1);
}

TEST_F(CategoryDialog, RefusesANameThatIsTakenOrTooLong)
{
    ASSERT_NE(AddCategory(m_categories, L"\u00dcbung"), 0u);
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L" \u00fcBUNG ", L"There is a category \"\u00fcBUNG\" already."},
        {std::wstring(60, L'x'), L"A category's name has at most 59 characters."}};
    Run([&] {
        for (const auto& [name, complaint] : cases) {
            const MessageBoxAnswerer answerer;
            WithNameDialog([&] { Click(kAdd); },
                           [&, &text = name](HWND dialog) {
                               SetWindowTextW(NameEdit(dialog), text.c_str());
                               SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                               EXPECT_TRUE(IsWindow(dialog)) << "it stays open";
                           });
            ASSERT_EQ(answerer.Boxes().size(), 1u);
            EXPECT_EQ(answerer.Boxes()[0].text, complaint);
        }
        EXPECT_EQ(Count(), 1);
    });
}

TEST_F(CategoryDialog, ANameNeedsALetterAndTakes59)
{
    Run([&] {
        WithNameDialog([&] { Click(kAdd); },
                       [&](HWND dialog) {
                           EXPECT_EQ(WindowText(dialog), L"New Category");
                           EXPECT_EQ(GetFocus(), NameEdit(dialog));
                           HWND ok = GetDlgItem(dialog, IDOK);
                           EXPECT_FALSE(IsWindowEnabled(ok));
                           SetWindowTextW(NameEdit(dialog), L"  \t");
                           EXPECT_FALSE(IsWindowEnabled(ok));
                           PressIn(dialog, VK_RETURN);
                           EXPECT_TRUE(IsWindow(dialog));
                           SetWindowTextW(NameEdit(dialog), L"");
                           for (int i = 0; i < 70; ++i)
                               SendMessageW(NameEdit(dialog), WM_CHAR, L'x', 1);
                           EXPECT_EQ(WindowText(NameEdit(dialog)), std::wstring(59, L'x'));
                           EXPECT_TRUE(IsWindowEnabled(ok));
                           PressIn(dialog, VK_RETURN);
                       });
        EXPECT_EQ(Names(), Texts{std::wstring(59, L'x')});
        WithNameDialog([&] { Click(kAdd); },
                       [&](HWND dialog) {
                           SetWindowTextW(NameEdit(dialog), L"given up");
                           PressIn(dialog, VK_ESCAPE);
                       });
        EXPECT_EQ(Count(), 1);
    });
}

TEST_F(CategoryDialog, AsksBeforeACategoryInUseIsDeleted)
{
    const CEOID often = AddCategory(m_categories, L"often"), once = AddCategory(m_categories, L"once"),
                never = AddCategory(m_categories, L"never");
    for (const CEOID id : {often, often, often, once})
        ASSERT_EQ(m_categories.IncUse(id), 1);
    EXPECT_EQ(Run([&] {
                  ASSERT_EQ(Names(), (Texts{L"never", L"often", L"once"}));
                  const MessageBoxAnswerer answerer({IDNO, IDYES, IDYES});
                  Select(1);
                  Click(kDelete);
                  ASSERT_EQ(answerer.Boxes().size(), 1u);
                  EXPECT_EQ(answerer.Boxes()[0].text, L"3 entries use the category \"often\". Delete it?");
                  EXPECT_EQ(answerer.Boxes()[0].answers, (std::vector<int>{IDYES, IDNO}));
                  EXPECT_EQ(Count(), 3) << "No keeps it";
                  Click(kDelete);
                  EXPECT_EQ(Names(), (Texts{L"never", L"once"}));
                  EXPECT_EQ(Selected(), 1) << "what has its place now";
                  Click(kDelete);
                  ASSERT_EQ(answerer.Boxes().size(), 3u);
                  EXPECT_EQ(answerer.Boxes()[2].text, L"1 entry uses the category \"once\". Delete it?");
                  Click(kDelete);
                  EXPECT_EQ(answerer.Boxes().size(), 3u) << "one that is not in use goes without a question";
                  EXPECT_EQ(Count(), 0);
                  EXPECT_FALSE(Enabled(kDelete));
                  EXPECT_EQ(GetFocus(), List()) << "not a greyed button";
                  End(IDOK);
              }),
              1);
    EXPECT_EQ(m_categories.RecordCount(), 0u);
    EXPECT_EQ(JoinedNames(m_categories, {2, often, never}, L','), L"");
}

TEST_F(CategoryDialog, HidesAndShowsAgain)
{
    const CEOID a = AddCategory(m_categories, L"a"), b = AddCategory(m_categories, L"b");
    ASSERT_EQ(m_categories.SetHidden(b, true), 1);
    EXPECT_EQ(Run([&] {
                  Click(kHide);
                  EXPECT_EQ(Text(0, 2), L"Yes");
                  EXPECT_EQ(Selected(), 0);
                  EXPECT_NE(Button(kUnhide), nullptr);
                  EXPECT_EQ(Button(kHide), nullptr);
                  Click(kUnhide);
                  EXPECT_EQ(Text(0, 2), L"");
                  Click(kHide);
                  Select(1);
                  Click(kUnhide);
                  End(IDOK);
              }),
              1);
    EXPECT_EQ(m_categories.IsHidden(a), 1);
    EXPECT_EQ(m_categories.IsHidden(b), 0);
}

TEST_F(CategoryDialog, IsWorkedByTheKeyboardAlone)
{
    const CEOID b = AddCategory(m_categories, L"b"), c = AddCategory(m_categories, L"c");
    EXPECT_EQ(Run([&] {
                  WithNameDialog([&] { Press(VK_INSERT); },
                                 [&](HWND dialog) {
                                     SendMessageW(NameEdit(dialog), WM_CHAR, L'a', 1);
                                     PressIn(dialog, VK_RETURN);
                                 });
                  EXPECT_EQ(Names(), (Texts{L"a", L"b", L"c"}));
                  Press(VK_DOWN);
                  WithNameDialog([&] { Press(VK_F2); },
                                 [&](HWND dialog) {
                                     SendMessageW(NameEdit(dialog), WM_CHAR, L'd', 1);
                                     PressIn(dialog, VK_RETURN);
                                 });
                  EXPECT_EQ(Names(), (Texts{L"a", L"c", L"d"})) << "the old name was selected";
                  PressAlt(L'h');
                  EXPECT_EQ(Text(2, 2), L"Yes");
                  EXPECT_EQ(GetFocus(), List()) << "ready for the next key";
                  SendMessageW(List(), WM_CHAR, L'c', 1);
                  EXPECT_EQ(Selected(), 1) << "typing finds";
                  Press(VK_DELETE);
                  EXPECT_EQ(Names(), (Texts{L"a", L"d"}));
                  Press(VK_RETURN);
              }),
              1);
    EXPECT_EQ(Stored(b), L"d");
    EXPECT_EQ(m_categories.IsHidden(b), 1);
    EXPECT_EQ(m_categories.Exists(c), 0);
    EXPECT_EQ(m_categories.RecordCount(), 2u);
}

TEST_F(CategoryDialog, EscapeCancels)
{
    EXPECT_EQ(Run([&] {
                  Name(kAdd, L"New");
                  Press(VK_ESCAPE);
                  EXPECT_FALSE(IsWindow(m_dialog) && IsWindowVisible(m_dialog));
              }),
              0);
    EXPECT_EQ(m_categories.RecordCount(), 0u);
}

TEST_F(CategoryDialog, TheTabKeyReachesEveryButton)
{
    ASSERT_NE(AddCategory(m_categories, L"a"), 0u);
    Run([&] {
        std::vector<std::wstring> reached;
        for (int i = 0; i < 7; ++i) {
            reached.push_back(WindowText(GetFocus()));
            Press(VK_TAB);
        }
        EXPECT_EQ(reached, (Texts{L"", kAdd, kRename, kDelete, kHide, L"OK", L"Cancel"}));
        EXPECT_EQ(GetFocus(), List());
    });
}

TEST_F(CategoryDialog, ADoubleClickRenames)
{
    ASSERT_NE(AddCategory(m_categories, L"a"), 0u);
    Run([&] {
        WithNameDialog(
            [&] {
                RECT row{};
                ListView_GetItemRect(List(), 0, &row, LVIR_LABEL);
                SendMessageW(List(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(row.left + 3, row.top + 3));
            },
            [&](HWND dialog) { EXPECT_EQ(WindowText(dialog), L"Rename Category"); });
    });
}

// The owner would show a page of its own.
TEST_F(CategoryDialog, F1AsksForItsPageOnceAndNotTheOwner)
{
    const HelpRequests requests;
    std::vector<UINT> ownerGot;
    const TestParent owner([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        ownerGot.push_back(message);
        return false;
    });
    HELPINFO info{};
    info.cbSize = sizeof info;
    const auto ask = [&](HWND dialog) {
        EXPECT_EQ(SendMessageW(dialog, WM_HELP, 0, reinterpret_cast<LPARAM>(&info)), TRUE);
    };
    Run(
        [&] {
            ask(m_dialog);
            WithNameDialog([&] { Click(kAdd); }, ask);
        },
        owner.Handle());
    EXPECT_EQ(requests.Asked(), Texts(2, L"pellwyn.htm#Categories_Window"));
    EXPECT_EQ(std::count(ownerGot.begin(), ownerGot.end(), UINT{WM_HELP}), 0);
}

TEST_F(CategoryDialog, StaysOpenWhenItCannotStore)
{
    RawStore raw(m_store.Path());
    EXPECT_EQ(Run([&] {
                  Name(kAdd, L"New");
                  ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES('NEW')"));
                  {
                      const MessageBoxAnswerer answerer;
                      End(IDOK);
                      ASSERT_EQ(answerer.Boxes().size(), 1u);
                      EXPECT_EQ(answerer.Boxes()[0].text.find(
                                    L"The categories could not be stored: another program has"),
                                0u);
                  }
                  EXPECT_EQ(Names(), Texts{L"New"});
                  ASSERT_TRUE(raw.Run("DELETE FROM categories"));
                  End(IDOK);
              }),
              1);
    EXPECT_EQ(m_categories.RecordCount(), 1u);
}

// Another program's request, for one, which is answered within the wait.
TEST_F(CategoryDialog, AsksForNoWorkWithinAWriteThatWaits)
{
    const CEOID work = AddCategory(m_categories, L"Work");
    const std::pair<UINT, WPARAM> requests[] = {{WM_CLOSE, 0},
                                                {WM_SYSCOMMAND, SC_CLOSE},
                                                {WM_COMMAND, IDCANCEL},
                                                {WM_COMMAND, MAKEWPARAM(IDCANCEL, 1)}};
    for (const auto& [message, wParam] : requests) {
        EXPECT_EQ(Run([&] {
                      ShowWindow(m_dialog, SW_SHOW); // which the dialog manager may not have come to
                      const WhileWaiting wait(m_store.Path(), [&] {
                          SendMessageW(m_dialog, message, wParam, 0);
                          EXPECT_TRUE(IsWindowVisible(m_dialog)) << message;
                      });
                      EXPECT_EQ(m_categories.IncUse(work), 1) << "a write of the program's";
                      EXPECT_TRUE(wait.WasDone());
                      EXPECT_TRUE(IsWindowVisible(m_dialog)) << message;
                      EXPECT_TRUE(PumpUntil([&] { return !IsWindowVisible(m_dialog); })) << "it comes again";
                  }),
                  0);
    }
}

TEST_F(CategoryDialog, TakesWhatAControlTellsWithinAWriteThatWaits)
{
    const CEOID work = AddCategory(m_categories, L"Work");
    Run([&] {
        WithNameDialog([&] { Click(kAdd); },
                       [&](HWND dialog) {
                           ASSERT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
                           const WhileWaiting wait(m_store.Path(), [&] {
                               SendMessageW(NameEdit(dialog), WM_SETTEXT, 0,
                                            reinterpret_cast<LPARAM>(L"new"));
                               EXPECT_TRUE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
                           });
                           EXPECT_EQ(m_categories.IncUse(work), 1);
                           EXPECT_TRUE(wait.WasDone());
                       });
    });
}

// As another program can press it; to a person the dialog is disabled.
TEST_F(CategoryDialog, NoButtonWorksWhileADialogStandsOver)
{
    const CEOID work = AddCategory(m_categories, L"Work");
    ASSERT_NE(work, 0u);
    EXPECT_EQ(Run([&] {
                  WithNameDialog([&] { Click(kAdd); },
                                 [&](HWND) {
                                     for (const wchar_t* button : {kDelete, kHide, L"OK"}) {
                                         Click(button);
                                         SendMessageW(m_dialog, WM_COMMAND,
                                                      static_cast<WPARAM>(GetDlgCtrlID(Button(button))),
                                                      reinterpret_cast<LPARAM>(Button(button)));
                                     }
                                     EXPECT_TRUE(IsWindow(m_dialog));
                                     EXPECT_EQ(Names(), Texts{L"Work"});
                                     EXPECT_EQ(Text(0, 2), L"");
                                 });
              }),
              0);
    EXPECT_EQ(m_categories.Exists(work), 1);
}

// One that is higher than the screen has the middle of what there is.
TEST_F(CategoryDialog, StandsInTheMiddleOfItsOwner)
{
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const LONG areaHeight = area.bottom - area.top;
    const auto expectInTheMiddle = [](const RECT& own, const RECT& around) {
        EXPECT_NEAR(own.left + own.right, around.left + around.right, 2);
        EXPECT_NEAR(own.top + own.bottom, around.top + around.bottom, 2);
    };
    const auto expectOver = [&](HWND window, HWND owner) {
        RECT own{}, around{};
        EXPECT_EQ(GetWindow(window, GW_OWNER), owner);
        GetWindowRect(window, &own);
        GetWindowRect(owner, &around);
        expectInTheMiddle(own, own.bottom - own.top < areaHeight ? around : area);
    };
    const LONG width = (area.right - area.left) * 9 / 10, height = areaHeight * 9 / 10;
    const TestParent owner(nullptr, width, height);
    MoveWindow(owner.Handle(), area.left, area.top, width, height, FALSE);
    Run(
        [&] {
            expectOver(m_dialog, owner.Handle());
            WithNameDialog([&] { Click(kAdd); }, [&](HWND dialog) { expectOver(dialog, m_dialog); });
        },
        owner.Handle());
}

TEST_F(CategoryDialog, IsAllOnTheScreen)
{
    for (int i = 0; i < 30; ++i)
        ASSERT_NE(AddCategory(m_categories, L"Category " + std::to_wstring(i)), 0u);
    Run([&] {
        RECT area{}, own{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        GetWindowRect(m_dialog, &own);
        RECT both{};
        UnionRect(&both, &area, &own);
        EXPECT_TRUE(EqualRect(&both, &area));
        ExpectControlsInside();
    });
}

TEST_F(CategoryDialog, HoldsAThousand)
{
    {
        CeDBase::BulkScope bulk(m_categories);
        for (int i = 0; i < 1000; ++i)
            ASSERT_NE(AddCategory(m_categories, L"Category " + std::to_wstring(1000 + i)), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    EXPECT_EQ(Run([&] {
                  ASSERT_EQ(Count(), 1000);
                  EXPECT_EQ(Text(999), L"Category 1999");
                  Select(999);
                  Name(kRename, L"A");
                  EXPECT_EQ(Selected(), 0);
                  EXPECT_EQ(Text(0), L"A");
                  End(IDOK);
              }),
              1);
    EXPECT_EQ(m_categories.RecordCount(), 1000u);
}

TEST_F(CategoryDialog, IsNotMadeOverABadOwnerOrStore)
{
    EXPECT_EQ(ZCatsDlg(reinterpret_cast<HWND>(INT_PTR{0x7FFF0001})).DoModal(), -1);
    m_categories.Close();
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "this is no store"));
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(ZCatsDlg(m_parent.Handle()).DoModal(), -1);
    EXPECT_TRUE(IsWindowEnabled(m_parent.Handle()));
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text.find(L"The categories cannot be shown: "), 0u);
    EXPECT_EQ(answerer.Boxes()[0].owner, m_parent.Handle());
}

} // namespace
