// A small program with a window of each kind that the harness works from outside: what it does is told in its
// title.
#include <windows.h>
#include <commctrl.h>

#include <cstdlib>
#include <string>

#include "e2e/sample/sample.h"

namespace {

constexpr int kRows = 1000;
constexpr int kBarHeight = 40;

std::wstring TextOfItem(HWND dialog, int id)
{
    wchar_t text[256];
    return std::wstring(text, GetDlgItemTextW(dialog, id, text, 256));
}

std::wstring DateText(HWND dialog)
{
    SYSTEMTIME date{};
    if (DateTime_GetSystemtime(GetDlgItem(dialog, SAMPLE_DATE), &date) != GDT_VALID)
        return L"none";
    return std::to_wstring(date.wYear) + L"-" + std::to_wstring(date.wMonth) + L"-" +
           std::to_wstring(date.wDay);
}

std::wstring Summary(HWND dialog)
{
    return TextOfItem(dialog, SAMPLE_EDIT) + L"|" + TextOfItem(dialog, SAMPLE_COMBO) + L"|" +
           (IsDlgButtonChecked(dialog, SAMPLE_CHECK) ? L"checked" : L"empty") + L"|" + DateText(dialog);
}

void OnInitDialog(HWND dialog)
{
    for (const wchar_t* item : {L"One", L"Two", L"Three"})
        SendDlgItemMessageW(dialog, SAMPLE_COMBO, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    SendDlgItemMessageW(dialog, SAMPLE_DATE, DTM_SETSYSTEMTIME, GDT_NONE, 0);
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG: OnInitDialog(dialog); return TRUE;
    case WM_NOTIFY:
        if (reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(DTN_DATETIMECHANGE))
            SetDlgItemTextW(dialog, SAMPLE_ECHO, (L"date " + DateText(dialog)).c_str());
        return FALSE;
    case WM_COMMAND:
        if (HIWORD(wParam) == CBN_SELCHANGE || HIWORD(wParam) == CBN_EDITCHANGE)
            SetDlgItemTextW(dialog, SAMPLE_ECHO, L"combo");
        if (LOWORD(wParam) == IDOK)
            SetWindowTextW(GetParent(dialog), Summary(dialog).c_str());
        if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)
            EndDialog(dialog, LOWORD(wParam));
        return FALSE;
    default: return FALSE;
    }
}

void CreateList(HWND window)
{
    HWND list =
        CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, 0,
                        kBarHeight, 400, 250, window, reinterpret_cast<HMENU>(SAMPLE_LIST), nullptr, nullptr);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    for (int column = 0; column < 2; ++column) {
        std::wstring title = column == 0 ? L"Number" : L"Square";
        LVCOLUMNW descriptor{};
        descriptor.mask = LVCF_TEXT | LVCF_WIDTH;
        descriptor.cx = 100 + 20 * column;
        descriptor.pszText = title.data();
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                     reinterpret_cast<LPARAM>(&descriptor));
    }
    ListView_SetItemCount(list, kRows);
}

void CreateBar(HWND window)
{
    HWND bar =
        CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | TBSTYLE_LIST | CCS_NOPARENTALIGN,
                        0, 0, 400, kBarHeight, window, reinterpret_cast<HMENU>(SAMPLE_BAR), nullptr, nullptr);
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(bar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);
    const TBBUTTON buttons[] = {
        {I_IMAGENONE,
         SAMPLE_CMD_DIALOG,
         TBSTATE_ENABLED,
         BTNS_DROPDOWN,
         {},
         0,
         reinterpret_cast<INT_PTR>(L"Dialog")},
        {0, 0, TBSTATE_ENABLED, BTNS_SEP, {}, 0, 0},
        {I_IMAGENONE,
         SAMPLE_CMD_CHECKED,
         TBSTATE_ENABLED,
         BTNS_CHECK,
         {},
         0,
         reinterpret_cast<INT_PTR>(L"Checked")},
        {I_IMAGENONE, SAMPLE_CMD_GREY, 0, BTNS_BUTTON, {}, 0, reinterpret_cast<INT_PTR>(L"Grey")},
    };
    SendMessageW(bar, TB_ADDBUTTONSW, 4, reinterpret_cast<LPARAM>(buttons));
}

void ShowPopup(HWND window)
{
    HMENU menu = LoadMenuW(nullptr, MAKEINTRESOURCEW(SAMPLE_POPUP));
    TrackPopupMenu(GetSubMenu(menu, 0), 0, 100, 100, 0, window, nullptr);
    DestroyMenu(menu);
}

void OnCommand(HWND window, int command)
{
    switch (command) {
    case SAMPLE_CMD_BOX: {
        const int answer =
            MessageBoxW(window, L"Yes or no?", L"Question", MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2);
        SetWindowTextW(window, answer == IDYES ? L"yes" : L"no");
        break;
    }
    case SAMPLE_CMD_DIALOG:
        DialogBoxParamW(nullptr, MAKEINTRESOURCEW(SAMPLE_DIALOG), window, DialogProcedure, 0);
        break;
    case SAMPLE_CMD_CHECKED: SetWindowTextW(window, L"checked"); break;
    case SAMPLE_CMD_CRASH: std::abort();
    default: break;
    }
}

void OnNotify(HWND window, NMHDR* header)
{
    if (header->code == static_cast<UINT>(LVN_GETDISPINFOW)) {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(header)->item;
        const int value = item.iSubItem == 0 ? item.iItem : item.iItem * item.iItem;
        if (item.mask & LVIF_TEXT)
            lstrcpynW(item.pszText, std::to_wstring(value).c_str(), item.cchTextMax);
    } else if (header->code == static_cast<UINT>(TBN_DROPDOWN)) {
        ShowPopup(window);
    } else if (header->code == static_cast<UINT>(NM_DBLCLK)) {
        SetWindowTextW(window, L"double click");
    } else if (header->code == static_cast<UINT>(LVN_COLUMNCLICK)) {
        SetWindowTextW(window, L"column click");
    }
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE:
        CreateBar(window);
        CreateList(window);
        return 0;
    case WM_COMMAND: OnCommand(window, LOWORD(wParam)); return 0;
    case WM_NOTIFY: OnNotify(window, reinterpret_cast<NMHDR*>(lParam)); return 0;
    case WM_CHAR: SetWindowTextW(window, std::wstring(1, static_cast<wchar_t>(wParam)).c_str()); return 0;
    case WM_DESTROY: PostQuitMessage(7); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace

int main()
{
    const INITCOMMONCONTROLSEX controls{sizeof controls,
                                        ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszMenuName = MAKEINTRESOURCEW(SAMPLE_MENU);
    windowClass.lpszClassName = L"HarnessSample";
    RegisterClassW(&windowClass);
    CreateWindowExW(0, L"HarnessSample", L"Sample", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 440, 360,
                    nullptr, nullptr, windowClass.hInstance, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
