// The filter as the main window has it: its button, its menu and its commands.
#include <algorithm>
#include <functional>

#include "app/main_window_fixture.h"
#include "mervane/db_categories.h"
#include "res/resource.h"
#include "support/menu_driver.h"
#include "support/send_input.h"
#include "ui/screen/scale.h"

namespace {

constexpr uint64_t kFirstOfMarch = 125'963'424'000'000'000; // 2000, in days since 1601
constexpr uint64_t kDay = 864'000'000'000;

// Keeps the parameters of one message that a window gets while this lives.
class MessageLog {
  public:
    MessageLog(HWND window, UINT message) : m_window(window), m_message(message)
    {
        EXPECT_TRUE(SetWindowSubclass(window, Procedure, 1, reinterpret_cast<DWORD_PTR>(this)));
    }
    ~MessageLog() { RemoveWindowSubclass(m_window, Procedure, 1); }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    size_t Count() const { return m_parameters.size(); }
    bool Has(WPARAM wanted) const
    {
        return std::find(m_parameters.begin(), m_parameters.end(), wanted) != m_parameters.end();
    }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self)
    {
        auto* log = reinterpret_cast<MessageLog*>(self);
        if (message == log->m_message)
            log->m_parameters.push_back(wParam);
        return DefSubclassProc(window, message, wParam, lParam);
    }

    HWND m_window;
    UINT m_message;
    std::vector<WPARAM> m_parameters;
};

class MainWindowFilter : public MainWindowTest {
  protected:
    MainWindowFilter()
    {
        App().Filter() = {};
        EXPECT_EQ(m_categories.Open(), 1);
    }
    ~MainWindowFilter() override { App().Filter() = {}; }

