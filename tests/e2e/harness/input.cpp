#include "e2e/harness/input.h"

#include "e2e/harness/wait.h"
#include "support/send_input.h"

namespace {

constexpr int kSteadyPolls = 3; // a pointer that was seen there so often stays

void SendCharacter(wchar_t character, bool down)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | (down ? 0u : KEYEVENTF_KEYUP);
    SendInput(1, &input, sizeof input);
}

} // namespace

void PressKeys(std::initializer_list<WORD> keys)
{
    for (const WORD* key = keys.begin(); key != keys.end(); ++key)
        SendKey(*key, true);
    for (const WORD* key = keys.end(); key != keys.begin();)
        SendKey(*--key, false);
}

void PressKey(WORD key)
{
    PressKeys({key});
}

void TypeText(const std::wstring& text)
{
    for (const wchar_t character : text) {
        if (character == L'\n') {
            PressKey(VK_RETURN);
        } else if (character == L'\t') {
            PressKey(VK_TAB);
        } else {
            SendCharacter(character, true);
            SendCharacter(character, false);
        }
    }
}

// A late event of the display can move the pointer back.
bool MoveTo(POINT point)
{
    int steady = 0;
    return WaitFor([&] {
        if (!IsPointerAt(point)) {
            steady = 0;
            SetCursorPos(point.x, point.y);
            SendMouse(MOUSEEVENTF_MOVE);
        }
        return IsPointerAt(point) && ++steady >= kSteadyPolls;
    });
}

bool Click(POINT point, MouseButton button)
{
    if (!MoveTo(point))
        return false;
    SendMouse(button == MouseButton::Left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
    SendMouse(button == MouseButton::Left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
    return true;
}

bool DoubleClick(POINT point)
{
    if (!Click(point))
        return false;
    SendMouse(MOUSEEVENTF_LEFTDOWN);
    SendMouse(MOUSEEVENTF_LEFTUP);
    return true;
}

bool ClickWith(std::initializer_list<WORD> keys, POINT point)
{
    if (!MoveTo(point))
        return false;
    for (const WORD key : keys)
        SendKey(key, true);
    const bool clicked = Click(point);
    for (const WORD key : keys)
        SendKey(key, false);
    return clicked;
}

bool Drag(POINT from, POINT to)
{
    if (!MoveTo(from))
        return false;
    SendMouse(MOUSEEVENTF_LEFTDOWN);
    const bool moved = MoveTo({(from.x + to.x) / 2, (from.y + to.y) / 2}) && MoveTo(to);
    SendMouse(MOUSEEVENTF_LEFTUP);
    return moved;
}

POINT MiddleOf(HWND window)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}
