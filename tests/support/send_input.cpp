#include "support/send_input.h"

namespace {

// Those that the number pad has as well.
bool IsExtendedKey(WORD key)
{
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE || key == VK_APPS;
}

} // namespace

void SendKey(WORD key, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (down ? 0u : KEYEVENTF_KEYUP) | (IsExtendedKey(key) ? KEYEVENTF_EXTENDEDKEY : 0u);
    SendInput(1, &input, sizeof input);
}

void SendMouse(DWORD flags)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

bool IsPointerAt(POINT point)
{
    POINT now{};
    return GetCursorPos(&now) && now.x == point.x && now.y == point.y;
}
