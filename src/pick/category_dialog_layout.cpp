#include "pick/category_dialog_layout.h"

#include <algorithm>

namespace {

constexpr LONG kButtons = kCategoryButtons;
constexpr LONG kClosing = 2; // of them: OK and Cancel

} // namespace

CategoryDialogLayout LayOutCategoryDialog(SIZE client, const CategoryDialogSizes& sizes)
{
    const LONG across = sizes.button.cx + sizes.gap.cx, down = sizes.button.cy + sizes.gap.cy;
    const LONG height = client.cy - 2 * sizes.margin.cy;
    const LONG fitting = std::clamp((height + sizes.gap.cy) / down, LONG{1}, kButtons);
    const LONG columns = (kButtons + fitting - 1) / fitting;
    const LONG rows = (kButtons + columns - 1) / columns;
    const LONG left = client.cx - sizes.margin.cx - columns * across + sizes.gap.cx;
    const LONG bottom = std::max(sizes.margin.cy, client.cy - sizes.margin.cy);
    CategoryDialogLayout layout{};
    layout.list = {sizes.margin.cx, sizes.margin.cy, std::max(sizes.margin.cx, left - 2 * sizes.gap.cx),
                   bottom};
    for (LONG i = 0; i < kButtons; ++i) {
        const LONG x = left + i / rows * across;
        const bool atFoot = columns == 1 && i >= kButtons - kClosing;
        const LONG y =
            atFoot ? bottom + sizes.gap.cy - (kButtons - i) * down : sizes.margin.cy + i % rows * down;
        layout.buttons[static_cast<size_t>(i)] = {x, y, x + sizes.button.cx, y + sizes.button.cy};
    }
    return layout;
}
