#include "app/main_window.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/journal_app.h"
#include "mervane/db_journal.h"
#include "res/resource.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/command_bands.h"
#include "ui/image_list.h"
#include "ui/scale.h"

namespace {

HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

// Takes the quit message that a destroyed main window posts; true when there was one.
bool TakeQuitMessage()
{
    MSG message;
    return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) && message.message == WM_QUIT;
}

CEOID AddEntry(const wchar_t* subject, uint64_t date)
{
    std::wstring text = subject;
    CEPROPVAL properties[2]{};
    properties[0].propid = kPropDate;
    properties[0].val.filetime = TimeCount(date).ToFileTime();
    properties[1].propid = kPropSubject;
    properties[1].val.lpwstr = text.data();
    return App().Journal().WriteRecord(0, 2, properties);
}

std::wstring ButtonText(HWND bar, int command)
{
    wchar_t text[64] = L"";
    SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(text));
    return text;
}

std::wstring MenuText(HMENU menu, UINT position)
{
    wchar_t text[64] = L"";
    GetMenuStringW(menu, position, text, 64, MF_BYPOSITION);
    return text;
}

class MainWindowTest : public testing::Test {
  protected:
    MainWindowTest() { MainWindow::RegisterWindowClass(Instance()); }
    ~MainWindowTest() override
    {
        if (m_window.Handle())
            DestroyWindow(m_window.Handle());
        App().Journal().Close();
        TakeQuitMessage();
    }

    HWND Create()
    {
        HWND window = m_window.Create(Instance());
        EXPECT_NE(window, nullptr);
        m_window.ShowFirst(SW_SHOWNORMAL);
        PumpMessages();
        return window;
    }

    HWND Bands() const { return GetDlgItem(m_window.Handle(), 102); }
    HWND MenuBar() const { return CommandBands_GetCommandBar(Bands(), 0); }
    HWND Buttons() const { return CommandBands_GetCommandBar(Bands(), 1); }
    // Beside the bands.
    HWND Adornments() const { return FindWindowExW(m_window.Handle(), nullptr, L"ToolbarWindow32", nullptr); }
    HMENU Menu() const { return CommandBar_GetMenu(MenuBar()); }
    HWND List() { return m_window.List().Handle(); }
    int Rows() { return ListView_GetItemCount(List()); }

