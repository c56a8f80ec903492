// Nothing of the main window is cut off or out of reach, whatever the screen.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"
#include "util/window_metrics.h"

namespace {

class OnScreen : public JournalWindowTest {
  protected:
    static RECT PlaceOf(HWND window)
    {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }

    static void ExpectOnScreen(const RECT& place, const std::string& what)
    {
        const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        EXPECT_FALSE(IsRectEmpty(&place)) << what;
        EXPECT_GE(place.left, screen.left) << what;
        EXPECT_GE(place.top, screen.top) << what;
        EXPECT_LE(place.right, screen.right) << what;
        EXPECT_LE(place.bottom, screen.bottom) << what;
    }

    // With everything twice as large on the handheld's screen a dialog may scroll.
    static bool MayScroll() { return GetSystemMetrics(SM_CYSCREEN) <= 240 && mervane::SystemDpi() >= 192; }

    static void ExpectSeen(HWND dialog, int id)
    {
        RECT inside{}, seen{};
        GetClientRect(dialog, &inside);
        MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&inside), 2);
        EXPECT_TRUE(WaitFor([&] {
            const RECT place = PlaceOf(Control(dialog, id));
            IntersectRect(&seen, &place, &inside);
            return EqualRect(&seen, &place);
        })) << id;
        ExpectOnScreen(seen, std::to_string(id));
    }

    // The tab key comes to each, and brings it into sight.
    static void ExpectInReach(HWND dialog, std::initializer_list<int> ids)
    {
        for (const int id : ids) {
            for (int presses = 0; presses < 20 && FocusOf(dialog) != Control(dialog, id); ++presses) {
                HWND before = FocusOf(dialog);
                PressKey(VK_TAB);
                EXPECT_TRUE(WaitFor([&] { return FocusOf(dialog) != before; }));
            }
            EXPECT_EQ(FocusOf(dialog), Control(dialog, id)) << id;
            ExpectSeen(dialog, id);
        }
    }

    // A window manager puts its frame around a new dialog and moves it back onto the screen after that.
    static void AwaitPlace(HWND dialog)
    {
        EXPECT_TRUE(WaitFor([&] {
            const RECT place = PlaceOf(dialog);
            return place.left >= 0 && place.top >= 0;
        }));
    }

    // The dialog of the filter, on the screen; null when it does not come.
    HWND OpenFilter()
    {
        EXPECT_NE(AddEntry(L"One"), 0u);
        EXPECT_TRUE(ChangeStore(m_store.Path(), "INSERT INTO categories(name, uses) VALUES('Work', 1)"));
        EXPECT_NE(m_journal.Start(), nullptr);
        PostCommand(Window(), CMD_FILTER_MONTHS);
        HWND dialog = WaitForDialogWith(m_journal.Id(), IDC_MONTH_LIST);
        if (!dialog || !Activate(dialog))
            return nullptr;
        AwaitPlace(dialog);
        ExpectOnScreen(PlaceOf(dialog), "Filter");
        return dialog;
    }

    // The window's inside, on the screen.
    RECT Inside() const
    {
        RECT inside{};
        GetClientRect(Window(), &inside);
        MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&inside), 2);
        return inside;
    }
};

TEST_F(OnScreen, EveryButtonIsInReach)
{
    ASSERT_NE(AddEntry(L"One"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    for (const int command : {CMD_NEW_ENTRY, CMD_EDIT_ENTRY, CMD_DELETE_ENTRY, CMD_CUT, CMD_COPY, CMD_PASTE,
                              CMD_FIND, CMD_CONTACTS}) {
        const RECT button = Buttons().ScreenRect(command), inside = Inside();
        RECT seen{};
        ExpectOnScreen(button, std::to_string(command));
        EXPECT_TRUE(IntersectRect(&seen, &inside, &button)) << command;
        EXPECT_TRUE(EqualRect(&seen, &button)) << command;
        const POINT middle = Buttons().BodyPoint(command);
        EXPECT_EQ(WindowFromPoint(middle), Buttons().Handle()) << command << " is covered";
    }
}

TEST_F(OnScreen, TheListShowsSeveralRows)
{
    for (uint64_t i = 0; i < 30; ++i)
        ASSERT_NE(AddEntry(L"One", kNoon + i), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(30));
    EXPECT_GE(Send(List().Handle(), LVM_GETCOUNTPERPAGE), MayScroll() ? 2 : 3);
    ExpectOnScreen(PlaceOf(List().Handle()), "list");
    ASSERT_TRUE(Activate(Window()));
    PressKey(VK_END);
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{29}; }));
    ExpectOnScreen({List().LabelPoint(29).x, List().LabelPoint(29).y, List().LabelPoint(29).x + 1,
                    List().LabelPoint(29).y + 1},
                   "the last row");
}

