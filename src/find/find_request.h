// FindRequest: what Find looks for. The main window keeps it from one find to the next.
#pragma once

#include <windows.h>

#include <string>

#include "mervane/values/journal_table.h"

enum class SearchFrom { Top, Current };

constexpr const wchar_t* kSearchPlaceholder = L"<Search Text>";
constexpr int kSearchTextLength = 13; // of the placeholder; what is typed beyond it is not taken

struct FindRequest {
    bool matchCase = false;
    CEPROPID by = kPropDate; // a field with a button in the dialog
    SearchFrom from = SearchFrom::Top;
    SYSTEMTIME date{}; // the day looked for; all zero until one was chosen
    std::wstring text; // empty when the user left the placeholder
};

// The text to look for, made of the text in the box: its first characters, without half a character at the
// end of them, and nothing when they are the placeholder.
std::wstring SearchTextOf(const std::wstring& typed);