    bool ButtonEnabled(int command) const
    {
        return SendMessageW(Buttons(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
    }
    bool MenuEnabled(UINT command) const
    {
        return !(GetMenuState(Menu(), command, MF_BYCOMMAND) & MF_GRAYED);
    }

    void Command(UINT id, WORD source = 0)
    {
        SendMessageW(m_window.Handle(), WM_COMMAND, MAKEWPARAM(id, source), 0);
    }

    TestStore m_store;
    TestRegistry m_registry;
    MainWindow m_window;
};

TEST_F(MainWindowTest, HasItsClassAndTitle)
{
    HWND window = Create();
    wchar_t name[32];
    GetClassNameW(window, name, 32);
    EXPECT_STREQ(name, L"Journal");
    EXPECT_EQ(WindowText(window), L"Kelvra Journal");
    EXPECT_EQ(FindWindowW(L"Journal", nullptr), window);
}

// What the main window is created with.
CREATESTRUCTW g_created{};
std::wstring g_createdTitle;

LRESULT CALLBACK WatchCreation(int code, WPARAM wParam, LPARAM lParam)
{
    wchar_t name[16] = L"";
    GetClassNameW(reinterpret_cast<HWND>(wParam), name, 16);
    if (code == HCBT_CREATEWND && wcscmp(name, L"Journal") == 0) {
        g_created = *reinterpret_cast<CBT_CREATEWNDW*>(lParam)->lpcs;
        g_createdTitle = g_created.lpszName;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(MainWindowTest, IsCreatedVisibleAndWithoutAFrame)
{
    HHOOK hook = SetWindowsHookExW(WH_CBT, WatchCreation, nullptr, GetCurrentThreadId());
    ASSERT_NE(hook, nullptr);
    Create();
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(g_createdTitle, L"Kelvra Journal");
    EXPECT_NE(g_created.style & WS_VISIBLE, 0);
    EXPECT_EQ(static_cast<DWORD>(g_created.style) & (WS_OVERLAPPEDWINDOW & ~WS_CAPTION), 0u);
    EXPECT_EQ(static_cast<DWORD>(g_created.dwExStyle) & ~DWORD{WS_EX_WINDOWEDGE}, 0u);
    EXPECT_EQ(g_created.hwndParent, nullptr);
    EXPECT_EQ(g_created.hMenu, nullptr);
}

TEST_F(MainWindowTest, TheClassIsPlain)
{
    WNDCLASSW windowClass{};
    ASSERT_TRUE(GetClassInfoW(Instance(), L"Journal", &windowClass));
    EXPECT_EQ(windowClass.style, static_cast<UINT>(CS_HREDRAW | CS_VREDRAW));
    EXPECT_EQ(windowClass.cbClsExtra, 0);
    EXPECT_EQ(windowClass.cbWndExtra, 0);
    EXPECT_EQ(windowClass.hIcon, nullptr);
    EXPECT_EQ(windowClass.lpszMenuName, nullptr);
    EXPECT_EQ(windowClass.hbrBackground, GetStockObject(WHITE_BRUSH));
}

TEST_F(MainWindowTest, TheBandsHaveBordersAndImages)
{
    Create();
    EXPECT_NE(GetWindowLongPtrW(Bands(), GWL_STYLE) & RBS_BANDBORDERS, 0);
    REBARINFO info{};
    info.cbSize = sizeof info;
    info.fMask = RBIM_IMAGELIST;
    ASSERT_TRUE(SendMessageW(Bands(), RB_GETBARINFO, 0, reinterpret_cast<LPARAM>(&info)));
    ASSERT_NE(info.himl, nullptr);
    int width = 0, height = 0;
    EXPECT_TRUE(ImageList_GetIconSize(info.himl, &width, &height));
    EXPECT_EQ(width, Scale(16));
}

TEST_F(MainWindowTest, HasTheHelpAndTheCloseButton)
{
    Create();
    ASSERT_NE(Adornments(), nullptr);
    EXPECT_EQ(SendMessageW(Adornments(), TB_BUTTONCOUNT, 0, 0), 2);
}

TEST_F(MainWindowTest, HasTheElevenButtonsInOrder)
{
    Create();
    struct Wanted {
        int image, command;
        BYTE style;
    };
    const Wanted wanted[] = {{0, 100, BTNS_BUTTON},   {1, 101, BTNS_BUTTON}, {8, 102, BTNS_BUTTON},
                             {0, 0, BTNS_SEP},        {3, 141, BTNS_BUTTON}, {4, 143, BTNS_BUTTON},
                             {5, 142, BTNS_BUTTON},   {0, 0, BTNS_SEP},      {15, 115, BTNS_BUTTON},
                             {2, 111, BTNS_DROPDOWN}, {0, 0, BTNS_SEP}};
    ASSERT_EQ(SendMessageW(Buttons(), TB_BUTTONCOUNT, 0, 0), 11);
    // Within the tool bar the standard images stand in an order of their own; their first index is what
    // follows the three of ours.
    for (int i = 0; i < 11; ++i) {
        TBBUTTON button{};
        ASSERT_TRUE(
            SendMessageW(Buttons(), TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button)));
        EXPECT_EQ(button.fsStyle & 0x0F, wanted[i].style) << i;
        EXPECT_EQ(button.fsState & TBSTATE_HIDDEN, 0) << i;
        if (wanted[i].command) {
            EXPECT_EQ(button.idCommand, wanted[i].command) << i;
            EXPECT_EQ(button.iBitmap, wanted[i].image) << i;
        }
    }
}

// How an image of a list looks on white.
std::vector<COLORREF> PictureOf(HIMAGELIST images, int index)
{
    const int side = Scale(16);
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    const UniqueBitmap bitmap(CreateCompatibleBitmap(screen, side, side));
    HGDIOBJ previous = SelectObject(memory, bitmap.get());
    PatBlt(memory, 0, 0, side, side, WHITENESS);
    EXPECT_TRUE(ImageList_Draw(images, index, memory, 0, 0, ILD_NORMAL));
    std::vector<COLORREF> pixels;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            pixels.push_back(GetPixel(memory, x, y));
    SelectObject(memory, previous);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return pixels;
}

TEST_F(MainWindowTest, TheFirstImagesAreThoseOfItsBitmaps)
{
    Create();
    auto images = reinterpret_cast<HIMAGELIST>(SendMessageW(Buttons(), TB_GETIMAGELIST, 0, 0));
    EXPECT_EQ(ImageList_GetImageCount(images), 18) << "and the system's fifteen";
    int index = 0;
    for (const int bitmap : {214, 215, 213}) {
        const UniqueImageList wanted = LoadImageStrip(Instance(), bitmap, 16, kImageMask);
        ASSERT_NE(wanted, nullptr);
        EXPECT_EQ(PictureOf(images, index), PictureOf(wanted.get(), 0)) << bitmap;
        ++index;
    }
}

TEST_F(MainWindowTest, TheFilterButtonReadsNoneAndIsWide)
{
    Create();
    EXPECT_EQ(ButtonText(Buttons(), 111), L"None");
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    SendMessageW(Buttons(), TB_GETBUTTONINFOW, 111, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.cx, Scale(110));
}

TEST_F(MainWindowTest, ButtonsHaveTheSevenTooltips)
{
    HWND window = Create();
    const std::pair<int, const wchar_t*> tips[] = {{100, L"New"},  {101, L"Edit"}, {102, L"Delete"},
                                                   {141, L"Cut"},  {143, L"Copy"}, {142, L"Paste"},
                                                   {115, L"Find"}, {111, L""}};
    for (const auto& [command, text] : tips) {
        wchar_t buffer[80] = L"";
        NMTBGETINFOTIPW tip{};
        tip.hdr = {Buttons(), static_cast<UINT_PTR>(GetDlgCtrlID(Buttons())),
                   static_cast<UINT>(TBN_GETINFOTIPW)};
        tip.iItem = command;
        tip.pszText = buffer;
        tip.cchTextMax = 80;
        SendMessageW(window, WM_NOTIFY, tip.hdr.idFrom, reinterpret_cast<LPARAM>(&tip));
        EXPECT_STREQ(buffer, text) << command;
    }
    EXPECT_TRUE(GetWindowLongPtrW(Buttons(), GWL_STYLE) & TBSTYLE_TOOLTIPS);
}

TEST_F(MainWindowTest, QuitAndMyHandheldAreAddedToTheMenu)
{
    Create();
    HMENU file = GetSubMenu(Menu(), 0);
    const int count = GetMenuItemCount(file);
    EXPECT_EQ(count, 5);
    EXPECT_TRUE(GetMenuState(file, 3, MF_BYPOSITION) & MF_SEPARATOR);
    EXPECT_EQ(MenuText(file, 4), L"&Quit");
    EXPECT_EQ(GetMenuItemID(file, 4), 140u);
    HMENU go = GetSubMenu(Menu(), 2);
    EXPECT_EQ(MenuText(go, 1), L"&Contacts");
    EXPECT_EQ(MenuText(go, 2), L"&My Handheld PC");
    EXPECT_EQ(GetMenuItemID(go, 2), 125u);
    EXPECT_EQ(MenuText(go, 3), L"&Inbox");
}

TEST_F(MainWindowTest, TheListTakesTheRestBelowTheBands)
{
    HWND window = Create();
    RECT client, list;
    GetClientRect(window, &client);
    GetWindowRect(List(), &list);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&list), 2);
    EXPECT_EQ(list.left, 0);
    EXPECT_EQ(list.top, CommandBands_Height(Bands()));
    EXPECT_EQ(list.right, client.right);
    EXPECT_EQ(list.bottom, client.bottom);
}

TEST_F(MainWindowTest, TheListFollowsTheWindowsSize)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 0, 0, Scale(500), Scale(400), SWP_NOZORDER);
    EXPECT_TRUE(PumpUntil([&] {
        RECT client, list;
        GetClientRect(window, &client);
        GetWindowRect(List(), &list);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&list), 2);
        return client.right < Scale(500) && list.right == client.right && list.bottom == client.bottom;
    }));
}

