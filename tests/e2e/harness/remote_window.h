// Windows of another process: finding them, reading them and working their standard controls by messages.
// What needs memory of the other process is in remote_memory.h and the files over it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "e2e/harness/wait.h"

// The visible top-level window of a process that has the class and, unless null, the title; null when none
// has.
HWND FindTopWindow(DWORD process, const wchar_t* windowClass, const wchar_t* title = nullptr);
// The visible top-level windows of the class, of whatever process.
std::vector<HWND> VisibleWindows(const wchar_t* windowClass);
// The process's dialog with this title that is no message box, once it is visible; null after the limit.
[[nodiscard]] HWND WaitForDialog(DWORD process, const wchar_t* title, DWORD limit = kRemoteLimit);
// The same for a dialog that is known by a control only it has.
[[nodiscard]] HWND WaitForDialogWith(DWORD process, int controlId, DWORD limit = kRemoteLimit);
// Waits until the window is gone and another one of its process, if that still runs, has the keyboard.
[[nodiscard]] bool WaitUntilGone(HWND window, DWORD limit = kRemoteLimit);

// Brings a top-level window to the foreground, where it has the keyboard and keeps it; false when it has not
// within the limit.
[[nodiscard]] bool Activate(HWND window);
// Waits until a window of the process is in the foreground and keeps the keyboard, or the process has ended.
[[nodiscard]] bool WaitForForegroundOf(DWORD process);
// The window that has the keyboard's focus in the window's thread.
HWND FocusOf(HWND window);

// The longest that the window takes to answer, in milliseconds, until the condition holds.
[[nodiscard]] ULONGLONG LongestAnswer(HWND window, const std::function<bool()>& until);

// Sends a message that carries no pointer; the default when the window does not answer within the limit.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0, LRESULT otherwise = 0);

// A control of a dialog or any deeper child with the identifier; null when there is none.
HWND Control(HWND window, int id);
// The first child, however deep, of a class.
HWND ChildOfClass(HWND window, const wchar_t* windowClass);

std::wstring TextOf(HWND window);
// Puts text into an edit control or a combo box's edit, which tells its parent as after typing.
bool SetText(HWND edit, const std::wstring& text);

// Posted, so that a command that opens a dialog does not hold the test up.
void PostCommand(HWND window, int id);
void PressButton(HWND dialog, int id);
bool IsChecked(HWND dialog, int id);

std::vector<std::wstring> ComboItems(HWND combo);
std::vector<std::wstring> ListBoxItems(HWND listBox);
// Chooses an item and tells the parent as a user's choice would; false when there is no such item.
bool ChooseComboItem(HWND combo, int index);
