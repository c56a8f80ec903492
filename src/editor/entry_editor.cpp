#include "editor/entry_editor.h"

#include "app/journal_app.h"
#include "editor/entry_editor_dialog.h"
#include "res/resource.h"

int OpenEntryEditor(HWND owner, CEOID* id)
{
    EntryEditor editor(id);
    HWND over = owner ? owner : App().MainWindowHandle();
    return editor.DoModal(GetModuleHandleW(nullptr), IDD_ENTRY_EDITOR, over) == 1 ? 1 : 0;
}
