// The least that a program with a window does: what the journal's start is compared with. It has the
// journal's manifest, is linked as statically, and its window is as large. With the argument "controls" it
// also makes the common controls ready, without using one; with "bars" its window has the controls of the
// journal's as well: a rebar with two tool bars, a third one beside it, and a list with its header.
#include <windows.h>
#include <commctrl.h>

#include "bench_window.h"

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// Loaded by hand, so that the program without them does not pay for them.
void LoadControls()
{
    const INITCOMMONCONTROLSEX controls{sizeof controls,
                                        ICC_LISTVIEW_CLASSES | ICC_DATE_CLASSES | ICC_COOL_CLASSES};
    HMODULE library = LoadLibraryW(L"comctl32.dll");
    using Init = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
    const auto init =
        reinterpret_cast<Init>(reinterpret_cast<void*>(GetProcAddress(library, "InitCommonControlsEx")));
    if (init)
        init(&controls);
}

HWND MakeControl(HWND parent, const wchar_t* controlClass, DWORD style)
{
    RECT area{};
    GetClientRect(parent, &area);
    return CreateWindowExW(0, controlClass, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, area.right, area.bottom,
                           parent, nullptr, nullptr, nullptr);
}

HWND MakeBar(HWND parent, DWORD style)
{
    HWND bar = MakeControl(parent, TOOLBARCLASSNAMEW, TBSTYLE_FLAT | TBSTYLE_LIST | style);
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(bar, TB_LOADIMAGES, IDB_STD_SMALL_COLOR, reinterpret_cast<LPARAM>(HINST_COMMCTRL));
    TBBUTTON buttons[5]{};
    for (int i = 0; i < 5; ++i)
        buttons[i] = {i, i + 1, TBSTATE_ENABLED, BTNS_AUTOSIZE, {}, 0, 0};
    SendMessageW(bar, TB_ADDBUTTONSW, 5, reinterpret_cast<LPARAM>(buttons));
    return bar;
}

void AddBand(HWND rebar, HWND bar)
{
    REBARBANDINFOW band{};
    band.cbSize = sizeof band;
    band.fMask = RBBIM_CHILD | RBBIM_CHILDSIZE | RBBIM_SIZE;
    band.hwndChild = bar;
    band.cx = 150;
    band.cxMinChild = 120;
    band.cyMinChild = 22;
    SendMessageW(rebar, RB_INSERTBANDW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&band));
}

void MakeBarsAndList(HWND window)
{
    HWND rebar = MakeControl(window, REBARCLASSNAMEW, RBS_VARHEIGHT | RBS_BANDBORDERS | WS_CLIPCHILDREN);
    AddBand(rebar, MakeBar(rebar, CCS_NORESIZE | CCS_NOPARENTALIGN));
    AddBand(rebar, MakeBar(rebar, CCS_NORESIZE | CCS_NOPARENTALIGN));
    HWND beside = MakeBar(window, CCS_NORESIZE | CCS_NOPARENTALIGN);
    RECT area{};
    GetClientRect(window, &area);
    MoveWindow(beside, area.right - 48, 0, 48, 22, FALSE);
    MoveWindow(rebar, 0, 0, area.right - 48, 24, FALSE);
    HWND list = MakeControl(window, WC_LISTVIEWW, LVS_REPORT | LVS_OWNERDATA);
    MoveWindow(list, 0, 24, area.right, area.bottom - 24, FALSE);
    wchar_t title[] = L"Column";
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = area.right / 2;
    column.pszText = title;
    for (int i = 0; i < 2; ++i)
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    // As many rows as have a scroll bar, without a text.
    SendMessageW(list, LVM_SETITEMCOUNT, 1000, 0);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR arguments, int)
{
    const bool withBars = wcscmp(arguments, L"bars") == 0;
    if (withBars || wcscmp(arguments, L"controls") == 0)
        LoadControls();
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = bench::kEmptyWindowClass;
    RegisterClassW(&windowClass);
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    HWND window =
        CreateWindowExW(0, bench::kEmptyWindowClass, L"Empty", WS_OVERLAPPEDWINDOW, area.left, area.top,
                        area.right - area.left, area.bottom - area.top, nullptr, nullptr, instance, nullptr);
    if (withBars)
        MakeBarsAndList(window);
    ShowWindow(window, SW_SHOWNORMAL);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