TEST_F(OnScreen, EveryMenuIsWhole)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(0));
    for (const WORD key : {WORD{'F'}, WORD{'E'}, WORD{'G'}, WORD{'T'}}) {
        ASSERT_TRUE(Activate(Window()));
        PressKeys({VK_MENU, key});
        HWND popup = WaitForPopup(m_journal.Id());
        ASSERT_NE(popup, nullptr);
        ExpectOnScreen(PlaceOf(popup), std::string(1, static_cast<char>(key)));
        ASSERT_TRUE(ClosePopups(m_journal.Id()));
    }
}

TEST_F(OnScreen, AboutIsWholeAndClosesWithEnter)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(Activate(Window()));
    PressKeys({VK_MENU, 'T'});
    ASSERT_NE(WaitForPopup(m_journal.Id()), nullptr);
    PressKey('A');
    HWND about = WaitForDialog(m_journal.Id(), L"About Journal");
    ASSERT_NE(about, nullptr);
    AwaitPlace(about);
    ExpectOnScreen(PlaceOf(about), "About");
    if (MayScroll())
        ExpectSeen(about, IDOK);
    else
        for (const int id : {IDC_ABOUT_PRODUCT, IDC_ABOUT_PLATFORM, IDC_ABOUT_BUILD, IDC_ABOUT_NOTICE, IDOK})
            ExpectSeen(about, id);
    PressKey(VK_RETURN);
    EXPECT_TRUE(WaitUntilGone(about));
}

TEST_F(OnScreen, TheFiltersDialogIsInReachInBothModes)
{
    HWND dialog = OpenFilter();
    ASSERT_NE(dialog, nullptr);
    ExpectInReach(
        dialog, {IDC_RANGE_END, IDOK, IDCANCEL, IDC_FILTER_BY_MONTHS, IDC_FILTER_ON_RANGE, IDC_RANGE_START});
    PressKeys({VK_MENU, 'C'});
    ASSERT_TRUE(WaitFor([&] { return TextOf(dialog) == L"Filter on Categories..."; }));
    ExpectInReach(dialog, {IDC_FILTER_CATEGORY_LIST, IDC_CLEAR_SELECTION, IDOK, IDCANCEL});
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(dialog));
}

TEST_F(OnScreen, TheFiltersDialogIsWholeInBothModes)
{
    HWND dialog = OpenFilter();
    ASSERT_NE(dialog, nullptr);
    for (const int id : {IDC_FILTER_BY_MONTHS, IDC_FILTER_BY_CATEGORIES, IDC_RANGE_START_LABEL,
                         IDC_RANGE_END_LABEL, IDC_RANGE_FRAME, IDC_FILTER_ON_RANGE, IDC_CLEAR_SELECTION,
                         IDC_RANGE_START, IDC_RANGE_END, IDC_MONTH_LIST, IDOK, IDCANCEL})
        ExpectOnScreen(PlaceOf(Control(dialog, id)), std::to_string(id));
    const RemoteListView months(Control(dialog, IDC_MONTH_LIST));
    for (int month = 0; month < 12; ++month) {
        for (const POINT& point : {months.LabelPoint(month), months.CheckPoint(month)})
            ExpectOnScreen({point.x, point.y, point.x + 1, point.y + 1}, std::to_string(month));
    }
    EXPECT_FALSE(GetWindowLongPtrW(months.Handle(), GWL_STYLE) & WS_HSCROLL) << "all months are in sight";
    PressKeys({VK_MENU, 'C'});
    ASSERT_TRUE(WaitFor([&] { return TextOf(dialog) == L"Filter on Categories..."; }));
    ExpectOnScreen(PlaceOf(Control(dialog, IDC_FILTER_CATEGORY_LIST)), "categories");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(dialog));
}

// The body of the drop-down button is Contacts, whatever its picture says.
// The address book lies beside the journal, as it does when both are built.
TEST_F(OnScreen, TheFilterButtonsBodyStartsContacts)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(Click(Buttons().BodyPoint(CMD_CONTACTS)));
    HWND book = WaitForWindow([] { return FindWindowW(L"AddressBook", nullptr); });
    ASSERT_NE(book, nullptr);
    PostMessageW(book, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntilGone(book));
}

// The box of a program that is missing, over the window in use: the journal lies alone in a folder.
TEST_F(OnScreen, AMissingCompanionIsToldInABox)
{
    const std::wstring folder = m_store.Path() + L"-alone";
    const std::wstring program = folder + L"\\journal.exe";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    ASSERT_TRUE(CopyFileW(PathBesideTest(L"journal.exe").c_str(), program.c_str(), TRUE));
    JournalProcess journal(program.c_str());
    HWND window = journal.Start();
    ASSERT_NE(window, nullptr);
    PostCommand(window, CMD_CALENDAR);
    const RemoteMessageBox box = WaitForMessageBox(journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"Error starting Calendar");
    EXPECT_EQ(box.Caption(), L"Calendar not found");
    EXPECT_TRUE(box.Offers(IDOK));
    EXPECT_TRUE(box.Offers(IDCANCEL));
    EXPECT_TRUE(box.Answer(IDCANCEL));
    EXPECT_TRUE(journal.Close());
    EXPECT_TRUE(DeleteFileW(program.c_str()));
    EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
}

} // namespace
