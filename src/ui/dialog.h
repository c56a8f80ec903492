// Dialog: the base of the program's dialogs, with its operations in their fixed order. One that is larger
// than its work area once it is initialised is made as large as that, and scrolls.
#pragma once

#include <windows.h>

#include <initializer_list>

#include "ui/dialog_scroll.h"
#include "util/owners.h"

class Dialog {
  public:
    Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Kept: these stand in the order of their slots, overridden or not.
    virtual void OnOK();     // ends the dialog with 1
    virtual void OnCancel(); // ends the dialog with 0
    virtual void EnableItem(int id, bool enable);
    virtual void ScreenToClientRect(RECT* rect) const;
    virtual void ClientToScreenRect(RECT* rect) const;
    // The client rectangle of the dialog, or of a control when one is given.
    virtual void GetClientRectangle(RECT* rect, HWND control = nullptr) const;
    virtual HWND GetItem(int id) const;
    virtual HWND GetWindow() const;
    virtual void SetWindow(HWND window);
    // The dialog itself, or a control when one is given.
    virtual void MoveWindow(int x, int y, int cx, int cy, bool repaint, HWND control = nullptr);
    virtual void SetWindowPosition(int x, int y, int cx, int cy, HWND control, UINT flags, HWND insertAfter);
    virtual void CenterOnWorkArea();
    virtual void CheckButton(int id, bool checked);
    // Whether the item itself is not hidden; the dialog may not be on the screen yet.
    virtual bool IsItemVisible(int id) const;
    virtual void HideWindow(HWND control);
    virtual void HideItem(int id);
    virtual void ShowWindow(HWND control);
    virtual void ShowItem(int id);
    virtual void OnSettingsChanged();
    virtual bool IsButtonChecked(int id) const;
    // Kept: the handheld's input panel, a hook without effect on a desktop.
    virtual void ShowInputPanel(bool show);
    virtual ~Dialog();

    // Runs the dialog of a template modally, the program's icon in its caption; returns the value it ended
    // with, or -1 when it could not be made.
    INT_PTR DoModal(HINSTANCE instance, int templateId, HWND owner);

    // Of the open dialogs the innermost that has something unsaved: what Unsaved says; null when none has.
    static const wchar_t* UnsavedInOpenDialogs();
    // Calls OnSessionEnd of all open dialogs, the innermost first.
    static void TellSessionEnd();

  protected:
    // Called for every message after WM_INITDIALOG but for commands that reach the dialog while another one
    // stands over it. True with *result set when the message was handled. When this returns false, WM_COMMAND
    // 1 and 2 reach OnOK and OnCancel unless their button is disabled, WM_CLOSE reaches OnCancel, or the
    // dialog over this one, and WM_SETTINGCHANGE OnSettingsChanged.
    virtual bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // The page of the help for this dialog, a topic of ui/launch.h; null: the owner answers the request.
    virtual const wchar_t* HelpTopic() const { return nullptr; }
    // What the person has entered here and would lose if the program ended now, as a sentence that the system
    // shows where it ends the session; null: nothing.
    virtual const wchar_t* Unsaved() const { return nullptr; }
    // The session ends, whatever was answered: the last moment to put aside what is unsaved. The process may
    // be ended as soon as its windows have returned. May be called more than once.
    virtual void OnSessionEnd() {}
    // WM_INITDIALOG; false when the focus was set here.
    virtual bool OnInitDialog();
    // The dialog has another resolution. Its size, its font and its controls have followed by now, which is
    // the dialog manager's; what else was made for a resolution is to follow here. before: what it had, in
    // dots per inch.
    virtual void OnResolutionChanged(int before);
    // The work area of the monitor that the dialog is to be on: its owner's, or its own where it has none.
    RECT OwnersWorkArea() const;
    // In the middle of the owner, as far as the owner's work area allows; of the work area, where there is no
    // owner or it is minimised.
    void CenterOnOwner();

    void End(INT_PTR result);
    // A template is as low as a small screen wants it. Elsewhere the dialog gets higher, by at most so many
    // pixels at 96 dpi: some controls grow with it, those below them move down.
    void Grow(int most, std::initializer_list<int> growing, std::initializer_list<int> below = {});
    // The same by this many pixels.
    void GrowBy(int growth, std::initializer_list<int> growing, std::initializer_list<int> below = {});
    // A control that has been disabled while it had the keyboard would keep it for itself: the next one that
    // can be used gets it, beginning with the given one.
    void KeepFocus(int next);

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static Dialog* Opened(HWND window, Dialog* dialog);
    bool Build();
    void Forget();
    bool IsOutOfReach(UINT message, WPARAM wParam, LPARAM lParam) const;
    bool Dispatch(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    bool OnCommand(int id, WORD notification);
    void CenterWithin(const RECT& around);
    void SetIcons();
    void FollowResolution();
    void NoteActivation(WPARAM state, HWND other);
    void AwaitKeyboard() const;

    HWND m_window = nullptr;
    ULONGLONG m_boxClosed = 0; // when a window over this one last gave way to it
    int m_dpi = 0;             // that its contents are made for
    UniqueIcon m_smallIcon;    // the program's, for the caption
    UniqueIcon m_bigIcon;
    DialogScroll m_scroll;
};

// Gives a control to a dialog: its font, and its place in the order of the keyboard behind another control.
void PlaceInDialog(HWND control, HWND dialog, HWND behind);
