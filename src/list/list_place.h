// The place that a list of rows shows: its first visible row and the row that has the focus.
#pragma once

#include <windows.h>

// Scrolls as little as it takes until the row is the first one, or the list is at its end.
void ScrollToTop(HWND list, int row);

class ListPlace {
  public:
    explicit ListPlace(HWND list);
    // After the rows have been counted anew. Where there are fewer by now, the last ones are shown. The row
    // that has come into the place of the one that had the focus gets it; it is not selected.
    void Restore(HWND list) const;

  private:
    int m_top;
    int m_focused; // -1: none
};
