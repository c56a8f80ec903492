#include "ui/bars/button_rows.h"

#include <cstddef>

std::vector<bool> BreakRows(const std::vector<ButtonExtent>& buttons, int available)
{
    std::vector<bool> breaks(buttons.size());
    std::size_t rowStart = 0;
    int rowWidth = 0;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (rowWidth + buttons[i].width > available && i > rowStart) {
            std::size_t last = i - 1;
            if (buttons[last].isSeparator && last > rowStart)
                --last;
            breaks[last] = true;
            rowStart = last + 1;
            rowWidth = rowStart < i ? buttons[rowStart].width : 0;
        }
        rowWidth += buttons[i].width;
    }
    return breaks;
}
