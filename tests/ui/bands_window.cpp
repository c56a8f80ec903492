#include "ui/bands_window.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "res/resource.h"
#include "ui/screen/scale.h"
#include "ui/ui_test_resource.h"

namespace {

struct Button {
    int image;
    int command; // 0: a separator
    BYTE style;
    BYTE state = TBSTATE_ENABLED;
};

constexpr Button kButtons[] = {{0, 100, BTNS_BUTTON},
                               {1, 101, BTNS_BUTTON},
                               {3 + STD_DELETE, 102, BTNS_BUTTON},
                               {0, 0, BTNS_SEP},
                               {3 + STD_CUT, 141, BTNS_BUTTON},
                               {3 + STD_COPY, kGreyCommand, BTNS_BUTTON, 0},
                               {3 + STD_PASTE, 142, BTNS_BUTTON},
                               {0, 0, BTNS_SEP},
                               {3 + STD_FIND, 115, BTNS_BUTTON},
                               {2, kFilterCommand, BTNS_DROPDOWN | BTNS_SHOWTEXT},
                               {0, 0, BTNS_SEP}};

HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

REBARBANDINFOW Describe(UINT id, const BandSetup& setup)
{
    REBARBANDINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE;
    info.wID = id;
    info.fStyle = setup.style;
    info.cx = setup.width;
    return info;
}

} // namespace

BandsWindow::BandsWindow(int width)
    : BandsWindow(width, {256, static_cast<UINT>(Scale(155))}, {128, static_cast<UINT>(Scale(140))})
{}

BandsWindow::BandsWindow(int width, BandSetup menu, BandSetup buttons)
{
    Create(width);
    Build(menu, buttons);
}

BandsWindow::~BandsWindow()
{
    if (m_window)
        DestroyWindow(m_window);
}

void BandsWindow::Create(int width)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = Instance();
    windowClass.lpszClassName = L"BandsWindow";
    RegisterClassW(&windowClass);
    CreateWindowExW(0, windowClass.lpszClassName, L"Bands", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                    nullptr, Instance(), this);
    ASSERT_NE(m_window, nullptr);
    SetClientWidth(width);
    m_focus = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_MULTILINE, 0, 200, 200, 100,
                              m_window, nullptr, Instance(), nullptr);
    ASSERT_NE(m_focus, nullptr);
}

LRESULT CALLBACK BandsWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* created = static_cast<BandsWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<BandsWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    LRESULT result = 0;
    if (self && self->OnMessage(message, wParam, lParam, &result))
        return result;
    if (self && message == WM_NCDESTROY)
        self->m_window = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
}

void BandsWindow::Show()
{
    ShowWindow(m_window, SW_SHOW);
    SetForegroundWindow(m_window);
    SetFocus(m_focus);
    EXPECT_TRUE(PumpUntil([this] { return GetForegroundWindow() == m_window && GetFocus() == m_focus; }));
}

void BandsWindow::Build(BandSetup menu, BandSetup buttons)
{
    m_bands = CommandBands_Create(Instance(), Window(), kBandsId, RBS_BANDBORDERS, nullptr);
    ASSERT_NE(m_bands, nullptr);
    const REBARBANDINFOW bands[] = {Describe(kMenuBandId, menu), Describe(kButtonBandId, buttons)};
    ASSERT_TRUE(CommandBands_AddBands(m_bands, Instance(), 2, bands));
    ASSERT_TRUE(CommandBar_InsertMenubar(MenuBar(), Instance(), TEST_MENU));
    AddButtons();
    ASSERT_TRUE(CommandBands_AddAdornments(m_bands, Instance(), kAdornments));
    if (menu.isMaximized)
        SendMaximize(0);
    if (buttons.isMaximized)
        SendMaximize(1);
}

void BandsWindow::AddButtons()
{
    int image = 0;
    for (const int bitmap : {IDB_NEW_ENTRY, IDB_EDIT_ENTRY, IDB_FILTER})
        ASSERT_EQ(CommandBar_AddBitmap(ButtonBar(), Instance(), bitmap, 1), image++);
    ASSERT_EQ(CommandBar_AddBitmap(ButtonBar(), HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 15), 3);
    std::vector<TBBUTTON> buttons;
    for (const Button& button : kButtons) {
        TBBUTTON added{};
        added.iBitmap = button.image;
        added.idCommand = button.command;
        added.fsState = button.state;
        added.fsStyle = button.style;
        buttons.push_back(added);
    }
    ASSERT_TRUE(
        SendMessageW(ButtonBar(), TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())));
    wchar_t text[] = L"None";
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_TEXT | TBIF_SIZE;
    info.pszText = text;
    info.cx = static_cast<WORD>(Scale(110));
    ASSERT_TRUE(
        SendMessageW(ButtonBar(), TB_SETBUTTONINFOW, kFilterCommand, reinterpret_cast<LPARAM>(&info)));
}

