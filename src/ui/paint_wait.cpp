#include "ui/paint_wait.h"

namespace {

// A window that never becomes valid may not hold up the rest.
constexpr int kMostPaints = 50;

void PaintWhatIsDue()
{
    MSG message;
    for (int i = 0; i < kMostPaints && PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE); ++i) {
        if (message.message == WM_QUIT) { // comes whatever is asked for
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        DispatchMessageW(&message);
    }
}

int g_waits = 0; // that are under way

// What a control merely tells of itself changes nothing but what the window shows.
bool AsksForWork(UINT message, WPARAM wParam)
{
    constexpr WORD kFromAccelerator = 1; // a menu's and a button's is 0
    return message == WM_CLOSE || message == WM_SYSCOMMAND ||
           (message == WM_COMMAND && HIWORD(wParam) <= kFromAccelerator);
}

} // namespace

bool IsPaintWaiting()
{
    return g_waits > 0;
}

bool PutOffWhileWaiting(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return IsPaintWaiting() && AsksForWork(message, wParam) && PostMessageW(window, message, wParam, lParam);
}

void PaintWhileWaiting(DWORD milliseconds)
{
    ++g_waits;
    HCURSOR before = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
        PaintWhatIsDue();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now),
                                  QS_PAINT | QS_SENDMESSAGE);
    }
    PaintWhatIsDue();
    SetCursor(before);
    --g_waits;
}
