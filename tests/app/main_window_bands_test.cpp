#include "app/main_window_fixture.h"

#include <algorithm>

#include "res/resource.h"
#include "ui/pictures/image_list.h"
#include "ui/screen/scale.h"

namespace {

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
    const UniqueImageList wanted = LoadImageStrip(Instance(), 212, 16, CLR_NONE, SystemDpi());
    ASSERT_EQ(ImageList_GetImageCount(info.himl), ImageList_GetImageCount(wanted.get()));
    for (int i = 0; i < ImageList_GetImageCount(wanted.get()); ++i)
        EXPECT_EQ(PictureOf(info.himl, i), PictureOf(wanted.get(), i)) << i;
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
    const Wanted wanted[] = {{0, CMD_NEW_ENTRY, BTNS_BUTTON},
                             {1, CMD_EDIT_ENTRY, BTNS_BUTTON},
                             {8, CMD_DELETE_ENTRY, BTNS_BUTTON},
                             {0, 0, BTNS_SEP},
                             {3, CMD_CUT, BTNS_BUTTON},
                             {4, CMD_COPY, BTNS_BUTTON},
                             {5, CMD_PASTE, BTNS_BUTTON},
                             {0, 0, BTNS_SEP},
                             {15, CMD_FIND, BTNS_BUTTON},
                             {2, CMD_CONTACTS, BTNS_DROPDOWN},
                             {0, 0, BTNS_SEP}};
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

TEST_F(MainWindowTest, TheFirstImagesAreThoseOfItsBitmaps)
{
    Create();
    auto images = reinterpret_cast<HIMAGELIST>(SendMessageW(Buttons(), TB_GETIMAGELIST, 0, 0));
    EXPECT_EQ(ImageList_GetImageCount(images), 18) << "and the system's fifteen";
    int index = 0;
    for (const int bitmap : {214, 215, 213}) {
        const UniqueImageList wanted = LoadImageStrip(Instance(), bitmap, 16, kImageMask, SystemDpi());
        ASSERT_NE(wanted, nullptr);
        EXPECT_EQ(PictureOf(images, index), PictureOf(wanted.get(), 0)) << bitmap;
        ++index;
    }
}

// Half transparent pixels aside, a picture in one colour.
COLORREF DarkestOf(HIMAGELIST images)
{
    const std::vector<COLORREF> pixels = PictureOf(images, 1);
    const auto light = [](COLORREF color) { return GetRValue(color) + GetGValue(color) + GetBValue(color); };
    return *std::min_element(pixels.begin(), pixels.end(),
                             [&](COLORREF one, COLORREF other) { return light(one) < light(other); });
}

TEST_F(MainWindowTest, PicturesInTheColourOfTextsFollowTheSystems)
{
    HWND window = Create();
    const auto images = [this] {
        return reinterpret_cast<HIMAGELIST>(SendMessageW(Adornments(), TB_GETIMAGELIST, 0, 0));
    };
    const int element = COLOR_BTNTEXT;
    const COLORREF before = GetSysColor(element), wanted = RGB(160, 0, 0);
    EXPECT_EQ(DarkestOf(images()), before);
    SetSysColors(1, &element, &wanted);
    SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(DarkestOf(images()), wanted);
    SetSysColors(1, &element, &before);
    SendMessageW(window, WM_THEMECHANGED, 0, 0);
    EXPECT_EQ(DarkestOf(images()), before);
    RECT list{};
    GetWindowRect(List(), &list);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&list), 2);
    EXPECT_EQ(list.top, CommandBands_Height(Bands()));
}

