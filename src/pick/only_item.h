// A list view that has nothing to list.
#pragma once

#include <windows.h>

// In place of those that the store has, and does not tell for now.
constexpr const wchar_t* kUnreadCategories = L"<The categories cannot be read>";
constexpr const wchar_t* kUnreadContacts = L"<The contacts cannot be read>";

// Makes this text the list's one item, which has the focus and the list's whole width.
void ShowOnlyItem(HWND list, const wchar_t* text);
