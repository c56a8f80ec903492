// The least that a program with a window does: what the journal's start is compared with. It has the
// journal's manifest, is linked as statically, and its window is as large. With the argument "controls" it
// also makes the common controls ready, without using one.
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

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR arguments, int)
{
    if (wcscmp(arguments, L"controls") == 0)
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
    HWND window = CreateWindowExW(0, bench::kEmptyWindowClass, L"Empty", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                  area.left, area.top, area.right - area.left, area.bottom - area.top,
                                  nullptr, nullptr, instance, nullptr);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