// Images that cannot be had do not end the start; the buttons say what they are, and the others keep theirs.
TEST_F(MainWindowTest, MissingImagesLeaveButtonsWithTheirNames)
{
    const WindowRefuser lender(L"ToolbarWindow32", 3);
    Create();
    const auto imageOf = [this](int command) {
        TBBUTTONINFOW info{};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_IMAGE;
        SendMessageW(Buttons(), TB_GETBUTTONINFOW, static_cast<WPARAM>(command),
                     reinterpret_cast<LPARAM>(&info));
        return info.iImage;
    };
    EXPECT_EQ(SendMessageW(Buttons(), TB_BUTTONCOUNT, 0, 0), 11);
    EXPECT_EQ(imageOf(CMD_DELETE_ENTRY), I_IMAGENONE);
    EXPECT_EQ(ButtonText(Buttons(), CMD_DELETE_ENTRY), L"Delete");
    EXPECT_EQ(imageOf(CMD_NEW_ENTRY), 0);
    EXPECT_EQ(imageOf(CMD_CONTACTS), 2);
    EXPECT_EQ(ButtonText(Buttons(), CMD_NEW_ENTRY), L"");
}

TEST_F(MainWindowTest, ButtonsWithoutATextAreAsWideAsTheirImage)
{
    Create();
    for (HWND bar : {Buttons(), MenuBar(), Adornments()})
        EXPECT_NE(SendMessageW(bar, TB_GETEXTENDEDSTYLE, 0, 0) & TBSTYLE_EX_MIXEDBUTTONS, 0);
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_STYLE;
    SendMessageW(Buttons(), TB_GETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info));
    EXPECT_NE(info.fsStyle & BTNS_SHOWTEXT, 0) << "the filter's says what is in force";
}

// Of any channel of any pixel.
int GreatestDifference(const std::vector<COLORREF>& one, const std::vector<COLORREF>& other)
{
    int greatest = 0;
    for (size_t i = 0; i < one.size(); ++i)
        for (const int shift : {0, 8, 16})
            greatest = std::max(greatest, std::abs(static_cast<int>(one[i] >> shift & 0xFF) -
                                                   static_cast<int>(other[i] >> shift & 0xFF)));
    return greatest;
}

// But for Delete's, which is drawn. Half-transparent pixels come back from their transparency rounded.
TEST_F(MainWindowTest, TheSystemsStandardImagesFollow)
{
    Create();
    auto images = reinterpret_cast<HIMAGELIST>(SendMessageW(Buttons(), TB_GETIMAGELIST, 0, 0));
    const UniqueWindow bar(CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, WS_POPUP, 0, 0, 0, 0, nullptr,
                                           nullptr, nullptr, nullptr));
    ASSERT_NE(bar, nullptr);
    SendMessageW(bar.get(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(bar.get(), TB_LOADIMAGES, IDB_STD_SMALL_COLOR, reinterpret_cast<LPARAM>(HINST_COMMCTRL));
    auto standard = reinterpret_cast<HIMAGELIST>(SendMessageW(bar.get(), TB_GETIMAGELIST, 0, 0));
    const std::pair<int, int> wanted[] = {{3, STD_CUT}, {4, STD_COPY}, {5, STD_PASTE}, {15, STD_FIND}};
    for (const auto& [index, image] : wanted)
        EXPECT_LE(GreatestDifference(PictureOf(images, index), PictureOf(standard, image)), 2) << index;
}

TEST_F(MainWindowTest, TheFilterButtonReadsNoneAndIsWide)
{
    Create();
    EXPECT_EQ(ButtonText(Buttons(), CMD_CONTACTS), L"None");
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    SendMessageW(Buttons(), TB_GETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.cx, Scale(110));
}

TEST_F(MainWindowTest, ButtonsHaveTheSevenTooltips)
{
    HWND window = Create();
    const std::pair<int, const wchar_t*> tips[] = {{CMD_NEW_ENTRY, L"New"},       {CMD_EDIT_ENTRY, L"Edit"},
                                                   {CMD_DELETE_ENTRY, L"Delete"}, {CMD_CUT, L"Cut"},
                                                   {CMD_COPY, L"Copy"},           {CMD_PASTE, L"Paste"},
                                                   {CMD_FIND, L"Find"},           {CMD_CONTACTS, L""}};
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

} // namespace
