// Where the editor's controls stand: rectangles from sizes, without a window. At 96 dpi the constants are the
// given ones; everything is in pixels of the editor's client area.
//
// The push buttons stand at the right end of the categories line's row, the one place in the window that has
// room to spare at the handheld's 640 x 240: the two upper rows are full, and a row of their own would take a
// sixth of the body. The line ends before them.
//
// Where the system's frame or its resolution leaves less room than the constants expect, the body gives way
// first, then the command bar breaks into rows, then the subject moves to a row of its own. A window that is
// too low even then gets a layout higher than its client area, for the editor to scroll.
#pragma once

#include <windows.h>

#include <map>
#include <vector>

#include "ui/bars/button_rows.h"

struct EditorMetrics {
    SIZE workArea{};                      // right edge R and bottom B
    SIZE client{};                        // the editor's client area
    int dateWidth = 0, timeWidth = 0;     // that the pickers' texts need; the given width where that is more
    int boxHeight = 0;                    // of a closed combo box
    int labelWidth = 0;                   // of "Categories:"
    std::vector<ButtonExtent> barButtons; // of the command bar
    int barRowHeight = 0;
    bool showCategories = true;
    int dpi = 96;
};

struct EditorLayout {
    std::map<int, RECT> places; // of the controls, by their identifiers; boxes as closed
    RECT line{};                // the separator, which has none
    int barWrapWidth = 0;       // the width at which the bar's buttons break into rows
    int height = 0;             // what the layout takes; more than the client area's height: to be scrolled
};

EditorLayout LayOutEditor(const EditorMetrics& metrics);

// The layout with the body made 22 pixels shorter and the categories line close below it.
EditorLayout WithLineBelowBody(const EditorLayout& layout, int dpi);
