// How the buttons of a bar are laid out in rows when the window is too narrow for one.
#pragma once

#include <vector>

struct ButtonExtent {
    int width; // pixels; 0 when hidden
    bool isSeparator;
};

// For each button whether its row ends after it. No row is wider than available unless one button alone is. A
// separator never ends a row: one that does not fit leads the next row.
std::vector<bool> BreakRows(const std::vector<ButtonExtent>& buttons, int available);
