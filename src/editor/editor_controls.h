// The controls of the editor: the ones that it makes itself and the ones of its template.
#pragma once

#include <windows.h>

#include "editor/editor_layout.h"

class EditorBar;

struct EditorControls {
    // Made here.
    HWND date = nullptr;
    HWND time = nullptr;
    HWND subject = nullptr;
    HWND type = nullptr;
    HWND duration = nullptr;
    HWND body = nullptr;
    // From the template.
    HWND line = nullptr;
    HWND label = nullptr;
    HWND categories = nullptr;

    // Makes the controls and the bar in the order of the tab key. Behind them come those of the template, in
    // its order. False on failure. The editor's window destroys them.
    [[nodiscard]] bool Create(HINSTANCE instance, HWND editor, EditorBar* bar);

    // Moves them where the layout has them, moved up by scrolled pixels.
    void Place(const EditorLayout& layout, HWND editor, int scrolled) const;
    void ShowCategories(bool show) const;
    // The date picker does it by itself.
    void FollowLocale() const;
    // Gives those that are made here the editor's font once it has another one.
    void SetFont(HFONT font) const;

    // For all of a picker's text in the user's format.
    static int NeededWidth(HWND picker);
    int BoxHeight() const;
    int LabelWidth() const;

  private:
    bool MakeInTabOrder(HINSTANCE instance, HWND editor, EditorBar* bar);
    bool FindTemplateControls(HWND editor);
    void AddKeys(HWND editor, HWND bar) const;
    int OverallHeight(int id) const;

    int m_dpi = 0;         // that these are for
    int m_subjectDrop = 0; // overall heights of the boxes, lists included
    int m_drop = 0;
};

// The date, the time or both in the pickers, without a notification. A time that a picker cannot show leaves
// it as it is.
void ShowTime(HWND picker, const SYSTEMTIME& time);
