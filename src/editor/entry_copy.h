// A copy of an entry that could not be saved, as a text file that any program reads.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "editor/editor_record.h"

// The entry in labelled lines that end in CR LF; placeholders are left out. Of the assigned categories and
// contacts those are named that the store can still tell, and it is said where there are more.
std::wstring EntryCopyText(EntryToWrite entry, EditorRecord& record);

// Writes a text as UTF-8 with its mark at the beginning, in place of what the file had. False when not all of
// it is on disk: what the file had is still there.
[[nodiscard]] bool WriteTextFile(const wchar_t* path, const std::wstring& text);

// Asks for a file, then for the text, and writes it. Says so where that fails or where there is no text.
void SaveEntryCopy(HWND owner, const std::function<std::optional<std::wstring>()>& text);
