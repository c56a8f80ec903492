// A scroll bar of a window whose controls need more room than the screen has. It is there only then.
#pragma once

#include <windows.h>

class WindowScroll {
  public:
    // bar: SB_VERT or SB_HORZ.
    explicit WindowScroll(int bar = SB_VERT) : m_bar(bar) {}

    // content: what the controls need; page: what is seen of it; in pixels. Back to the start.
    void SetExtent(HWND window, int content, int page);
    // How far the controls are moved up, or left.
    int Position() const { return m_position; }

    // The request of WM_VSCROLL or WM_HSCROLL.
    void OnScroll(HWND window, WORD request);
    // Scrolls a control into sight.
    void Reveal(HWND window, HWND control);

  private:
    bool IsAcross() const { return m_bar == SB_HORZ; }
    void MoveTo(HWND window, int position);

    int m_bar;
    int m_content = 0;
    int m_page = 0;
    int m_position = 0;
};

// Where a scroll request leads from a position; within 0 and the last position. track is the thumb's.
int ScrollTarget(WORD request, int position, int track, int page, int content, int line);
// The position nearest to the given one that shows the span from start to end, its start first; both count
// from the start of the content.
int PositionToShow(int start, int end, int position, int page);

// Makes the control tell the window when it gets the focus: kMsgControlFocused with the control in lParam.
// Holds until the control is destroyed.
constexpr UINT kMsgControlFocused = WM_APP + 2;
void TellFocus(HWND control, HWND window);
