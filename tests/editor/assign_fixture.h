// Categories and contacts in the store, entries that refer to them, and the editor's views over both.
#pragma once

#include "editor_fixture.h"
#include "list_in_editor.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"

class AssignTest : public EditorTest {
  protected:
    CEOID AddCategory(const wchar_t* name, int uses = 0);
    void HideCategory(CEOID id);
    void DeleteCategory(CEOID id);
    int Uses(CEOID category);
    CEOID AddContact(const wchar_t* fileAs, const wchar_t* company = nullptr);

    static std::vector<BYTE> Ids(std::vector<DWORD> ids);
    // An entry with a subject and, unless empty, these categories and contacts.
    CEOID AddEntry(const std::vector<DWORD>& categories, const std::vector<DWORD>& contacts = {});

    static ListInEditor Categories(EditorWindow& editor)
    {
        return ListInEditor(editor.Item(IDC_CATEGORY_LIST));
    }
    static ListInEditor Contacts(EditorWindow& editor) { return ListInEditor(editor.Item(IDC_CONTACT_LIST)); }
    static bool Has(EditorWindow& editor, int id) { return GetDlgItem(editor.Window(), id) != nullptr; }
    static std::wstring Line(EditorWindow& editor) { return editor.Text(IDC_CATEGORIES_LINE); }

    // Opens the entry in the view of a command.
    int RunIn(CEOID* id, int command, const std::function<void(EditorWindow&)>& action);
    int RunNewIn(int command, const std::function<void(EditorWindow&)>& action);
    // Runs trigger, which opens the category dialog, and edit while it is open.
    void WhileEditingCategories(const std::function<void()>& trigger, const std::function<void()>& edit);
};