    CEOID AddCategory(const wchar_t* name)
    {
        const CEOID id = m_categories.Add(name);
        EXPECT_EQ(m_categories.IncUse(id), 1);
        return id;
    }
    // In the journal of the open window.
    static void File(CEOID category, const wchar_t* subject)
    {
        DWORD ids[] = {1, category};
        CEPROPVAL property{};
        property.propid = kPropCategories;
        property.val.blob = {sizeof ids, reinterpret_cast<BYTE*>(ids)};
        ASSERT_NE(App().Journal().WriteRecord(AddEntry(subject, kFirstOfMarch), 1, &property), 0u);
    }
    std::wstring ButtonText() const
    {
        wchar_t text[100] = L"";
        SendMessageW(Buttons(), TB_GETBUTTONTEXTW, CMD_CONTACTS, reinterpret_cast<LPARAM>(text));
        return text;
    }
    // As the button's arrow does. A window manager that is late with the focus closes a menu: once more then.
    void DropDown(const std::function<void(HMENU)>& action)
    {
        const MenuDriver driver(action);
        NMTOOLBARW dropDown{};
        dropDown.hdr = {Buttons(), 0, static_cast<UINT>(TBN_DROPDOWN)};
        dropDown.iItem = 111;
        for (int tries = 0; tries < 10 && !driver.Ran(); ++tries) {
            EXPECT_EQ(SendMessageW(m_window.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&dropDown)),
                      LRESULT{TBDDRET_DEFAULT});
            PumpMessages();
        }
        EXPECT_TRUE(driver.Ran());
        m_menuPlace = driver.Place();
    }
    // Chooses the item with this number of steps down; separators are stepped over.
    void Choose(int steps)
    {
        DropDown([steps](HMENU) {
            HWND menu = FindWindowW(L"#32768", nullptr);
            for (int i = 0; i < steps; ++i)
                PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
            PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 0);
        });
    }
    // With the mouse.
    void ClickArrow() const
    {
        RECT button{};
        SendMessageW(Buttons(), TB_GETRECT, CMD_CONTACTS, reinterpret_cast<LPARAM>(&button));
        MapWindowPoints(Buttons(), nullptr, reinterpret_cast<POINT*>(&button), 2);
        const POINT arrow{button.right - Scale(6), (button.top + button.bottom) / 2};
        SetCursorPos(arrow.x, arrow.y);
        ASSERT_TRUE(PumpUntil([&] { return IsPointerAt(arrow); }));
        SendMouse(MOUSEEVENTF_LEFTDOWN);
        SendMouse(MOUSEEVENTF_LEFTUP);
    }
    // What the dialog of a command is called; it is left with the button.
    std::wstring DialogOf(UINT command, int button, const std::function<void(HWND)>& action = nullptr)
    {
        std::wstring title;
        const ModalDriver driver([&](HWND dialog) {
            title = WindowText(dialog);
            if (action)
                action(dialog);
            SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
        Command(command);
        EXPECT_TRUE(driver.Ran()) << command;
        return title;
    }
    static void StoreMonths(DWORD months)
    {
        App().SetNumber(L"Filter", L"Active", 1);
        App().SetNumber(L"Filter", L"fRange", 0);
        App().SetNumber(L"Filter", L"fMonths", months);
    }

    DbCategories m_categories;
    RECT m_menuPlace{};
};

// The bar is made anew with a theme, and it may not be while it handles the click.
TEST_F(MainWindowFilter, TheMenuDropsBehindTheClick)
{
    Create();
    HWND bar = Buttons();
    RECT button{};
    SendMessageW(bar, TB_GETRECT, CMD_CONTACTS, reinterpret_cast<LPARAM>(&button));
    bool isHandled = false;
    const MenuDriver driver([&](HMENU) {
        EXPECT_TRUE(isHandled);
        EXPECT_NE(SendMessageW(bar, TB_ISBUTTONPRESSED, CMD_CONTACTS, 0), 0);
        SendMessageW(m_window.Handle(), WM_THEMECHANGED, 0, 0);
        EXPECT_FALSE(IsWindow(bar));
        EndMenu();
    });
    const LPARAM arrow = MAKELPARAM(button.right - Scale(6), (button.top + button.bottom) / 2);
    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, arrow);
    isHandled = true;
    EXPECT_TRUE(PumpUntil([&] { return driver.Ran(); }));
    EXPECT_EQ(SendMessageW(Buttons(), TB_ISBUTTONPRESSED, CMD_CONTACTS, 0), 0);
    ReleaseCapture();
}

TEST_F(MainWindowFilter, ASecondClickOnTheArrowClosesTheMenu)
{
    Create();
    const MessageLog menus(m_window.Handle(), WM_INITMENUPOPUP);
    static const MessageLog* s_menus;
    s_menus = &menus;
    const UINT_PTR endsSecond = SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) {
        if (s_menus->Count() > 1)
            EndMenu();
    });
    const MenuDriver driver([this](HMENU) { ClickArrow(); });
    ASSERT_NO_FATAL_FAILURE(ClickArrow());
    EXPECT_TRUE(PumpUntil([&] { return driver.Ran() && !FindWindowW(L"#32768", nullptr); }));
    PumpMessages();
    KillTimer(nullptr, endsSecond);
    EXPECT_EQ(menus.Count(), 1u);
    EXPECT_EQ(FindWindowW(L"#32768", nullptr), nullptr);
}

// Nothing is begun behind a dialog or a box.
TEST_F(MainWindowFilter, NoMenuDropsFromAWindowThatIsDisabled)
{
    HWND window = Create();
    const MessageLog menus(window, WM_INITMENUPOPUP);
    NMTOOLBARW dropDown{};
    dropDown.hdr = {Buttons(), 0, static_cast<UINT>(TBN_DROPDOWN)};
    dropDown.iItem = 111;
    const MenuDriver driver([](HMENU) { EndMenu(); });
    EnableWindow(window, FALSE);
    SendMessageW(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&dropDown));
    PumpMessages();
    EXPECT_EQ(menus.Count(), 0u);
    EnableWindow(window, TRUE);
}

