// The main window on a monitor of another resolution.
#include <map>

#include "app/main_window_fixture.h"
#include "res/resource.h"
#include "support/resolution.h"
#include "ui/screen/scale.h"

namespace {

int FontHeight(HWND control)
{
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
    return font.lfHeight;
}

int SideOf(HIMAGELIST images)
{
    int width = 0, height = 0;
    ImageList_GetIconSize(images, &width, &height);
    return width;
}

int SideOfIcon(HWND window, WPARAM which)
{
    ICONINFO info{};
    if (!GetIconInfo(reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, which, 0)), &info))
        return 0;
    const UniqueBitmap mask(info.hbmMask), color(info.hbmColor);
    BITMAP bitmap{};
    GetObjectW(info.hbmColor, sizeof bitmap, &bitmap);
    return bitmap.bmWidth;
}

int ButtonWidth(HWND bar, int command)
{
    RECT rect{};
    SendMessageW(bar, TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&rect));
    return rect.right - rect.left;
}

HIMAGELIST ImagesOf(HWND bar)
{
    return reinterpret_cast<HIMAGELIST>(SendMessageW(bar, TB_GETIMAGELIST, 0, 0));
}

class MainWindowResolution : public MainWindowTest {
  protected:
    int BandWidth(UINT band) const
    {
        COMMANDBANDSRESTOREINFO info{};
        EXPECT_TRUE(CommandBands_GetRestoreInformation(Bands(), band, &info));
        return static_cast<int>(info.cxRestored);
    }
    HIMAGELIST BandImages() const
    {
        REBARINFO info{};
        info.cbSize = sizeof info;
        info.fMask = RBIM_IMAGELIST;
        SendMessageW(Bands(), RB_GETBARINFO, 0, reinterpret_cast<LPARAM>(&info));
        return info.himl;
    }
    // Everything that has a size of its own, in pixels.
    std::map<std::string, int> Sizes()
    {
        std::map<std::string, int> sizes;
        HWND window = m_window.Handle(), header = ListView_GetHeader(List());
        sizes["list font"] = FontHeight(List());
        sizes["list images"] = SideOf(ListView_GetImageList(List(), LVSIL_SMALL));
        sizes["header images"] = SideOf(Header_GetImageList(header));
        sizes["first column"] = ListView_GetColumnWidth(List(), 0);
        sizes["second column"] = ListView_GetColumnWidth(List(), 1);
        sizes["band images"] = SideOf(BandImages());
        sizes["button images"] = SideOf(ImagesOf(Buttons()));
        sizes["adornments"] = SideOf(ImagesOf(Adornments()));
        sizes["filter button"] = ButtonWidth(Buttons(), CMD_CONTACTS);
        sizes["button font"] = FontHeight(Buttons());
        sizes["menu font"] = FontHeight(MenuBar());
        sizes["menu band"] = BandWidth(0);
        sizes["small icon"] = SideOfIcon(window, ICON_SMALL);
        sizes["big icon"] = SideOfIcon(window, ICON_BIG);
        MINMAXINFO limits{};
        SendMessageW(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
        sizes["least width"] = limits.ptMinTrackSize.x;
        return sizes;
    }
};

TEST_F(MainWindowResolution, EverythingFollowsAChangeAndComesBack)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 10, 10, Scale(500), Scale(260), SWP_NOZORDER);
    TellResolution(window, 1); // the icons are the application's until then
    const auto before = Sizes();
    for (const auto& [name, size] : before)
        EXPECT_NE(size, 0) << name << " is not there, and nothing follows";
    TellResolution(window, 2);
    for (const auto& [name, size] : Sizes())
        EXPECT_NEAR(size, 2 * before.at(name), 1) << name;
    TellResolution(window, 1, 2);
    EXPECT_EQ(Sizes(), before);
    TellResolution(window, 3, 2);
    for (const auto& [name, size] : Sizes())
        EXPECT_NEAR(size, 3 * before.at(name) / 2, 2) << name;
    TellResolution(window, 2, 3);
    EXPECT_EQ(Sizes(), before);
}

TEST_F(MainWindowResolution, TakesTheSuggestedPlaceAndFillsIt)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 10, 20, Scale(330), Scale(200), SWP_NOZORDER);
    TellResolution(window, 2);
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.left, 10);
    EXPECT_EQ(place.top, 20);
    EXPECT_EQ(place.right - place.left, 2 * Scale(330));
    EXPECT_EQ(place.bottom - place.top, 2 * Scale(200));
    ExpectListBelowBands();
}

TEST_F(MainWindowResolution, TheBarsKeepWhatTheyShow)
{
    HWND window = Create();
    AddEntry(L"seen", 1);
    m_window.List().Refresh();
    for (const bool isSelected : {true, false}) {
        const UINT state = isSelected ? LVIS_SELECTED | LVIS_FOCUSED : 0;
        ListView_SetItemState(List(), isSelected ? 0 : -1, state, LVIS_SELECTED | LVIS_FOCUSED);
        std::map<int, bool> before;
        for (const int command :
             {CMD_NEW_ENTRY, CMD_EDIT_ENTRY, CMD_DELETE_ENTRY, CMD_CUT, CMD_PASTE, CMD_COPY, CMD_FIND})
            before[command] = ButtonEnabled(command);
        const bool menu = MenuEnabled(CMD_DELETE_ENTRY);
        TellResolution(window, 2);
        for (const auto& [command, isEnabled] : before)
            EXPECT_EQ(ButtonEnabled(command), isEnabled) << command;
        EXPECT_EQ(MenuEnabled(CMD_DELETE_ENTRY), menu);
        EXPECT_EQ(menu, isSelected);
        TellResolution(window, 1, 2);
    }
}

// The keyboard would be nowhere when what has it is made anew.
TEST_F(MainWindowResolution, TheKeyboardStaysInTheWindow)
{
    HWND window = Create();
    SetFocus(MenuBar());
    TellResolution(window, 2);
    EXPECT_EQ(GetFocus(), List());
}

TEST_F(MainWindowResolution, NothingThatIsStoredChanges)
{
    HWND window = Create();
    DestroyWindow(window);
    TakeQuitMessage();
    const wchar_t* const names[] = {L"mstyle", L"mrestore", L"mmax",    L"tstyle", L"trestore",
                                    L"tmax",   L"iCols",    L"Column0", L"Column1"};
    std::map<std::wstring, DWORD> before;
    for (const wchar_t* name : names)
        before[name] = App().GetNumber(kSettings, name, 0xDEAD);
    MainWindow second{App().GetSession()};
    ASSERT_NE(second.Create(Instance()), nullptr);
    second.ShowFirst(SW_SHOWNORMAL);
    TellResolution(second.Handle(), 2);
    DestroyWindow(second.Handle());
    for (const wchar_t* name : names)
        EXPECT_EQ(App().GetNumber(kSettings, name, 0xDEAD), before[name]) << std::string(name, name + 7);
}

// A divider that is dragged on the other monitor says a width in the units that are stored.
TEST_F(MainWindowResolution, ADraggedColumnIsStoredAsItIsThere)
{
    HWND window = Create();
    TellResolution(window, 2);
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    item.cxy = 200;
    NMHEADERW track{};
    track.hdr = {ListView_GetHeader(List()), 0, static_cast<UINT>(HDN_ENDTRACKW)};
    track.pitem = &item;
    SendMessageW(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&track));
    EXPECT_EQ(m_window.List().Columns().columns[0].Width(), 100);
}

} // namespace
