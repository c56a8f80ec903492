// Bands: what stands behind the command bands' window, a rebar: its bars, its adornments and what a rebar
// does not remember of the layout.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <memory>
#include <vector>

#include "ui/bars/adornments.h"
#include "ui/bars/command_bands.h"
#include "ui/bars/command_bar.h"
#include "ui/window_hook.h"

class Bands {
  public:
    // The window of new bands, which live as long as it; null on failure.
    static HWND Create(HINSTANCE instance, HWND parent, UINT id, DWORD style, HIMAGELIST images);
    // Null for a window of another kind.
    static Bands* Of(HWND rebar);
    Bands(const Bands&) = delete;
    Bands& operator=(const Bands&) = delete;

    bool Add(HINSTANCE instance, const REBARBANDINFOW& info);
    bool AddAdornments(HINSTANCE instance, DWORD flags);
    CommandBar* BarOf(int index) const;
    bool GetRestoreInformation(int index, COMMANDBANDSRESTOREINFO* info) const;
    // Brings everything to the parent's width.
    void FitToParent();

  private:
    struct Band {
        std::unique_ptr<CommandBar> bar;
        bool isMaximized = false;
        UINT restoredWidth = 0; // while it is maximised: what it was before
    };

    explicit Bands(HWND rebar) : m_rebar(rebar) {}
    static LRESULT HandleMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnNotify(const NMHDR& notification);
    LRESULT OnMaximize(WPARAM index, LPARAM ideal);
    void OnButtonDown(POINT point);
    void OnButtonUp();
    void OnClicked();
    void NoteLayout();
    LONG WidthOf(int index) const;
    void OnSized();

    const Band* FindBand(int index) const;
    Band* FindBand(int index);
    REBARBANDINFOW InfoOf(int index, UINT mask) const;
    bool SetInfo(int index, REBARBANDINFOW info);
    int IndexOf(const CommandBar& bar) const;
    RECT RectOf(int index) const;
    std::vector<RECT> Rects() const;

    void AlignToParent();
    void FitBars();
    void FitBar(CommandBar& bar, LONG width);
    void Remaximize();
    void ForgetMaximized(LONG rowTop);
    void RestoreOrder();
    void SetRowStart(int index, bool startsRow);
    void KeepWidths();
    void PlaceAdornments() const;

    HWND m_rebar;
    WindowHook m_hook;
    std::vector<Band> m_bands; // in the order in which they were added
    std::unique_ptr<Adornments> m_adornments;
    std::vector<RECT> m_rectsBeforeDrag;
    int m_pressed = -1;             // the band whose gripper the mouse has gone down on
    LONG m_widthBeforeClick = 0;    // of that one
    UINT m_restoredBeforeClick = 0; // what it had asked for
    bool m_sizing = false;
};
