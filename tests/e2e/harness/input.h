// The keyboard and the mouse, as a person has them: what is pressed goes to the window that has the focus, or
// that lies under the pointer. Activate the window first.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

// Presses and releases keys together, in their order: {VK_CONTROL, 'N'}.
void PressKeys(std::initializer_list<WORD> keys);
void PressKey(WORD key);
// Types characters, whatever keys they are on; "\n" and "\t" are the keys Enter and Tab.
void TypeText(const std::wstring& text);

enum class MouseButton { Left, Right };

// Moves the pointer to a point of the screen and waits until it stays there.
[[nodiscard]] bool MoveTo(POINT point);
[[nodiscard]] bool Click(POINT point, MouseButton button = MouseButton::Left);
[[nodiscard]] bool DoubleClick(POINT point);
// Clicks while keys are held down: Click({VK_CONTROL}, point).
[[nodiscard]] bool ClickWith(std::initializer_list<WORD> keys, POINT point);
[[nodiscard]] bool Drag(POINT from, POINT to);

// The middle of a window on the screen.
POINT MiddleOf(HWND window);