TEST_F(MainWindowTest, TheBandsFollowTheWindowsWidth)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 0, 0, Scale(900), Scale(400), SWP_NOZORDER);
    const auto fits = [&] {
        RECT client, bands, adornments;
        GetClientRect(window, &client);
        GetClientRect(Bands(), &bands);
        GetClientRect(Adornments(), &adornments);
        return bands.right + adornments.right == client.right;
    };
    EXPECT_TRUE(PumpUntil(fits));
    SetWindowPos(window, nullptr, 0, 0, Scale(450), Scale(400), SWP_NOZORDER);
    EXPECT_TRUE(PumpUntil([&] {
        RECT client;
        GetClientRect(window, &client);
        return client.right <= Scale(450) && fits();
    }));
}

TEST_F(MainWindowTest, CannotBeMadeSmallerThanItCanBeWorked)
{
    HWND window = Create();
    MINMAXINFO info{};
    SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, Scale(320));
    EXPECT_EQ(info.ptMinTrackSize.y, Scale(160));
}

TEST_F(MainWindowTest, TheListHasTheKeyboard)
{
    HWND window = Create();
    EXPECT_EQ(GetWindowLongPtrW(List(), GWL_STYLE) & LVS_SHOWSELALWAYS, LVS_SHOWSELALWAYS);
    EXPECT_EQ(GetWindowLongPtrW(List(), GWL_STYLE) & LVS_TYPEMASK, LVS_REPORT);
    SetFocus(window);
    EXPECT_EQ(GetFocus(), List());
}

