// What the editor does with the text of its body control.
#pragma once

#include <windows.h>

#include <string>

// The whole text of a control, for where nothing is lost by it: empty when it cannot be had.
std::wstring TextOf(HWND control);

bool HasBodyPlaceholder(HWND body);
// On gaining focus: the placeholder is selected as a whole, so that typing replaces it.
void SelectBodyPlaceholder(HWND body);
// On losing focus: an empty body shows the placeholder again.
void RestoreBodyPlaceholder(HWND body);

// "<time> - ", behind a blank line unless it replaces the placeholder.
std::wstring TimeStampText(const SYSTEMTIME& time, bool replacesPlaceholder);
// Puts a time stamp at the caret, or in the placeholder's place, so that it can be undone, and gives the body
// the focus.
void InsertTimeStamp(HWND body, const SYSTEMTIME& time);
