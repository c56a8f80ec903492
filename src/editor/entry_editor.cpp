#include "editor/entry_editor.h"

#include "app/journal_app.h"
#include "editor/entry_editor_dialog.h"
#include "res/resource.h"

int OpenEntryEditor(HWND owner, CEOID* id)
{
    EntryEditor editor(id);
    HWND over = owner ? owner : App().MainWindowHandle();
    const INT_PTR ended = editor.DoModal(GetModuleHandleW(nullptr), IDD_ENTRY_EDITOR, over);
    if (ended == -1 && editor.Trouble() != StoreTrouble::None)
        MessageBoxW(over, NotDoneText(L"The entry was not opened", editor.Trouble()).c_str(), L"Warning",
                    MB_OK | MB_ICONEXCLAMATION);
    return ended == 1 ? 1 : 0;
}
