#include "editor/entry_editor.h"

#include "editor/entry_editor_dialog.h"
#include "res/resource.h"

namespace {

int Run(EntryEditor* editor, HWND owner)
{
    const INT_PTR ended = editor->DoModal(GetModuleHandleW(nullptr), IDD_ENTRY_EDITOR, owner);
    if (ended == -1 && editor->Trouble() != StoreTrouble::None)
        MessageBoxW(owner, NotDoneText(L"The entry was not opened", editor->Trouble()).c_str(), L"Warning",
                    MB_OK | MB_ICONEXCLAMATION);
    return ended == 1 ? 1 : 0;
}

} // namespace

int OpenEntryEditor(const Session& session, HWND owner, CEOID* id)
{
    EntryEditor editor(session, id);
    return Run(&editor, owner);
}

int OpenRescuedEntry(const Session& session, HWND owner, RescueFile file, RescueState state, CEOID* id)
{
    *id = state.id;
    EntryEditor editor(session, id);
    editor.GoOnWith(std::move(file), std::move(state));
    return Run(&editor, owner);
}
