// A window with command bands as the program's main window has them: a menu band, a button band and the
// adornments.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <vector>

#include "support/test_windows.h"
#include "ui/bars/command_bands.h"

constexpr UINT kBandsId = 102;
constexpr UINT kMenuBandId = 103;
constexpr UINT kButtonBandId = 104;
constexpr int kFilterCommand = 111;
constexpr int kGreyCommand = 143;

struct BandSetup {
    UINT style;
    UINT width;
    bool isMaximized = false;
};

class BandsWindow {
  public:
    struct Notification {
        HWND from;
        UINT_PTR idFrom;
        UINT code;
        int item; // of a tool bar's notification
    };

    // At the defaults unless the set-ups say otherwise; the client area is width wide. Not on the screen: no
    // window manager has a say in the size.
    explicit BandsWindow(int width);
    BandsWindow(int width, BandSetup menu, BandSetup buttons);
    ~BandsWindow();
    BandsWindow(const BandsWindow&) = delete;
    BandsWindow& operator=(const BandsWindow&) = delete;

    // Brings it to the screen and makes it the active window.
    void Show();

    HWND Window() const { return m_window; }
    HWND Focus() const { return m_focus; }
    HWND Bands() const { return m_bands; }
    HWND MenuBar() const { return CommandBands_GetCommandBar(m_bands, 0); }
    HWND ButtonBar() const { return CommandBands_GetCommandBar(m_bands, 1); }
    HWND Adornments() const;

    void SetClientWidth(int width);
    int ClientWidth() const;
    RECT BandRect(int index) const;
    std::vector<RECT> BandRects() const;
    COMMANDBANDSRESTOREINFO Restore(int index) const;
    BandSetup SetupOf(int index) const;
    // The gripper of the button band, dragged by so much with the mouse.
    void DragGripper(int dx, int dy);
    void SendMaximize(int index) const;

    std::function<bool(UINT, WPARAM, LPARAM, LRESULT*)> onMessage;
    std::vector<Notification> notifications;
    std::vector<UINT> commands;
    bool Has(UINT_PTR idFrom, UINT code) const;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    void Create(int width);
    void Build(BandSetup menu, BandSetup buttons);
    void AddButtons();

    HWND m_window = nullptr;
    HWND m_bands = nullptr;
    HWND m_focus = nullptr;
};

// The buttons' rectangles in a bar, separators left out.
std::vector<RECT> ButtonRects(HWND bar);
// A window's rectangle in another one's client coordinates.
RECT RectIn(HWND window, HWND of);
