// The handheld's command bands and command bars over the desktop's rebar and tool bar, under the same names
// and with the same results.
#pragma once

#include <windows.h>
#include <commctrl.h>

// Adornments.
constexpr DWORD kAdornHelp = 0x0001;  // "?" button: sends WM_HELP
constexpr DWORD kAdornOk = 0x0002;    // not used here
constexpr DWORD kAdornClose = 0x0008; // with the close button: sends WM_CLOSE
constexpr DWORD kAdornments = 11;     // "?" and close on the desktop

struct COMMANDBANDSRESTOREINFO {
    UINT cbSize;
    UINT wID;
    UINT fStyle;
    UINT cxRestored;
    BOOL fMaximized;
};

// The bands' window, a child of parent, a top-level window, with the control identifier id. images is the
// bands' image list; the caller owns it and keeps it until the bands are destroyed; may be null. Null on
// failure.
HWND CommandBands_Create(HINSTANCE instance, HWND parent, UINT id, DWORD style, HIMAGELIST images);
// Adds bands, each holding a command bar of its own; uses fMask RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE. Any
// stored style or width does: styles that would hide or break a band are left out, a band is never narrower
// than its buttons nor wider than its row. cx is in pixels of the screen; a 96-dpi constant is to be scaled
// before.
bool CommandBands_AddBands(HWND bands, HINSTANCE instance, UINT count, const REBARBANDINFOW* info);
// The command bar of a band by its index; null when there is none.
HWND CommandBands_GetCommandBar(HWND bands, UINT band);
// Adds the "?" and close buttons at the right edge, beside all bands, where they are seen however narrow the
// window.
bool CommandBands_AddAdornments(HWND bands, HINSTANCE instance, DWORD flags);
// Of the band with an index: handed to CommandBands_AddBands, with RB_MAXIMIZEBAND sent where fMaximized says
// so, it gives the same layout. cxRestored: the width before the band was maximised. False when there is no
// such band; *info is left alone then.
bool CommandBands_GetRestoreInformation(HWND bands, UINT band, COMMANDBANDSRESTOREINFO* info);
int CommandBands_Height(HWND bands);
// To be called when the parent's size has changed; the bands then have their new height.
void CommandBands_Resize(HWND bands);

// Puts a menu bar into a command bar: it is worked with the mouse, Alt and mnemonics, F10 and the arrow keys.
// The bar owns the menu. Commands and WM_INITMENUPOPUP go to the bands' parent.
bool CommandBar_InsertMenubar(HWND bar, HINSTANCE instance, int menuId);
HMENU CommandBar_GetMenu(HWND bar);
// Appends images to the bar; returns the index of the first one, -1 on failure. bitmapId in the instance, or
// IDB_STD_SMALL_COLOR with HINST_COMMCTRL.
int CommandBar_AddBitmap(HWND bar, HINSTANCE instance, int bitmapId, int imageCount);

// For the message loop, before anything else (accelerators above all): Alt with a mnemonic opens its menu,
// and while the menu bar has the keyboard its keys are its own. True when the message was used up.
bool CommandBands_TranslateMenuKey(HWND bar, const MSG& message);
