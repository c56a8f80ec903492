#include "ui/store_window.h"

#include "ui/dialog_in_front.h"

namespace {

constexpr const wchar_t* kStoreProperty = L"Quillmarsh.Store";

std::wstring HexText(uint64_t number)
{
    wchar_t text[17];
    for (int i = 15; i >= 0; --i, number >>= 4)
        text[i] = L"0123456789ABCDEF"[number & 0xF];
    text[16] = L'\0';
    return text;
}

// A window that is just being made says it a moment later; one of a program that knows no stores never does.
uint64_t StoreOfWindow(HWND window)
{
    constexpr int kLooks = 50;
    HANDLE store = nullptr;
    for (int i = 0; i < kLooks && IsWindow(window) && !(store = GetPropW(window, kStoreProperty)); ++i)
        Sleep(10);
    return reinterpret_cast<uint64_t>(store);
}

} // namespace

Turn TurnForStore(const wchar_t* program, uint64_t store)
{
    return Turn(std::wstring(program) + L"." + HexText(store));
}

void SetStoreOfWindow(HWND window, uint64_t store, Turn* turn)
{
    SetPropW(window, kStoreProperty, reinterpret_cast<HANDLE>(store));
    if (turn)
        turn->End();
}

void BringOtherForward(HWND window, int showCommand)
{
    if (IsWindowVisible(window))
        return BringForward(window, showCommand);
    if (HWND dialog = DialogInFront(window))
        SetForegroundWindow(dialog);
}

HWND FindWindowOfStore(const wchar_t* windowClass, uint64_t store)
{
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, windowClass, nullptr)) != nullptr;) {
        const uint64_t shown = StoreOfWindow(window);
        if (shown == store || (!shown && IsWindow(window)))
            return window;
    }
    return nullptr;
}

bool BringRunningCopyForward(const wchar_t* windowClass, uint64_t store, int showCommand, Turn& turn)
{
    HWND running = FindWindowOfStore(windowClass, store);
    if (!IsWindow(running))
        return false;
    turn.End();
    BringOtherForward(running, showCommand);
    return true;
}
