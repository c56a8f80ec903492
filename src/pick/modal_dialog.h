// ModalDialog: the base of the library's own dialogs.
#pragma once

#include <windows.h>

#include <string>

#include "pick/dialog_template.h"

namespace mervane {

class ModalDialog {
  public:
    ModalDialog() = default;
    ModalDialog(const ModalDialog&) = delete;
    ModalDialog& operator=(const ModalDialog&) = delete;

    virtual ~ModalDialog() = default;

  protected:
    // Runs the dialog over the owner, which may be null, in the middle of it and all on the screen; the
    // owner's icon is in its caption. Returns the value it ended with, or -1 when it could not be made.
    [[nodiscard]] INT_PTR Run(const DialogTemplate& contents, HWND owner);

    virtual bool OnInit() = 0; // false when the focus was set here
    virtual void OnOK() = 0;
    virtual void OnCancel() { End(0); }
    virtual void OnCommand(int id, int code) = 0;
    // True when it is answered, with *result.
    virtual bool OnNotify(NMHDR* notification, LRESULT* result);
    virtual void OnSize() {}
    virtual void OnGetMinMaxInfo(MINMAXINFO*) {}

    HWND Window() const { return m_window; }
    HWND Item(int id) const { return GetDlgItem(m_window, id); }
    std::wstring TextOf(int id) const;
    // Dialog units in pixels.
    SIZE Pixels(int width, int height) const;
    void Enable(int id, bool enable) { EnableWindow(Item(id), enable); }
    // A message box of the dialog's, under its caption.
    int Ask(const std::wstring& text, UINT type) const;
    void End(INT_PTR result) { EndDialog(m_window, result); }

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnClose();
    void OnCommandMessage(int id, int code);
    void TakeOwnersIcon() const;
    void Place() const;

    HWND m_window = nullptr;
};

} // namespace mervane