TEST_F(MainWindowTest, WhatIsNotThereYetIsGrey)
{
    Create();
    EXPECT_FALSE(ButtonEnabled(115));
    for (UINT command : {103u, 104u, 115u, 117u, 118u, 120u, 121u, 122u, 124u})
        EXPECT_FALSE(MenuEnabled(command)) << command;
    for (UINT command : {100u, 110u, 111u, 112u, 113u, 125u, 127u, 140u, 160u})
        EXPECT_TRUE(MenuEnabled(command)) << command;
    EXPECT_TRUE(ButtonEnabled(111));
}

TEST_F(MainWindowTest, NothingSelectedGreysTheEntryCommands)
{
    Create();
    for (UINT command : {102u, 143u, 141u, 101u, 142u}) {
        EXPECT_FALSE(ButtonEnabled(static_cast<int>(command))) << command;
        EXPECT_FALSE(MenuEnabled(command)) << command;
    }
    EXPECT_TRUE(ButtonEnabled(100));
    EXPECT_TRUE(MenuEnabled(100));
}

TEST_F(MainWindowTest, ASelectionEnablesFourCommandsButNotPaste)
{
    HWND window = Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().Selection().Append(id);
    m_window.List().SetCurrentEntry(id);
    SendMessageW(window, 1126, 0, 0);
    for (UINT command : {102u, 143u, 141u, 101u}) {
        EXPECT_TRUE(ButtonEnabled(static_cast<int>(command))) << command;
        EXPECT_TRUE(MenuEnabled(command)) << command;
    }
    EXPECT_FALSE(ButtonEnabled(142));
    EXPECT_FALSE(MenuEnabled(142));
}

TEST_F(MainWindowTest, PasteNeedsACurrentEntryAndTheFlag)
{
    HWND window = Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().SetCurrentEntry(id);
    SendMessageW(window, 1126, 1, 0);
    EXPECT_TRUE(ButtonEnabled(142)) << "the button asks for no selection";
    EXPECT_FALSE(MenuEnabled(142)) << "the menu item does";
    m_window.List().Selection().Append(id);
    SendMessageW(window, 1126, 1, 0);
    EXPECT_TRUE(ButtonEnabled(142));
    EXPECT_TRUE(MenuEnabled(142));
    m_window.List().SetCurrentEntry(0);
    SendMessageW(window, 1126, 1, 0);
    EXPECT_FALSE(ButtonEnabled(142));
    EXPECT_FALSE(MenuEnabled(142));
    m_window.List().Selection().Clear();
}

TEST_F(MainWindowTest, CommandsOutsideTheTableChangeNothing)
{
    Create();
    AddEntry(L"One", 1);
    m_window.List().Refresh();
    const MessageBoxAnswerer answerer;
    for (UINT id : {0u, 99u, 123u, 161u, 1050u, 57634u, 57635u, 57637u, 57643u, 65535u})
        Command(id);
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_EQ(Rows(), 1);
    EXPECT_TRUE(IsWindow(m_window.Handle()));
}

TEST_F(MainWindowTest, AGreyCommandDoesNothingFromTheKeyboard)
{
    Create();
    AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().ClearSelection();
    const MessageBoxAnswerer answerer({IDYES});
    Command(102, 1);
    EXPECT_TRUE(answerer.Boxes().empty()) << "no question was asked";
}

TEST_F(MainWindowTest, CutDeletesWithTheSameQuestion)
{
    Create();
    const CEOID id = AddEntry(L"One", 1);
    m_window.List().Refresh();
    m_window.List().SelectRecord(id);
    m_window.List().Selection().Append(id);
    const MessageBoxAnswerer answerer({IDYES});
    Command(141);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete record?");
    EXPECT_EQ(Rows(), 0);
}