TEST_F(MainWindowFilter, AStoredFilterIsInForceFromTheStart)
{
    StoreMonths(0x4);
    Create();
    EXPECT_EQ(ButtonText(), L"March");
    AddEntry(L"March", kFirstOfMarch + 30 * kDay);
    AddEntry(L"April", kFirstOfMarch + 31 * kDay);
    m_window.List().Refresh();
    EXPECT_EQ(Rows(), 1);
}

TEST_F(MainWindowFilter, TheFirstFillIsUnderTheStoredFilter)
{
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    AddEntry(L"March", kFirstOfMarch);
    AddEntry(L"April", kFirstOfMarch + 31 * kDay);
    App().Journal().Close();
    StoreMonths(0x8);
    Create();
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(ButtonText(), L"April");
}

TEST_F(MainWindowFilter, TheButtonKeepsItsWidthWhateverItReads)
{
    StoreMonths(0xC);
    Create();
    EXPECT_EQ(ButtonText(), L"Months...");
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    SendMessageW(Buttons(), TB_GETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info));
    const WORD before = info.cx;
    App().Filter() = {};
    SendMessageW(m_window.Handle(), kMsgDatabaseChange, 15, 0);
    EXPECT_EQ(ButtonText(), L"None");
    SendMessageW(Buttons(), TB_GETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.cx, before);
}

// Whoever sends it: not even the filter is looked at, which other commands do.
TEST_F(MainWindowFilter, TheCommandThatDoesNothingLooksAtNothing)
{
    const CEOID work = AddCategory(L"Work");
    Create();
    File(work, L"One");
    AddEntry(L"Two", kFirstOfMarch);
    m_window.List().Refresh();
    Choose(1);
    ASSERT_EQ(ButtonText(), L"Work");
    ASSERT_EQ(m_categories.SeekRecord(work), work);
    const MessageLog log(m_window.Handle(), kMsgDatabaseChange);
    App().Filter().categories.DeleteStack();
    Command(123);
    EXPECT_EQ(ButtonText(), L"Work");
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(log.Count(), 0u);
}

TEST_F(MainWindowFilter, AnAmpersandInItsTextIsOne)
{
    Create();
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_STYLE;
    SendMessageW(Buttons(), TB_GETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info));
    EXPECT_TRUE(info.fsStyle & BTNS_NOPREFIX);
}

TEST_F(MainWindowFilter, TheArrowOpensTheMenuBelowTheButton)
{
    Create();
    int items = 0;
    DropDown([&items](HMENU menu) {
        items = GetMenuItemCount(menu);
        EndMenu();
    });
    EXPECT_EQ(items, 5);
    RECT button{};
    SendMessageW(Buttons(), TB_GETRECT, CMD_CONTACTS, reinterpret_cast<LPARAM>(&button));
    MapWindowPoints(Buttons(), nullptr, reinterpret_cast<POINT*>(&button), 2);
    EXPECT_GE(m_menuPlace.top, button.bottom);
    EXPECT_EQ(m_menuPlace.left, button.left);
    EXPECT_EQ(ButtonText(), L"None");
}

TEST_F(MainWindowFilter, AChosenCategoryFiltersTheRowsAndStoresNothing)
{
    AddCategory(L"Garden");
    const CEOID work = AddCategory(L"Work");
    Create();
    File(work, L"One");
    AddEntry(L"Two", kFirstOfMarch);
    m_window.List().Refresh();
    ASSERT_EQ(Rows(), 2);
    Choose(2);
    EXPECT_EQ(ButtonText(), L"Work");
    EXPECT_EQ(Rows(), 1);
    EXPECT_TRUE(App().Filter().categories.Find(work));
    for (const wchar_t* name : {L"Active", L"fRange", L"fMonths"})
        EXPECT_EQ(App().GetNumber(L"Filter", name, 0xDEAD), 0xDEADu);
    bool isChecked = false;
    DropDown([&isChecked](HMENU menu) {
        isChecked = GetMenuState(menu, 151, MF_BYCOMMAND) & MF_CHECKED;
        EndMenu();
    });
    EXPECT_TRUE(isChecked);
    EXPECT_EQ(Rows(), 1) << "nothing was chosen";
}

