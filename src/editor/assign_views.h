// The editor's views: one of the body, the list of categories and the list of contacts is seen, in the same
// place. A list is there only while it is.
#pragma once

#include <windows.h>

#include "editor/category_view.h"
#include "editor/contact_view.h"
#include "editor/editor_view.h"

class EditorBar;

class AssignViews {
  public:
    // Both outlive the views; quiet is the editor's flag for changes of its own.
    AssignViews(EditorRecord* record, bool* quiet) : m_categories(record, quiet), m_contacts(record, quiet) {}

    // The editor's window, its bar and the control whose place the lists take. Shows the body.
    void Start(HWND editor, EditorBar* bar, HWND body);

    EditorView View() const { return m_view; }
    // The bar shows the view and offers what it can do. False, with the view as it was, when its list cannot
    // be made.
    [[nodiscard]] bool SwitchTo(EditorView view);
    // Moves the list to where the body is.
    void FollowBody() const;
    // The editor has another resolution and font.
    void OnResolutionChanged(int before);
    // When the editor closes.
    void DestroyLists();
    // After the user has edited the categories.
    void TakeEditedCategories() { m_categories.TakeEdited(); }
    // Another program has changed the store.
    void Refresh();

    enum class Outcome {
        NotOurs, // the notification is another control's
        Nothing,
        CategoriesAssigned,
        ContactsAssigned,
        EditCategories, // the user asks for it
    };
    Outcome OnNotify(NMHDR* notification, LRESULT* result);

  private:
    [[nodiscard]] bool Open(EditorView view);
    void Leave(EditorView view);
    HWND WindowOf(EditorView view) const;
    void ShowInBar(EditorView view) const;

    CategoryView m_categories;
    ContactView m_contacts;
    EditorView m_view = EditorView::EditEntry;
    HWND m_editor = nullptr;
    EditorBar* m_bar = nullptr;
    HWND m_body = nullptr;
};