TEST_F(MainWindowTest, TheFilterButtonsBodyStartsContacts)
{
    Create();
    const MessageBoxAnswerer answerer({IDOK});
    Command(111);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Addrbook not found");
}

TEST_F(MainWindowTest, EachCommandStartsItsCompanion)
{
    Create();
    const std::pair<UINT, const wchar_t*> titles[] = {
        {110, L"Calendar not found"},  {111, L"Addrbook not found"},     {112, L"Pmail.exe not found"},
        {113, L"Tasks.exe not found"}, {125, L"iexplorm.exe not found"}, {127, L"PegHelp.exe not found"}};
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
    EXPECT_FALSE(MenuEnabled(142));
    Command(143);
    EXPECT_EQ(Rows(), 1);
    EXPECT_TRUE(MenuEnabled(142));
    EXPECT_TRUE(ButtonEnabled(142));
    Command(142);
    EXPECT_EQ(Rows(), 2);
    Command(142);
    EXPECT_EQ(Rows(), 3);
}

TEST_F(MainWindowTest, HelpIsAnsweredAndReturnsOne)
{
    HWND window = Create();
    const MessageBoxAnswerer answerer({IDOK});
    HELPINFO info{};
    info.cbSize = sizeof info;
    EXPECT_EQ(SendMessageW(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&info)), 1);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Error starting help");
}

class RefreshingMessage : public MainWindowTest,
                          public testing::WithParamInterface<std::tuple<UINT, WPARAM, LPARAM, bool>> {};

TEST_P(RefreshingMessage, RebuildsTheListOrNot)
{
    HWND window = Create();
    const auto [message, wParam, lParam, refreshes] = GetParam();
    AddEntry(L"From elsewhere", 1);
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    SendMessageW(window, message, wParam, lParam);
    EXPECT_EQ(Rows(), refreshes ? 1 : 0);
    if (message == 1125 && refreshes) {
        EXPECT_EQ(GetCursor(), nullptr);
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, RefreshingMessage,
                         testing::Values(std::tuple(1125u, 1u, 0, false), std::tuple(1125u, 2u, 7, true),
                                         std::tuple(1125u, 6u, 7, true), std::tuple(1125u, 8u, 7, true),
                                         std::tuple(1125u, 15u, 0, true), std::tuple(1125u, 15u, 1, false),
                                         std::tuple(1125u, 3u, 0, false), std::tuple(1125u, 0u, 0, false),
                                         std::tuple(1125u, 99u, 0, false),
                                         std::tuple(static_cast<UINT>(WM_SETTINGCHANGE), 0u, 0, true)));

TEST_F(MainWindowTest, WorkThatBeginsShowsTheHourglass)
{
    HWND window = Create();
    SetCursor(nullptr);
    SendMessageW(window, 1125, 1, 0);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
}

class ClosingMessage : public MainWindowTest, public testing::WithParamInterface<std::pair<UINT, WPARAM>> {};

TEST_P(ClosingMessage, SavesTheSortClosesTheJournalAndQuits)
{
    HWND window = Create();
    App().Journal().SetSort({kPropSubject, 0}, 1);
    SendMessageW(window, GetParam().first, GetParam().second, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(m_window.Handle(), nullptr);
    EXPECT_EQ(App().GetNumber(L"Options", L"sort", 0), 0x0066001Fu);
    EXPECT_FALSE(App().Journal().IsOpen());
    EXPECT_TRUE(TakeQuitMessage());
}

INSTANTIATE_TEST_SUITE_P(Ways, ClosingMessage,
                         testing::Values(std::pair<UINT, WPARAM>(WM_CLOSE, 0),
                                         std::pair<UINT, WPARAM>(1023, 0),
                                         std::pair<UINT, WPARAM>(WM_COMMAND, 140)));

TEST_F(MainWindowTest, ItsEndSavesBandsAndColumns)
{
    HWND window = Create();
    EXPECT_EQ(App().GetNumber(L"Settings", L"iCols", 99), 99u) << "nothing is stored before the end";
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"iCols", 99), 2u);
    EXPECT_NE(App().GetNumber(L"Settings", L"Column10", 0), 0u);
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"mmax", L"tstyle", L"trestore", L"tmax"})
        EXPECT_NE(App().GetNumber(L"Settings", name, 0xABCDEF), 0xABCDEFu) << name;
}