bool BandsWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) != m_focus)
        commands.push_back(LOWORD(wParam));
    if (message == WM_NOTIFY) {
        const auto* notification = reinterpret_cast<const NMHDR*>(lParam);
        const bool isOfBar = m_bands && notification->hwndFrom != m_bands;
        notifications.push_back({notification->hwndFrom, notification->idFrom, notification->code,
                                 isOfBar ? reinterpret_cast<const NMTOOLBARW*>(lParam)->iItem : 0});
    }
    if (onMessage && onMessage(message, wParam, lParam, result))
        return true;
    if (message == WM_GETMINMAXINFO) // wider than the screen, too
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMaxTrackSize = {10'000, 10'000};
    if (message == WM_SIZE && m_bands)
        CommandBands_Resize(m_bands);
    if (message == WM_SETFOCUS && IsWindow(m_focus)) {
        SetFocus(m_focus);
        return true;
    }
    return false;
}

HWND BandsWindow::Adornments() const
{
    return FindWindowExW(Window(), nullptr, TOOLBARCLASSNAMEW, nullptr);
}

void BandsWindow::SetClientWidth(int width)
{
    RECT frame{0, 0, width, 300};
    AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
    SetWindowPos(Window(), nullptr, 0, 0, static_cast<int>(frame.right - frame.left),
                 static_cast<int>(frame.bottom - frame.top), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(ClientWidth(), width);
}

int BandsWindow::ClientWidth() const
{
    RECT client{};
    GetClientRect(Window(), &client);
    return static_cast<int>(client.right);
}

RECT BandsWindow::BandRect(int index) const
{
    RECT rect{};
    SendMessageW(m_bands, RB_GETRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

std::vector<RECT> BandsWindow::BandRects() const
{
    return {BandRect(0), BandRect(1)};
}

COMMANDBANDSRESTOREINFO BandsWindow::Restore(int index) const
{
    COMMANDBANDSRESTOREINFO info{};
    info.cbSize = sizeof info;
    EXPECT_TRUE(CommandBands_GetRestoreInformation(m_bands, static_cast<UINT>(index), &info));
    return info;
}

BandSetup BandsWindow::SetupOf(int index) const
{
    const COMMANDBANDSRESTOREINFO info = Restore(index);
    return {info.fStyle, info.cxRestored, info.fMaximized != FALSE};
}

void BandsWindow::DragGripper(int dx, int dy)
{
    const RECT band = BandRect(static_cast<int>(SendMessageW(m_bands, RB_IDTOINDEX, kButtonBandId, 0)));
    const int x = static_cast<int>(band.left) + 2; // Wine moves the band by the distance from here
    const int y = static_cast<int>(band.top + band.bottom) / 2;
    const auto send = [this](UINT message, int atX, int atY) {
        SendMessageW(m_bands, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(atX, atY));
    };
    send(WM_LBUTTONDOWN, x, y);
    send(WM_MOUSEMOVE, x + dx / 2, y + dy / 2);
    send(WM_MOUSEMOVE, x + dx, y + dy);
    send(WM_LBUTTONUP, x + dx, y + dy);
    PumpMessages();
}

void BandsWindow::SendMaximize(int index) const
{
    SendMessageW(m_bands, RB_MAXIMIZEBAND, static_cast<WPARAM>(index), FALSE);
}

bool BandsWindow::Has(UINT_PTR idFrom, UINT code) const
{
    return std::any_of(notifications.begin(), notifications.end(),
                       [=](const Notification& n) { return n.idFrom == idFrom && n.code == code; });
}

std::vector<RECT> ButtonRects(HWND bar)
{
    std::vector<RECT> rects;
    const LRESULT count = SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button{};
        SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        RECT rect{};
        if (!(button.fsStyle & BTNS_SEP) &&
            SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&rect)))
            rects.push_back(rect);
    }
    return rects;
}

RECT RectIn(HWND window, HWND of)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, of, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}
