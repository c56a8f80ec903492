// What the main windows of the companions have in common: the place where they were left, the font, the icons
// and the resolution, the child that had the keyboard, and the messages of the thread.
#pragma once

#include <windows.h>

#include <vector>

#include "settings/registry_store.h"
#include "util/owners.h"

class CompanionWindow {
  public:
    CompanionWindow(const CompanionWindow&) = delete;
    CompanionWindow& operator=(const CompanionWindow&) = delete;

    HWND Handle() const { return m_window; }
    // Shows it where and as it was left, unless the command asks for something else.
    void ShowFirst(int showCommand);
    // Runs the messages of the thread until the program is to end: the keys go to the accelerators, then to
    // TranslateKey, then to the dialog keys. The program's exit code.
    int Run(HACCEL keys);
    // A message of the thread's queue that is no accelerator, before anything else sees it; true when it is
    // used up.
    virtual bool TranslateKey(const MSG& message) = 0;

  protected:
    CompanionWindow() = default;
    // The window is destroyed by then (DestroyIfThere): its last messages go to the whole object.
    ~CompanionWindow() = default;
    void DestroyIfThere();

    [[nodiscard]] static bool RegisterWindowClass(HINSTANCE instance, const wchar_t* windowClass,
                                                  WNDPROC procedure, UINT menu);
    // Opens the settings under the key of HKEY_CURRENT_USER.
    void OpenSettings(const wchar_t* key);
    // Makes the window where it was left, the first time at firstPlace; it is not shown yet. object is what
    // the class's procedure takes. The settings have been opened.
    [[nodiscard]] bool Create(HINSTANCE instance, const wchar_t* windowClass, const wchar_t* title,
                              const RECT& firstPlace, void* object);
    // What the window itself does not answer: WM_SIZE, WM_DPICHANGED, and of WM_ACTIVATE which child had the
    // keyboard; the rest is the system's.
    LRESULT OnFrameMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Makes the font and the icons for the window's resolution and gives them to it and its children.
    void MakeFonts();
    // A child of the window with its font; without a size, which LayOut gives it.
    HWND MakeChild(const wchar_t* windowClass, const wchar_t* text, DWORD style, DWORD exStyle, int id);
    // Gives a child the font, and each later one.
    void GiveFont(HWND child);
    // Stores the window's place; false where there are no settings.
    bool StorePlace();
    // How high a row of controls is, in pixels.
    int RowHeight() const;

    // Brings the children to where the window's size has them.
    virtual void LayOut() = 0;
    // The window has its fonts for another resolution than before; what has sizes of its own follows.
    virtual void OnResolutionChanged(int dpiBefore) = 0;

    RegistryStore m_settings;
    bool m_hasSettings = false;
    HINSTANCE m_instance = nullptr;
    HWND m_window = nullptr;
    HWND m_focus = nullptr; // the child that had the keyboard when the window was last left

  private:
    void TakeResolution(const RECT& place);

    bool m_leftMaximized = false;
    std::vector<HWND> m_children; // that show the font
    UniqueFont m_font;
    int m_textHeight = 0;
    int m_dpi = 0; // that the contents are made for
    UniqueIcon m_smallIcon;
    UniqueIcon m_bigIcon;
};