// What was stored for a band is what it had, each value under its name.
TEST_F(MainWindowTest, ItsEndSavesEachBandAsItIs)
{
    App().SetNumber(L"Settings", L"mstyle", 128);
    App().SetNumber(L"Settings", L"tstyle", 129);
    App().SetNumber(L"Settings", L"trestore", 333);
    HWND window = Create();
    COMMANDBANDSRESTOREINFO bands[2]{};
    for (UINT i = 0; i < 2; ++i) {
        bands[i].cbSize = sizeof bands[i];
        ASSERT_TRUE(CommandBands_GetRestoreInformation(Bands(), i, &bands[i]));
    }
    ASSERT_EQ(bands[0].wID, 103u);
    ASSERT_EQ(bands[1].wID, 104u);
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0), bands[0].fStyle);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mrestore", 0), bands[0].cxRestored);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mmax", 7), 0u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0), bands[1].fStyle);
    EXPECT_EQ(App().GetNumber(L"Settings", L"trestore", 0), bands[1].cxRestored);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tmax", 7), 0u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0), 128u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0), 129u);
    EXPECT_NE(bands[0].cxRestored, bands[1].cxRestored);
}

TEST_F(MainWindowTest, ItsEndSavesItsPlace)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 40, 50, 500, 300, SWP_NOZORDER);
    ASSERT_TRUE(PumpUntil([&] {
        RECT place;
        GetWindowRect(window, &place);
        return place.left == 40 && place.right == 540;
    }));
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wLeft", 0), 40u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wTop", 0), 50u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wRight", 0), 540u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wBottom", 0), 350u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wMax", 7), 0u);
}

class StoredSort : public MainWindowTest {
  protected:
    StoredSort()
    {
        App().SetNumber(L"Settings", L"iCols", 1);
        App().SetNumber(L"Settings", L"Column0", 0x6506400C); // the date, not the sort column
    }
    CEPROPID OpenedSort()
    {
        SORTORDERSPEC sort{};
        App().Journal().GetSort(&sort);
        return sort.propid;
    }
};

TEST_F(StoredSort, IsTheOneTheJournalOpensIn)
{
    App().SetNumber(L"Options", L"sort", 0x0066001F);
    Create();
    EXPECT_EQ(OpenedSort(), 0x0066001Fu);
}

TEST_F(StoredSort, IsTheDateWhenItIsMissing)
{
    Create();
    EXPECT_EQ(OpenedSort(), 0x00650040u);
}

class LayoutNotification : public MainWindowTest, public testing::WithParamInterface<UINT> {};

TEST_P(LayoutNotification, SavesStyleAndWidthOnly)
{
    HWND window = Create();
    App().SetNumber(L"Settings", L"mmax", 77);
    App().SetNumber(L"Settings", L"tmax", 78);
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"tstyle", L"trestore"})
        App().RemoveValue(L"Settings", name);
    NMHDR header{Bands(), 102, GetParam()};
    SendMessageW(window, WM_NOTIFY, 102, reinterpret_cast<LPARAM>(&header));
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"tstyle", L"trestore"})
        EXPECT_NE(App().GetNumber(L"Settings", name, 0xABCDEF), 0xABCDEFu) << name;
    EXPECT_EQ(App().GetNumber(L"Settings", L"mmax", 0), 77u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tmax", 0), 78u);
}

TEST_P(LayoutNotification, RefitsTheListFirst)
{
    HWND window = Create();
    SetWindowPos(List(), nullptr, 7, 3, 50, 40, SWP_NOZORDER | SWP_NOACTIVATE);
    NMHDR header{Bands(), 102, GetParam()};
    SendMessageW(window, WM_NOTIFY, 102, reinterpret_cast<LPARAM>(&header));
    RECT client, list;
    GetClientRect(window, &client);
    GetWindowRect(List(), &list);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&list), 2);
    EXPECT_EQ(list.top, CommandBands_Height(Bands()));
    EXPECT_EQ(list.right, client.right);
    EXPECT_EQ(list.bottom, client.bottom);
}

INSTANTIATE_TEST_SUITE_P(Codes, LayoutNotification,
                         testing::Values(static_cast<UINT>(RBN_HEIGHTCHANGE),
                                         static_cast<UINT>(RBN_LAYOUTCHANGED)));

