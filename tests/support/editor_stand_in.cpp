#include "support/editor_stand_in.h"

std::function<int(CEOID* id)> g_edit;
HWND g_editorOwner = nullptr;
int g_editorRuns = 0;

int OpenEntryEditor(const Session&, HWND owner, CEOID* id)
{
    ++g_editorRuns;
    g_editorOwner = owner;
    return g_edit ? g_edit(id) : 0;
}