// It is stored when it is set or cleared, not when the program ends.
TEST_F(MainWindowFilter, TheEndOfTheProgramStoresNothingOfIt)
{
    for (const UINT message : {UINT{WM_CLOSE}, UINT{WM_ENDSESSION}}) {
        HWND window = Create();
        App().Filter() = {};
        App().Filter().active = true;
        App().Filter().monthMask = 0x4;
        m_window.List().Refresh();
        SendMessageW(window, message, message == WM_ENDSESSION, 0);
        EXPECT_EQ(m_window.Handle(), nullptr) << message;
        for (const wchar_t* name :
             {L"Active", L"fRange", L"fMonths", L"mLStart", L"mHStart", L"mLEnd", L"mHEnd"})
            EXPECT_EQ(App().GetNumber(L"Filter", name, 0xDEAD), 0xDEADu) << message << " " << name;
        EXPECT_TRUE(TakeQuitMessage());
    }
}

TEST_F(MainWindowFilter, EveryChosenCommandIsSent)
{
    AddCategory(L"Garden");
    Create();
    {
        std::wstring title;
        const ModalDriver driver([&](HWND dialog) {
            title = WindowText(dialog);
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        Choose(3); // behind the category and "<New Category>"
        EXPECT_EQ(title, L"Filter on Categories...");
    }
    {
        std::wstring title;
        const ModalDriver driver([&](HWND dialog) {
            title = WindowText(dialog);
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        });
        Choose(4);
        EXPECT_EQ(title, L"Filter on Months...");
    }
    App().Filter().active = true;
    App().Filter().monthMask = 1;
    Choose(5);
    EXPECT_FALSE(App().Filter().active) << "cleared";
}

TEST_F(MainWindowFilter, AChosenCategoryIsSentAsACommandToo)
{
    AddCategory(L"Garden");
    AddCategory(L"Work");
    const MessageLog sent(Create(), WM_COMMAND);
    Choose(2);
    EXPECT_TRUE(sent.Has(151));
    EXPECT_EQ(sent.Count(), 1u);
    DropDown([](HMENU) { EndMenu(); });
    EXPECT_EQ(sent.Count(), 1u) << "nothing was chosen";
}

TEST_F(MainWindowFilter, AChoiceRefreshesTheListWhereCategoriesAreListed)
{
    Create();
    const auto cancelNewCategory = [this](int steps) {
        const ModalDriver driver([](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
        const MessageLog refreshes(List(), LVM_SETITEMCOUNT);
        Choose(steps);
        EXPECT_TRUE(driver.Ran());
        return refreshes.Count();
    };
    EXPECT_EQ(cancelNewCategory(1), 0u);
    AddCategory(L"Garden");
    EXPECT_EQ(cancelNewCategory(2), 1u);
    const MessageLog refreshes(List(), LVM_SETITEMCOUNT);
    DropDown([](HMENU) { EndMenu(); });
    EXPECT_EQ(refreshes.Count(), 0u) << "nothing was chosen";
}

TEST_F(MainWindowFilter, NoCommandReachesAnEntryThatItHides)
{
    Create();
    AddEntry(L"March", kFirstOfMarch);
    AddEntry(L"April", kFirstOfMarch + 31 * kDay);
    m_window.List().Refresh();
    ListView_SetItemState(List(), 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ASSERT_TRUE(ButtonEnabled(CMD_EDIT_ENTRY));
    App().Filter() = {}; // at a first start it is a range that counts
    App().Filter().active = true;
    App().Filter().monthMask = 0x8;
    m_window.List().Refresh();
    ASSERT_EQ(Rows(), 1);
    for (const int command : {CMD_EDIT_ENTRY, CMD_DELETE_ENTRY, CMD_CUT, CMD_COPY})
        EXPECT_FALSE(ButtonEnabled(command)) << command;
}

TEST_F(MainWindowFilter, KeysOpenTheMenu)
{
    HWND window = Create();
    struct Key {
        UINT message;
        WPARAM key;
        bool opens;
    };
    const Key keys[] = {{WM_KEYDOWN, VK_F4, true},
                        {WM_SYSKEYDOWN, VK_DOWN, true},
                        {WM_KEYDOWN, VK_DOWN, false},
                        {WM_SYSKEYDOWN, VK_F4, false},
                        {WM_KEYUP, VK_F4, false}};
    for (const Key& key : keys) {
        const MenuDriver driver([](HMENU) { EndMenu(); });
        MSG message{};
        message.hwnd = List();
        message.message = key.message;
        message.wParam = key.key;
        for (int tries = 0; tries < 10 && !driver.Ran(); ++tries) {
            EXPECT_EQ(m_window.TranslateMenuKey(message), key.opens) << key.message << " " << key.key;
            PumpMessages();
        }
        EXPECT_EQ(driver.Ran(), key.opens) << key.message << " " << key.key;
    }
    const TestParent other;
    MSG message{};
    message.hwnd = other.Handle();
    message.message = WM_KEYDOWN;
    message.wParam = VK_F4;
    EXPECT_FALSE(m_window.TranslateMenuKey(message)) << "another window's key";
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(MainWindowFilter, TheDialogsChoiceShowsAtOnce)
{
    Create();
    Command(CMD_CLEAR_FILTER); // at a first start it is a range that counts
    AddEntry(L"March", kFirstOfMarch);
    AddEntry(L"April", kFirstOfMarch + 31 * kDay);
    m_window.List().Refresh();
    const auto checkApril = [](HWND dialog) {
        ListView_SetCheckState(GetDlgItem(dialog, IDC_MONTH_LIST), 3, TRUE);
    };
    EXPECT_EQ(DialogOf(CMD_FILTER_MONTHS, IDOK, checkApril), L"Filter on Months...");
    EXPECT_EQ(ButtonText(), L"April");
    EXPECT_EQ(Rows(), 1);
    const auto checkMarch = [](HWND dialog) {
        ListView_SetCheckState(GetDlgItem(dialog, IDC_MONTH_LIST), 2, TRUE);
    };
    DialogOf(CMD_FILTER_MONTHS, IDCANCEL, checkMarch);
    EXPECT_EQ(ButtonText(), L"April");
    EXPECT_EQ(Rows(), 1);
    DialogOf(CMD_FILTER_MONTHS, IDOK, checkMarch);
    EXPECT_EQ(ButtonText(), L"Months...");
    EXPECT_EQ(Rows(), 2);
}

TEST_F(MainWindowFilter, CategoriesAreChosenInTheDialogToo)
{
    const CEOID work = AddCategory(L"Work");
    AddCategory(L"Zoo");
    Create();
    File(work, L"One");
    AddEntry(L"Two", kFirstOfMarch);
    const auto turn = [](int item) {
        return [item](HWND dialog) {
            HWND list = GetDlgItem(dialog, IDC_FILTER_CATEGORY_LIST);
            const BOOL isChecked = ListView_GetCheckState(list, item) != 0;
            ListView_SetCheckState(list, item, isChecked ? FALSE : TRUE);
        };
    };
    EXPECT_EQ(DialogOf(CMD_FILTER_CATEGORIES, IDOK, turn(0)), L"Filter on Categories...");
    EXPECT_EQ(ButtonText(), L"Work");
    EXPECT_EQ(Rows(), 1);
    DialogOf(CMD_FILTER_CATEGORIES, IDOK, turn(1));
    EXPECT_EQ(ButtonText(), L"Multiple...");
    DialogOf(CMD_FILTER_CATEGORIES, IDOK, turn(0));
    EXPECT_EQ(ButtonText(), L"Zoo");
    EXPECT_EQ(Rows(), 0);
    DialogOf(CMD_FILTER_CATEGORIES, IDOK, turn(1));
    EXPECT_EQ(ButtonText(), L"None");
    EXPECT_EQ(Rows(), 2);
}

TEST_F(MainWindowFilter, ClearShowsAllAgain)
{
    StoreMonths(0x4);
    Create();
    AddEntry(L"April", kFirstOfMarch + 31 * kDay);
    m_window.List().Refresh();
    ASSERT_EQ(Rows(), 0);
    Command(CMD_CLEAR_FILTER);
    EXPECT_EQ(ButtonText(), L"None");
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(App().GetNumber(L"Filter", L"Active", 9), 0u);
    EXPECT_EQ(App().GetNumber(L"Filter", L"fMonths", 9), 0u);
    EXPECT_EQ(App().GetNumber(L"Filter", L"fRange", 9), 1u);
}

TEST_F(MainWindowFilter, AfterClearTheDialogStartsWithoutAMonth)
{
    StoreMonths(0x4);
    Create();
    Command(CMD_CLEAR_FILTER);
    DialogOf(CMD_FILTER_MONTHS, IDCANCEL, [](HWND dialog) {
        EXPECT_FALSE(IsDlgButtonChecked(dialog, IDC_FILTER_ON_RANGE)) << "months, though a range is stored";
        EXPECT_FALSE(ListView_GetCheckState(GetDlgItem(dialog, IDC_MONTH_LIST), 2));
    });
    App().SetNumber(L"Options", L"RememberFilter", 1);
    StoreMonths(0x4);
    Command(CMD_CLEAR_FILTER);
    DialogOf(CMD_FILTER_MONTHS, IDCANCEL, [](HWND dialog) {
        EXPECT_FALSE(IsDlgButtonChecked(dialog, IDC_FILTER_ON_RANGE));
        EXPECT_TRUE(ListView_GetCheckState(GetDlgItem(dialog, IDC_MONTH_LIST), 2)) << "remembered";
    });
}

TEST_F(MainWindowFilter, ARenamedCategoryShowsOnTheButton)
{
    const CEOID work = AddCategory(L"Work");
    HWND window = Create();
    Choose(1);
    ASSERT_EQ(ButtonText(), L"Work");
    ASSERT_EQ(m_categories.Rename(work, L"Lab"), 1);
    SendMessageW(window, kMsgDatabaseChange, 15, 0);
    EXPECT_EQ(ButtonText(), L"Lab");
}

TEST_F(MainWindowFilter, ADeletedCategoryIsNoFilter)
{
    const CEOID work = AddCategory(L"Work");
    HWND window = Create();
    File(work, L"One");
    AddEntry(L"Two", kFirstOfMarch);
    Choose(1);
    ASSERT_EQ(Rows(), 1);
    ASSERT_NE(m_categories.DeleteRecord(work), 0);
    SendMessageW(window, kMsgDatabaseChange, 15, 0);
    EXPECT_EQ(ButtonText(), L"None");
    EXPECT_FALSE(App().Filter().active);
    EXPECT_EQ(Rows(), 2);
}

// The dialog of the categories' list, and the editor, can delete and rename them.
TEST_F(MainWindowFilter, EveryCommandBringsTheButtonUpToDate)
{
    const CEOID work = AddCategory(L"Work");
    Create();
    File(work, L"One");
    AddEntry(L"Two", kFirstOfMarch);
    Choose(1);
    const auto rename = [&](HWND) { EXPECT_EQ(m_categories.Rename(work, L"Lab"), 1); };
    DialogOf(CMD_NEW_ENTRY, IDCANCEL, rename);
    EXPECT_EQ(ButtonText(), L"Lab");
    const auto remove = [&](HWND) { EXPECT_NE(m_categories.DeleteRecord(work), 0); };
    DialogOf(CMD_CATEGORIES_LIST, IDOK, remove);
    EXPECT_EQ(ButtonText(), L"None");
    EXPECT_EQ(Rows(), 2);
}

} // namespace