TEST_F(MainWindowTest, BuildingTheBandsSavesNothing)
{
    App().SetNumber(L"Settings", L"mrestore", 4242);
    ASSERT_NE(m_window.Create(Instance()), nullptr);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mrestore", 0), 4242u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0xABCDEF), 0xABCDEFu);
}

TEST_F(MainWindowTest, AStoredMaximizedBandIsMaximized)
{
    const std::pair<const wchar_t*, const wchar_t*> names[] = {{L"tmax", L"mmax"}, {L"mmax", L"tmax"}};
    for (const auto& [maximized, other] : names) {
        App().SetNumber(L"Settings", maximized, 3);
        App().SetNumber(L"Settings", other, 0);
        HWND window = Create();
        SendMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(App().GetNumber(L"Settings", maximized, 0), 1u) << maximized;
        EXPECT_EQ(App().GetNumber(L"Settings", other, 5), 0u) << other;
    }
}

TEST_F(MainWindowTest, AFailedStartLeavesNoWindowAndNoSetting)
{
    const std::string junk = "This is no store.\r\n";
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), junk));
    EXPECT_EQ(m_window.Create(Instance()), nullptr);
    EXPECT_EQ(FindWindowW(L"Journal", nullptr), nullptr);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), junk);
    HKEY key = nullptr;
    const LSTATUS found =
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Settings", 0, KEY_READ, &key);
    EXPECT_EQ(found, ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(TakeQuitMessage());
}

int IconSide(HWND window, WPARAM which)
{
    ICONINFO info{};
    BITMAP bitmap{};
    if (!GetIconInfo(reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, which, 0)), &info))
        return 0;
    GetObjectW(info.hbmColor, sizeof bitmap, &bitmap);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return static_cast<int>(bitmap.bmWidth);
}

TEST_F(MainWindowTest, AStartedProgramHasItsIconsAndRunsToTheQuitMessage)
{
    UnregisterClassW(kMainWindowClass, Instance());
    ASSERT_EQ(App().InitInstance(Instance(), SW_SHOWNORMAL), 1);
    HWND window = App().MainWindowHandle();
    EXPECT_EQ(IconSide(window, ICON_SMALL), Scale(16));
    EXPECT_EQ(IconSide(window, ICON_BIG), Scale(32));
    EXPECT_EQ(App().Instance(), Instance());
    SendMessageW(window, WM_CLOSE, 0, 0);
    ASSERT_TRUE(TakeQuitMessage());
    PostQuitMessage(42);
    EXPECT_EQ(App().Run(), 42);
}

TEST_F(MainWindowTest, AboutShowsTheProgramAndTheBuild)
{
    Create();
    std::wstring title, product, platform, build;
    bool bold = false;
    const ModalDriver driver([&](HWND dialog) {
        title = WindowText(dialog);
        product = WindowText(GetDlgItem(dialog, IDC_ABOUT_PRODUCT));
        platform = WindowText(GetDlgItem(dialog, IDC_ABOUT_PLATFORM));
        build = WindowText(GetDlgItem(dialog, IDC_ABOUT_BUILD));
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendDlgItemMessageW(dialog, IDC_ABOUT_PRODUCT, WM_GETFONT, 0, 0)),
                   sizeof font, &font);
        bold = font.lfWeight == FW_BOLD;
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    Command(160);
    ASSERT_TRUE(driver.Ran());
    EXPECT_EQ(title, L"About Journal");
    EXPECT_EQ(product, L"Kelvra Journal");
    EXPECT_EQ(platform, L"Handheld PC Pro Version");
    EXPECT_EQ(build, L"Build (2094)");
    EXPECT_TRUE(bold);
}

class AboutAnswer : public MainWindowTest, public testing::WithParamInterface<int> {};

TEST_P(AboutAnswer, ClosesItAndDeletesItsFont)
{
    Create();
    HGDIOBJ font = nullptr;
    const ModalDriver driver([&](HWND dialog) {
        font = reinterpret_cast<HGDIOBJ>(SendDlgItemMessageW(dialog, IDC_ABOUT_PRODUCT, WM_GETFONT, 0, 0));
        EXPECT_EQ(GetObjectType(font), DWORD{OBJ_FONT});
        SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(GetParam()), 0);
    });
    Command(160);
    ASSERT_TRUE(driver.Ran());
    EXPECT_EQ(GetObjectType(font), 0u);
}

INSTANTIATE_TEST_SUITE_P(Both, AboutAnswer, testing::Values(IDOK, IDCANCEL));

} // namespace
