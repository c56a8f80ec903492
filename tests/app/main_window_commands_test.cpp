#include "app/main_window_fixture.h"

#include <memory>

#include "mervane/db_categories.h"
#include "res/resource.h"
#include "support/import_watch.h"

namespace {

TEST_F(MainWindowTest, WhatNeedsNoEntryIsEnabled)
{
    Create();
    for (UINT command : {100u, 103u, 104u, 110u, 111u, 112u, 113u, 115u, 117u, 118u, 120u, 121u, 122u, 124u,
                         125u, 127u, 140u, 160u})
        EXPECT_TRUE(MenuEnabled(command)) << command;
    EXPECT_TRUE(ButtonEnabled(CMD_CONTACTS));
    EXPECT_TRUE(ButtonEnabled(CMD_FIND));
}

TEST_F(MainWindowTest, FindKeepsItsRequestFromOneFindToTheNext)
{
    HWND window = Create();
    const CEOID id = AddEntry(L"a walk", 1);
    m_window.List().Refresh();
    std::wstring before, found;
    const auto find = [&](const wchar_t* text) {
        std::unique_ptr<ModalDriver> results;
        ModalDriver driver([&](HWND dialog) {
            results = std::make_unique<ModalDriver>([&](HWND resultsDialog) {
                found = WindowText(GetDlgItem(resultsDialog, IDC_FOUND_COUNT));
                PostMessageW(resultsDialog, WM_COMMAND, IDOK, 0);
            });
            EXPECT_EQ(GetWindow(dialog, GW_OWNER), window);
            before = WindowText(GetDlgItem(dialog, IDC_FIND_TEXT));
            SendDlgItemMessageW(dialog, IDC_FIND_SUBJECT, BM_CLICK, 0, 0);
            if (text)
                SetDlgItemTextW(dialog, IDC_FIND_TEXT, text);
            PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
        SendMessageW(window, WM_COMMAND, CMD_FIND, 0);
    };
    find(L"WALK");
    EXPECT_EQ(before, L"<Search Text>");
    EXPECT_EQ(found, L"1");
    EXPECT_TRUE(m_window.List().Selection().Contains(id));
    find(nullptr);
    EXPECT_EQ(before, L"WALK");
    EXPECT_EQ(found, L"1");
}

TEST_F(MainWindowTest, NothingSelectedGreysTheEntryCommands)
{
    Create();
    for (UINT command : {102u, 143u, 141u, 101u, 142u}) {
        EXPECT_FALSE(ButtonEnabled(static_cast<int>(command))) << command;
        EXPECT_FALSE(MenuEnabled(command)) << command;
    }
    EXPECT_TRUE(ButtonEnabled(CMD_NEW_ENTRY));
    EXPECT_TRUE(MenuEnabled(CMD_NEW_ENTRY));
}

TEST_F(MainWindowTest, ASelectionEnablesFourCommandsButNotPaste)
{
    HWND window = Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().Selection().Append(id);
    m_window.List().SetCurrentEntry(id);
    SendMessageW(window, kMsgSelectionChanged, 0, 0);
    for (UINT command : {102u, 143u, 141u, 101u}) {
        EXPECT_TRUE(ButtonEnabled(static_cast<int>(command))) << command;
        EXPECT_TRUE(MenuEnabled(command)) << command;
    }
    EXPECT_FALSE(ButtonEnabled(CMD_PASTE));
    EXPECT_FALSE(MenuEnabled(CMD_PASTE));
}

TEST_F(MainWindowTest, PasteNeedsACurrentEntryAndTheFlag)
{
    HWND window = Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().SetCurrentEntry(id);
    SendMessageW(window, kMsgSelectionChanged, 1, 0);
    EXPECT_TRUE(ButtonEnabled(CMD_PASTE)) << "the button asks for no selection";
    EXPECT_FALSE(MenuEnabled(CMD_PASTE)) << "the menu item does";
    m_window.List().Selection().Append(id);
    SendMessageW(window, kMsgSelectionChanged, 1, 0);
    EXPECT_TRUE(ButtonEnabled(CMD_PASTE));
    EXPECT_TRUE(MenuEnabled(CMD_PASTE));
    m_window.List().SetCurrentEntry(0);
    SendMessageW(window, kMsgSelectionChanged, 1, 0);
    EXPECT_FALSE(ButtonEnabled(CMD_PASTE));
    EXPECT_FALSE(MenuEnabled(CMD_PASTE));
    m_window.List().Selection().Clear();
}

TEST_F(MainWindowTest, CommandsOutsideTheTableChangeNothing)
{
    Create();
    AddEntry(L"One", 1);
    m_window.List().Refresh();
    const MessageBoxAnswerer answerer;
    for (UINT id : {0u, 99u, 123u, 161u, 1050u, 57634u, 57635u, 57637u, 57643u, 65535u})
        for (const WORD source : std::initializer_list<WORD>{0, 1, 7})
            Command(id, source);
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_EQ(Rows(), 1);
    EXPECT_TRUE(IsWindow(m_window.Handle()));
}

TEST_F(MainWindowTest, AGreyCommandDoesNothingFromTheKeyboard)
{
    Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().ClearSelection();
    const MessageBoxAnswerer answerer({IDYES});
    Command(CMD_DELETE_ENTRY, 1);
    EXPECT_TRUE(answerer.Boxes().empty()) << "no question was asked";
    m_window.List().SelectRecord(id);
    Command(CMD_DELETE_ENTRY, 1);
    EXPECT_EQ(answerer.Boxes().size(), 1u) << "and once it is not grey, it does";
}

TEST_F(MainWindowTest, CutDeletesWithTheSameQuestion)
{
    Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().SelectRecord(id);
    m_window.List().Selection().Append(id);
    const MessageBoxAnswerer answerer({IDYES});
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    CloseClipboard();
    Command(CMD_CUT);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete record?");
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(CountClipboardFormats(), 0);
    EXPECT_EQ(m_window.List().SelectionFlag(), 0) << "nothing was copied";
}

TEST_F(MainWindowTest, TheFilterButtonsBodyStartsContacts)
{
    const NothingStarts nothing;
    Create();
    const MessageBoxAnswerer answerer({IDOK});
    Command(CMD_CONTACTS);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Addrbook not found");
}

TEST_F(MainWindowTest, EachCommandStartsItsCompanion)
{
    const NothingStarts nothing;
    Create();
    const std::pair<UINT, const wchar_t*> titles[] = {
        {CMD_CALENDAR, L"Calendar not found"},        {CMD_CONTACTS, L"Addrbook not found"},
        {CMD_INBOX, L"Pmail.exe not found"},          {CMD_TASKS, L"Tasks.exe not found"},
        {CMD_MY_HANDHELD, L"iexplorm.exe not found"}, {CMD_HELP_CONTENTS, L"PegHelp.exe not found"}};
    for (const auto& [command, title] : titles) {
        const MessageBoxAnswerer answerer({IDOK});
        Command(command);
        ASSERT_EQ(answerer.Boxes().size(), 1u) << command;
        EXPECT_EQ(answerer.Boxes()[0].caption, title);
        EXPECT_EQ(answerer.Boxes()[0].owner, m_window.Handle()) << command;
    }
}

TEST_F(MainWindowTest, NewStartsWithoutASelectionAndEditKeepsIt)
{
    Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().SelectRecord(id);
    std::wstring subject;
    size_t selected = 99;
    for (const auto& [command, text, count] :
         {std::tuple(101u, L"One", size_t{1}), std::tuple(100u, L"<Entry Subject>", size_t{0})}) {
        const ModalDriver driver([&](HWND editor) {
            subject = WindowText(GetDlgItem(editor, IDC_SUBJECT));
            selected = m_window.List().Selection().Count();
            SendMessageW(editor, WM_COMMAND, IDCANCEL, 0);
        });
        Command(command);
        ASSERT_TRUE(driver.Ran()) << command;
        EXPECT_EQ(subject, text) << command;
        EXPECT_EQ(selected, count) << command;
        EXPECT_EQ(m_window.List().Selection().Count(), count) << command;
    }
}

TEST_F(MainWindowTest, CopyOffersPasteAndPasteDuplicates)
{
    Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().SelectRecord(id);
    m_window.List().SetSelectionFlag(0);
    EXPECT_FALSE(MenuEnabled(CMD_PASTE));
    Command(CMD_COPY);
    EXPECT_EQ(Rows(), 1);
    EXPECT_TRUE(MenuEnabled(CMD_PASTE));
    EXPECT_TRUE(ButtonEnabled(CMD_PASTE));
    Command(CMD_PASTE);
    EXPECT_EQ(Rows(), 2);
    Command(CMD_PASTE);
    EXPECT_EQ(Rows(), 3);
}

// Copy and Paste with the list worked by hand.
class PasteByHand : public MainWindowTest {
  protected:
    void ClickRow(int row, WPARAM keys = 0)
    {
        RECT rect{};
        ASSERT_TRUE(ListView_GetItemRect(List(), row, &rect, LVIR_LABEL));
        const LPARAM point = MAKELPARAM(rect.left + 4, (rect.top + rect.bottom) / 2);
        PostMessageW(List(), WM_LBUTTONDOWN, MK_LBUTTON | keys, point);
        PostMessageW(List(), WM_LBUTTONUP, keys, point);
        PumpMessages();
    }
    void Press(WPARAM key, bool control = false)
    {
        BYTE keys[256]{};
        keys[VK_CONTROL] = control ? 0x80 : 0;
        SetKeyboardState(keys);
        SendMessageW(List(), WM_KEYDOWN, key, 0);
        SendMessageW(List(), WM_KEYUP, key, 0);
        keys[VK_CONTROL] = 0;
        SetKeyboardState(keys);
        PumpMessages();
    }
    // Row 0 is "Four".
    void CreateFour()
    {
        Create();
        uint64_t date = 0;
        for (const wchar_t* subject : {L"One", L"Two", L"Three", L"Four"})
            AddEntry(subject, ++date);
        m_window.List().Refresh();
        PumpMessages();
    }
    void ExpectPaste(bool enabled) const
    {
        EXPECT_EQ(ButtonEnabled(CMD_PASTE), enabled);
        EXPECT_EQ(MenuEnabled(CMD_PASTE), enabled);
    }
    int RowsWith(const std::wstring& subject)
    {
        int count = 0;
        for (int row = 0; row < Rows(); ++row) {
            wchar_t text[32] = L"";
            ListView_GetItemText(List(), row, 1, text, 32);
            count += text == subject;
        }
        return count;
    }
};

TEST_F(PasteByHand, AnotherSelectionGreysItAndFromTheKeyboardNothingHappens)
{
    CreateFour();
    ClickRow(0);
    ExpectPaste(false);
    Command(CMD_COPY);
    ExpectPaste(true);
    ClickRow(1);
    ExpectPaste(false);
    Command(CMD_PASTE, 1);
    EXPECT_EQ(Rows(), 4);
    Command(CMD_COPY);
    ExpectPaste(true);
    Press(VK_DOWN);
    ExpectPaste(false);
    Command(CMD_PASTE, 1);
    EXPECT_EQ(Rows(), 4);
}

TEST_F(PasteByHand, WhatCtrlAddsIsPastedToo)
{
    CreateFour();
    ClickRow(0);
    Command(CMD_COPY);
    ClickRow(2, MK_CONTROL);
    ExpectPaste(true);
    Press(VK_DOWN, true);
    Press(VK_SPACE, true);
    ExpectPaste(true);
    Command(CMD_PASTE);
    EXPECT_EQ(Rows(), 7);
    PumpMessages();
    EXPECT_EQ(RowsWith(L"Four"), 2);
    EXPECT_EQ(RowsWith(L"Three"), 1);
    EXPECT_EQ(RowsWith(L"Two"), 2);
    EXPECT_EQ(RowsWith(L"One"), 2);
}

TEST_F(MainWindowTest, TheCategoriesListRenamesWhatTheListShows)
{
    Create();
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID work = categories.Add(L"Work");
    DWORD ids[] = {1, work};
    CEPROPVAL property{};
    property.propid = kPropCategories;
    property.val.blob = {sizeof ids, reinterpret_cast<BYTE*>(ids)};
    ASSERT_NE(App().Journal().WriteRecord(0, 1, &property), 0u);
    m_window.List().Refresh();
    UpdateWindow(List());
    HWND owner = nullptr;
    bool painted = true;
    const ModalDriver driver([&](HWND dialog) {
        owner = GetWindow(dialog, GW_OWNER);
        HWND list = FindWindowExW(dialog, nullptr, WC_LISTVIEWW, nullptr);
        const ModalDriver naming([](HWND name) {
            SetWindowTextW(FindWindowExW(name, nullptr, L"Edit", nullptr), L"Office");
            SendMessageW(name, WM_COMMAND, IDOK, 0);
        });
        SendMessageW(list, WM_KEYDOWN, VK_F2, 1);
        EXPECT_TRUE(naming.Ran());
        UpdateWindow(List());
        painted = GetUpdateRect(List(), nullptr, FALSE) == FALSE;
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(CMD_CATEGORIES_LIST);
    ASSERT_TRUE(driver.Ran());
    EXPECT_EQ(owner, m_window.Handle());
    EXPECT_TRUE(painted);
    EXPECT_TRUE(GetUpdateRect(List(), nullptr, FALSE)) << "the list is shown anew";
    wchar_t name[kCategoryNameSize];
    EXPECT_EQ(categories.GetStr(work, name, kCategoryNameSize, kCategoriesKey), 6);
    EXPECT_STREQ(name, L"Office");
}

TEST_F(MainWindowTest, ACancelledCategoriesListChangesNothing)
{
    Create();
    const ModalDriver driver([](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    Command(CMD_CATEGORIES_LIST);
    EXPECT_TRUE(driver.Ran());
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    EXPECT_EQ(categories.RecordCount(), 0u);
}

TEST_F(MainWindowTest, SubjectsListOpensTheQuickSubjects)
{
    Create();
    App().SetNumber(kSettings, L"scount", 1);
    App().SetString(kOptions, L"subj0", L"Walk");
    std::wstring title;
    HWND owner = nullptr;
    LRESULT subjects = 0;
    const ModalDriver driver([&](HWND dialog) {
        title = WindowText(dialog);
        owner = GetWindow(dialog, GW_OWNER);
        subjects = SendDlgItemMessageW(dialog, IDC_QUICK_SUBJECT_LIST, LB_GETCOUNT, 0, 0);
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    Command(CMD_SUBJECTS_LIST);
    ASSERT_TRUE(driver.Ran());
    EXPECT_EQ(title, L"Quick Subjects");
    EXPECT_EQ(owner, m_window.Handle());
    EXPECT_EQ(subjects, 1);
    EXPECT_TRUE(IsWindowEnabled(m_window.Handle()));
}

// No menu item and no button: another program's message may ask for it.
TEST_F(MainWindowTest, ClearCategoriesTakesThemFromEveryEntry)
{
    Create();
    DWORD ids[] = {1, 7};
    CEPROPVAL categories{};
    categories.propid = kPropCategories;
    categories.val.blob = {sizeof ids, reinterpret_cast<BYTE*>(ids)};
    ASSERT_NE(App().Journal().WriteRecord(0, 1, &categories), 0u);
    AddEntry(L"One", 1);
    Command(CMD_CLEAR_CATEGORIES);
    EXPECT_EQ(Rows(), 2) << "the list is rebuilt";
    const CEPROPID wanted = kPropCategories;
    for (int found = App().Journal().SeekFirstRecord(); found; found = App().Journal().SeekNextRecord()) {
        WORD count = 1;
        CEPROPVAL* property = nullptr;
        ASSERT_NE(App().Journal().ReadRecord(&count, &wanted, &property), 0u);
        const LocalBlock<CEPROPVAL> owner(property);
        EXPECT_TRUE(property->wFlags & CEDB_PROPNOTFOUND);
    }
}

} // namespace
