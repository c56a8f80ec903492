// What stands in for the editor's window in a program of tests that has it.
#pragma once

#include <functional>

#include "editor/entry_editor.h"

// What the user does in the editor: works on the record reference and answers how the editor was closed. To
// be emptied before each test that uses it.
extern std::function<int(CEOID* id)> g_edit;
extern HWND g_editorOwner; // of the last one opened
extern int g_editorRuns;
